#include <nqcommon/math/numeric/NQDistFun.h>

#include <algorithm>
#include <cmath>

#include <nqcommon/common/NQMV.h>
#include <nqcommon/math/numeric/NQPower.h>
#include <nqcommon/math/numeric/internal/failure.h>
#include <nqcommon/math/numeric/internal/noncentral_t.h>
#include <nqcommon/math/numeric/internal/poisson_mixture.h>

namespace NQMath_940 {

using namespace internal;
using NQCommon_940::NQMV;

namespace {

bool IsNoncentrality(double ncp) { return ncp >= 0; }

// The Poisson mixture, of mean lambda, of the lower tails of a family; isBelow tells that it is
// likely less than a half.
template <class Family>
double LowerMixture(double lambda, const Family& family, bool isBelow) {
  return AsProbability(TailByValue(Side::kLower, isBelow ? Side::kLower : Side::kUpper,
                                   [&](Side side) { return Mixture(side, lambda, 0, family); }));
}

double NoncentralBeta(const BetaPoint& point, double a, double b, double ncp) {
  if (ncp == 0) return AsProbability(IncompleteBeta(point, a, b).lower);
  const double lambda = BoundedShape(ncp) / 2;
  return LowerMixture(lambda, BetaFamily{point.x, point.y, a, b},
                      point.x * (a + b + lambda) < a + lambda);
}

// The ncp > 0 at which `cdf`, which falls with ncp, is `prob`: doubling or halving `start` brackets
// it, bisection finds it. The cdf of these families is missing for every ncp or for none.
template <class Cdf>
double FindNoncentrality(double start, double prob, double tol, Cdf cdf) {
  constexpr double kSameTo = 8;  // epsilons
  if (!(tol >= 0 && prob >= 0 && cdf(0.0) > prob)) return NQMV::Missing();
  double low = start;
  double high = start;
  if (cdf(start) > prob) {
    do {
      low = high;
      high *= 2;
      if (std::isinf(high)) return NQMV::Missing();
    } while (cdf(high) > prob);
  } else {
    do {
      high = low;
      low /= 2;
    } while (low > 0 && !(cdf(low) > prob));
  }
  for (;;) {
    const double middle = low + (high - low) / 2;
    const double miss = cdf(middle) - prob;
    if (std::fabs(miss) <= tol && high - low <= tol) return middle;
    if (NQPower::AlmostEqual(low, high, kSameTo) || middle <= low || middle >= high) return middle;
    (miss > 0 ? low : high) = middle;
  }
}

}  // namespace

double NQDistFun::NonCentralCdfChi(double x, double df, double ncp) {
  if (!IsShape(df) || !IsNoncentrality(ncp) || std::isnan(x)) return NQMV::Missing();
  if (x <= 0) return 0;
  if (std::isinf(x)) return 1;
  if (ncp == 0) return CdfChi(x, df);
  const double y = x / 2;
  const double a = BoundedShape(df) / 2;
  const double lambda = BoundedShape(ncp) / 2;
  return LowerMixture(lambda, GammaFamily{y, a}, y < a + lambda);
}

double NQDistFun::ncdbet(const double& x, const double& a, const double& b, const double& ncp,
                         const double& tol, long& status) {
  if (IsRefused(
          !IsShape(a) || !IsShape(b) || !IsNoncentrality(ncp) || std::isnan(x) || std::isnan(tol),
          status))
    return NQMV::Missing();
  if (x <= 0) return 0;
  if (x >= 1) return 1;
  const double shape1 = BoundedShape(a);
  const double shape2 = BoundedShape(b);
  return NoncentralBeta(BetaPointAt(x, shape1, shape2), shape1, shape2, ncp);
}

double NQDistFun::NonCentralCdfF(double x, double df1, double df2, double ncp, double tol) {
  if (!IsShape(df1) || !IsShape(df2) || !IsNoncentrality(ncp) || std::isnan(x) || std::isnan(tol))
    return NQMV::Missing();
  if (x <= 0) return 0;
  if (std::isinf(x)) return 1;
  // The point of the ratio, where ncdbet would have to do without the digits of 1 - x.
  const double a = BoundedShape(df1) / 2;
  const double b = BoundedShape(df2) / 2;
  return NoncentralBeta(BetaPointOfRatio(x, a, b), a, b, ncp);
}

double NQDistFun::NonCentralCdfT(double x, double df, double ncp, double tol) {
  if (!IsShape(df) || std::isnan(x) || std::isnan(ncp) || std::isnan(tol)) return NQMV::Missing();
  if (std::isinf(x)) return x > 0 ? 1 : 0;
  if (std::isinf(ncp)) return ncp > 0 ? 0 : 1;
  return AsProbability(NoncentralTTail(Side::kLower, x, BoundedShape(df), ncp));
}

double NQDistFun::NonCentralPdfT(double x, double df, double ncp, long& status) {
  if (IsRefused(!IsShape(df) || std::isnan(x) || std::isnan(ncp), status)) return NQMV::Missing();
  if (std::isinf(x) || std::isinf(ncp)) return 0;
  return NoncentralTDensity(x, BoundedShape(df), ncp);
}

double NQDistFun::FindNCParamChi(double x, double df, double prob, double tol) {
  return FindNoncentrality(x, prob, tol, [=](double ncp) { return NonCentralCdfChi(x, df, ncp); });
}

double NQDistFun::FindNCParamF(double x, double df1, double df2, double prob, double tol) {
  return FindNoncentrality(x, prob, tol,
                           [=](double ncp) { return NonCentralCdfF(x, df1, df2, ncp, tol); });
}

double NQDistFun::FindNCParamT(double x, double df, double prob, double tol, double cdfTol) {
  // A start below 1, negative for a negative x, would not lead the doubling far.
  return FindNoncentrality(std::max(x, 1.0), prob, tol,
                           [=](double ncp) { return NonCentralCdfT(x, df, ncp, cdfTol); });
}

}  // namespace NQMath_940
