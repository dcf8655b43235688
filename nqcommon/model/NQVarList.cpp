#include <nqcommon/model/NQVarList.h>

#include <cstddef>
#include <memory>
#include <utility>

#include <nqcommon/model/NQCatVar.h>
#include <nqcommon/model/NQContVar.h>
#include <nqcommon/model/NQWeightVar.h>
#include <nqcommon/xml/XMLElement.h>

namespace NQXML_940 {

using NQCommon_940::ClonePtr;

namespace {

constexpr int kNoPosition = -1;

std::unique_ptr<NQCatVar> MakeCatVar(const std::string& name, const std::string& label,
                                     INQVariable::VariableRole role, bool isOrdinal,
                                     const std::vector<double>& values) {
  return std::make_unique<NQCatVar>(name, label, 0, INQVariable::LevelNumericCategorical, role,
                                    isOrdinal, values);
}
std::unique_ptr<NQCatVar> MakeCatVar(const std::string& name, const std::string& label,
                                     INQVariable::VariableRole role, bool isOrdinal,
                                     const std::vector<std::string>& texts) {
  return std::make_unique<NQCatVar>(name, label, 0, role, isOrdinal, texts);
}

}  // namespace

NQVarList::NQVarList() = default;
NQVarList::NQVarList(const NQVarList&) = default;
NQVarList& NQVarList::operator=(const NQVarList&) = default;
NQVarList::~NQVarList() = default;

int NQVarList::Add(ClonePtr<INQVariable> variable) {
  fvVariables.push_back(std::move(variable));
  return GetNumVars() - 1;
}

int NQVarList::AddContVar(const std::string& name, const std::string& label, double min, double max,
                          INQVariable::VariableRole role, bool isBinned, int bins) {
  return Add(ClonePtr<INQVariable>(new NQContVar(name, label, min, max, role, isBinned, bins)));
}

int NQVarList::AddContVar(const std::string& name, const std::string& label, double min, double max,
                          INQVariable::VariableRole role, const std::vector<double>& cutPoints) {
  return Add(ClonePtr<INQVariable>(new NQContVar(name, label, min, max, role, cutPoints)));
}

int NQVarList::AddCatVar(const std::string& name, const std::string& label, int categories,
                         INQVariable::MeasureLevel level, INQVariable::VariableRole role,
                         bool isOrdinal) {
  if (!IsCategorical(level)) return kNoPosition;
  return Add(ClonePtr<INQVariable>(new NQCatVar(name, label, categories, level, role, isOrdinal)));
}

template <class T>
int NQVarList::AddCategories(const std::string& name, const std::string& label,
                             const std::vector<T>& values, const std::vector<double>* frequencies,
                             INQVariable::VariableRole role, bool isOrdinal) {
  if (frequencies && frequencies->size() != values.size()) return kNoPosition;
  std::unique_ptr<NQCatVar> variable = MakeCatVar(name, label, role, isOrdinal, values);
  if (frequencies) {
    std::vector<double> sums(static_cast<std::size_t>(variable->GetNumberOfCategories()));
    for (std::size_t i = 0; i < values.size(); ++i) {
      const double code = variable->GetEncoder()->EncodeConst(values[i]);
      if (code >= 0) sums[static_cast<std::size_t>(code)] += (*frequencies)[i];
    }
    variable->SetSumFreqWts(sums);
  }
  return Add(ClonePtr<INQVariable>(std::move(variable)));
}

int NQVarList::AddCatVar(const std::string& name, const std::string& label,
                         const std::vector<double>& values, INQVariable::VariableRole role,
                         bool isOrdinal) {
  return AddCategories(name, label, values, nullptr, role, isOrdinal);
}
int NQVarList::AddCatVar(const std::string& name, const std::string& label,
                         const std::vector<double>& values, const std::vector<double>& frequencies,
                         INQVariable::VariableRole role, bool isOrdinal) {
  return AddCategories(name, label, values, &frequencies, role, isOrdinal);
}
int NQVarList::AddCatVar(const std::string& name, const std::string& label,
                         const std::vector<std::string>& texts, INQVariable::VariableRole role,
                         bool isOrdinal) {
  return AddCategories(name, label, texts, nullptr, role, isOrdinal);
}
int NQVarList::AddCatVar(const std::string& name, const std::string& label,
                         const std::vector<std::string>& texts,
                         const std::vector<double>& frequencies, INQVariable::VariableRole role,
                         bool isOrdinal) {
  return AddCategories(name, label, texts, &frequencies, role, isOrdinal);
}

int NQVarList::SetWeightVar(const std::string& name, const std::string& label,
                            INQVariable::WRoundingOption option) {
  ClonePtr<INQVariable> weight(new NQWeightVar(name, label, option));
  const int i = GetWeightVarIndex();
  if (i == kNoPosition) return Add(std::move(weight));
  fvVariables[static_cast<std::size_t>(i)] = std::move(weight);
  return i;
}

int NQVarList::AddNewVar(const INQVariable* variable) {
  if (!variable) return kNoPosition;
  const INQVariable::MeasureLevel level = variable->GetMeasureLevel();
  const bool isCategorical = IsCategorical(level);
  const bool isWeight = level == INQVariable::LevelFrequencyWeight;
  if (!isCategorical && !isWeight && level != INQVariable::LevelContinuous) return kNoPosition;
  if (!isCategorical && dynamic_cast<const NQCatVar*>(variable)) return kNoPosition;
  if (isWeight && GetWeightVarIndex() != kNoPosition) return kNoPosition;
  return Add(ClonePtr<INQVariable>(variable->Clone()));
}

bool NQVarList::RemoveVar(int i) {
  if (!GetVarAt(i)) return false;
  fvVariables[static_cast<std::size_t>(i)].Reset();
  return true;
}

bool NQVarList::RemoveVar(const std::string& name) { return RemoveVar(FindVariable(name)); }

int NQVarList::FindVariable(const std::string& name) const {
  return Find([&name](const INQVariable& variable) { return variable.GetVariableName() == name; });
}

const INQVariable* NQVarList::GetVarAt(int i) const {
  const auto position = static_cast<std::size_t>(i);  // a negative one lies past every end
  return position < fvVariables.size() ? fvVariables[position].Get() : nullptr;
}
INQVariable* NQVarList::GetVarAt(int i) {
  return const_cast<INQVariable*>(std::as_const(*this).GetVarAt(i));
}

const INQVariable* NQVarList::GetVariable(const std::string& name) const {
  return GetVarAt(FindVariable(name));
}
INQVariable* NQVarList::GetVariable(const std::string& name) {
  return GetVarAt(FindVariable(name));
}

const INQEncoder* NQVarList::GetEncoderAt(int i) const {
  const INQVariable* variable = GetVarAt(i);
  return variable ? variable->GetEncoder() : nullptr;
}
INQEncoder* NQVarList::GetEncoderAt(int i) {
  INQVariable* variable = GetVarAt(i);
  return variable ? variable->GetEncoder() : nullptr;
}

int NQVarList::GetWeightVarIndex() const {
  return Find([](const INQVariable& variable) {
    return variable.GetMeasureLevel() == INQVariable::LevelFrequencyWeight;
  });
}

std::vector<std::string> NQVarList::GetVarNames() const {
  std::vector<std::string> names;
  for (const auto& variable : fvVariables) {
    if (variable) names.push_back(variable->GetVariableName());
  }
  return names;
}

int NQVarList::GetNumContVar() const {
  return Count([](const INQVariable& variable) {
    return variable.GetMeasureLevel() == INQVariable::LevelContinuous;
  });
}

int NQVarList::GetNumCatVar() const {
  return Count(
      [](const INQVariable& variable) { return IsCategorical(variable.GetMeasureLevel()); });
}

long long NQVarList::GetNInputCats() const {
  long long categories = 0;
  for (const auto& variable : fvVariables) {
    if (variable && variable->GetVariableRole() == INQVariable::RoleInput &&
        IsCategorical(variable->GetMeasureLevel()))
      categories += variable->GetNumberOfCategories();
  }
  return categories;
}

void NQVarList::UpdateNumbersOfCategories() {
  for (const auto& variable : fvVariables) {
    if (variable) variable->UpdateNumberOfCategories();
  }
}

bool NQVarList::SetMissingValueReplacement(int i, const std::string& text) {
  INQVariable* variable = GetVarAt(i);
  return variable && variable->SetMissingValueReplacement(text);
}

void NQVarList::SetFieldFormatsElement(XMLElement* element) { fFormatsElement.Reset(element); }

}  // namespace NQXML_940
