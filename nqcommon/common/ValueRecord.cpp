#include <nqcommon/common/ValueRecord.h>

#include <algorithm>
#include <atomic>
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <utility>

#include <nqcommon/common/display.h>

namespace NQCommon_940 {

namespace {

constexpr std::size_t kPrefixBytes = sizeof(std::uint64_t);

// A name, and its first bytes as a number that sorts like them: it decides most comparisons.
struct Key {
  explicit Key(const std::string& name) : fName(name) {
    const std::size_t length = std::min(name.size(), kPrefixBytes);
    for (std::size_t i = 0; i < length; ++i)
      fPrefix |= std::uint64_t{static_cast<unsigned char>(name[i])} << 8 * (kPrefixBytes - 1 - i);
  }

  const std::string& fName;
  std::uint64_t fPrefix = 0;
};

}  // namespace

// The names of a record, by position and in byte order. An index that records share never changes.
struct ValueRecord::NameIndex {
  struct Entry {
    std::uint64_t fPrefix;
    std::size_t fPosition;
  };

  NameIndex() = default;
  NameIndex(const NameIndex& other) : fvNames(other.fvNames), fvSorted(other.fvSorted) {}

  const std::string& NameOf(const Entry& entry) const { return fvNames[entry.fPosition]; }

  // The first entry in byte order that is not less than the name.
  std::vector<Entry>::const_iterator LowerBound(const Key& key) const {
    return std::partition_point(fvSorted.begin(), fvSorted.end(), [&](const Entry& entry) {
      if (entry.fPrefix != key.fPrefix) return entry.fPrefix < key.fPrefix;
      // Of two names with the same first bytes a short one begins the other.
      const std::string& name = NameOf(entry);
      if (std::min(name.size(), key.fName.size()) > kPrefixBytes) return name < key.fName;
      return name.size() < key.fName.size();
    });
  }

  // The position of a name; -1 where it is absent.
  int Find(const Key& key) const {
    const auto found = LowerBound(key);
    if (found == fvSorted.end() || found->fPrefix != key.fPrefix) return -1;
    const std::string& name = NameOf(*found);
    const bool isSame =
        name.size() == key.fName.size() && (name.size() <= kPrefixBytes || name == key.fName);
    return isSame ? static_cast<int>(found->fPosition) : -1;
  }

  // Makes room for one more name, after which Append allocates nothing.
  void Reserve() {
    if (fvNames.size() < std::min(fvNames.capacity(), fvSorted.capacity())) return;
    fvNames.reserve(2 * fvNames.size() + 4);
    fvSorted.reserve(fvNames.capacity());
  }

  // Adds a name that is not there.
  void Append(std::string&& name) noexcept {
    const Key key(name);
    fvSorted.insert(LowerBound(key), Entry{key.fPrefix, fvNames.size()});
    fvNames.push_back(std::move(name));
  }

  std::vector<std::string> fvNames;  // by position
  std::vector<Entry> fvSorted;
  // Set by the first copy of a record, and never unset: so no thread asks how many records are
  // left.
  std::atomic<bool> fIsShared{false};
};

ValueRecord::ValueRecord(const std::vector<std::string>& names) {
  for (const std::string& name : names) ValueRecord::Add(name, Value());
}

ValueRecord::ValueRecord(const ValueRecord& other)
    : fvValues(other.fvValues), fNames(other.fNames) {
  if (fNames) fNames->fIsShared.store(true, std::memory_order_relaxed);
}

ValueRecord& ValueRecord::operator=(const ValueRecord& other) {
  if (this != &other) *this = ValueRecord(other);
  return *this;
}

ValueRecord::~ValueRecord() = default;

Value& ValueRecord::At(int i) {
  assert(i >= 0 && i < static_cast<int>(fvValues.size()));
  return fvValues[static_cast<std::size_t>(i)];
}

int ValueRecord::Find(const std::string& name) const {
  return fNames ? fNames->Find(Key(name)) : -1;
}

bool ValueRecord::operator==(const ValueRecord& other) const {
  if (this == &other) return true;
  if (fvValues.size() != other.fvValues.size()) return false;
  for (std::size_t i = 0; i < fvValues.size(); ++i) {
    if (fvValues[fNames->fvSorted[i].fPosition] !=
        other.fvValues[other.fNames->fvSorted[i].fPosition])
      return false;
  }
  return true;
}

int ValueRecord::Add(const std::string& name, const Value& value) {
  const int found = Find(name);
  if (found >= 0) {
    At(found) = value;
    return found;
  }
  // What can fail comes before the first change.
  std::string newName = name;
  if (!fNames) {
    fNames = std::make_shared<NameIndex>();
  } else if (fNames->fIsShared.load(std::memory_order_relaxed)) {
    fNames = std::make_shared<NameIndex>(*fNames);
  }
  fNames->Reserve();
  fvValues.push_back(value);
  fNames->Append(std::move(newName));
  return static_cast<int>(fvValues.size()) - 1;
}

bool ValueRecord::AddAll(const ValueRecord& other) {
  if (this == &other || !other.fNames) return true;
  for (const NameIndex::Entry& entry : other.fNames->fvSorted)
    Add(other.fNames->NameOf(entry), other.fvValues[entry.fPosition]);
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
  const int removed = Find(name);
  if (removed < 0) return false;
  auto names = std::make_shared<NameIndex>();
  for (const std::string& kept : fNames->fvNames) {
    if (kept == name) continue;
    names->Reserve();
    names->Append(std::string(kept));
  }
  fNames = std::move(names);
  fvValues.erase(fvValues.begin() + removed);
  return true;
}

void ValueRecord::Clear() {
  fvValues.clear();
  fNames.reset();
}

void ValueRecord::ClearValues() {
  for (Value& value : fvValues) value.ClearValue();
}

void ValueRecord::SetMissingValue(int i) { At(i).Clear(); }

Value ValueRecord::Get(const std::string& name) const {
  const int i = Find(name);
  return i < 0 ? Value() : fvValues[static_cast<std::size_t>(i)];
}

Value ValueRecord::Get(int i) const {
  return i >= 0 && i < static_cast<int>(fvValues.size()) ? fvValues[static_cast<std::size_t>(i)]
                                                         : Value();
}

int ValueRecord::IndexOf(const std::string& name) const { return Find(name); }

bool ValueRecord::Contains(const std::string& name) const { return Find(name) >= 0; }

int ValueRecord::Size() const { return static_cast<int>(fvValues.size()); }

std::vector<std::string> ValueRecord::Names(bool sorted) const {
  if (!fNames) return {};
  if (!sorted) return fNames->fvNames;
  std::vector<std::string> names;
  for (const NameIndex::Entry& entry : fNames->fvSorted) names.push_back(fNames->NameOf(entry));
  return names;
}

std::string ValueRecord::GetName(int i) const {
  return i >= 0 && i < Size() ? fNames->fvNames[static_cast<std::size_t>(i)] : std::string();
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
