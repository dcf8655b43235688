#include <nqcommon/math/numeric/NQDistFun.h>

#include <cmath>
#include <numbers>

#include <nqcommon/common/NQMV.h>
#include <nqcommon/math/kernels/log_gamma.h>
#include <nqcommon/math/numeric/internal/failure.h>
#include <nqcommon/math/numeric/internal/incomplete_beta.h>
#include <nqcommon/math/numeric/internal/inverse_beta.h>

namespace NQMath_940 {

using namespace internal;
using NQCommon_940::NQMV;

double NQDistFun::cdfbet(const double& x, const double& a, const double& b, long& status) {
  if (IsRefused(!IsShape(a) || !IsShape(b) || std::isnan(x), status)) return NQMV::Missing();
  const double shape1 = BoundedShape(a);
  const double shape2 = BoundedShape(b);
  const auto point = BetaPointAt(x, shape1, shape2);
  return AsProbability(IncompleteBeta(point, shape1, shape2).lower);
}

double NQDistFun::cbtaux(const double& u) {
  constexpr double kSquareOverflows = 1.3407807929942596e154;
  if (!(u >= 0)) return NQMV::Missing();
  if (u == 0) return 1;
  if (u > kSquareOverflows) return -1;
  const double e = u - 1;
  if (std::fabs(e) > 0.25) return 1 - 2 * (u / e) * (LogDefect(e, u) / e);
  // Near u = 1 the form above cancels; `sum` is that of 2 (-e)^j/((j + 1)(j + 2)), j >= 1.
  double sum = 0;
  for (int j = 26; j >= 1; --j) sum = -e * (2.0 / ((j + 1) * (j + 2)) + sum);
  return sum;
}

double NQDistFun::betinv(const double& p, const double& a, const double& b, const double& /*acu*/,
                         const double& /*bound*/, long& status) {
  if (IsRefused(!(p >= 0 && p <= 1) || !IsShape(a) || !IsShape(b), status)) return NQMV::Missing();
  if (p == 0 || p == 1) return p;
  if (a == b && p == 0.5) return 0.5;
  if (a == 0.5 && b == 0.5) {
    const double root = std::sin(p * (std::numbers::pi / 2));
    return root * root;
  }
  if (a == 1) return -std::expm1(std::log1p(-p) / b);
  if (b == 1) return ExpOrZero(std::log(p) / a);
  const double shape1 = BoundedShape(a);
  const double shape2 = BoundedShape(b);
  const double ratio = InverseBetaRatio({p, 1 - p}, shape1, shape2);
  if (ratio == 0 || std::isinf(ratio)) return ratio == 0 ? 0 : 1;
  return BetaPointOfRatio(ratio, shape1, shape2).x;
}

double NQDistFun::CdfBeta(double x, double a, double b) {
  long status = 0;
  return cdfbet(x, a, b, status);
}

double NQDistFun::IdfBeta(double p, double a, double b) {
  long status = 0;
  return betinv(p, a, b, defaultepsz, defaultepse, status);
}

}  // namespace NQMath_940
