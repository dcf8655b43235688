#pragma once

#include <limits>
#include <type_traits>

namespace NQCommon_940 {

// The number without its fraction; NaN and what is out of range give the most negative integer.
template <class Integer>
constexpr Integer Truncate(double x) {
  // The least integer is a power of two, so exact as a double; its negative is one past the
  // largest.
  constexpr auto kLeast = static_cast<double>(std::numeric_limits<Integer>::min());
  return x >= kLeast && x < -kLeast ? static_cast<Integer>(x) : std::numeric_limits<Integer>::min();
}

// Holds for unsigned, long and the other integers for which a call is ambiguous where an operation
// takes int, long long and double.
template <class T>
using IfOtherInteger =
    std::enable_if_t<std::is_integral_v<T> && sizeof(T) >= sizeof(int) && !std::is_same_v<T, int> &&
                         !std::is_same_v<T, long long>,
                     int>;

// The integer with a sign; one beyond the range gives the largest.
template <class Integer>
constexpr long long ToLongLong(Integer value) {
  constexpr long long kLargest = std::numeric_limits<long long>::max();
  if constexpr (std::is_unsigned_v<Integer>) {
    if (value > static_cast<unsigned long long>(kLargest)) return kLargest;
  }
  return static_cast<long long>(value);
}

}  // namespace NQCommon_940
