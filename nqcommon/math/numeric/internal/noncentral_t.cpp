// Noncentral t by region; the worst relative error of values above 1e-6 and of all:
//
//   tail, t and ncp of one sign     two Poisson mixtures of beta variables    5e-14, 4e-13
//     |t| > 1e150                     and a power of t
//     |ncp| > 140                     integral over the normal or chi variable
//   tail, t and ncp of two signs    integral over the chi variable            5e-14, 4e-13
//   density                         integral over the chi variable            5e-14, 4e-13
#include <nqcommon/math/numeric/internal/noncentral_t.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include <nqcommon/math/kernels/log_gamma.h>
#include <nqcommon/math/kernels/polynomial.h>
#include <nqcommon/math/numeric/NQDistFun.h>
#include <nqcommon/math/numeric/internal/normal_tail.h>
#include <nqcommon/math/numeric/internal/poisson_mixture.h>
#include <nqcommon/math/numeric/internal/trapezoid.h>

namespace NQMath_940::internal {

namespace {

constexpr double kLargestNcp = 1e150;  // a larger one is taken for it

// (e^v - 1 - v)/v^2, |v| < kSmall: 1/2!, 1/3!, ...; the first term left out is below 2e-17 of it.
constexpr double kSmall = 0.15;
constexpr std::array<double, 11> kExpDefect = {
    1.0 / 2,     1.0 / 6,      1.0 / 24,      1.0 / 120,      1.0 / 720,      1.0 / 5040,
    1.0 / 40320, 1.0 / 362880, 1.0 / 3628800, 1.0 / 39916800, 1.0 / 479001600};

// The integral over v of exp(-count (e^v - 1 - v) - squares (e^v - 1)^2 / 2) given(e^v - 1): over
// ln s about the peak of s^count e^(-df s^2/2) e^(-(t s - ncp)^2/2), where squares is
// (df + t^2) s^2, relative to the peak. Every part of the exponent is negative, so nothing cancels.
// It is summed outward from `start`.
template <class Given>
double IntegrateAboutPeak(double count, double squares, double start, Given given) {
  // Far to the left, where the integrand may fall as slowly as e^(count v), v runs as -e^(-x/2); a
  // steep one does without. kShort keeps the step short enough for e^2v, whose rise off the real
  // line limits it however flat the peak is.
  constexpr double kSteep = 50;
  constexpr double kShort = 30;
  constexpr double kBend = 3;
  const bool isSteep = count >= kSteep;
  const double step = isSteep ? 0.7 : 0.5;
  const double length = 1 / std::sqrt(count + squares + kShort);
  return length * IntegrateLine(step, [&](double x) {
           const double fall = isSteep ? 0 : std::exp(-kBend - x / 2);
           const double v = start + length * (x - 2 * fall);
           const bool isSmall = std::fabs(v) < kSmall;
           const double defect = isSmall ? v * v * Polynomial(kExpDefect, v) : std::expm1(v) - v;
           const double rise = v + defect;
           return std::exp(-count * defect - squares / 2 * (rise * rise)) * given(rise) *
                  (1 + fall);
         });
}

// The density of ln S at ln s: sqrt(df/pi) exp(-df/2 (s^2 - 1 - 2 ln s) - StirlingError(df/2)).
ExpTerm ChiTerm(double df, double s) {
  const double u = std::log(s);
  const double rise = (s - 1) * (s + 1);
  const double defect = std::fabs(u) < kSmall ? LogDefect(rise, 1 + rise) : rise - 2 * u;
  return {-df / 2 * defect - StirlingError(df / 2), std::sqrt(df / std::numbers::pi)};
}

// s > 0 with (df + t^2) s^2 - t ncp s = count: where s^count e^(-df s^2/2) e^(-(t s - ncp)^2/2)
// peaks.
double PeakOfS(double t, double df, double ncp, double count) {
  const double size = std::hypot(std::sqrt(df), t);
  const double slope = t / size * ncp;
  const double root = std::hypot(slope, 2 * std::sqrt(count));
  return slope >= 0 ? (slope + root) / (2 * size) : 2 * count / size / (root - slope);
}

// The density of ln S at ln s times the normal density at z, times `factor`.
double PeakValue(double df, double s, double z, double factor) {
  const ExpTerm chi = ChiTerm(df, s);
  const double square = z * z;
  const double lost = std::fma(z, z, -square);
  const double normal = ExpOf(-square / 2).Times(kInverseSqrt2Pi * (1 - lost / 2) * factor);
  return ExpOf(chi.exponent).Times(chi.factor * normal);
}

// P(T <= -t), t > 0, ncp > 0: the series of this tail cancel, so the probability given S is
// integrated over S.
double OppositeTail(double t, double df, double ncp) {
  const double s = PeakOfS(-t, df, ncp, df);
  const double product = t * s;
  const double squares = df * s * s + product * product;
  const double integral = IntegrateAboutPeak(df, squares, 0, [product, ncp](double rise) {
    return MillsRatio(product * (1 + rise) + ncp);
  });
  return PeakValue(df, s, product + ncp, integral);
}

// t > 0 and a large ncp: the probability given the normal variable or given the chi variable,
// integrated over the one that spreads less. Where the tail is the smaller one, its most likely
// point has t s = z + ncp.
double LargeNcpTail(Side side, double t, double df, double ncp) {
  const bool isLower = side == Side::kLower;
  const bool isSmall = isLower ? t < ncp : t > ncp;
  const double s = isSmall ? PeakOfS(t, df, ncp, df) : 1;
  if (ncp * ncp < 2 * df) {
    const double integral = IntegrateAboutPeak(df, df, std::log(s), [=](double rise) {
      const double z = (t - ncp) + t * rise;
      return NormalLower(isLower ? z : -z);
    });
    return ChiTerm(df, 1).Value() * integral;
  }
  constexpr double kStep = 0.5;
  const double start = isSmall ? t * s - ncp : 0;
  return IntegrateLine(kStep, [=](double x) {
    const double z = start + x;
    const double ratio = (z + ncp) / t;
    const Tails chi = IncompleteGamma(df / 2 * ratio * ratio, df / 2);
    return NQDistFun::PdfNormalStandard(z) * (isLower ? chi.upper : chi.lower);
  });
}

// t > 0, ncp > 0: P(T > t) is half the sum over Poisson weights at whole and half indices of the
// tails of beta variables (Lenth 1989, AS 243; the sum of the complements as in Benton and
// Krishnamoorthy 2003).
double SameSideTail(Side wanted, double t, double df, double ncp) {
  constexpr double kLargeNcp = 140;  // from here on the mixtures would take strides
  if (ncp > kLargeNcp) return LargeNcpTail(wanted, t, df, ncp);
  const double b = df / 2;
  const double lambda = 0.5 * ncp * ncp;
  const BetaPoint point = BetaPointOfRatio(t * t, 0.5, b);
  const BetaFamily family = {point.x, point.y, 0.5, b};
  const bool isBelow = point.x * (0.5 + b + lambda) < 0.5 + lambda;
  return TailByValue(wanted, isBelow ? Side::kLower : Side::kUpper, [&](Side side) {
    const double sum = Mixture(side, lambda, 0, family) + Mixture(side, lambda, 0.5, family);
    return 0.5 * sum + (side == Side::kLower ? NQDistFun::prbnrm(-ncp) : 0);
  });
}

Side Opposite(Side side) { return side == Side::kLower ? Side::kUpper : Side::kLower; }

}  // namespace

double NoncentralTTail(Side side, double t, double df, double ncp) {
  if (t == 0) return NQDistFun::prbnrm(side == Side::kLower ? -ncp : ncp);
  if (ncp == 0) return NQDistFun::CdfT(side == Side::kLower ? t : -t, df);
  if (t < 0) return NoncentralTTail(Opposite(side), -t, df, -ncp);
  const double bounded = std::min(std::fabs(ncp), kLargestNcp);
  if (ncp < 0) {
    const double upper = OppositeTail(t, df, bounded);
    return side == Side::kLower ? 1 - upper : upper;
  }
  if (t <= kPowerTailFrom) return SameSideTail(side, t, df, bounded);
  const double upper =
      SameSideTail(Side::kUpper, kPowerTailFrom, df, bounded) * std::pow(t / kPowerTailFrom, -df);
  return side == Side::kLower ? 1 - upper : upper;
}

double NoncentralTDensity(double t, double df, double noncentrality) {
  const double ncp = std::clamp(noncentrality, -kLargestNcp, kLargestNcp);
  const double count = df + 1;
  const double s = PeakOfS(t, df, ncp, count);
  // t s - ncp, by the equation of the peak where it would cancel.
  const double product = t * s;
  const double atPeak = product * ncp > count ? (count - df * s * s) / product : product - ncp;
  const double squares = df * s * s + product * product;
  const double integral = IntegrateAboutPeak(count, squares, 0, [](double) { return 1.0; });
  return ZeroOrMore(PeakValue(df, s, atPeak, s * integral));
}

}  // namespace NQMath_940::internal
