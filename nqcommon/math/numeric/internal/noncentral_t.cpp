#include <nqcommon/math/numeric/internal/noncentral_t.h>

#include <algorithm>
#include <cmath>
#include <numbers>

#include <nqcommon/math/kernels/log_gamma.h>
#include <nqcommon/math/numeric/NQDistFun.h>
#include <nqcommon/math/numeric/internal/poisson_mixture.h>
#include <nqcommon/math/numeric/internal/trapezoid.h>

namespace NQMath_940::internal {

namespace {

constexpr double kLargestNcp = 1e150;  // a larger one is taken for it

// Integrals over u = ln S, whose density is
// sqrt(df/pi) exp(-df/2 (e^2u - 1 - 2u) - StirlingError(df/2)).
class ChiIntegral {
 public:
  explicit ChiIntegral(double df)
      : fDf(df), fScale(0.5 * std::log(df / std::numbers::pi) - StirlingError(df / 2)) {}

  // The integral of the density of u times given(u - peak), for an integrand with one peak, at
  // about `peak`, and a logarithm whose second derivative there is at least twice -`curvature`.
  template <class Given>
  double Of(double peak, double curvature, Given given) const {
    // u runs as v about the peak. Far to the left, where the density may fall as slowly as
    // e^(df u), it runs as -e^(-v/2). The 12 keeps the step short enough for e^2u, whose rise off
    // the real line limits it however flat the peak is.
    constexpr double kStep = 0.4;
    constexpr double kShort = 12;
    constexpr double kBend = 3;
    const double length = 1 / std::sqrt(curvature + kShort);
    return IntegrateLine(kStep, [&](double v) {
      const double fall = std::exp(-kBend - v / 2);
      const double offset = length * (v - 2 * fall);
      return std::exp(LogDensity(peak + offset)) * given(offset) * length * (1 + fall);
    });
  }

 private:
  double LogDensity(double u) const {
    constexpr double kSmall = 0.15;
    const double rise = std::expm1(2 * u);
    const double defect = std::fabs(u) < kSmall ? LogDefect(rise, 1 + rise) : rise - 2 * u;
    return fScale - fDf / 2 * defect;
  }

  double fDf;
  double fScale;
};

// s > 0 with (df + t^2) s^2 - t ncp s = count: where s^count e^(-df s^2/2) e^(-(t s - ncp)^2/2)
// peaks.
double PeakOfS(double t, double df, double ncp, double count) {
  const double size = std::hypot(std::sqrt(df), t);
  const double slope = t / size * ncp;
  const double root = std::hypot(slope, 2 * std::sqrt(count));
  return slope >= 0 ? (slope + root) / (2 * size) : 2 * count / size / (root - slope);
}

// P(T <= -t), t > 0, ncp > 0: the series of this tail cancel, so the probability given S is
// integrated over S.
double OppositeTail(double t, double df, double ncp) {
  if (NQDistFun::prbnrm(-ncp) == 0) return 0;
  const double s = PeakOfS(-t, df, ncp, df);
  return ChiIntegral(df).Of(std::log(s), df, [t, ncp, s](double offset) {
    return NQDistFun::prbnrm(-(t * s * std::exp(offset) + ncp));
  });
}

// t > 0, ncp > 0: P(T > t) is half the sum over Poisson weights at whole and half indices of the
// tails of beta variables (Lenth 1989, AS 243; the sum of the complements as in Benton and
// Krishnamoorthy 2003).
double SameSideTail(Side wanted, double t, double df, double ncp) {
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
  if (ncp < 0) {
    const double upper = OppositeTail(t, df, -ncp);
    return side == Side::kLower ? 1 - upper : upper;
  }
  const double bounded = std::min(ncp, kLargestNcp);
  if (t <= kPowerTailFrom) return SameSideTail(side, t, df, bounded);
  const double upper =
      SameSideTail(Side::kUpper, kPowerTailFrom, df, bounded) * std::pow(t / kPowerTailFrom, -df);
  return side == Side::kLower ? 1 - upper : upper;
}

double NoncentralTDensity(double t, double df, double noncentrality) {
  const double ncp = std::clamp(noncentrality, -kLargestNcp, kLargestNcp);
  const double count = df + 1;
  const double s = PeakOfS(t, df, ncp, count);
  const double curvature = count + std::max(t * s * ncp, 0.0);
  // t s - ncp, by the equation of the peak where it would cancel.
  const double product = t * s;
  const double atPeak = product * ncp > count ? (count - df * s * s) / product : product - ncp;
  return ChiIntegral(df).Of(std::log(s), curvature, [s, product, atPeak](double offset) {
    return s * std::exp(offset) *
           NQDistFun::PdfNormalStandard(atPeak + product * std::expm1(offset));
  });
}

}  // namespace NQMath_940::internal
