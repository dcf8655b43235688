// Arithmetic that must not leave the range of doubles on the way to a result inside it.
#pragma once

#include <cmath>
#include <limits>
#include <vector>

namespace NQMath_940::internal {

// sqrt(a b) for a, b >= 0; the product itself may overflow or underflow.
inline double GeometricMean(double a, double b) {
  const double product = a * b;
  const bool inRange = product >= std::numeric_limits<double>::min() && std::isfinite(product);
  return inRange ? std::sqrt(product) : std::sqrt(a) * std::sqrt(b);
}

// Multiplies a number kept as mantissa x 10^power, 1 <= |mantissa| < 10, by x and renormalises. A
// product outside the normal range of doubles is scaled on the way. 0, the infinities and NaN have
// no such form and are left as they come.
template <class Power>
void MultiplyScaled(double& mantissa, Power& power, double x) {
  const double product = mantissa * x;
  if (std::isinf(product) && std::isfinite(x)) {
    mantissa = mantissa / 10 * x;
    power += 1;
  } else if (product != 0 && std::fabs(product) < std::numeric_limits<double>::min()) {
    mantissa *= x * 1e20;
    power -= 20;
  } else {
    mantissa = product;
  }
  if (mantissa == 0 || !std::isfinite(mantissa)) return;
  for (; std::fabs(mantissa) < 1; power -= 1) mantissa *= 10;
  for (; std::fabs(mantissa) >= 10; power += 1) mantissa /= 10;
}

// The largest of 0 and the values.
inline double LargestFromZero(const std::vector<double>& values) {
  double max = 0;
  for (double x : values) {
    if (x > max) max = x;
  }
  return max;
}

// Largest and smallest of the values added; NaN is passed over. Both are 0 of no values.
class Extremes {
 public:
  void Add(double x) {
    if (x > fMax) fMax = x;
    if (x < fMin) fMin = x;
  }
  double Max() const { return fMax >= fMin ? fMax : 0; }
  double Min() const { return fMax >= fMin ? fMin : 0; }

 private:
  double fMax = -std::numeric_limits<double>::infinity();
  double fMin = std::numeric_limits<double>::infinity();
};

}  // namespace NQMath_940::internal
