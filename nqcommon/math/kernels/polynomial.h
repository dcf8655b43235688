#pragma once

#include <array>
#include <cstddef>

namespace NQMath_940::internal {

// c[0] + c[1] x + c[2] x^2 + ... The even and the odd powers are summed apart: two chains of half
// the length run side by side.
template <std::size_t N>
inline double Polynomial(const std::array<double, N>& c, double x) {
  static_assert(N >= 2);
  const double square = x * x;
  double last = c[N - 1];
  double other = c[N - 2];
#pragma GCC unroll 32
  for (std::size_t k = N - 2; k >= 2; k -= 2) {
    last = c[k - 1] + square * last;
    other = c[k - 2] + square * other;
  }
  // what is left for an odd count is c[0], which belongs to the chain of c[N - 1]
  if constexpr (N % 2 == 0)
    return other + x * last;
  else
    return (c[0] + square * last) + x * other;
}

}  // namespace NQMath_940::internal
