#include <nqcommon/math/numeric/NQDistFun.h>

#include <cmath>

#include <nqcommon/common/NQMV.h>
#include <nqcommon/math/kernels/log_gamma.h>
#include <nqcommon/math/numeric/NQPower.h>
#include <nqcommon/math/numeric/internal/failure.h>
#include <nqcommon/math/numeric/internal/incomplete_gamma.h>
#include <nqcommon/math/numeric/internal/log_concave_quantile.h>

namespace NQMath_940 {

using namespace internal;
using NQCommon_940::NQMV;

namespace {

bool AreQuantileArguments(double p, double df) { return p >= 0 && p < 1 && IsShape(df); }

// Wilson and Hilferty 1931: the cube root of a gamma variable is about normal. Far below the mean
// the distribution function is x^a / Gamma(a + 1).
double QuantileStart(double p, double a) {
  constexpr double kNormalFrom = 0.4;
  const double root = 1 - 1 / (9 * a) + NQDistFun::probit(p) / (3 * std::sqrt(a));
  if (root > kNormalFrom) return a * root * root * root;
  return std::exp((std::log(p) + LogGamma(a + 1)) / a);
}

// The gamma variable of the lower tail p, to a few epsilons.
double Refine(double start, double p, double shape) {
  return FindLogConcaveQuantile(start, {p, 1 - p},
                                [shape](double x) { return IncompleteGammaAndSlope(x, shape); });
}

}  // namespace

double NQDistFun::dnlgam(const double& x) {
  if (!(x > 0)) return NQMV::Missing();
  return LogGamma(x);
}

double NQDistFun::tarndnlgam(double x) { return dnlgam(x); }

double NQDistFun::gammad(const double& x, const double& a, bool lowerTail, long& status) {
  if (IsRefused(!IsShape(a) || std::isnan(x), status)) return NQMV::Missing();
  const Tails tails = IncompleteGamma(x, a);
  return AsProbability(lowerTail ? tails.lower : tails.upper);
}

double NQDistFun::cdfexp(const double& x, const double& rate, long& status) {
  if (IsRefused(!(rate > 0) || std::isnan(x), status)) return NQMV::Missing();
  return x <= 0 ? 0 : -std::expm1(-rate * x);
}

double NQDistFun::idfchb(const double& p, const double& df, long& status) {
  constexpr int kMaxHalvings = 40;
  constexpr double kWidth = 1e-8;
  if (IsRefused(!AreQuantileArguments(p, df), status)) return NQMV::Missing();
  if (p == 0) return 0;
  const double shape = BoundedShape(df) / 2;
  const auto isBelow = [&p, shape](double x) {
    const Tails tails = IncompleteGamma(x, shape);
    return p <= 0.5 ? tails.lower < p : tails.upper > 1 - p;
  };
  double low = shape / 2;
  double high = shape * 2;
  // The quantile may lie as far down as a double goes.
  for (double factor = 0.5; !isBelow(low); factor *= factor) {
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
  if (IsRefused(!AreQuantileArguments(p, df), status)) return NQMV::Missing();
  if (p == 0) return 0;
  const double shape = BoundedShape(df) / 2;
  const double chi = 2 * Refine(QuantileStart(p, shape), p, shape);
  return std::isinf(chi) ? Fail(kNumericalFailure, status) : chi;
}

double NQDistFun::CdfChi(double x, double df) {
  long status = 0;
  return gammad(x / 2, BoundedShape(df) / 2, true, status);
}

double NQDistFun::SigChi(double x, double df) {
  long status = 0;
  return gammad(x / 2, BoundedShape(df) / 2, false, status);
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
  const double a = BoundedShape(shape);
  if (a < 1 && y < 1) {
    // The power is taken itself, because the digits of a large logarithm would be lost.
    constexpr double kLargest = 8.218407461554972e307;  // exp(NQPower::gMachineMaxExp)
    const double density = std::pow(y, a - 1) * std::exp(-y - LogGamma1p(a)) * a * rate;
    return density <= kLargest ? density : NQMV::Missing();
  }
  double logDensity = std::log(rate) - y;
  if (a != 1) {
    const ExpTerm term = PoissonTerm(y, a);
    logDensity = term.exponent + std::log(term.factor * (a / y)) + std::log(rate);
  }
  double density = 0;
  NQPower::Exponent(logDensity, density);
  return density;
}

double NQDistFun::IdfGam(const double& p, const double& shape, const double& rate) {
  if (!(rate > 0 && shape >= 0 && p >= 0)) return NQMV::Missing();
  if (p == 0) return 0;
  const double chi = IdfChi(p, 2 * shape);
  const double value = chi * 0.5 / rate;
  return NQMV::IsMissing(chi) || std::isinf(value) ? NQMV::Missing() : value;
}

}  // namespace NQMath_940
