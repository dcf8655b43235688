#pragma once

#include <cmath>
#include <limits>

namespace NQMath_940::internal {

struct FractionTerm {
  double numerator;
  double denominator;
};

// 1/(first + n1/(d1 + n2/(d2 + ...))) by the forward recurrence; next(k) gives the k-th term,
// k = 1, 2, ... No division is made before the last convergent: two convergents differ by the
// product of the numerators over their denominators, which decides when to stop and, unlike a
// difference, carries no rounding noise. maxTerms is far above what any caller needs.
template <class Next>
inline double EvaluateFraction(double first, int maxTerms, Next next) {
  constexpr double kEpsilon = std::numeric_limits<double>::epsilon();
  constexpr double kLarge = 1e100;
  double oldNumerator = 0, numerator = 1;
  double oldDenominator = 1, denominator = first;
  double product = 1;
  bool converged = false;
  for (double k = 1; k <= maxTerms && !converged; k += 1) {
    const FractionTerm term = next(k);
    const double newNumerator = term.denominator * numerator + term.numerator * oldNumerator;
    const double newDenominator = term.denominator * denominator + term.numerator * oldDenominator;
    product *= term.numerator;
    converged = std::fabs(product) <= 0.5 * kEpsilon * std::fabs(newNumerator * denominator);
    oldNumerator = numerator;
    oldDenominator = denominator;
    numerator = newNumerator;
    denominator = newDenominator;
    if (std::fabs(denominator) > kLarge) {
      oldNumerator /= kLarge;
      numerator /= kLarge;
      oldDenominator /= kLarge;
      denominator /= kLarge;
      product = product / kLarge / kLarge;
    }
  }
  return numerator / denominator;
}

}  // namespace NQMath_940::internal
