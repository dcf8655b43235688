// Codes of distinct values, 0, 1, 2, ... in order of first appearance, and the way back.
//
// The values stand in a vector, by code. Their hash index is an open table of slots (hash, code), 8
// bytes each, at most half full: a value is in the first slot from (hash mod size) on that holds
// its hash and its value, before any free one. Here "a" and "b" both start at slot 1:
//
//   slot      0        1        2        3              code     0      1
//   hash      0     h("a")   h("b")      0              value   "a"    "b"
//   code     -1        0        1       -1
//
// A search compares values only where 32 bits of hash agree, and a table that grows needs no value.
#pragma once

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <string>
#include <vector>

#include <nqcommon/model/internal/user_missing.h>

namespace NQXML_940::internal {

// Mixes all bits into all: the finaliser of Steele, Lea and Flood (2014), "Fast Splittable
// Pseudorandom Number Generators", with the constants of David Stafford's variant 13. Numbers that
// count something differ in a few high bits only, which a plain std::hash would leave there.
inline std::uint32_t HashValue(double value) {
  if (value == 0) value = 0;  // -0 is 0
  if (std::isnan(value)) value = std::numeric_limits<double>::quiet_NaN();
  auto bits = std::bit_cast<std::uint64_t>(value);
  bits = (bits ^ (bits >> 30)) * 0xbf58476d1ce4e5b9U;
  bits = (bits ^ (bits >> 27)) * 0x94d049bb133111ebU;
  return static_cast<std::uint32_t>(bits ^ (bits >> 31));
}
inline std::uint32_t HashValue(const std::string& value) {
  return static_cast<std::uint32_t>(std::hash<std::string>{}(value));
}

// T is double or std::string; equal is what SameValue says.
template <class T>
class CategoryIndex {
 public:
  // With room for `expected` values, within reason: a claim alone must not take memory.
  explicit CategoryIndex(int expected = 0)
      : fvSlots(2 * std::bit_ceil(static_cast<std::size_t>(
                        std::clamp(expected, kSmallestRoom, kLargestRoom)))) {}

  // With these values, whose codes are their positions. A value that comes twice has two codes.
  explicit CategoryIndex(const std::vector<T>& values) : CategoryIndex() {
    for (const T& value : values) Add(value, HashValue(value));
  }

  // The code of the value, the first one it has, or kNone.
  static constexpr int kNone = -1;
  int Find(const T& value) const { return fvSlots[Locate(value, HashValue(value))].code; }

  // A new value gets the next code; none where all the positive int are given out.
  int FindOrAdd(const T& value) {
    const std::uint32_t hash = HashValue(value);
    const int code = fvSlots[Locate(value, hash)].code;
    return code != kNone ? code : Add(value, hash);
  }

  // By code. The last code given out is Size() - 1.
  const std::vector<T>& GetValues() const { return fvValues; }
  int Size() const { return static_cast<int>(fvValues.size()); }

 private:
  struct Slot {
    std::uint32_t hash = 0;
    int code = kNone;
  };

  static constexpr int kSmallestRoom = 8;
  static constexpr int kLargestRoom = 4096;

  // Where the value is, or else the free slot where it belongs.
  std::size_t Locate(const T& value, std::uint32_t hash) const {
    const std::size_t mask = fvSlots.size() - 1;
    std::size_t i = hash & mask;
    while (fvSlots[i].code != kNone &&
           !(fvSlots[i].hash == hash && SameValue(ValueOf(fvSlots[i]), value)))
      i = (i + 1) & mask;
    return i;
  }

  const T& ValueOf(const Slot& slot) const { return fvValues[static_cast<std::size_t>(slot.code)]; }

  // Where memory ends the index is as it was.
  int Add(const T& value, std::uint32_t hash) {
    if (fvValues.size() >= static_cast<std::size_t>(std::numeric_limits<int>::max())) return kNone;
    if (2 * (fvValues.size() + 1) > fvSlots.size()) Grow();
    Slot& slot = fvSlots[Locate(value, hash)];
    const int code = Size();
    fvValues.push_back(value);
    if (slot.code == kNone) slot = {hash, code};
    return code;
  }

  void Grow() {
    std::vector<Slot> slots(2 * fvSlots.size());
    const std::size_t mask = slots.size() - 1;
    for (const Slot& slot : fvSlots) {
      if (slot.code == kNone) continue;
      std::size_t i = slot.hash & mask;
      while (slots[i].code != kNone) i = (i + 1) & mask;
      slots[i] = slot;
    }
    fvSlots.swap(slots);
  }

  std::vector<T> fvValues;
  std::vector<Slot> fvSlots;  // a power of two of them
};

}  // namespace NQXML_940::internal
