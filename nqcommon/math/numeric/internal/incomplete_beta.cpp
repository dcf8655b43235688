// I_x(a, b) and its complement by region, x up to about the mean a/(a + b), beyond it mirrored. The
// worst relative error of tails above 1e-6 and of all:
//
//   a = 1 or b = 1                              powers                     1e-15, 2e-15
//   v = a b/(a + b) >= 200, x within 0.3 v^1/2  expansion about the mean   5e-15, 3e-13
//     standard deviations of the mean
//   a <= 1 or b <= 1, and x <= 3/4              series                     5e-15, 4e-13
//     a < 1 and a lower tail above 1/2            and one of the upper tail
//   else                                        continued fraction         5e-15, 4e-13
#include <nqcommon/math/numeric/internal/incomplete_beta.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <limits>
#include <numbers>

#include <nqcommon/math/kernels/log_gamma.h>
#include <nqcommon/math/numeric/internal/continued_fraction.h>
#include <nqcommon/math/numeric/internal/normal_tail.h>

namespace NQMath_940::internal {

namespace {

constexpr double kEpsilon = std::numeric_limits<double>::epsilon();

// What the expansion about the mean needs: a b/(a + b) from the first on, a distance from the mean,
// in units of that square root, of at most the second times it.
constexpr double kExpansionFrom = 200;
constexpr double kExpansionReach = 0.3;

// The series falls as x^i: past this the fraction needs far fewer terms.
constexpr double kSeriesUpTo = 0.75;
constexpr int kMaxFractionTerms = 10000;

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
// the mean.
double LowerFraction(const BetaPoint& point, double a, double b) {
  double inverse = 1 / (a + 1);  // 1/(a + 2m - 1)
  const double first = a * (1 + point.lambda) * inverse;
  const auto next = [&](double m) {
    const double odd = point.x * inverse;
    inverse = 1 / (a + 2 * m + 1);
    const double even = m * ((b - m) * odd);
    return FractionTerm{(a + m - 1) * ((a + b + m - 1) * odd) * even,
                        m + even + (a + m) * inverse * (point.lambda + 1 + m * (1 + point.y))};
  };
  return EvaluateFraction(first, kMaxFractionTerms, next);
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

// I_x(a, b) for x up to the mean, as sqrt(2 pi)/exp(-defect - the Stirling errors) times it. With
// -s^2/2 the logarithm of x^a y^b relative to the mean, z = sqrt(2 defect), v = a b/(a + b) and
// t = s/sqrt(v), the integral is that of exp((z^2 - s^2)/2) g(t) from z on, by moments that a
// recurrence gives from Mills' ratio (as for the gamma distribution in Temme 1979). The series
// g = t/d follows from d d' = t (1 + c d - e d^2), c = (a - b)/(a + b), e = a b/(a + b)^2, d the
// distance of x from the mean in units of e.
double LowerExpansion(double defect, double a, double b) {
  constexpr std::size_t kTerms = 24;
  const double n = a + b;
  const double skew = a / n - b / n;
  const double product = a / n * (b / n);
  const double inverse = n / b / a;  // 1/v
  const double scale = std::sqrt(inverse);
  const double z = std::sqrt(2 * defect);
  std::array<double, kTerms> d{1};       // d = t (d[0] + d[1] t + ...)
  std::array<double, kTerms> square{1};  // d^2 = t^2 (...)
  std::array<double, kTerms> g{1};
  double moments[2] = {MillsRatio(z), scale};  // of t^k, k even and odd
  double rise = scale;                         // t^(k-1)/sqrt(v) at z
  double sum = moments[0];
  double last = sum;
  for (std::size_t k = 1; k < kTerms; ++k) {
    double& moment = moments[k % 2];
    if (k > 1) {
      rise *= z * scale;
      moment = rise + static_cast<double>(k - 1) * inverse * moment;
    }
    const double known = k > 1 ? product * square[k - 2] : 0;
    square[k] = 2 / static_cast<double>(k + 2) * (skew * d[k - 1] - known);
    double products = 0;
    for (std::size_t i = 1; i < k; ++i) products += d[i] * d[k - i];
    d[k] = (square[k] - products) / 2;
    for (std::size_t i = 1; i <= k; ++i) g[k] -= d[i] * g[k - i];
    const double term = g[k] * moment;
    sum += term;
    // Two terms decide, because the odd ones vanish for a = b.
    if (std::fabs(term) + std::fabs(last) <= 0.1 * kEpsilon * sum) break;
    last = term;
  }
  return sum;
}

// x^a y^b / B(a, b); `defect` is set where neither shape is below 1: the part of the exponent that
// vanishes at the mean.
ExpTerm TermAt(const BetaPoint& point, double a, double b, double& defect) {
  if (a > b) return TermAt(Mirror(point), b, a, defect);
  if (a == 0.5)
    return {b * LogOf(Mirror(point)),
            std::sqrt(point.x) * GammaRatioOfHalf(b) * std::numbers::inv_sqrtpi};
  if (a < 1)
    return {a * LogOf(point) + b * LogOf(Mirror(point)) + LogGammaRatio(a, b) - LogGamma1p(a), a};
  const double n = a + b;
  defect = LogDefect(-point.lambda, a, n * point.x) + LogDefect(point.lambda, b, n * point.y);
  return {-defect + StirlingError(n) - StirlingError(a) - StirlingError(b),
          kInverseSqrt2Pi * std::sqrt(a / n * b)};
}

// The tails by way of the lower one, for x up to about the mean.
TailsAndSlope FromLower(const BetaPoint& point, double a, double b) {
  double defect = 0;
  const ExpTerm term = TermAt(point, a, b, defect);
  const ScaledExp power = ExpOf(term.exponent);
  const double slope = power.Times(term.factor);
  if (power.head == 0) return {{0, 1}, slope, point.lambda};
  const double variance = a / (a + b) * b;
  double lower = 0;
  if (variance >= kExpansionFrom && 2 * defect <= kExpansionReach * kExpansionReach * variance)
    lower = power.Times(kInverseSqrt2Pi * LowerExpansion(defect, a, b));
  else if ((a <= 1 || b <= 1) && point.x <= kSeriesUpTo)
    lower = power.Times(term.factor * LowerSeries(point, a, b));
  else
    lower = power.Times(term.factor * LowerFraction(point, a, b));
  lower = AtMostOne(lower);
  const bool cancels = a < 1 && lower > 0.5;
  return {{lower, cancels ? UpperSmallShape(point, a, b) : 1 - lower}, slope, point.lambda};
}

// The tails for b = 1: the lower one is x^a.
TailsAndSlope PowerTails(const BetaPoint& point, double a) {
  const double lower =
      point.x < 0.5 ? ZeroOrMore(std::pow(point.x, a)) : PowerOfComplement(point.y, a);
  return {{lower, -std::expm1(a * LogOf(point))}, a * point.y * lower, point.lambda};
}

}  // namespace

double LogOf(const BetaPoint& point) {
  return point.x < 0.5 ? std::log(point.x) : std::log1p(-point.y);
}

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
  // kSmallest stands for a part that underflows, which is still not 0.
  constexpr double kSmallest = std::numeric_limits<double>::denorm_min();
  const double odds = std::max(ratio * (a / b), kSmallest);
  if (odds <= 1) return {odds / (1 + odds), 1 / (1 + odds), a * (1 - ratio) / (1 + odds)};
  const double inverse = std::max(b / a / ratio, kSmallest);
  return {1 / (1 + inverse), inverse / (1 + inverse), b * ((1 - ratio) / ratio) / (1 + inverse)};
}

ExpTerm BetaTerm(const BetaPoint& point, double a, double b) {
  double defect = 0;
  return TermAt(point, a, b, defect);
}

TailsAndSlope IncompleteBetaAndSlope(const BetaPoint& point, double a, double b) {
  if (a == 1 && b == 1) return {{point.x, point.y}, point.x * point.y, point.lambda};
  if (b == 1) return PowerTails(point, a);
  // isLower tells that x is below the mean, or for the fraction and the series of small shapes
  // below (a + 1)/(a + b + 2).
  const bool isLower =
      std::min(a, b) >= kExpansionFrom ? point.lambda >= 0 : point.lambda > point.x - point.y;
  if (isLower && a != 1) return FromLower(point, a, b);
  const BetaPoint mirror = Mirror(point);
  const TailsAndSlope mirrored = a == 1 ? PowerTails(mirror, b) : FromLower(mirror, b, a);
  return {Swap(mirrored.tails), mirrored.slope, point.lambda};
}

Tails IncompleteBeta(const BetaPoint& point, double a, double b) {
  if (point.x <= 0) return {0, 1};
  if (point.y <= 0) return {1, 0};
  return IncompleteBetaAndSlope(point, a, b).tails;
}

}  // namespace NQMath_940::internal
