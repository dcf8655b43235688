#pragma once

namespace NQMath_940::internal {

inline constexpr double kLogSqrt2Pi = 0.9189385332046728;
inline constexpr double kInverseSqrt2Pi = 0.3989422804014327;

// Shapes beyond these, infinite ones too, are taken at the limit: products with them and halves of
// them stay finite and positive.
inline constexpr double kSmallestShape = 1e-300;
inline constexpr double kLargestShape = 1e300;

// ln Gamma(x), x > 0.
// Worst relative error measured: 5e-16, next to the zeros at 1 and 2 too.
double LogGamma(double x);

// ln Gamma(1 + a), 0 <= a <= 1, to full relative precision near 0 too.
double LogGamma1p(double a);

// What Stirling's formula leaves: ln Gamma(x) - ((x - 1/2) ln x - x + ln sqrt(2 pi)), x > 0.
// Differences of log gammas taken through it lose no digits to x ln x.
double StirlingError(double x);

// d - a ln(1 + d/a) >= 0, a > 0, without the cancellation near d = 0. `whole` is a + d, which the
// caller may know better where d is near -a.
double LogDefect(double d, double a, double whole);
// The same for a = 1.
inline double LogDefect(double e, double ratio) { return LogDefect(e, 1, ratio); }

// ln(Gamma(b + a) / Gamma(b)), 0 < a <= max(1, b), to full relative precision for a small beside b.
double LogGammaRatio(double a, double b);

// Gamma(b + 1/2) / Gamma(b), b > 0.
double GammaRatioOfHalf(double b);

}  // namespace NQMath_940::internal
