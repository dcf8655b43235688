#include <nqcommon/model/NQVarList.h>

#include <cstddef>
#include <memory>
#include <sstream>
#include <string>
#include <utility>

#include <nqcommon/common/display.h>
#include <nqcommon/model/NQCatVar.h>
#include <nqcommon/model/NQContVar.h>
#include <nqcommon/model/NQWeightVar.h>
#include <nqcommon/model/internal/saved_fields.h>
#include <nqcommon/model/internal/variables.h>

namespace NQXML_940 {

namespace {

using VariablePtr = std::unique_ptr<INQVariable>;

bool IsAny(const INQVariable&) { return true; }

// An empty variable of the level, to read itself; none for another level. The kept weight is used
// up by the first weight.
VariablePtr MakeVariable(INQVariable::MeasureLevel level, VariablePtr& keptWeight) {
  switch (level) {
    case INQVariable::LevelContinuous:
      return std::make_unique<NQContVar>("", "", 0, 0, INQVariable::RoleInput, false, 0);
    case INQVariable::LevelNumericCategorical:
    case INQVariable::LevelStringCategorical:
      return std::make_unique<NQCatVar>("", "", 0, level, INQVariable::RoleInput, false);
    case INQVariable::LevelFrequencyWeight:
      if (keptWeight) return std::move(keptWeight);
      return std::make_unique<NQWeightVar>("", "", INQVariable::RoundAsIs);
    default:
      return nullptr;
  }
}

}  // namespace

struct NQVarList::Saved {
  static constexpr const char* kName = "NQVarList";

  template <class Self, class Archive>
  static void Fields(Self& self, Archive& archive) {
    Variables(self, archive);
    int nContinuous = self.GetNumContVar(), nCategorical = self.GetNumCatVar();
    int nInputs = self.GetNumInputVars(), nPossibleInputs = self.GetNumPossibleInputVars();
    archive.Value(nContinuous);
    archive.Value(nCategorical);
    // The numbers of inputs are free in a file: they are counted from the roles.
    archive.Value(nInputs);
    archive.Value(nPossibleInputs);
    archive.Require(nContinuous == self.GetNumContVar() && nCategorical == self.GetNumCatVar());
  }

  static void Variables(const NQVarList& self, ObjectWriter& writer) {
    writer.Count(internal::CountVariables(self.fOwned.fvVariables, IsAny));
    for (const VariablePtr& variable : self.fOwned.fvVariables) {
      if (!variable) continue;
      writer.Value(variable->GetMeasureLevel());
      writer.Object(*variable);
    }
  }

  static void Variables(NQVarList& self, ObjectReader& reader) {
    VariablePtr keptWeight;
    if (const int i = self.GetWeightVarIndex(); i >= 0)
      keptWeight = std::move(self.fOwned.fvVariables[static_cast<std::size_t>(i)]);
    self.fOwned.fvVariables.clear();

    int count = 0;
    reader.Count(count);
    for (int i = 0; i < count; ++i) {
      auto level = INQVariable::LevelUnknown;
      reader.Value(level);
      reader.Require(level != INQVariable::LevelFrequencyWeight || self.GetWeightVarIndex() < 0);
      VariablePtr variable = MakeVariable(level, keptWeight);
      reader.Require(variable != nullptr);
      reader.Object(*variable);
      reader.Require(variable->GetMeasureLevel() == level);
      self.Add(std::move(variable));
    }
  }
};

int NQVarList::WriteObjectXML(std::ostream& os, int indent) const {
  return internal::WriteObject<Saved>(*this, os, indent);
}

int NQVarList::ReadObjectXML(std::ifstream& in) { return internal::ReadObject<Saved>(*this, in); }

bool NQVarList::CanBeReadBack(int indent) const {
  constexpr std::size_t longestLine = 255;
  const auto isLost = [](const INQVariable& variable) {
    const INQEncoder* encoder = variable.GetEncoder();
    return IsCategorical(variable.GetMeasureLevel()) &&
           !(encoder && (encoder->GetEncoderType() == INQEncoder::EncoderNumericCategorical ||
                         encoder->GetEncoderType() == INQEncoder::EncoderStringCategorical));
  };
  if (internal::FindVariable(fOwned.fvVariables, isLost) >= 0) return false;
  std::stringstream file;
  WriteObjectXML(file, indent);
  for (std::string line; std::getline(file, line);) {
    if (line.size() > longestLine || line.find('\0') != line.npos) return false;
  }
  return !file.bad();  // as it is where memory ended
}

void NQVarList::Display() const {
  using namespace NQDisplay_940;
  DisplayText(1, "NQVarList display start");
  DisplayI("Number of variables", internal::CountVariables(fOwned.fvVariables, IsAny));
  DisplayI("Number of continuous variables", GetNumContVar());
  DisplayI("Number of categorical variables", GetNumCatVar());
  DisplayI("Position of the weight variable", GetWeightVarIndex());
  DisplayB("Listwise deletion", fListwiseDeletion);
  DisplayD("Unweighted count", fUnweightedCount);
  DisplayD("Weighted count", fWeightedCount);
  DisplayD("Dropped count", fDroppedCount);
  DisplayD("Bad weight count", fBadWeightCount);
  DisplayD("Weighted dropped count", fWeightedDroppedCount);
  for (const auto& variable : fOwned.fvVariables) {
    if (variable) variable->Display();
  }
  DisplayText(1, "NQVarList display end");
}

}  // namespace NQXML_940
