#pragma once

#include <nqcommon/math/numeric/internal/tails.h>

namespace NQMath_940::internal {

// x^a e^-x / Gamma(a + 1), x > 0, a > 0: the terms of a Poisson distribution of mean x at a.
ExpTerm PoissonTerm(double x, double a);

// P(a, x) and Q(a, x), 0 < a; an infinite a counts as kLargestShape.
Tails IncompleteGamma(double x, double a);

// The same with the slope, for 0 < x < infinity.
TailsAndSlope IncompleteGammaAndSlope(double x, double a);

}  // namespace NQMath_940::internal
