#include <nqcommon/math/numeric/internal/inverse_beta.h>

#include <cmath>
#include <numbers>

#include <nqcommon/math/kernels/log_gamma.h>
#include <nqcommon/math/numeric/NQDistFun.h>
#include <nqcommon/math/numeric/internal/incomplete_beta.h>
#include <nqcommon/math/numeric/internal/log_concave_quantile.h>

namespace NQMath_940::internal {

namespace {

// Hill 1970, algorithm 396: t^2 for P(|T| > t) = p with n >= 1 degrees of freedom.
double HillSquare(double p, double n) {
  const double a = 1 / (n - 0.5);
  const double b = 48 / (a * a);
  double c = ((20700 * a / b - 98) * a - 16) * a + 96.36;
  const double d = ((94.5 / (b + c) - 3) / b + 1) * std::sqrt(a * (std::numbers::pi / 2)) * n;
  double y = std::pow(d * p, 2 / n);
  if (y > 0.05 + a) {
    const double x = NQDistFun::probit(p / 2);
    y = x * x;
    if (n < 5) c += 0.3 * (n - 4.5) * (x + 0.6);
    c += (((0.05 * d * x - 5) * x - 7) * x - 2) * x + b;
    y = (((((0.4 * y + 6.3) * y + 36) * y + 94.5) / c - y - 3) / b + 1) * x;
    return n * std::expm1(a * y * y);
  }
  const double tail = 1 / (((n + 6) / (n * y) - 0.089 * d - 0.822) * (n + 2) * 3);
  return n * (((tail + 0.5 / (n + 4)) * y - 1) * (n + 1) / (n + 2) + 1 / y);
}

// The starting ratio of AS 109 for the lower tail p <= 1/2, with the normal deviate to full
// precision.
double Start109(double p, double a, double b) {
  const double y = -NQDistFun::probit(p);
  if (a > 1 && b > 1) {
    const double r = (y * y - 3) / 6;
    const double s = 1 / (2 * a - 1);
    const double t = 1 / (2 * b - 1);
    const double h = 2 / (s + t);
    return std::exp(-2 * (y * std::sqrt(h + r) / h - (t - s) * (r + 5.0 / 6 - 2 / (3 * h))));
  }
  const double logBeta =
      a < b ? LogGamma(a) - LogGammaRatio(a, b) : LogGamma(b) - LogGammaRatio(b, a);
  const double t = 1 / (9 * b);
  const double root = 1 - t + y * std::sqrt(t);
  const double chi = 2 * b * root * root * root;
  const double ratio = (4 * a + 2 * b - 2) / chi;
  double odds;
  if (chi <= 0)
    odds = std::expm1(-(std::log1p(-p) + std::log(b) + logBeta) / b);
  else if (ratio <= 1)
    odds = 1 / std::expm1(-(std::log(p * a) + logBeta) / a);
  else
    odds = (ratio - 1) / 2;
  return odds * (b / a);
}

double Start(const Tails& target, double a, double b) {
  if (a == 0.5 && b >= 0.5) return HillSquare(target.upper, 2 * b);
  if (b == 0.5 && a >= 0.5) return 1 / HillSquare(target.lower, 2 * a);
  return target.lower <= target.upper ? Start109(target.lower, a, b)
                                      : 1 / Start109(target.upper, b, a);
}

}  // namespace

double InverseBetaRatio(const Tails& target, double a, double b) {
  return FindLogConcaveQuantile(Start(target, a, b), target, [a, b](double ratio) {
    return IncompleteBetaAndSlope(BetaPointOfRatio(ratio, a, b), a, b);
  });
}

}  // namespace NQMath_940::internal
