#include <nqcommon/model/NQWeightVar.h>

#include <memory>

#include <nqcommon/common/display.h>
#include <nqcommon/model/NQRoundEncoder.h>
#include <nqcommon/model/internal/saved_fields.h>

namespace NQXML_940 {

NQWeightVar::NQWeightVar(const std::string& name, const std::string& label, WRoundingOption option)
    : NQVariableBase(name, label, RoleFrequencyWeight, std::make_unique<NQRoundEncoder>(option)),
      fOption(option) {}

NQWeightVar* NQWeightVar::Clone() const { return new NQWeightVar(*this); }

int NQWeightVar::WriteObjectXML(std::ostream& os, int indent) const {
  ObjectWriter writer(os, "NQWeightVar", indent);
  writer.Value(fName);
  writer.Value(fLabel);
  writer.Value(fOption);
  writer.Object(*Encoder());
  return writer.End();
}

int NQWeightVar::ReadObjectXML(std::ifstream& in) {
  return internal::ReadObject(in, "NQWeightVar", [this](ObjectReader& reader) {
    reader.Value(fName);
    reader.Value(fLabel);
    internal::ReadCode(reader, fOption);
    auto* encoder = static_cast<NQRoundEncoder*>(Encoder());  // never replaced by another
    reader.Object(*encoder);
    reader.Require(encoder->GetRoundingOption() == fOption);
  });
}

void NQWeightVar::Display() const {
  using namespace NQDisplay_940;
  DisplayText(1, "NQWeightVar display start");
  DisplayCommon();
  DisplayCode("Rounding option", fOption);
  DisplayEncoder();
  DisplayText(1, "NQWeightVar display end");
}

}  // namespace NQXML_940
