#include <nqcommon/math/numeric/internal/incomplete_beta.h>

#include <cmath>
#include <limits>
#include <numbers>

#include <nqcommon/math/kernels/log_gamma.h>
#include <nqcommon/math/numeric/internal/continued_fraction.h>
#include <nqcommon/math/numeric/internal/normal_tail.h>

namespace NQMath_940::internal {

namespace {

constexpr double kEpsilon = std::numeric_limits<double>::epsilon();

// With both parameters from here on the fraction would need thousands of terms near the mean, and
// the normal approximation is better than 6e-13 even 30 standard deviations out.
constexpr double kNormalFrom = 1e9;

// The series falls as x^i: past this the fraction needs far fewer terms.
constexpr double kSeriesUpTo = 0.75;
constexpr int kMaxFractionTerms = 10000;

double LogOf(const BetaPoint& point) {
  return point.x < 0.5 ? std::log(point.x) : std::log1p(-point.y);
}

BetaPoint Mirror(const BetaPoint& point) { return {point.y, point.x, -point.lambda}; }

// I_x(a, b) = x^a y^b / (a B(a, b)) * sum of (a+b)_i / (a+1)_i x^i (Abramowitz and Stegun 1964,
// 26.5.4), for x up to about the mean, where the terms fall from the first on.
double LowerSeries(const BetaPoint& point, double a, double b) {
  double term = 1;
  double sum = 1;
  for (int i = 0; term > 0.1 * kEpsilon * (1 - point.x) * sum; ++i) {
    term *= (a + b + i) / (a + 1 + i) * point.x;
    sum += term;
  }
  return sum / a;
}

// I_x(a, b) = x^a y^b / B(a, b) times the value: the even part of the continued fraction with
// d(2m) = m (b-m) x/((a+2m-1)(a+2m)), d(2m+1) = -(a+m)(a+b+m) x/((a+2m)(a+2m+1)), in the form whose
// terms do not cancel near the mean (DiDonato and Morris 1992, algorithm 708). For x up to about
// the mean. False when it has not converged.
bool LowerFraction(const BetaPoint& point, double a, double b, double& value) {
  double inverse = 1 / (a + 1);  // 1/(a + 2m - 1)
  const double first = a * (1 + point.lambda) * inverse;
  const auto next = [&](int m) {
    const double odd = point.x * inverse;
    inverse = 1 / (a + 2 * m + 1);
    const double even = m * ((b - m) * odd);
    return FractionTerm{(a + m - 1) * ((a + b + m - 1) * odd) * even,
                        m + even + (a + m) * inverse * (point.lambda + 1 + m * (1 + point.y))};
  };
  return EvaluateFraction(first, kMaxFractionTerms, next, value);
}

// 1 - I_x(a, b) for a < 1 and x up to about the mean, where I may be next to 1: with
// x^a Gamma(a+b)/(Gamma(a+1) Gamma(b)) = 1 + d, I = (1 + d)(1 + a * sum of
// (1-b)_k x^k/(k! (a+k)), k >= 1) (Abramowitz and Stegun 1964, 26.5.4 transformed).
double UpperSmallShape(const BetaPoint& point, double a, double b) {
  double sum = 0;
  double power = 1;
  for (int k = 1; k < kMaxFractionTerms && std::fabs(power) > 0.1 * kEpsilon * std::fabs(sum);
       ++k) {
    power *= (k - b) / k * point.x;
    sum += power / (a + k);
  }
  const double exponent = a * LogOf(point) + LogGammaRatio(a, b) - LogGamma1p(a);
  return -std::expm1(exponent) - std::exp(exponent) * a * sum;
}

// Peizer and Pratt 1968 for P(successes >= a) in n = a + b - 1 trials. With s = a - 1/2, t = b -
// 1/2 the published variance term 1 + y g(s/(n x)) + x g(t/(n y)) equals 2 n x y (s ln(s/(n x)) + t
// ln(t/(n y)))/(s - n x)^2; its logarithms are taken as defects, which do not cancel near the mean.
Tails NormalTails(const BetaPoint& point, double a, double b) {
  const double n = a + b - 1;
  const double s = a - 0.5;
  const double t = b - 0.5;
  const double offset = point.lambda + (point.x - point.y) / 2;  // s - n x = n y - t
  const double d = point.lambda + (point.x - point.y) / 3 +
                   (point.y / a - point.x / b + (point.y - 0.5) / (a + b)) / 50;
  const double sum = LogDefect(-offset, s, n * point.x) + LogDefect(offset, t, n * point.y);
  const double spread =
      offset == 0 ? std::sqrt(1 / s + 1 / t) : std::sqrt(2 * sum) / std::fabs(offset);
  const double deviate = d * spread / std::sqrt(1 + 1 / (6 * n));
  return {NormalLower(-deviate), NormalLower(deviate)};
}

// x^a y^b / B(a, b) = exp(exponent) * factor.
struct BetaTerm {
  double exponent;
  double factor;
};

BetaTerm TermAt(const BetaPoint& point, double a, double b) {
  if (a > b) return TermAt(Mirror(point), b, a);
  if (a == 0.5)
    return {b * LogOf(Mirror(point)),
            std::sqrt(point.x) * GammaRatioOfHalf(b) * std::numbers::inv_sqrtpi};
  if (a < 1)
    return {a * LogOf(point) + b * LogOf(Mirror(point)) + LogGammaRatio(a, b) - LogGamma1p(a), a};
  const double n = a + b;
  const double lower = LogDefect(-point.lambda, a, n * point.x);
  const double upper = LogDefect(point.lambda, b, n * point.y);
  return {-lower - upper + StirlingError(n) - StirlingError(a) - StirlingError(b),
          kInverseSqrt2Pi * std::sqrt(a / n * b)};
}

// For x up to about the mean.
TailsAndSlope FromLower(const BetaPoint& point, double a, double b) {
  const BetaTerm term = TermAt(point, a, b);
  const double power = std::exp(term.exponent);
  const double slope = power * term.factor;
  if (power == 0) return {{0, 1}, slope, point.lambda};
  double value = 0;
  if ((a <= 1 || b <= 1) && point.x <= kSeriesUpTo)
    value = LowerSeries(point, a, b);
  else if (!LowerFraction(point, a, b, value))
    return {NormalTails(point, a, b), slope, point.lambda};
  const double lower = AsProbability(power * (term.factor * value));
  const bool cancels = a < 1 && lower > 0.5;
  return {{lower, cancels ? UpperSmallShape(point, a, b) : 1 - lower}, slope, point.lambda};
}

// One shape is 1: the other's power.
TailsAndSlope PowerTails(const BetaPoint& point, double a, double b) {
  const double exponent = a == 1 ? b * LogOf(Mirror(point)) : a * LogOf(point);
  const Tails tails = {ExpOrZero(exponent), -std::expm1(exponent)};
  if (a == 1) return {Swap(tails), b * point.x * tails.lower, point.lambda};
  return {tails, a * point.y * tails.lower, point.lambda};
}

}  // namespace

BetaPoint BetaPointAt(double x, double a, double b) {
  // a + b as a sum of two doubles: near the mean lambda is small beside it.
  const double n = a + b;
  const double larger = a > b ? a : b;
  const double rest = (larger - n) + (a > b ? b : a);
  const double y = 1 - x;
  const double lambda = x <= 0.5 ? std::fma(-n, x, a) - rest * x : std::fma(n, y, -b) + rest * y;
  return {x, y, lambda};
}

BetaPoint BetaPointOfRatio(double ratio, double a, double b) {
  const double odds = ratio * (a / b);
  if (odds <= 1) return {odds / (1 + odds), 1 / (1 + odds), a * (1 - ratio) / (1 + odds)};
  const double inverse = b / a / ratio;
  return {1 / (1 + inverse), inverse / (1 + inverse), b * ((1 - ratio) / ratio) / (1 + inverse)};
}

double LogBetaTerm(const BetaPoint& point, double a, double b) {
  const BetaTerm term = TermAt(point, a, b);
  return term.exponent + std::log(term.factor);
}

TailsAndSlope IncompleteBetaAndSlope(const BetaPoint& point, double a, double b) {
  if (a == 1 && b == 1) return {{point.x, point.y}, point.x * point.y, point.lambda};
  if (a == 1 || b == 1) return PowerTails(point, a, b);
  if (a >= kNormalFrom && b >= kNormalFrom) {
    const BetaTerm term = TermAt(point, a, b);
    return {NormalTails(point, a, b), std::exp(term.exponent) * term.factor, point.lambda};
  }
  // x < (a + 1)/(a + b + 2)
  if (point.lambda > point.x - point.y) return FromLower(point, a, b);
  const TailsAndSlope mirrored = FromLower(Mirror(point), b, a);
  return {Swap(mirrored.tails), mirrored.slope, point.lambda};
}

Tails IncompleteBeta(const BetaPoint& point, double a, double b) {
  if (point.x <= 0) return {0, 1};
  if (point.y <= 0) return {1, 0};
  return IncompleteBetaAndSlope(point, a, b).tails;
}

}  // namespace NQMath_940::internal
