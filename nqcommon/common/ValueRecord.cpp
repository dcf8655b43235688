#include <nqcommon/common/ValueRecord.h>

#include <algorithm>
#include <cassert>
#include <cstddef>

#include <nqcommon/common/display.h>

namespace NQCommon_940 {

ValueRecord::~ValueRecord() = default;

Value& ValueRecord::At(int i) {
  assert(i >= 0 && i < static_cast<int>(fvValues.size()));
  return fvValues[static_cast<std::size_t>(i)];
}

bool ValueRecord::operator==(const ValueRecord& other) const {
  if (this == &other) return true;
  const auto sameValue = [&](const auto& mine, const auto& theirs) {
    return fvValues[static_cast<std::size_t>(mine.second)] ==
           other.fvValues[static_cast<std::size_t>(theirs.second)];
  };
  return std::equal(fNameIndex.begin(), fNameIndex.end(), other.fNameIndex.begin(),
                    other.fNameIndex.end(), sameValue);
}

int ValueRecord::Add(const std::string& name, const Value& value) {
  const auto [entry, isNew] = fNameIndex.try_emplace(name, static_cast<int>(fvValues.size()));
  if (isNew) {
    fvValues.push_back(value);
  } else {
    At(entry->second) = value;
  }
  return entry->second;
}

bool ValueRecord::AddAll(const ValueRecord& other) {
  for (const auto& [name, i] : other.fNameIndex)
    Add(name, other.fvValues[static_cast<std::size_t>(i)]);
  return true;
}

bool ValueRecord::Set(const std::string& name, const Value& value, bool sameType) {
  const int i = IndexOf(name);
  if (i < 0) return false;
  Value& slot = At(i);
  if (sameType && !slot.IsNull() && slot.GetType() != value.GetType()) return false;
  slot = value;
  return true;
}

bool ValueRecord::Remove(const std::string& name) {
  const int removed = IndexOf(name);
  if (removed < 0) return false;
  fNameIndex.erase(name);
  fvValues.erase(fvValues.begin() + removed);
  for (auto& [other, i] : fNameIndex) i -= i > removed;
  return true;
}

void ValueRecord::Clear() {
  fvValues.clear();
  fNameIndex.clear();
}

void ValueRecord::ClearValues() {
  for (Value& value : fvValues) value.ClearValue();
}

void ValueRecord::SetMissingValue(int i) { At(i).Clear(); }

Value ValueRecord::Get(const std::string& name) const { return Get(IndexOf(name)); }

Value ValueRecord::Get(int i) const {
  return i >= 0 && i < static_cast<int>(fvValues.size()) ? fvValues[static_cast<std::size_t>(i)]
                                                         : Value();
}

int ValueRecord::IndexOf(const std::string& name) const {
  const auto entry = fNameIndex.find(name);
  return entry == fNameIndex.end() ? -1 : entry->second;
}

bool ValueRecord::Contains(const std::string& name) const { return IndexOf(name) >= 0; }

int ValueRecord::Size() const { return static_cast<int>(fNameIndex.size()); }

std::vector<std::string> ValueRecord::Names(bool sorted) const {
  std::vector<std::string> names(fNameIndex.size());
  std::size_t next = 0;
  for (const auto& [name, i] : fNameIndex)
    names[sorted ? next++ : static_cast<std::size_t>(i)] = name;
  return names;
}

std::string ValueRecord::GetName(int i) const {
  const auto entry = std::find_if(fNameIndex.begin(), fNameIndex.end(),
                                  [i](const auto& candidate) { return candidate.second == i; });
  return entry == fNameIndex.end() ? std::string() : entry->first;
}

void ValueRecord::SetValue(int i, bool value) { At(i) = value; }
void ValueRecord::SetValue(int i, int value) { At(i) = value; }
void ValueRecord::SetValue(int i, long long value) { At(i) = value; }
void ValueRecord::SetValue(int i, double value) { At(i) = value; }
void ValueRecord::SetValue(int i, const char* value) { At(i) = value; }
void ValueRecord::SetValue(int i, const std::string& value) { At(i) = value; }

const std::vector<Value>& ValueRecord::GetRecord() const { return fvValues; }

void ValueRecord::Display() const {
  NQDisplay_940::DisplayText(1, "ValueRecord display start");
  const std::vector<std::string> names = Names(false);
  for (std::size_t i = 0; i < names.size(); ++i)
    NQDisplay_940::DisplayS(names[i], fvValues[i].IsMissing() ? "miss" : fvValues[i].GetString());
  NQDisplay_940::DisplayText(1, "ValueRecord display end");
}

}  // namespace NQCommon_940
