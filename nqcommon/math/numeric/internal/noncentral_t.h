#pragma once

#include <nqcommon/math/numeric/internal/poisson_mixture.h>

namespace NQMath_940::internal {

// P(T <= t), the lower side, or P(T > t), of T = (Z + ncp)/S, Z normal, df S^2 chi-square with df
// degrees of freedom. t and ncp finite, df in [kSmallestShape, kLargestShape].
double NoncentralTTail(Side side, double t, double df, double ncp);

// The density of T at t, same arguments.
double NoncentralTDensity(double t, double df, double ncp);

}  // namespace NQMath_940::internal
