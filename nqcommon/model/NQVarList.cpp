#include <nqcommon/model/NQVarList.h>

#include <cstddef>
#include <memory>
#include <utility>

#include <nqcommon/model/NQCatVar.h>
#include <nqcommon/model/NQContVar.h>
#include <nqcommon/model/NQWeightVar.h>
#include <nqcommon/model/internal/owned.h>
#include <nqcommon/model/internal/variables.h>
#include <nqcommon/xml/XMLElement.h>

namespace NQXML_940 {

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

// SumFrequencies adds the frequencies up by the code of their value.
template <class T>
std::vector<double> SumFrequencies(const INQEncoder& encoder, const std::vector<T>& values,
                                   const std::vector<double>& frequencies) {
  std::vector<double> sums(static_cast<std::size_t>(encoder.GetNumberOfCategories()));
  for (std::size_t i = 0; i < values.size(); ++i) {
    const double code = encoder.EncodeConst(values[i]);
    if (code >= 0) sums[static_cast<std::size_t>(code)] += frequencies[i];
  }
  return sums;
}

// MakeCatVar gives null without one frequency for each value.
template <class T>
std::unique_ptr<NQCatVar> MakeCatVar(const std::string& name, const std::string& label,
                                     INQVariable::VariableRole role, bool isOrdinal,
                                     const std::vector<T>& values,
                                     const std::vector<double>& frequencies) {
  if (frequencies.size() != values.size()) return nullptr;
  auto variable = MakeCatVar(name, label, role, isOrdinal, values);
  variable->SetSumFreqWts(SumFrequencies(*variable->GetEncoder(), values, frequencies));
  return variable;
}

}  // namespace

NQVarList::Owned::Owned() = default;
NQVarList::Owned::Owned(const Owned& other)
    : fFormatsElement(internal::CloneOf(other.fFormatsElement)) {
  fvVariables.reserve(other.fvVariables.size());
  for (const auto& variable : other.fvVariables) fvVariables.push_back(internal::CloneOf(variable));
}
NQVarList::Owned::Owned(Owned&&) noexcept = default;
NQVarList::Owned& NQVarList::Owned::operator=(const Owned& other) { return *this = Owned(other); }
NQVarList::Owned& NQVarList::Owned::operator=(Owned&&) noexcept = default;
NQVarList::Owned::~Owned() = default;

NQVarList::NQVarList() = default;
NQVarList::NQVarList(const NQVarList&) = default;
NQVarList::NQVarList(NQVarList&&) noexcept = default;
NQVarList& NQVarList::operator=(const NQVarList&) = default;
NQVarList& NQVarList::operator=(NQVarList&&) noexcept = default;
NQVarList::~NQVarList() = default;

int NQVarList::Add(std::unique_ptr<INQVariable> variable) {
  if (!variable) return kNoPosition;
  fOwned.fvVariables.push_back(std::move(variable));
  return GetNumVars() - 1;
}

int NQVarList::AddContVar(const std::string& name, const std::string& label, double min, double max,
                          INQVariable::VariableRole role, bool isBinned, int bins) {
  return Add(std::make_unique<NQContVar>(name, label, min, max, role, isBinned, bins));
}

int NQVarList::AddContVar(const std::string& name, const std::string& label, double min, double max,
                          INQVariable::VariableRole role, const std::vector<double>& cutPoints) {
  return Add(std::make_unique<NQContVar>(name, label, min, max, role, cutPoints));
}

int NQVarList::AddCatVar(const std::string& name, const std::string& label, int categories,
                         INQVariable::MeasureLevel level, INQVariable::VariableRole role,
                         bool isOrdinal) {
  if (!IsCategorical(level)) return kNoPosition;
  return Add(std::make_unique<NQCatVar>(name, label, categories, level, role, isOrdinal));
}

int NQVarList::AddCatVar(const std::string& name, const std::string& label,
                         const std::vector<double>& values, INQVariable::VariableRole role,
                         bool isOrdinal) {
  return Add(MakeCatVar(name, label, role, isOrdinal, values));
}
int NQVarList::AddCatVar(const std::string& name, const std::string& label,
                         const std::vector<double>& values, const std::vector<double>& frequencies,
                         INQVariable::VariableRole role, bool isOrdinal) {
  return Add(MakeCatVar(name, label, role, isOrdinal, values, frequencies));
}
int NQVarList::AddCatVar(const std::string& name, const std::string& label,
                         const std::vector<std::string>& texts, INQVariable::VariableRole role,
                         bool isOrdinal) {
  return Add(MakeCatVar(name, label, role, isOrdinal, texts));
}
int NQVarList::AddCatVar(const std::string& name, const std::string& label,
                         const std::vector<std::string>& texts,
                         const std::vector<double>& frequencies, INQVariable::VariableRole role,
                         bool isOrdinal) {
  return Add(MakeCatVar(name, label, role, isOrdinal, texts, frequencies));
}

int NQVarList::SetWeightVar(const std::string& name, const std::string& label,
                            INQVariable::WRoundingOption option) {
  auto weight = std::make_unique<NQWeightVar>(name, label, option);
  const int i = GetWeightVarIndex();
  if (i == kNoPosition) return Add(std::move(weight));
  fOwned.fvVariables[static_cast<std::size_t>(i)] = std::move(weight);
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
  return Add(std::unique_ptr<INQVariable>(variable->Clone()));
}

bool NQVarList::RemoveVar(int i) {
  if (!GetVarAt(i)) return false;
  fOwned.fvVariables[static_cast<std::size_t>(i)].reset();
  return true;
}

bool NQVarList::RemoveVar(const std::string& name) { return RemoveVar(FindVariable(name)); }

int NQVarList::FindVariable(const std::string& name) const {
  return internal::FindVariable(fOwned.fvVariables, [&name](const INQVariable& variable) {
    return variable.GetVariableName() == name;
  });
}

const INQVariable* NQVarList::GetVarAt(int i) const {
  const auto position = static_cast<std::size_t>(i);  // a negative one lies past every end
  return position < fOwned.fvVariables.size() ? fOwned.fvVariables[position].get() : nullptr;
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
  return internal::FindVariable(fOwned.fvVariables,
                                internal::HasLevel(INQVariable::LevelFrequencyWeight));
}

std::vector<std::string> NQVarList::GetVarNames() const {
  std::vector<std::string> names;
  for (const auto& variable : fOwned.fvVariables) {
    if (variable) names.push_back(variable->GetVariableName());
  }
  return names;
}

int NQVarList::GetNumContVar() const {
  return internal::CountVariables(fOwned.fvVariables,
                                  internal::HasLevel(INQVariable::LevelContinuous));
}

int NQVarList::GetNumCatVar() const {
  return internal::CountVariables(fOwned.fvVariables, [](const INQVariable& variable) {
    return IsCategorical(variable.GetMeasureLevel());
  });
}

long long NQVarList::GetNInputCats() const {
  long long categories = 0;
  for (const auto& variable : fOwned.fvVariables) {
    if (variable && variable->GetVariableRole() == INQVariable::RoleInput &&
        IsCategorical(variable->GetMeasureLevel()))
      categories += variable->GetNumberOfCategories();
  }
  return categories;
}

void NQVarList::UpdateNumbersOfCategories() {
  for (const auto& variable : fOwned.fvVariables) {
    if (variable) variable->UpdateNumberOfCategories();
  }
}

bool NQVarList::SetMissingValueReplacement(int i, const std::string& text) {
  INQVariable* variable = GetVarAt(i);
  return variable && variable->SetMissingValueReplacement(text);
}

void NQVarList::SetFieldFormatsElement(XMLElement* element) {
  internal::TakeOver(fOwned.fFormatsElement, element);
}

}  // namespace NQXML_940
