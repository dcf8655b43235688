// Dot products side by side. Each addition of a sum in a prescribed order waits for the one before,
// so four sums at once cost little more than one.
#pragma once

#include <array>

namespace NQMath_940::internal {

inline constexpr int kDots = 4;

// Dots gives x'y for each y, every sum in the order of Blas1::DDot.
inline std::array<double, kDots> Dots(int n, const double* x,
                                      const std::array<const double*, kDots>& y) {
  const auto [y0, y1, y2, y3] = y;
  double sum0 = 0;
  double sum1 = 0;
  double sum2 = 0;
  double sum3 = 0;
  for (int i = 0; i < n; ++i) {
    sum0 += x[i] * y0[i];
    sum1 += x[i] * y1[i];
    sum2 += x[i] * y2[i];
    sum3 += x[i] * y3[i];
  }
  return {sum0, sum1, sum2, sum3};
}

}  // namespace NQMath_940::internal
