#include <nqcommon/math/numeric/NQDistFun.h>

#include <array>
#include <cmath>
#include <numbers>

#include <nqcommon/common/NQMV.h>
#include <nqcommon/math/kernels/log_gamma.h>
#include <nqcommon/math/numeric/NQPower.h>
#include <nqcommon/math/numeric/internal/failure.h>
#include <nqcommon/math/numeric/internal/incomplete_gamma.h>
#include <nqcommon/math/numeric/internal/log_concave_quantile.h>

namespace NQMath_940 {

using internal::Fail;
using NQCommon_940::NQMV;

namespace {

using std::numbers::ln2;

bool AreQuantileArguments(double p, double df) { return p >= 0 && p < 1 && internal::IsShape(df); }

// Best and Roberts 1975, algorithm AS 91 (PPCHI2). Its constants are kept in single precision: they
// only steer the search.
struct BestRoberts {
  double p;
  double df;
  double shape = 0.5 * df;
  double c = shape - 1;

  double SmallDfStart() const;
  double Start() const;
  double Improve(double chi) const;
  double Quantile() const;
};

// For up to 0.32 degrees of freedom: Newton's iteration on an approximation of the upper tail.
double BestRoberts::SmallDfStart() const {
  constexpr int kMaxSteps = 100;
  constexpr double kTolerance = 0.01f, k466 = 6.66f, k467 = 4.67f, k673 = 6.73f, k1332 = 13.32f;
  const double logUpper = std::log1p(-p);
  const double logGamma = internal::LogGamma(shape);
  double chi = 0.4f;
  for (int i = 0; i < kMaxSteps; ++i) {
    const double before = chi;
    const double p1 = 1 + chi * (k467 + chi);
    const double p2 = chi * (k673 + chi * (k466 + chi));
    const double t = -0.5 + (k467 + 2 * chi) / p1 - (k673 + chi * (k1332 + 3 * chi)) / p2;
    chi -= (1 - std::exp(logUpper + logGamma + 0.5 * chi + c * ln2) * p2 / p1) / t;
    if (!(chi > 0) || std::fabs(before / chi - 1) <= kTolerance) break;
  }
  return chi;
}

double BestRoberts::Start() const {
  constexpr double k022 = 0.222222f, k032 = 0.32f, k124 = 1.24f, k22 = 2.2f;
  if (df < -k124 * std::log(p))
    return internal::ExpOrZero((std::log(p) + internal::LogGamma(shape + 1)) / shape + ln2);
  if (df <= k032) return SmallDfStart();
  const double p1 = k022 / df;
  const double root = NQDistFun::probit(p) * std::sqrt(p1) + 1 - p1;
  const double chi = df * root * root * root;
  if (chi <= k22 * df + 6) return chi;
  return -2 * (std::log1p(-p) - c * std::log(0.5 * chi) + internal::LogGamma(shape));
}

// One pass of the seven-term Taylor series.
double BestRoberts::Improve(double chi) const {
  const internal::TailsAndSlope at = internal::IncompleteGammaAndSlope(0.5 * chi, shape);
  const double t = (p - at.tails.lower) * chi / at.slope;
  const double b = t / chi;
  const double a = 0.5 * t - b * c;
  const double s1 = (210 + a * (140 + a * (105 + a * (84 + a * (70 + 60 * a))))) / 420;
  const double s2 = (420 + a * (735 + a * (966 + a * (1141 + 1278 * a)))) / 2520;
  const double s3 = (210 + a * (462 + a * (707 + 932 * a))) / 2520;
  const double s4 = (252 + a * (672 + 1182 * a) + c * (294 + a * (889 + 1740 * a))) / 5040;
  const double s5 = (84 + 264 * a + c * (175 + 606 * a)) / 2520;
  const double s6 = (120 + c * (346 + 127 * c)) / 5040;
  const double tail = s1 - b * (s2 - b * (s3 - b * (s4 - b * (s5 - b * s6))));
  return chi + t * (1 + 0.5 * t * s1 - b * c * tail);
}

// Not a positive number on failure. The published passes go on to a change of 5e-7; Refine, which
// checks what it is given, makes do with less.
double BestRoberts::Quantile() const {
  constexpr double kSmall = 0.5e-6;
  constexpr double kTolerance = 0.02;
  constexpr int kMaxPasses = 20;
  double chi = Start();
  if (chi < kSmall) return chi;
  for (int i = 0; i < kMaxPasses && chi > 0; ++i) {
    const double before = chi;
    chi = Improve(chi);
    if (std::fabs(before / chi - 1) <= kTolerance) return chi;
  }
  return -1;
}

// The last steps: the gamma variable to a few epsilons.
double Refine(double start, double p, double shape) {
  return internal::FindLogConcaveQuantile(
      start, {p, 1 - p}, [shape](double x) { return internal::IncompleteGammaAndSlope(x, shape); });
}

}  // namespace

double NQDistFun::dnlgam(const double& x) {
  if (!(x > 0)) return NQMV::Missing();
  return internal::LogGamma(x);
}

double NQDistFun::tarndnlgam(double x) { return dnlgam(x); }

double NQDistFun::gammad(const double& x, const double& a, bool lowerTail, long& status) {
  if (!internal::IsShape(a) || std::isnan(x)) return Fail(1L, status);
  status = 0;
  const internal::Tails tails = internal::IncompleteGamma(x, a);
  return lowerTail ? tails.lower : tails.upper;
}

double NQDistFun::cdfexp(const double& x, const double& rate, long& status) {
  if (!(rate > 0) || std::isnan(x)) return Fail(1L, status);
  status = 0;
  return x <= 0 ? 0 : -std::expm1(-rate * x);
}

double NQDistFun::idfchb(const double& p, const double& df, long& status) {
  constexpr int kMaxHalvings = 40;
  constexpr double kWidth = 1e-8;
  if (!AreQuantileArguments(p, df)) return Fail(1L, status);
  status = 0;
  if (p == 0) return 0;
  const double shape = internal::BoundedShape(df) / 2;
  const auto isBelow = [&p, shape](double x) {
    const internal::Tails tails = internal::IncompleteGamma(x, shape);
    return p <= 0.5 ? tails.lower < p : tails.upper > 1 - p;
  };
  double low = shape / 2;
  double high = shape * 2;
  // The quantile may lie as far down as a double goes.
  for (double factor = 0.5; low > 0 && !isBelow(low); factor *= factor) {
    high = low;
    low *= factor;
  }
  while (isBelow(high)) high *= 2;
  for (int i = 0; i < kMaxHalvings && high - low > kWidth * (low + high) / 2; ++i) {
    const double middle = low + (high - low) / 2;
    (isBelow(middle) ? low : high) = middle;
  }
  return 2 * Refine(low + (high - low) / 2, p, shape);
}

double NQDistFun::tarnidfchi(const double& p, const double& df, long& status) {
  if (!AreQuantileArguments(p, df)) return Fail(1L, status);
  status = 0;
  if (p == 0) return 0;
  const double boundedDf = internal::BoundedShape(df);
  const double chi = BestRoberts{p, boundedDf}.Quantile();
  if (!(chi >= 0) || std::isinf(chi)) return idfchb(p, df, status);
  return 2 * Refine(0.5 * chi, p, boundedDf / 2);
}

double NQDistFun::CdfChi(double x, double df) {
  long status = 0;
  return gammad(x / 2, internal::BoundedShape(df) / 2, true, status);
}

double NQDistFun::SigChi(double x, double df) {
  long status = 0;
  return gammad(x / 2, internal::BoundedShape(df) / 2, false, status);
}

double NQDistFun::IdfChi(double p, double df) {
  long status = 0;
  return tarnidfchi(p, df, status);
}

double NQDistFun::CdfGam(double x, double shape, double rate) {
  if (!(shape > 0 && rate > 0)) return NQMV::Missing();
  long status = 0;
  if (x <= 0) return 0;
  return shape == 1 ? cdfexp(x, rate, status) : gammad(x * rate, shape, true, status);
}

double NQDistFun::PdfGamma(double x, double shape, double rate) {
  if (!(shape > 0 && rate > 0) || std::isnan(x)) return NQMV::Missing();
  if (x < 0) return 0;
  const double y = x * rate;
  if (x == 0 || y == 0) {
    if (shape < 1) return NQMV::Missing();
    return shape == 1 ? rate : 0;
  }
  if (std::isinf(y)) return 0;
  const double a = internal::BoundedShape(shape);
  const double logDensity =
      a == 1 ? std::log(rate) - y : internal::LogPoissonTerm(y, a) + std::log(a) - std::log(x);
  double density = 0;
  NQPower::Exponent(logDensity, density);
  return density;
}

double NQDistFun::IdfGam(const double& p, const double& shape, const double& rate) {
  if (!(rate > 0 && shape >= 0 && p >= 0 && p < 1)) return NQMV::Missing();
  if (p == 0) return 0;
  const double chi = IdfChi(p, 2 * shape);
  return NQMV::IsMissing(chi) ? chi : chi * 0.5 / rate;
}

}  // namespace NQMath_940
