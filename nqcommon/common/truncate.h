#pragma once

#include <limits>

namespace NQCommon_940 {

// The number without its fraction; NaN and what is out of range give the most negative integer.
template <class Integer>
constexpr Integer Truncate(double x) {
  // The least integer is a power of two, so exact as a double; its negative is one past the largest.
  constexpr auto kLeast = static_cast<double>(std::numeric_limits<Integer>::min());
  return x >= kLeast && x < -kLeast ? static_cast<Integer>(x) : std::numeric_limits<Integer>::min();
}

}  // namespace NQCommon_940
