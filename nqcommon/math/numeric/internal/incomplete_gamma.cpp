// P(a, x) and Q(a, x) by region, with the worst relative error of tails above 1e-6 and of all:
//
//   a = 1                                       exponential                  2e-16, 1e-13
//   a >= 20, x/a from 0.48 to 1.84              uniform expansion            4e-15, 2e-13
//   x <= 1, or 1 < a and x <= a + 1             series of the lower tail     4e-15, 4e-13
//     a < 1 and a lower tail above 1/2            and one of the upper
//   else                                        fraction of the upper tail   4e-15, 4e-13
#include <nqcommon/math/numeric/internal/incomplete_gamma.h>

#include <cmath>
#include <cstddef>
#include <limits>

#include <nqcommon/math/kernels/log_gamma.h>
#include <nqcommon/math/numeric/internal/continued_fraction.h>
#include <nqcommon/math/numeric/internal/normal_tail.h>

namespace NQMath_940::internal {

namespace {

constexpr double kEpsilon = std::numeric_limits<double>::epsilon();

// The uniform expansion serves shapes from the first on, where the defect of x/a is at most the
// second: x/a from 0.48 to 1.84.
constexpr double kUniformFrom = 20;
constexpr double kUniformDefect = 0.25;

// kMaxTerms is far above what the fraction needs where it is used.
constexpr int kMaxTerms = 10000;

// eta/mu in powers of eta, where mu - ln(1 + mu) = eta^2/2: exact rationals 1, -1/3, 1/12, ...
// (Temme 1979). Table of tests/reference/kernel_coefficients.py, for |eta| up to sqrt(1/2).
constexpr double kTemme[] = {1.0,
                             -0.3333333333333333,
                             0.08333333333333333,
                             -0.014814814814814815,
                             0.0011574074074074073,
                             0.0003527336860670194,
                             -0.0001787551440329218,
                             3.919263178522438e-05,
                             -2.185448510679992e-06,
                             -1.85406221071516e-06,
                             8.296711340953087e-07,
                             -1.7665952736826078e-07,
                             6.707853543401498e-09,
                             1.0261809784240309e-08,
                             -4.382036018453353e-09,
                             9.14769958223679e-10,
                             -2.5514193994946248e-11,
                             -5.830772132550426e-11,
                             2.4361948020667415e-11,
                             -5.0276692801141755e-12,
                             1.1004392031956135e-13,
                             3.371763262400985e-13,
                             -1.392388722418162e-13,
                             2.8534893807047445e-14,
                             -5.139111834242572e-16,
                             -1.9752288294349442e-15,
                             8.099521156704561e-16};

// The term x^a e^-x / Gamma(a + 1).
ExpTerm TermAt(double x, double a, double defect) {
  if (a < 1) return {a * std::log(x) - x - LogGamma1p(a), 1};
  return {-defect - StirlingError(a), kInverseSqrt2Pi / std::sqrt(a)};
}

// a (mu - ln(1 + mu)), mu = (x - a)/a.
double DefectAt(double x, double a) { return LogDefect(x - a, a, x); }

// P(a, x) = x^a e^-x / Gamma(a+1) * (1 + x/(a+1) + x^2/((a+1)(a+2)) + ...) (Abramowitz and Stegun
// 1964, 6.5.29), for x up to about a, where the terms fall from the first on.
double LowerSeries(double x, double a) {
  double sum = 1;
  double term = 1;
  for (double k = a + 1; term > 0.01 * kEpsilon * sum; k += 1) {
    term *= x / k;
    sum += term;
  }
  return sum;
}

// Q(a, x) for a < 1, x <= 1, where P(a, x) may be next to 1: with x^a/Gamma(a+1) = 1 + d,
// Q = -d - (1 + d) a * sum of (-x)^k/(k! (a+k)), k >= 1 (DiDonato and Morris 1986).
double UpperSmallShape(double x, double a) {
  double sum = 0;
  double power = 1;
  for (int k = 1; std::fabs(power) > 0.01 * kEpsilon * std::fabs(sum); ++k) {
    power *= -x / k;
    sum += power / (a + k);
  }
  const double exponent = a * std::log(x) - LogGamma1p(a);
  return -std::expm1(exponent) - std::exp(exponent) * a * sum;
}

// Q(a, x) by Legendre's continued fraction, for x > max(1, a): x^a e^-x / Gamma(a + 1) times
// a/(x + 1 - a - 1 (1-a)/(x + 3 - a - 2 (2-a)/(x + 5 - a - ...))).
double UpperFraction(double x, double a) {
  double denominator = x + 1 - a;
  const auto next = [&denominator, a](double k) {
    denominator += 2;
    return FractionTerm{k * (a - k), denominator};
  };
  return a * EvaluateFraction(denominator, kMaxTerms, next);
}

// Temme 1979 in the form of Gil, Segura and Temme 2012: with mu - ln(1 + mu) = eta^2/2,
// mu = (x - a)/a, Q(a, x) = Phi(-eta sqrt(a)) + exp(-a eta^2/2)/sqrt(2 pi a) * S, where S is a
// series in eta whose coefficients follow from kTemme by a backward recurrence in 1/a. The first
// term is taken as Mills' ratio, so that one exponential serves both.
TailsAndSlope UniformTails(double x, double a, double defect) {
  constexpr std::size_t kPairs = 12;
  constexpr std::size_t kPairsNearMean = 8;
  constexpr double kNearMean = 0.3;
  const bool above = x > a;
  const double inverse = 1 / a;
  const double square = 2 * defect * inverse;
  const double size = std::sqrt(square);
  const std::size_t pairs = size < kNearMean ? kPairsNearMean : kPairs;
  double even = kTemme[2 * pairs + 1];
  double odd = kTemme[2 * pairs + 2];
  double evenSum = even;
  double oddSum = odd;
  for (std::size_t j = pairs; j-- > 0;) {
    const auto m = static_cast<double>(2 * j);
    even = kTemme[2 * j + 1] + (m + 2) * inverse * even;
    odd = kTemme[2 * j + 2] + (m + 3) * inverse * odd;
    evenSum = even + square * evenSum;
    oddSum = odd + square * oddSum;
  }
  const double root = std::sqrt(a);
  const double gammaStar =
      1 + odd * inverse;  // Gamma(a + 1) over Stirling's formula without series
  const double series = (evenSum + (above ? size : -size) * oddSum) / (gammaStar * root);
  const double density = std::exp(-defect) * kInverseSqrt2Pi;
  const double outer =
      AtMostOne(density * (MillsRatio(std::sqrt(2 * defect)) + (above ? series : -series)));
  const Tails tails = {outer, 1 - outer};
  return {above ? Swap(tails) : tails, density * root / gammaStar, a - x};
}

}  // namespace

ExpTerm PoissonTerm(double x, double a) { return TermAt(x, a, a < 1 ? 0 : DefectAt(x, a)); }

TailsAndSlope IncompleteGammaAndSlope(double x, double shape) {
  const double a = BoundedShape(shape);
  if (a == 1) return {{-std::expm1(-x), ExpOrZero(-x)}, x * std::exp(-x), 1 - x};
  const double defect = a < 1 ? 0 : DefectAt(x, a);
  if (a >= kUniformFrom && defect <= kUniformDefect * a) return UniformTails(x, a, defect);
  const ExpTerm term = TermAt(x, a, defect);
  const ScaledExp power = ExpOf(term.exponent);
  const double slope = power.Times(term.factor * a);
  if (power.head == 0) return {x > a ? Tails{1, 0} : Tails{0, 1}, 0, a - x};
  if (x <= 1 || (a > 1 && x <= a + 1)) {
    const double lower = AtMostOne(power.Times(term.factor * LowerSeries(x, a)));
    const bool cancels = a < 1 && lower > 0.5;
    return {{lower, cancels ? UpperSmallShape(x, a) : 1 - lower}, slope, a - x};
  }
  const double upper = AtMostOne(power.Times(term.factor * UpperFraction(x, a)));
  return {{1 - upper, upper}, slope, a - x};
}

Tails IncompleteGamma(double x, double a) {
  if (x <= 0) return {0, 1};
  if (std::isinf(x)) return {1, 0};
  return IncompleteGammaAndSlope(x, a).tails;
}

}  // namespace NQMath_940::internal
