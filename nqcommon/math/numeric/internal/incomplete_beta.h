#pragma once

#include <nqcommon/math/numeric/internal/tails.h>

namespace NQMath_940::internal {

// A point of (0, 1) for the parameters a and b. The complement and the distance from the mean come
// with it, since a caller who knows them better than 1 - x and a - (a + b) x can tell saves the
// digits that those lose.
struct BetaPoint {
  double x;
  double y;       // 1 - x
  double lambda;  // a y - b x = a - (a + b) x
};

inline BetaPoint Mirror(const BetaPoint& point) { return {point.y, point.x, -point.lambda}; }

// ln x.
double LogOf(const BetaPoint& point);

// The point of x.
BetaPoint BetaPointAt(double x, double a, double b);
// The point x/y = ratio * a/b: the variance ratio of an F distribution with 2a and 2b degrees of
// freedom, ratio > 0.
BetaPoint BetaPointOfRatio(double ratio, double a, double b);

// x^a y^b / B(a, b), 0 < x < 1.
ExpTerm BetaTerm(const BetaPoint& point, double a, double b);

// I_x(a, b) and I_y(b, a), for a and b in (0, kLargestShape]; 0 and 1 for a point outside (0, 1).
Tails IncompleteBeta(const BetaPoint& point, double a, double b);

// The same with the slope by the logarithm of x/y, for 0 < x, 0 < y.
TailsAndSlope IncompleteBetaAndSlope(const BetaPoint& point, double a, double b);

}  // namespace NQMath_940::internal
