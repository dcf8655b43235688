#include <nqcommon/model/NQCatVar.h>

#include <algorithm>
#include <utility>

#include <nqcommon/common/NQMV.h>
#include <nqcommon/common/display.h>
#include <nqcommon/model/NQCatNumEncoder.h>
#include <nqcommon/model/NQStringEncoder.h>
#include <nqcommon/model/internal/saved_fields.h>
#include <nqcommon/xml/number_format.h>

namespace NQXML_940 {

namespace {

template <class Categories>
std::unique_ptr<INQEncoder> MakeNumeric(const Categories& categories) {
  return std::make_unique<NQCatNumEncoder>(categories);
}
template <class Categories>
std::unique_ptr<INQEncoder> MakeString(const Categories& categories) {
  return std::make_unique<NQStringEncoder>(categories);
}

std::unique_ptr<INQEncoder> MakeEncoder(INQVariable::MeasureLevel level, int categories) {
  return level == INQVariable::LevelNumericCategorical ? MakeNumeric(categories)
                                                       : MakeString(categories);
}

std::unique_ptr<INQEncoder> MakeEncoder(INQVariable::MeasureLevel level,
                                        const std::vector<double>& values) {
  if (level == INQVariable::LevelNumericCategorical) return MakeNumeric(values);
  std::vector<std::string> texts;
  for (double value : values) {
    if (!NQCommon_940::NQMV::IsMissing(value)) texts.push_back(ReplaceSep(value));
  }
  return MakeString(texts);
}

}  // namespace

NQCatVar::NQCatVar(const std::string& name, const std::string& label, int categories,
                   MeasureLevel level, VariableRole role, bool isOrdinal)
    : NQCatVar(name, label, categories, level, role, isOrdinal, MakeEncoder(level, categories)) {}

NQCatVar::NQCatVar(const std::string& name, const std::string& label, int categories,
                   MeasureLevel level, VariableRole role, bool isOrdinal,
                   const std::vector<double>& values)
    : NQCatVar(name, label, categories, level, role, isOrdinal, MakeEncoder(level, values)) {}

NQCatVar::NQCatVar(const std::string& name, const std::string& label, int categories,
                   VariableRole role, bool isOrdinal, const std::vector<std::string>& texts)
    : NQCatVar(name, label, categories, LevelStringCategorical, role, isOrdinal,
               MakeString(texts)) {}

NQCatVar::NQCatVar(const std::string& name, const std::string& label, int categories,
                   MeasureLevel level, VariableRole role, bool isOrdinal,
                   std::unique_ptr<INQEncoder>&& encoder)
    : NQVariableBase(name, label, role, std::move(encoder)),
      fIsOrdinal(isOrdinal),
      fNCategories(std::max(categories, Encoder()->GetNumberOfCategories())),
      fLevel(level) {}

int NQCatVar::UpdateNumberOfCategories() {
  if (Encoder()) fNCategories = std::max(fNCategories, Encoder()->GetNumberOfCategories());
  return fNCategories;
}

INQVariable::VarStatus NQCatVar::GetVarStatus() {
  const int n = UpdateNumberOfCategories();
  return n < 1 ? StatusInvalid : n == 1 ? StatusConstant : StatusOK;
}

void NQCatVar::SetBinaryFlag(bool on, int trueIndex) {
  fIsBinaryFlag = on && (trueIndex == 0 || trueIndex == 1);
  fTrueIndex = fIsBinaryFlag ? trueIndex : -1;
}

bool NQCatVar::SetFlagVariable(bool isFlag) {
  if (!IsCategorical(fLevel)) return false;
  fIsFlagVariable = isFlag;
  return true;
}

NQCatVar* NQCatVar::Clone() const { return new NQCatVar(*this); }

struct NQCatVar::Saved {
  static constexpr const char* kName = "NQCatVar";

  template <class Self, class Archive>
  static void Fields(Self& self, Archive& archive) {
    archive.Value(self.fName);
    archive.Value(self.fLabel);
    archive.Value(self.fRole);
    archive.Value(self.fStorage);
    archive.Count(self.fNCategories);
    archive.Value(self.fLevel);
    archive.Value(self.fIsOrdinal);
    archive.Value(self.fIsBinaryFlag);
    archive.Value(self.fTrueIndex);
    self.ReplacementFields(archive);
    self.EncoderFields(
        archive, {INQEncoder::EncoderNumericCategorical, INQEncoder::EncoderStringCategorical});
  }
};

int NQCatVar::WriteObjectXML(std::ostream& os, int indent) const {
  return internal::WriteObject<Saved>(*this, os, indent);
}

int NQCatVar::ReadObjectXML(std::ifstream& in) { return internal::ReadObject<Saved>(*this, in); }

void NQCatVar::Display() const {
  using namespace NQDisplay_940;
  DisplayText(1, "NQCatVar display start");
  DisplayCommon();
  DisplayI("Number of categories", fNCategories);
  DisplayB("Ordinal", fIsOrdinal);
  DisplayB("Binary flag", fIsBinaryFlag);
  if (fIsBinaryFlag) DisplayI("Index of the true value", fTrueIndex);
  DisplayB("Flag variable", fIsFlagVariable);
  DisplayDV("Sums of frequency weights", fvSumFreqWts, true);
  DisplayEncoder();
  DisplayText(1, "NQCatVar display end");
}

}  // namespace NQXML_940
