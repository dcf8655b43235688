#pragma once

#include <algorithm>
#include <cmath>

#include <nqcommon/common/NQMV.h>

namespace NQMath_940::internal {

// The correlation of two variables from their covariance and variances, or from sums of products;
// missing unless both variances are positive. The roots are divided by one at a time, since the
// product of the variances may leave the range of doubles, and rounding stays within -1 .. 1.
inline double Correlation(double covariance, double varX, double varY) {
  if (!(varX > 0 && varY > 0)) return NQCommon_940::NQMV::Missing();
  return std::clamp(covariance / std::sqrt(varX) / std::sqrt(varY), -1.0, 1.0);
}

}  // namespace NQMath_940::internal
