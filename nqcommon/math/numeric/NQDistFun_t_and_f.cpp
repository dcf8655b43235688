#include <nqcommon/math/numeric/NQDistFun.h>

#include <cmath>
#include <numbers>

#include <nqcommon/common/NQMV.h>
#include <nqcommon/math/kernels/log_gamma.h>
#include <nqcommon/math/numeric/internal/failure.h>
#include <nqcommon/math/numeric/internal/incomplete_beta.h>
#include <nqcommon/math/numeric/internal/inverse_beta.h>
#include <nqcommon/math/numeric/internal/normal_tail.h>

namespace NQMath_940 {

using namespace internal;
using NQCommon_940::NQMV;

namespace {

using std::numbers::pi;

// Above this many degrees of freedom t is taken for normal.
constexpr double kNormalDf = 1e8;

Tails FTails(double x, double df1, double df2) {
  const double a = BoundedShape(df1) / 2;
  const double b = BoundedShape(df2) / 2;
  if (x <= 0) return {0, 1};
  if (std::isinf(x)) return {1, 0};
  return IncompleteBeta(BetaPointOfRatio(x, a, b), a, b);
}

// P(|T| <= |t|) and P(|T| > |t|): t^2 has an F distribution with 1 and df degrees of freedom.
Tails TwoSided(double t, double df) {
  const double size = std::fabs(t);
  if (size <= kPowerTailFrom) return FTails(size * size, 1, df);
  const double outer = TwoSided(kPowerTailFrom, df).upper * std::pow(size / kPowerTailFrom, -df);
  return {1 - outer, outer};
}

double LowerTail(double t, double df) {
  if (df > kNormalDf) return NormalLower(t);
  if (t == 0) return 0.5;
  if (df == 1) {
    if (std::fabs(t) <= 1) return 0.5 + std::atan(t) / pi;
    const double tail = std::atan(1 / std::fabs(t)) / pi;
    return t < 0 ? tail : 1 - tail;
  }
  const Tails tails = TwoSided(t, df);
  if (std::fabs(t) <= 1) return t < 0 ? 0.5 - tails.lower / 2 : 0.5 + tails.lower / 2;
  return t < 0 ? tails.upper / 2 : 1 - tails.upper / 2;
}

bool AreFArguments(double x, double df1, double df2) {
  return IsShape(df1) && IsShape(df2) && !std::isnan(x);
}

}  // namespace

double NQDistFun::tarncdft(const double& t, const double& df, long& status) {
  if (IsRefused(!IsShape(df) || std::isnan(t), status)) return NQMV::Missing();
  return AsProbability(LowerTail(t, df));
}

double NQDistFun::CdfT(double x, double df) {
  long status = 0;
  return tarncdft(x, df, status);
}

double NQDistFun::SigT(double t, double df) { return CdfT(-t, df); }

double NQDistFun::PdfT(double x, double df, long& status) {
  if (IsRefused(!IsShape(df) || std::isnan(x), status)) return NQMV::Missing();
  if (std::isinf(x)) return 0;
  const double shape = BoundedShape(df);
  // `spread` is ln(1 + x^2/df); the square of a large root would overflow.
  constexpr double kLargeRoot = 1e100;
  const double root = std::fabs(x) / std::sqrt(shape);
  const double spread = root > kLargeRoot ? 2 * std::log(root) : std::log1p(x * x / shape);
  const double peak = GammaRatioOfHalf(shape / 2) / std::sqrt(pi * shape);
  return AsProbability(peak * std::exp(-(shape + 1) / 2 * spread));
}

double NQDistFun::tarnidft(const double& p, const double& df, long& status, const double& /*acu*/,
                           const double& /*bound*/) {
  if (IsRefused(!(p > 0 && p < 1) || !IsShape(df), status)) return NQMV::Missing();
  if (p == 0.5) return 0;
  if (df >= kNormalDf) return IdfStdNorm(p);
  // `outside` and `inside` are exact where they are small.
  const double outside = p < 0.5 ? 2 * p : 2 - 2 * p;
  const double inside = p < 0.5 ? 1 - 2 * p : 2 * p - 1;
  const double square = InverseBetaRatio({inside, outside}, 0.5, BoundedShape(df) / 2);
  double size = std::sqrt(square);
  if (size > kPowerTailFrom)
    size = kPowerTailFrom * std::pow(TwoSided(kPowerTailFrom, df).upper / outside, 1 / df);
  if (std::isinf(size)) return Fail(kNumericalFailure, status);
  return p < 0.5 ? -size : size;
}

double NQDistFun::IdfT(double p, double df, double acu, double bound) {
  long status = 0;
  return tarnidft(p, df, status, acu, bound);
}

double NQDistFun::tarncdff(const double& x, const double& df1, const double& df2, long& status) {
  if (IsRefused(!AreFArguments(x, df1, df2), status)) return NQMV::Missing();
  return AsProbability(FTails(x, df1, df2).lower);
}

double NQDistFun::CdfF(double x, double df1, double df2) {
  long status = 0;
  return tarncdff(x, df1, df2, status);
}

double NQDistFun::SigF(double x, double df1, double df2) {
  if (!AreFArguments(x, df1, df2)) return NQMV::Missing();
  return AsProbability(FTails(x, df1, df2).upper);
}

double NQDistFun::tarnidff(const double& p, const double& df1, const double& df2, long& status) {
  if (IsRefused(!(p >= 0 && p < 1) || !AreFArguments(p, df1, df2), status)) return NQMV::Missing();
  if (p == 0) return 0;
  const double a = BoundedShape(df1) / 2;
  const double b = BoundedShape(df2) / 2;
  const double quantile = InverseBetaRatio({p, 1 - p}, a, b);
  return std::isinf(quantile) ? Fail(kNumericalFailure, status) : quantile;
}

double NQDistFun::IdfF(double p, double df1, double df2) {
  long status = 0;
  return tarnidff(p, df1, df2, status);
}

}  // namespace NQMath_940
