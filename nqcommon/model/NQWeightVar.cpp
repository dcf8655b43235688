#include <nqcommon/model/NQWeightVar.h>

#include <memory>

#include <nqcommon/common/display.h>
#include <nqcommon/model/NQRoundEncoder.h>
#include <nqcommon/model/internal/saved_fields.h>

namespace NQXML_940 {

NQWeightVar::NQWeightVar(const std::string& name, const std::string& label, WRoundingOption option)
    : NQVariableBase(name, label, RoleFrequencyWeight, std::make_unique<NQRoundEncoder>(option)) {}

NQRoundEncoder& NQWeightVar::Rounding() const {
  return static_cast<NQRoundEncoder&>(*Encoder());  // which is never replaced by another
}

INQVariable::WRoundingOption NQWeightVar::GetRoundingOption() const {
  return Rounding().GetRoundingOption();
}

NQWeightVar* NQWeightVar::Clone() const { return new NQWeightVar(*this); }

struct NQWeightVar::Saved {
  static constexpr const char* kName = "NQWeightVar";

  template <class Self, class Archive>
  static void Fields(Self& self, Archive& archive) {
    archive.Value(self.fName);
    archive.Value(self.fLabel);
    WRoundingOption option = self.GetRoundingOption();
    archive.Value(option);
    archive.Object(self.Rounding());
    archive.Require(option == self.GetRoundingOption());
  }
};

int NQWeightVar::WriteObjectXML(std::ostream& os, int indent) const {
  return internal::WriteObject<Saved>(*this, os, indent);
}

int NQWeightVar::ReadObjectXML(std::ifstream& in) { return internal::ReadObject<Saved>(*this, in); }

void NQWeightVar::Display() const {
  using namespace NQDisplay_940;
  DisplayText(1, "NQWeightVar display start");
  DisplayCommon();
  DisplayCode("Rounding option", GetRoundingOption());
  DisplayEncoder();
  DisplayText(1, "NQWeightVar display end");
}

}  // namespace NQXML_940
