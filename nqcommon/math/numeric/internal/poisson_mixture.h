#pragma once

#include <algorithm>
#include <cmath>

#include <nqcommon/math/numeric/internal/incomplete_beta.h>
#include <nqcommon/math/numeric/internal/incomplete_gamma.h>
#include <nqcommon/math/numeric/internal/tails.h>
#include <nqcommon/math/numeric/internal/trapezoid.h>

namespace NQMath_940::internal {

// Noncentral distributions by region; the worst relative error of values above 1e-6 and of all, for
// lambda up to 1e6 (it grows with the square root of lambda beyond 1e9: an index no longer holds
// all of its digits):
//
//   width of the terms <= 100       sum from the middle term on both sides     5e-14, 4e-13
//   width of the terms > 100        integral with a stride of half a width     5e-14, 4e-13
//   lambda > 1e26                   the central tail at lambda                 1e-13 of lambda
//
// Sums of w(j) T(j), j = first, first + 1, ..., with the Poisson weights
// w(j) = lambda^j e^-lambda / Gamma(j + 1) and a tail T(j) of a central distribution of shape
// a + j: noncentral distributions. `first` is 0, or 1/2 for the odd half of the noncentral t.
//
// A family of central distributions gives
//   At(j)        both tails at shape a + j
//   Step(j)      At(j).lower - At(j+1).lower
//   Ratio(j)     step(j)/step(j-1)
//   Peak(lambda) where w(j) step(j) is largest

// P(a + j, y).
struct GammaFamily {
  double y;
  double a;

  Tails At(double j) const { return IncompleteGamma(y, a + j); }
  double Step(double j) const { return PoissonTerm(y, a + j).Value(); }
  double Ratio(double j) const { return y / (a + j); }
  // Peak solves j (a + j) = lambda y.
  double Peak(double lambda) const {
    const double root = std::sqrt(lambda) * std::sqrt(y);
    return 2 * root * (root / (a + std::hypot(a, 2 * root)));
  }
  double Curvature(double j) const { return 1 / (a + j); }
};

// I_x(a + j, b), y = 1 - x.
struct BetaFamily {
  double x;
  double y;
  double a;
  double b;

  BetaPoint PointAt(double j) const { return {x, y, (a + j) * y - b * x}; }
  Tails At(double j) const { return IncompleteBeta(PointAt(j), a + j, b); }
  double Step(double j) const {
    const ExpTerm term = BetaTerm(PointAt(j), a + j, b);
    return ExpTerm{term.exponent, term.factor / (a + j)}.Value();
  }
  double Ratio(double j) const { return x * ((a + b + (j - 1)) / (a + j)); }
  // Peak solves j (a + j) = lambda x (a + b + j - 1).
  double Peak(double lambda) const {
    const double c = a - lambda * x;
    const double root = std::sqrt(lambda * x) * std::sqrt(std::max(a + b - 1, 0.0));
    const double sum = std::fabs(c) + std::hypot(c, 2 * root);
    if (c < 0) return sum / 2;
    return root > 0 ? 2 * root * (root / sum) : 0;
  }
  double Curvature(double j) const { return 1 / (a + j) - 1 / (a + std::max(b, 1.0) + (j - 1)); }
};

// A term below this part of a sum is left out of it.
inline constexpr double kMixtureNegligible = 1e-17;
// A term below this, next to the smallest double, is left out too: a ratio above 1/2 would not make
// it any smaller.
inline constexpr double kMixtureLeast = 1e-320;
// Wider sums than this are taken with a stride: their terms are smooth.
inline constexpr double kMixtureWide = 100;
// From this lambda on the weights count as one at lambda: they spread by less than 1e-13 of it.
inline constexpr double kMixturePoint = 1e26;

// The weight w(j).
inline double PoissonWeight(double lambda, double j) {
  return j == 0 ? std::exp(-lambda) : PoissonTerm(lambda, j).Value();
}

enum class Side { kLower, kUpper };

// The sum of w(j) T(j), T the lower tails, which fall by step(j) from j to j + 1, or the upper ones
// which fall by it from j + 1 to j. With "on" the way that T falls, the sum is that of each step
// times the weights before it (Ding 1992, AS 275) from the middle on, and before the middle that
// of each weight times the steps from it to the middle: positive terms, and sums that grow, on both
// sides. Where the weights before a step are all there are, or the indices end, one tail is the
// rest.
template <class Family>
class MixtureSum {
 public:
  MixtureSum(Side side, double lambda, double first, const Family& family)
      : fIsLower(side == Side::kLower), fLambda(lambda), fFirst(first), fFamily(family) {}

  double Value() const {
    if (fLambda > kMixturePoint) return TailAt(fLambda);
    // Sums start at the peak of w(j) step(j), whose second logarithmic derivative is -1/width^2:
    // there the exponents are small and the rounding of the ratios does not add up to a slope.
    const double peak = fFamily.Peak(fLambda);
    const double width = peak > 0 ? std::sqrt(1 / (1 / peak + fFamily.Curvature(peak))) : 0;
    if (width > kMixtureWide) return Strided(peak, width);
    const double j = fFirst + std::max(0.0, std::floor(peak - fFirst));
    Term middle = {j, PoissonWeight(fLambda, j + fShift), fFamily.Step(j)};
    // `scale` keeps terms from being subnormal: those are slow, and have fewer digits.
    const double scale = middle.step < 1e-100 ? 0x1p400 : 1;
    middle.step *= scale;
    return (FromMiddleOn(middle, scale) + BeforeMiddle(middle)) / scale;
  }

 private:
  static bool IsNegligible(double term, double sum) {
    return !(term > kMixtureNegligible * sum + kMixtureLeast);
  }

  // The step from j to j + 1, and the weight of the index that T falls from there.
  struct Term {
    double j;
    double w;
    double step;
  };

  double TailAt(double j) const {
    const Tails tails = fFamily.At(j);
    return fIsLower ? tails.lower : tails.upper;
  }

  void Up(Term& at) const {
    at.j += 1;
    at.w *= fLambda / (at.j + fShift);
    at.step *= fFamily.Ratio(at.j);
  }
  void Down(Term& at) const {
    at.w *= (at.j + fShift) / fLambda;
    at.step /= fFamily.Ratio(at.j);
    at.j -= 1;
  }

  // The sum of the weights of all indices on this side of the middle, with its own.
  double WeightBefore(const Term& middle) const {
    const Tails weights = IncompleteGamma(fLambda, middle.j + 1);
    if (!fIsLower) return weights.lower;
    if (middle.j == fFirst) return middle.w;
    return fFirst > 0 ? weights.upper - IncompleteGamma(fLambda, fFirst).upper : weights.upper;
  }

  // The sum from the middle on, times `scale`, as the steps are.
  double FromMiddleOn(const Term& middle, double scale) const {
    double weight = WeightBefore(middle);
    double sum = 0;
    for (Term at = middle;;) {
      const double term = at.step * weight;
      sum += term;
      if (IsNegligible(term, sum)) return sum;
      fIsLower ? Up(at) : Down(at);
      weight += at.w;
      if (at.w <= kMixtureNegligible * weight || at.j < fFirst)
        return sum + weight * (scale * TailAt(at.j + fShift));
    }
  }

  double BeforeMiddle(const Term& middle) const {
    double steps = 0;
    double sum = 0;
    for (Term at = middle; !fIsLower || at.j > fFirst;) {
      fIsLower ? Down(at) : Up(at);
      steps += at.step;
      const double term = at.w * steps;
      sum += term;
      if (IsNegligible(term, sum)) break;
    }
    return sum;
  }

  // The sum as an integral, by terms that are half a width apart.
  double Strided(double peak, double width) const {
    return IntegrateLine(width / 2, [&](double v) {
      const double j = peak + v;
      return j > 0 ? PoissonWeight(fLambda, j) * TailAt(j) : 0;
    });
  }

  bool fIsLower;
  double fShift = fIsLower ? 0 : 1;
  double fLambda;
  double fFirst;
  Family fFamily;
};

template <class Family>
double Mixture(Side side, double lambda, double first, const Family& family) {
  return MixtureSum<Family>(side, lambda, first, family).Value();
}

// The wanted tail, from tail(side) of the side that is likely the smaller one; it is summed itself
// where that one comes out above a half.
template <class Tail>
double TailByValue(Side wanted, Side likely, Tail tail) {
  const double value = tail(likely);
  if (likely == wanted) return value;
  return value <= 0.5 ? 1 - value : tail(wanted);
}

}  // namespace NQMath_940::internal
