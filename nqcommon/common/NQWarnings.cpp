#include <nqcommon/common/NQWarnings.h>

#include <algorithm>
#include <cstddef>
#include <utility>

#include <nqcommon/common/memory_guard.h>

namespace NQCommon_940 {

namespace {

void AppendNew(std::vector<NQStatus>& list, const NQStatus& status) {
  if (std::find(list.begin(), list.end(), status) != list.end()) return;
  GuardMemory([&] { list.push_back(status); });
}

}  // namespace

void NQWarnings::NQParameterValue::SetValue(int value) {
  fType = kInteger;
  fInteger = value;
}

void NQWarnings::NQParameterValue::SetValue(double value) {
  fType = kDouble;
  fDouble = value;
}

void NQWarnings::NQParameterValue::SetValue(std::string value) {
  fType = kString;
  fString = std::move(value);
}

NQWarnings::~NQWarnings() = default;

void NQWarnings::AddWarning(const NQStatus& status, Destination destination) {
  if (!status.IsWarning()) return;
  // `status` may live in one of the lists, and one with a NaN datum, equal to nothing, is appended
  // again: the append to the first list must not leave the second with a dangling reference.
  const NQStatus warning = status;
  if (destination != ToAccumulated) AppendNew(fvCurrent, warning);
  if (destination != ToCurrent) AppendNew(fvAccumulated, warning);
}

void NQWarnings::AddWarnings(const std::vector<NQStatus>& statuses) {
  // By position up to the first length: `statuses` may be the current list, which grows.
  const std::size_t count = statuses.size();
  for (std::size_t i = 0; i < count; ++i) AddWarning(statuses[i], ToCurrent);
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): `other` may be this object.
void NQWarnings::AddWarnings(NQWarnings other) {
  for (const NQStatus& status : other.fvCurrent) AppendNew(fvCurrent, status);
  for (const NQStatus& status : other.fvAccumulated) AppendNew(fvAccumulated, status);
  for (const auto& entry : other.fParameterIndex) {
    const long code = entry.first;
    if (FindParameters(code)) continue;
    GuardMemory([&] { ParametersOf(code).swap(other.ParametersOf(code)); });
  }
}

template <typename T>
bool NQWarnings::AppendParameter(const NQStatus& status, T& value) {
  return GuardMemory([&] {
    NQParameterValue parameter;
    parameter.SetValue(std::move(value));
    ParametersOf(status.GetErrorCode()).push_back(std::move(parameter));
  });
}

bool NQWarnings::AddParameter(const NQStatus& status, int value) {
  return AppendParameter(status, value);
}

bool NQWarnings::AddParameter(const NQStatus& status, double value) {
  return AppendParameter(status, value);
}

bool NQWarnings::AddParameter(const NQStatus& status, std::string value) {
  return AppendParameter(status, value);
}

bool NQWarnings::HasParameter(const NQStatus& status) const {
  const Parameters* found = FindParameters(status.GetErrorCode());
  return found && !found->empty();
}

const std::vector<NQWarnings::NQParameterValue>& NQWarnings::GetParameters(const NQStatus& status) {
  fvResult.clear();
  const Parameters* found = FindParameters(status.GetErrorCode());
  if (found && !GuardMemory([&] { fvResult = *found; })) fvResult.clear();
  return fvResult;
}

const NQWarnings::Parameters* NQWarnings::FindParameters(long code) const {
  const auto found = fParameterIndex.find(code);
  if (found == fParameterIndex.end()) return nullptr;
  return &fvParameters[static_cast<std::size_t>(found->second)];
}

NQWarnings::Parameters& NQWarnings::ParametersOf(long code) {
  auto entry = fParameterIndex.find(code);
  if (entry == fParameterIndex.end()) {
    // The row first: an index entry never points past the table, even when memory runs out.
    fvParameters.emplace_back();
    entry = fParameterIndex.emplace(code, static_cast<int>(fvParameters.size() - 1)).first;
  }
  return fvParameters[static_cast<std::size_t>(entry->second)];
}

}  // namespace NQCommon_940
