#pragma once

#include <array>
#include <cassert>
#include <cstddef>
#include <vector>

#include <nqcommon/common/GuardedCopy.h>
#include <nqcommon/export.h>

namespace NQMath_940 {

// A key of ints with its hash:
//
//   the exclusive-or over i >= 1 of (element i + offset) * PRIME_FACTOR[i mod 49], modulo 2^32
//
// Element 0 does not enter. The hash is brought up to date by each assignment to an element.
//
// Failure   A key for whose elements there is no memory, a copy of another included, has none.
// Offset    one for the process, 0 at first. A change of it changes the hash of every key, which is
//           then computed anew when asked for: equal keys have equal hashes at any time. It is not
//           synchronised.
// Threads   one object, one thread at a time; concurrent reads are safe.
class NQ_API NQHashKey {
 public:
  // The primes from 3 to 229.
  static constexpr std::array<int, 49> PRIME_FACTOR = {
      3,   5,   7,   11,  13,  17,  19,  23,  29,  31,  37,  41,  43,  47,  53,  59,  61,
      67,  71,  73,  79,  83,  89,  97,  101, 103, 107, 109, 113, 127, 131, 137, 139, 149,
      151, 157, 163, 167, 173, 179, 181, 191, 193, 197, 199, 211, 223, 227, 229};

  // An element to be read or assigned. It is good while the key lives and keeps its size.
  class Element {
   public:
    operator int() const { return (*fKey.fvElement)[fIndex]; }
    Element& operator=(int value) {
      fKey.Set(fIndex, value);
      return *this;
    }
    Element& operator=(const Element& other) { return *this = static_cast<int>(other); }
    Element(const Element& other) = default;

   private:
    friend class NQHashKey;
    Element(NQHashKey& key, std::size_t index) : fKey(key), fIndex(index) {}

    NQHashKey& fKey;
    std::size_t fIndex;
  };

  NQHashKey() = default;
  // Zeros; none when the size is below 1.
  explicit NQHashKey(int size);
  NQHashKey(const NQHashKey& other) = default;
  NQHashKey(NQHashKey&& other) noexcept = default;  // `other` is without elements then
  NQHashKey& operator=(const NQHashKey& other) = default;
  NQHashKey& operator=(NQHashKey&& other) noexcept = default;
  virtual ~NQHashKey() = default;

  int Size() const { return static_cast<int>(fvElement->size()); }

  // i is 0 .. Size() - 1: the caller's duty, asserted in debug builds.
  int operator[](int i) const { return (*fvElement)[Index(i)]; }
  Element operator[](int i) { return Element(*this, Index(i)); }

  int GetHash() const;

  // Same size and elements.
  bool operator==(const NQHashKey& other) const { return *fvElement == *other.fvElement; }
  bool operator!=(const NQHashKey& other) const { return !(*this == other); }

  // Lexicographic, a proper prefix first.
  bool operator<(const NQHashKey& other) const { return *fvElement < *other.fvElement; }

  // False, nothing changed, when the upper bound would be 0 or less, or above INT_MAX.
  static bool SetElementOffset(int offset);

  static int GetElementOffset() { return ADD_LOWER_BOUND; }
  // 9377657 - offset.
  static int GetElementUpperBound();

  // Writes the elements through the diagnostic display.
  void Display() const;

 private:
  static int ADD_LOWER_BOUND;

  std::size_t Index(int i) const {
    assert(i >= 0 && i < Size());
    return static_cast<std::size_t>(i);
  }
  void Set(std::size_t i, int value);

  NQCommon_940::GuardedCopy<std::vector<int>> fvElement;
  unsigned fHash = 0;  // with fOffset, of a key that has elements
  int fOffset = 0;
};

}  // namespace NQMath_940
