#pragma once

#include <nqcommon/math/numeric/internal/tails.h>

namespace NQMath_940::internal {

// The ratio (x/a)/(y/b), y = 1 - x, at which I_x(a, b) and its complement are `target`, both in
// (0, 1): the quantile of an F distribution with 2a and 2b degrees of freedom. It has full
// precision where x rounds to 0 or 1; 0 or infinity where it leaves the range of doubles.
// a > 0, b > 0, finite.
double InverseBetaRatio(const Tails& target, double a, double b);

}  // namespace NQMath_940::internal
