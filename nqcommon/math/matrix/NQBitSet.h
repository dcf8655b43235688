#pragma once

#include <cstddef>
#include <utility>
#include <vector>

#include <nqcommon/export.h>

namespace NQMath_940 {

// A set of row or variable indices 0 .. Size() - 1, one bit per index; the size can change.
//
// Failure   by return value: an index out of range is answered, never followed. No set holds more
//           than INT_MAX indices. Where memory ends, Append and Duplicate change nothing; the
//           constructor from a size, copies, Resize, GetSubset, DoAND and DoOR leave an empty set.
//           Nothing throws; the copy of a vector that is passed by value is the caller's.
// Threads   one object, one thread at a time; concurrent reads are safe.
class NQ_API NQBitSet {
 public:
  // ---- Life cycle, size ------------------------------------------------------------------------

  NQBitSet() = default;

  // Size n, all false; empty when n is negative.
  explicit NQBitSet(int n) { Resize(n, false); }

  NQBitSet(const NQBitSet& other) noexcept { *this = other; }
  NQBitSet& operator=(const NQBitSet& other) noexcept;
  NQBitSet(NQBitSet&&) noexcept = default;  // leaves the source empty
  NQBitSet& operator=(NQBitSet&&) noexcept = default;
  ~NQBitSet() = default;

  explicit NQBitSet(std::vector<bool> bits) { Set(std::move(bits)); }

  int Size() const { return static_cast<int>(fbVec.size()); }

  // Every bit becomes b, old ones too; n below 1 empties the set.
  void Resize(int n, bool b);

  // Adds one bit at the end and returns the new size.
  int Append(bool b);

  // Appends k copies of the content: (k + 1) * Size() bits. False, nothing changed, when k is
  // negative or the result cannot be held.
  bool Duplicate(int k);

  // ---- Bits ------------------------------------------------------------------------------------

  // False out of range.
  bool IsIn(int i) const { return IsIndex(i) && fbVec[static_cast<std::size_t>(i)]; }

  // These return false, nothing changed, when any index is out of range.
  bool Set(int i, bool b) {
    if (!IsIndex(i)) return false;
    fbVec[static_cast<std::size_t>(i)] = b;
    return true;
  }
  bool SetRange(int from, int to, bool b);  // both ends included, from <= to
  bool SetSubset(std::vector<int> indices, bool b);

  // Takes content and size; false, nothing changed, past INT_MAX bits.
  bool Set(std::vector<bool> bits);

  // All bits false, size kept.
  void Clear();

  void Negate() { fbVec.flip(); }

  // ---- Counts and parts ------------------------------------------------------------------------

  // The number of true bits.
  int InSet() const;

  // The number of true bits in from .. to, both included; -1 when an end is out of range or
  // from > to.
  int InRange(int from, int to) const;

  // The number of true bits in start .. start + count - 1; -1 when these are not all in range.
  // A count of 0 gives 0 for start up to and including Size().
  int InRangeS(int start, int count) const;

  // out = the members, ascending. False, out unchanged, where memory ends.
  bool GetMembers(std::vector<int>& out) const;

  // The bits of from .. to that exist, renumbered from 0; empty when there are none.
  NQBitSet GetSubset(int from, int to) const;

  // ---- Two sets --------------------------------------------------------------------------------

  // This becomes a AND b, a OR b, bit by bit; both have the size of the shorter operand. Either
  // operand may be this set.
  void DoAND(const NQBitSet& a, const NQBitSet& b);
  void DoOR(const NQBitSet& a, const NQBitSet& b);

  // Is some index i < n true here and false in other? Past its end, other is false.
  bool IsNewFalse(const NQBitSet& other, int n) const;

  // Same size and bits.
  bool operator==(const NQBitSet& other) const { return fbVec == other.fbVec; }
  bool operator!=(const NQBitSet& other) const { return fbVec != other.fbVec; }

  // Lexicographic, false before true, a proper prefix first.
  bool operator<(const NQBitSet& other) const { return fbVec < other.fbVec; }

  // Writes the bits through the diagnostic display.
  void Display() const;

 private:
  // A negative index becomes a position past every end.
  bool IsIndex(int i) const { return static_cast<std::size_t>(i) < fbVec.size(); }
  bool IsRange(int from, int to) const { return from >= 0 && from <= to && IsIndex(to); }

  // Changes the size, new bits b. False, nothing changed, when so many cannot be held.
  bool SetSize(std::size_t n, bool b);

  template <class Op>
  void Combine(const NQBitSet& a, const NQBitSet& b, Op op);

  std::vector<bool> fbVec;
};

}  // namespace NQMath_940
