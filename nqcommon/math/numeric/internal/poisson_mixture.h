#pragma once

#include <algorithm>
#include <cmath>

#include <nqcommon/math/numeric/internal/incomplete_beta.h>
#include <nqcommon/math/numeric/internal/incomplete_gamma.h>
#include <nqcommon/math/numeric/internal/tails.h>
#include <nqcommon/math/numeric/internal/trapezoid.h>

namespace NQMath_940::internal {

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
  // of j (a + j) = lambda y
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
  // of j (a + j) = lambda x (a + b + j - 1)
  double Peak(double lambda) const {
    const double c = a - lambda * x;
    const double root = std::sqrt(lambda * x) * std::sqrt(std::max(a + b - 1, 0.0));
    const double sum = std::fabs(c) + std::hypot(c, 2 * root);
    if (c < 0) return sum / 2;
    return root > 0 ? 2 * root * (root / sum) : 0;
  }
  double Curvature(double j) const { return 1 / (a + j) - 1 / (a + std::max(b, 1.0) + (j - 1)); }
};

// What is left out of a sum, relative to it.
inline constexpr double kMixtureNegligible = 1e-17;
// Wider sums than this are taken with a stride: their terms are smooth.
inline constexpr double kMixtureWide = 100;
// From this lambda on the weights count as one at lambda: they spread by less than 1e-13 of it.
inline constexpr double kMixturePoint = 1e26;

// Both sums start at the peak of w(j) step(j), whose second logarithmic derivative is -1/width^2:
// there the exponents are small and the rounding of the ratios does not add up to a slope.
struct MixturePeak {
  double at;
  double width;
};

template <class Family>
MixturePeak PeakOf(double lambda, const Family& family) {
  const double at = family.Peak(lambda);
  return {at, at > 0 ? std::sqrt(1 / (1 / at + family.Curvature(at))) : 0};
}

// w(j)
inline double PoissonWeight(double lambda, double j) {
  return j == 0 ? ExpOrZero(-lambda) : PoissonTerm(lambda, j).Value();
}

// w and step at j, and from there to the next or the last index.
template <class Family>
struct MixtureTerm {
  double lambda;
  Family family;
  double j;
  double w = PoissonWeight(lambda, j);
  double step = family.Step(j);

  void Up() {
    j += 1;
    w *= lambda / j;
    step *= family.Ratio(j);
  }
  void Down() {
    w *= j / lambda;
    step /= family.Ratio(j);
    j -= 1;
  }
};

// The term of the last index up to the peak.
template <class Family>
MixtureTerm<Family> MiddleTerm(double lambda, double first, const Family& family, double peak) {
  return {lambda, family, first + std::max(0.0, std::floor(peak - first))};
}

// Every term apart, half a width from one to the next.
template <class Term>
double StridedMixture(const MixturePeak& about, Term term) {
  return IntegrateLine(about.width / 2, [&](double v) {
    const double j = about.at + v;
    return j > 0 ? term(j) : 0;
  });
}

// Sum of w(j) At(j).lower, best for an At(lambda) below its mean. With W(j) = w(first) + ... + w(j)
// the sum is that of step(j) W(j) from the middle m on (Ding 1992, AS 275), and below it that of
// w(j) (step(j) + ... + step(m-1)): positive terms, and sums that grow, on both sides. Upwards it
// ends through the central distribution once W has all its weight.
template <class Family>
double LowerMixture(double lambda, double first, const Family& family) {
  if (lambda > kMixturePoint) return family.At(lambda).lower;
  const MixturePeak peak = PeakOf(lambda, family);
  if (peak.width > kMixtureWide) {
    return StridedMixture(peak,
                          [&](double j) { return PoissonWeight(lambda, j) * family.At(j).lower; });
  }
  const auto middle = MiddleTerm(lambda, first, family, peak.at);
  double weight = middle.w;
  if (middle.j > first) {
    weight = IncompleteGamma(lambda, middle.j + 1).upper;
    if (first > 0) weight -= IncompleteGamma(lambda, first).upper;
  }
  double sum = 0;
  for (auto at = middle;;) {
    const double term = at.step * weight;
    sum += term;
    if (!(term > kMixtureNegligible * sum)) break;
    at.Up();
    if (at.w <= kMixtureNegligible * weight) {
      sum += weight * family.At(at.j).lower;
      break;
    }
    weight += at.w;
  }
  double steps = 0;
  for (auto at = middle; at.j > first;) {
    at.Down();
    steps += at.step;
    const double term = at.w * steps;
    sum += term;
    if (!(term > kMixtureNegligible * sum)) break;
  }
  return sum;
}

// Sum of w(j) At(j).upper, best for an At(lambda) above its mean: likewise, with the weights from
// the far end, At(first).upper of all the weight and step(j) (w(j+1) + w(j+2) + ...) below the
// middle m, w(j) (step(m) + ... + step(j-1)) above it.
template <class Family>
double UpperMixture(double lambda, double first, const Family& family) {
  if (lambda > kMixturePoint) return family.At(lambda).upper;
  const MixturePeak peak = PeakOf(lambda, family);
  if (peak.width > kMixtureWide) {
    return StridedMixture(peak,
                          [&](double j) { return PoissonWeight(lambda, j) * family.At(j).upper; });
  }
  const auto middle = MiddleTerm(lambda, first, family, peak.at);
  double sum = 0;
  double steps = 0;
  for (auto at = middle;;) {
    steps += at.step;
    at.Up();
    const double term = at.w * steps;
    sum += term;
    if (!(term > kMixtureNegligible * sum)) break;
  }
  double weight = middle.j > 0 ? IncompleteGamma(lambda, middle.j).lower : 1;
  for (auto at = middle; at.j > first;) {
    at.Down();
    const double term = at.step * weight;
    sum += term;
    if (!(term > kMixtureNegligible * sum)) return sum;
    weight += at.w;
  }
  return sum + weight * family.At(first).upper;
}

}  // namespace NQMath_940::internal
