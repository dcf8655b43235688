// Hypergeometric tails by region, for a count up to about the mean. With `scale` the lesser of the
// standard deviation and the reach of the geometric sum 1/(1 - ratio of two probabilities); the
// worst relative error of tails above 1e-6 and of all:
//
//   scale <= 200     the probabilities one by one                  7e-15, 4e-13
//   scale > 200      their integral and what it leaves of the sum  7e-15, 4e-13
#include <nqcommon/math/numeric/internal/hypergeometric.h>

#include <algorithm>
#include <cmath>

#include <nqcommon/math/numeric/internal/trapezoid.h>

namespace NQMath_940::internal {

namespace {

// From this scale of change on, in items, a sum over the items is taken as an integral: what the
// terms of the Euler-Maclaurin formula up to the third derivative leave is about scale^-6/30000.
constexpr double kSmoothFrom = 200;

// The distance of markedDrawn from its mean: (markedDrawn * othersLeft - markedLeft * othersDrawn)
// over the total, to an ulp or two where the products do not overflow (W. Kahan's form).
double DistanceFromMean(const FourfoldTable& at) {
  constexpr double kProductsOverflow = 1e150;
  const double total = at.Drawn() + at.Left();
  if (total > kProductsOverflow)
    return at.markedDrawn / total * at.othersLeft - at.markedLeft / total * at.othersDrawn;
  const double product = at.markedLeft * at.othersDrawn;
  const double lost = std::fma(-at.markedLeft, at.othersDrawn, product);
  return (std::fma(at.markedDrawn, at.othersLeft, -product) + lost) / total;
}

// The marked and the other items drawn are two binomial variables, given their sum. With the share
// of the drawn as their probability the sum is at its mean, and the two are as far from theirs.
ExpTerm TermAt(const FourfoldTable& at, double distance) {
  const double drawn = at.Drawn();
  const double left = at.Left();
  const double x = drawn / (drawn + left);
  const double y = left / (drawn + left);
  const ExpTerm marked = BinomialTerm({x, y, distance}, at.markedDrawn, at.markedLeft);
  const ExpTerm others = BinomialTerm({x, y, -distance}, at.othersDrawn, at.othersLeft);
  const ExpTerm sum = BinomialTerm({x, y, 0}, drawn, left);
  return {marked.exponent + others.exponent - sum.exponent,
          marked.factor / sum.factor * others.factor};
}

// The sum of P over this table and all below, over P of this one: the integral by the double
// exponential rule for a half line (Takahasi and Mori 1974), 1/2, and P'/12 - P"'/720 by central
// differences.
double SmoothSum(const FourfoldTable& from, const ExpTerm& end, double scale) {
  constexpr double kStep = 0.125;
  const double start = DistanceFromMean(from);
  const double integral = IntegrateLine(kStep, [&](double v) {
    const double by = scale * std::exp(v - std::exp(-v));
    const FourfoldTable at = from.Down(by);
    // The counts of `at` round; their distance from the mean, start - by, does not. They stay
    // positive where terms matter: integrals are for variances from kSmoothFrom^2 on, the counts
    // are above the variance, and the terms vanish within some 42 of its root.
    const ExpTerm term = TermAt(at, start - by);
    return std::exp(term.exponent - end.exponent) * (term.factor / end.factor) * by *
           (1 + std::exp(-v));
  });
  const double oneDown = from.RatioDown();
  const double oneUp = 1 / from.Down(-1).RatioDown();
  const double inner = oneUp - oneDown;
  const double outer = oneUp / from.Down(-2).RatioDown() - oneDown * from.Down(1).RatioDown();
  return integral + 0.5 + (82 * inner - 11 * outer) / 1440;
}

}  // namespace

// By deviances and Stirling differences (Loader 2000), which do not cancel as the log gammas of the
// binomial coefficient do: the beta term over the beta function of the counts.
ExpTerm BinomialTerm(const BetaPoint& at, double k, double rest) {
  if (k == 0) return {rest == 0 ? 0 : rest * LogOf(Mirror(at)), 1};
  if (rest == 0) return {k * LogOf(at), 1};
  const ExpTerm term = BetaTerm(at, k, rest);
  return {term.exponent, term.factor * (1 / k + 1 / rest)};
}

ExpTerm HypergeometricTerm(const FourfoldTable& at) { return TermAt(at, DistanceFromMean(at)); }

double HypergeometricLowerTail(const FourfoldTable& from) {
  constexpr double kNegligible = 1e-18;
  const ExpTerm first = HypergeometricTerm(from);
  const double marked = from.markedDrawn + from.markedLeft;
  const double others = from.othersDrawn + from.othersLeft;
  const double drawn = from.Drawn();
  const double total = marked + others;
  const double variance =
      marked * (drawn / total) * (others / total) * ((total - drawn) / (total - 1));
  const double scale = std::min(std::sqrt(variance), 1 / (1 - from.RatioDown()));
  double sum = 1;
  if (scale > kSmoothFrom) {
    sum = SmoothSum(from, first, scale);
  } else {
    double term = 1;
    for (FourfoldTable at = from; term > kNegligible * sum; at = at.Down(1)) {
      term *= at.RatioDown();
      sum += term;
    }
  }
  return AsProbability(ExpTerm{first.exponent, first.factor * sum}.Value());
}

}  // namespace NQMath_940::internal
