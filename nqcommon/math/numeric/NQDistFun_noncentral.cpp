#include <nqcommon/math/numeric/NQDistFun.h>

#include <algorithm>
#include <cmath>

#include <nqcommon/common/NQMV.h>
#include <nqcommon/math/numeric/NQPower.h>
#include <nqcommon/math/numeric/internal/failure.h>
#include <nqcommon/math/numeric/internal/noncentral_t.h>
#include <nqcommon/math/numeric/internal/poisson_mixture.h>

namespace NQMath_940 {

using internal::Fail;
using internal::IsShape;
using internal::kInvalidArguments;
using internal::kSuccess;
using internal::Side;
using NQCommon_940::NQMV;

namespace {

bool IsNoncentrality(double ncp) { return ncp >= 0; }

double NoncentralGamma(double y, double a, double ncp) {
  if (ncp == 0) return internal::AsProbability(internal::IncompleteGamma(y, a).lower);
  const double lambda = internal::BoundedShape(ncp) / 2;
  const internal::GammaFamily family = {y, a};
  const double cdf =
      internal::TailByValue(Side::kLower, y < a + lambda ? Side::kLower : Side::kUpper,
                            [&](Side side) { return internal::Mixture(side, lambda, 0, family); });
  return internal::AsProbability(cdf);
}

double NoncentralBeta(const internal::BetaPoint& point, double a, double b, double ncp) {
  if (ncp == 0) return internal::AsProbability(internal::IncompleteBeta(point, a, b).lower);
  const double lambda = internal::BoundedShape(ncp) / 2;
  const internal::BetaFamily family = {point.x, point.y, a, b};
  const bool isBelow = point.x * (a + b + lambda) < a + lambda;
  const double cdf =
      internal::TailByValue(Side::kLower, isBelow ? Side::kLower : Side::kUpper,
                            [&](Side side) { return internal::Mixture(side, lambda, 0, family); });
  return internal::AsProbability(cdf);
}

// The ncp > 0 at which `cdf`, which falls with ncp, is `prob`: doubling or halving `start` brackets
// it, bisection finds it. The cdf of these families is missing for every ncp or for none.
template <class Cdf>
double FindNoncentrality(double start, double prob, double tol, Cdf cdf) {
  constexpr double kSameTo = 8;  // epsilons
  if (!(tol >= 0 && prob >= 0 && prob <= 1) || !(cdf(0.0) > prob)) return NQMV::Missing();
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
  return NoncentralGamma(x / 2, internal::BoundedShape(df) / 2, ncp);
}

double NQDistFun::ncdbet(const double& x, const double& a, const double& b, const double& ncp,
                         const double& tol, long& status) {
  if (!IsShape(a) || !IsShape(b) || !IsNoncentrality(ncp) || std::isnan(x) || std::isnan(tol))
    return Fail(kInvalidArguments, status);
  status = kSuccess;
  if (x <= 0) return 0;
  if (x >= 1) return 1;
  const double shape1 = internal::BoundedShape(a);
  const double shape2 = internal::BoundedShape(b);
  return NoncentralBeta(internal::BetaPointAt(x, shape1, shape2), shape1, shape2, ncp);
}

double NQDistFun::NonCentralCdfF(double x, double df1, double df2, double ncp, double tol) {
  if (!IsShape(df1) || !IsShape(df2) || !IsNoncentrality(ncp) || std::isnan(x) || std::isnan(tol))
    return NQMV::Missing();
  if (x <= 0) return 0;
  if (std::isinf(x)) return 1;
  // The point of the ratio, where ncdbet would have to do without the digits of 1 - x.
  const double a = internal::BoundedShape(df1) / 2;
  const double b = internal::BoundedShape(df2) / 2;
  return NoncentralBeta(internal::BetaPointOfRatio(x, a, b), a, b, ncp);
}

double NQDistFun::NonCentralCdfT(double x, double df, double ncp, double tol) {
  if (!IsShape(df) || std::isnan(x) || std::isnan(ncp) || std::isnan(tol)) return NQMV::Missing();
  if (std::isinf(x)) return x > 0 ? 1 : 0;
  if (std::isinf(ncp)) return ncp > 0 ? 0 : 1;
  const double cdf = internal::NoncentralTTail(Side::kLower, x, internal::BoundedShape(df), ncp);
  return internal::AsProbability(cdf);
}

double NQDistFun::NonCentralPdfT(double x, double df, double ncp, long& status) {
  if (!IsShape(df) || std::isnan(x) || std::isnan(ncp)) return Fail(kInvalidArguments, status);
  status = kSuccess;
  if (std::isinf(x) || std::isinf(ncp)) return 0;
  return internal::NoncentralTDensity(x, internal::BoundedShape(df), ncp);
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
