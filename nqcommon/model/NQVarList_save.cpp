#include <nqcommon/model/NQVarList.h>

#include <cstddef>
#include <utility>

#include <nqcommon/common/display.h>
#include <nqcommon/model/NQCatVar.h>
#include <nqcommon/model/NQContVar.h>
#include <nqcommon/model/NQWeightVar.h>
#include <nqcommon/model/internal/saved_fields.h>

namespace NQXML_940 {

using NQCommon_940::ClonePtr;

namespace {

// An empty variable of the level, to read itself; none for another level. The kept weight is used
// up by the first weight.
ClonePtr<INQVariable> MakeVariable(INQVariable::MeasureLevel level,
                                   ClonePtr<INQVariable>& keptWeight) {
  switch (level) {
    case INQVariable::LevelContinuous:
      return ClonePtr<INQVariable>(new NQContVar("", "", 0, 0, INQVariable::RoleInput, false, 0));
    case INQVariable::LevelNumericCategorical:
    case INQVariable::LevelStringCategorical:
      return ClonePtr<INQVariable>(new NQCatVar("", "", 0, level, INQVariable::RoleInput, false));
    case INQVariable::LevelFrequencyWeight:
      if (keptWeight) return std::exchange(keptWeight, {});
      return ClonePtr<INQVariable>(new NQWeightVar("", "", INQVariable::RoundAsIs));
    default:
      return {};
  }
}

}  // namespace

int NQVarList::WriteObjectXML(std::ostream& os, int indent) const {
  ObjectWriter writer(os, "NQVarList", indent);
  writer.Value(Count([](const INQVariable&) { return true; }));
  for (const auto& variable : fvVariables) {
    if (!variable) continue;
    writer.Value(variable->GetMeasureLevel());
    writer.Object(*variable);
  }
  writer.Value(GetNumContVar());
  writer.Value(GetNumCatVar());
  writer.Value(GetNumInputVars());
  writer.Value(GetNumPossibleInputVars());
  return writer.End();
}

int NQVarList::ReadObjectXML(std::ifstream& in) {
  return internal::ReadObject(in, "NQVarList", [this](ObjectReader& reader) {
    ClonePtr<INQVariable> keptWeight;
    if (const int i = GetWeightVarIndex(); i >= 0)
      keptWeight = std::move(fvVariables[static_cast<std::size_t>(i)]);
    fvVariables.clear();

    int count = 0;
    internal::ReadCount(reader, count);
    for (int i = 0; i < count; ++i) {
      auto level = INQVariable::LevelUnknown;
      internal::ReadCode(reader, level);
      reader.Require(level != INQVariable::LevelFrequencyWeight || GetWeightVarIndex() < 0);
      ClonePtr<INQVariable> variable = MakeVariable(level, keptWeight);
      reader.Require(bool(variable));
      Add(std::move(variable));
      reader.Object(*fvVariables.back());
      reader.Require(fvVariables.back()->GetMeasureLevel() == level);
    }

    int nContinuous = 0, nCategorical = 0, nInputs = 0, nPossibleInputs = 0;
    reader.Value(nContinuous);
    reader.Value(nCategorical);
    reader.Value(nInputs);  // counted from the roles instead, as the next one
    reader.Value(nPossibleInputs);
    reader.Require(nContinuous == GetNumContVar() && nCategorical == GetNumCatVar());
  });
}

void NQVarList::Display() const {
  using namespace NQDisplay_940;
  DisplayText(1, "NQVarList display start");
  DisplayI("Number of variables", Count([](const INQVariable&) { return true; }));
  DisplayI("Number of continuous variables", GetNumContVar());
  DisplayI("Number of categorical variables", GetNumCatVar());
  DisplayI("Position of the weight variable", GetWeightVarIndex());
  DisplayB("Listwise deletion", fListwiseDeletion);
  DisplayD("Unweighted count", fUnweightedCount);
  DisplayD("Weighted count", fWeightedCount);
  DisplayD("Dropped count", fDroppedCount);
  DisplayD("Bad weight count", fBadWeightCount);
  DisplayD("Weighted dropped count", fWeightedDroppedCount);
  for (const auto& variable : fvVariables) {
    if (variable) variable->Display();
  }
  DisplayText(1, "NQVarList display end");
}

}  // namespace NQXML_940
