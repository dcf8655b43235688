#pragma once

#include <limits>

#include <nqcommon/export.h>

namespace NQCommon_940 {

// The system-missing value: the most negative finite double (bits 0xFFEFFFFFFFFFFFFF). It is not a
// NaN, so it sorts below every other number and code that forgets the test sees a huge negative
// one.
class NQ_API NQMV {
 public:
  static constexpr double gMissingValue = -std::numeric_limits<double>::max();

  static constexpr double Missing() { return gMissingValue; }

  // Exact equality, no tolerance: NaN and the infinities are not missing.
  static constexpr bool IsMissing(double x) { return x == gMissingValue; }

  // Missing for NaN, otherwise the number.
  static constexpr double MissingIfNaN(double x) { return x == x ? x : gMissingValue; }
};

// The system-missing value.
constexpr double Getsysmis() { return NQMV::gMissingValue; }

// Positive infinity (bits 0x7FF0000000000000).
constexpr double GetLocalInfinity() { return std::numeric_limits<double>::infinity(); }

// The byte order of the platforms the library is built for.
constexpr bool IsLittleEndian() { return true; }

}  // namespace NQCommon_940
