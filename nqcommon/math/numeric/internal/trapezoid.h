#pragma once

#include <initializer_list>

namespace NQMath_940::internal {

// step * (... + f(-step) + f(0) + f(step) + ...): the integral of f over the whole line by the
// trapezoidal rule, whose error falls exponentially in 1/step for an analytic f that dies away on
// both sides (Trefethen and Weideman 2014). Each side is followed until its terms, which may rise
// first but must then fall for good, no longer matter.
template <class Function>
double IntegrateLine(double step, Function f) {
  constexpr double kNegligible = 1e-18;
  constexpr int kMaxTerms = 20000;
  double sum = f(0.0);
  for (const double direction : {step, -step}) {
    for (int k = 1; k < kMaxTerms; ++k) {
      const double term = f(k * direction);
      sum += term;
      if (!(term > kNegligible * sum)) break;
    }
  }
  return step * sum;
}

}  // namespace NQMath_940::internal
