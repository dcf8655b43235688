#include <nqcommon/math/random/internal/covariance_factor.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <vector>

#include <nqcommon/math/kernels/scaling.h>

namespace NQMath_940::internal {

namespace {

// Whether each element (i, j) of `product` is that of S to within the square root of
// tolerance s(i,i) s(j,j). The answer is false when an element is NaN.
bool Reproduces(const NQSymMatrix& product, const NQSymMatrix& s,
                const std::vector<double>& diagonal, double tolerance) {
  const double relative = std::sqrt(tolerance);
  const std::vector<double>& x = product.AsVectorConst();
  const std::vector<double>& y = s.AsVectorConst();
  for (std::size_t i = 0, at = 0; i < diagonal.size(); ++i) {
    for (std::size_t j = 0; j <= i; ++j, ++at) {
      const double allowed = relative * GeometricMean(diagonal[i], diagonal[j]);
      if (!(std::fabs(x[at] - y[at]) <= allowed)) return false;
    }
  }
  return true;
}

}  // namespace

bool FactorCovariance(const NQSymMatrix& s, double tolerance, NQSymMatrix& l) {
  if (s.GetNRows() < 1) return false;
  std::vector<double> diagonal;
  s.GetDiagonal(diagonal);
  const auto isVariance = [](double x) { return x >= 0 && std::isfinite(x); };
  if (diagonal.empty() || !std::all_of(diagonal.begin(), diagonal.end(), isVariance)) return false;
  const double rounding = s.GetNRows() * std::numeric_limits<double>::epsilon();
  const double smallest = std::max(tolerance, rounding);
  l = s;
  if (!l.IsValidMatrix() || l.LTChol(diagonal, smallest, false) < 0) return false;
  NQSymMatrix product = l;
  if (!product.IsValidMatrix()) return false;
  product.LTLLTrans();
  return Reproduces(product, s, diagonal, smallest);
}

}  // namespace NQMath_940::internal
