#include <nqcommon/math/numeric/internal/inverse_beta.h>

#include <cmath>

#include <nqcommon/math/kernels/log_gamma.h>
#include <nqcommon/math/numeric/NQDistFun.h>
#include <nqcommon/math/numeric/internal/incomplete_beta.h>
#include <nqcommon/math/numeric/internal/log_concave_quantile.h>

namespace NQMath_940::internal {

namespace {

// Far below the mean I_x(a, b) is x^a / (a B(a, b)).
double FarStart(double p, double a, double b) {
  const double logBeta =
      a < b ? LogGamma(a) - LogGammaRatio(a, b) : LogGamma(b) - LogGammaRatio(b, a);
  return std::exp((std::log(p) + std::log(a) + logBeta) / a) * (b / a);
}

// t^2 of n degrees of freedom with these two-sided tails: by the expansion of t about the normal
// quantile z (Abramowitz and Stegun 1964, 26.7.5), which leaves one evaluation or two to the search
// up to z^2 = 3 n; beyond that, and next to 0, by the power that the tail is about.
double StudentStart(const Tails& target, double n) {
  constexpr double kNextToZero = 1e-8;
  constexpr double kExpansionUpTo = 3;
  if (target.lower < kNextToZero) return FarStart(target.lower, 0.5, n / 2);
  const double z = NQDistFun::probit(target.upper / 2);
  const double y = z * z;
  if (y > kExpansionUpTo * n) return 1 / FarStart(target.upper, n / 2, 0.5);
  const double g1 = (y + 1) / 4;
  const double g2 = ((5 * y + 16) * y + 3) / 96;
  const double g3 = (((3 * y + 19) * y + 17) * y - 15) / 384;
  const double g4 = ((((79 * y + 776) * y + 1482) * y - 1920) * y - 945) / 92160;
  const double ratio = 1 + (g1 + (g2 + (g3 + g4 / n) / n) / n) / n;
  return y * ratio * ratio;
}

// Paulson 1942: with c the cube root of the ratio, (1 - t) c - (1 - s) is about normal, of variance
// s + t c^2, s = 1/(9a), t = 1/(9b).
double Start(const Tails& target, double a, double b) {
  constexpr double kNormalFrom = 0.4;
  constexpr double kFarthest = 0.1;  // of the square at z = 0; where it is 0 the root is infinite
  if (a == 0.5) return StudentStart(target, 2 * b);
  if (b == 0.5) return 1 / StudentStart(Swap(target), 2 * a);
  const bool isLower = target.lower <= target.upper;
  const double s = 1 / (9 * a);
  const double t = 1 / (9 * b);
  const double z = isLower ? NQDistFun::probit(target.lower) : -NQDistFun::probit(target.upper);
  const double square = (1 - t) * (1 - t) - z * z * t;
  const double discriminant = (1 - s) * (1 - s) * t + (1 - t) * (1 - t) * s - z * z * s * t;
  if (s < 1 && t < 1 && discriminant > 0 && square > kFarthest * (1 - t) * (1 - t)) {
    const double root = ((1 - s) * (1 - t) + z * std::sqrt(discriminant)) / square;
    if (root > kNormalFrom) return root * root * root;
  }
  return isLower ? FarStart(target.lower, a, b) : 1 / FarStart(target.upper, b, a);
}

}  // namespace

double InverseBetaRatio(const Tails& target, double a, double b) {
  return FindLogConcaveQuantile(Start(target, a, b), target, [a, b](double ratio) {
    return IncompleteBetaAndSlope(BetaPointOfRatio(ratio, a, b), a, b);
  });
}

}  // namespace NQMath_940::internal
