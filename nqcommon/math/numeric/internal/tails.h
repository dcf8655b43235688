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

// A computed probability or density: 0 where it underflows.
inline double ZeroOrMore(double value) { return value < kMinProbability ? 0 : value; }

// A computed probability: at most 1, whatever rounding left. The kernels give tails down to the
// smallest double, so that what is made of them underflows once, in the public functions.
inline double AtMostOne(double value) { return std::min(value, 1.0); }
inline double AsProbability(double value) { return AtMostOne(ZeroOrMore(value)); }

// exp(exponent) as a product of two, so that what is multiplied with it decides whether it
// underflows: a factor between them keeps all digits.
struct ScaledExp {
  double head;
  double tail;

  double Times(double factor) const { return head * factor * tail; }
};

inline ScaledExp ExpOf(double exponent) {
  if (exponent > kMinExponent) return {std::exp(exponent), 1};
  const double root = std::exp(exponent / 2);
  return {root, root};
}

// exp(exponent) * factor: a term whose exponent is small where its logarithm need not be.
struct ExpTerm {
  double exponent;
  double factor;

  double Value() const { return ExpOf(exponent).Times(factor); }
};

// (1 - p)^n to an ulp or two: the power of 1 - p as rounded, and what the rounding took away.
inline double PowerOfComplement(double p, double n) {
  constexpr double kSmall = 1e-8;
  const double product = n * p;
  if (-product < 2 * kMinExponent) return 0;
  if (p < kSmall) {
    // n ln(1 - p) = -n p - n p^2 (1/2 + p/3 + ...); what n p rounds away counts for large powers
    const double rest = std::fma(n, p, -product);
    return ZeroOrMore(std::exp(-product) * std::exp(-(rest + product * p * (0.5 + p / 3))));
  }
  const double base = 1 - p;
  const double lost = (1 - base) - p;
  return ZeroOrMore(std::pow(base, n) * std::exp(n * (lost / base)));
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
