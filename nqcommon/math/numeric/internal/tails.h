#pragma once

#include <algorithm>
#include <cmath>

#include <nqcommon/math/kernels/log_gamma.h>

namespace NQMath_940::internal {

// A probability and its complement, each with its own relative precision.
struct Tails {
  double lower;
  double upper;
};

inline Tails Swap(const Tails& tails) { return {tails.upper, tails.lower}; }

// The tails of a positive variable v; slope is d lower / d ln v, bend is d ln slope / d ln v.
struct TailsAndSlope {
  Tails tails;
  double slope;
  double bend;
};

// Where a probability counts as underflown, and the smallest one that does not.
inline constexpr double kMinExponent = -708;
inline constexpr double kMinProbability = 3.307553003638408e-308;  // exp(kMinExponent)

inline double ExpOrZero(double exponent) {
  return exponent < kMinExponent ? 0 : std::exp(exponent);
}

// A computed probability: 0 where it underflows, at most 1 whatever rounding left.
inline double AsProbability(double value) {
  return value < kMinProbability ? 0 : std::min(value, 1.0);
}

// Whether `shape` is a shape parameter: positive, not NaN.
inline bool IsShape(double shape) { return shape > 0; }

inline double BoundedShape(double shape) {
  return IsShape(shape) ? std::clamp(shape, kSmallestShape, kLargestShape) : shape;
}

// Past this, where squares would overflow, the outer tail of t is t^-df to the last digit, up to a
// factor.
inline constexpr double kPowerTailFrom = 1e150;

}  // namespace NQMath_940::internal
