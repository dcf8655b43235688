#pragma once

#include <cstddef>
#include <vector>

#include <nqcommon/common/GuardedCopy.h>
#include <nqcommon/export.h>

namespace NQMath_940 {

// Packs a sequence of n category codes into as few ints, the units, as it takes, as a compact key
// of a combination of categories.
//
// Units     position i has nDiffValues[i] values, lowerBound .. lowerBound + nDiffValues[i] - 1. A
//           unit takes the next position while the product of its numbers stays within
//           NQHashKey::GetElementUpperBound() at the time of Setup, compared by logarithms; a
//           number above that has a unit to itself.
// Layout    in a unit the first position is the least significant digit:
//           {3, 4, 5} is one unit, value0 + 3 value1 + 12 value2 with values counted from 0.
// Failure   false, and the output is as before. A copy for which memory ends has n of 0.
// Cost      one multiplication a position to pack, one division to unpack; no allocation but the
//           output's.
// Threads   concurrent Pack and Unpack of one object are safe.
class NQ_API NQPackedInt {
 public:
  NQPackedInt() = default;  // n of 0, which packs nothing
  NQPackedInt(int n, int lowerBound, const std::vector<int>& nDiffValues);
  NQPackedInt(const NQPackedInt& other) = default;
  NQPackedInt(NQPackedInt&& other) = default;  // n of `other` is 0 then
  NQPackedInt& operator=(const NQPackedInt& other) = default;
  NQPackedInt& operator=(NQPackedInt&& other) = default;
  virtual ~NQPackedInt() = default;

  // Takes the first n numbers and runs Setup. False, with n then 0, also when there are fewer
  // or memory ends.
  bool SetForSequence(int n, int lowerBound, const std::vector<int>& nDiffValues);

  // Assigns the positions to units. False, with n then 0, when n < 1 or a number is < 1.
  bool Setup();

  int GetLowerBound() const { return fLowerBound; }

  // The number of different values of a position; -1 out of range.
  int GetNDiffVal(int position) const;

  // Sets `packed` to the units of the first n values. False when n is 0, there are fewer than n
  // values or memory ends, and with `check` when a value is out of its position's range; without,
  // such a value gives a key that another combination may have. Both may be one vector.
  bool Pack(const std::vector<int>& values, std::vector<int>& packed, bool check) const;

  // The inverse: sets the first n values, of which there will be at least n. False when n is 0,
  // there are fewer entries than units or memory ends. Both may be one vector.
  bool Unpack(std::vector<int>& values, const std::vector<int>& packed) const;

  // Writes all through the diagnostic display.
  void Display() const;

 private:
  struct Position {
    int nDiffValues = 0;
    int unit = 0;
    int product = 0;  // of the unit's numbers up to the position, its own included
  };

  int NUnits() const { return fvPositions->empty() ? 0 : fvPositions->back().unit + 1; }

  // Is a position, which exists, the first of its unit? Behind the last position: true.
  bool StartsUnit(std::size_t i) const {
    const std::vector<Position>& positions = *fvPositions;
    return i == 0 || i == positions.size() || positions[i].unit != positions[i - 1].unit;
  }

  int fLowerBound = 0;
  NQCommon_940::GuardedCopy<std::vector<Position>> fvPositions;  // n of them
};

}  // namespace NQMath_940
