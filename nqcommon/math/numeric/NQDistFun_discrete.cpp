#include <nqcommon/math/numeric/NQDistFun.h>

#include <algorithm>
#include <cmath>

#include <nqcommon/common/NQMV.h>
#include <nqcommon/math/kernels/log_gamma.h>
#include <nqcommon/math/numeric/internal/failure.h>
#include <nqcommon/math/numeric/internal/hypergeometric.h>
#include <nqcommon/math/numeric/internal/incomplete_beta.h>

namespace NQMath_940 {

using namespace internal;
using NQCommon_940::NQMV;

namespace {

bool IsWhole(double x) { return std::floor(x) == x; }

bool IsProbability(double p) { return p >= 0 && p <= 1; }

// P(X <= k), 0 <= k < n, 0 < p < 1: 1 - I_p(k + 1, n - k) (Abramowitz and Stegun 1964, 26.5.24).
double BinomialLowerTail(double k, double n, double p) {
  if (k == 0) return PowerOfComplement(p, n);
  const double a = BoundedShape(k + 1);
  const double b = BoundedShape(n - k);
  return IncompleteBeta(BetaPointAt(p, a, b), a, b).upper;
}

}  // namespace

double NQDistFun::dnlbnc(const double& n, const double& k, long& status) {
  constexpr double kExactUpTo = 33;  // the product of the factors fits a double exactly
  if (IsRefused(!(k >= 0 && k <= n), status)) return NQMV::Missing();
  if (k == 0 || k == n) return 0;
  const double smaller = BoundedShape(std::min(k, n - k));
  if (n <= kExactUpTo && IsWhole(n) && IsWhole(k)) {
    double product = 1;
    for (int i = 1; i <= static_cast<int>(smaller); ++i) product = product * (n - smaller + i) / i;
    return std::log(product);
  }
  const double rest = BoundedShape(n - smaller);
  const double coefficient = LogGammaRatio(smaller, rest + 1) - LogGamma(smaller + 1);
  return std::max(coefficient, 0.0);
}

double NQDistFun::CdfBin(double k, double n, double p, long& status) {
  constexpr int kNotWholeTrials = 3;
  if (!IsWhole(n)) return Fail(kNotWholeTrials, status);
  if (IsRefused(n < 1 || !IsProbability(p) || std::isnan(k), status)) return NQMV::Missing();
  const double whole = std::floor(k);
  if (whole < 0) return 0;
  if (whole >= n || p == 0) return 1;
  return p == 1 ? 0 : AsProbability(BinomialLowerTail(whole, n, p));
}

double NQDistFun::PdfBin(double k, double n, double p, long& status) {
  if (IsRefused(!(n >= 1) || !IsProbability(p) || std::isnan(k), status)) return NQMV::Missing();
  if (!IsWhole(k) || k < 0 || k > n) return 0;
  if (p == 0) return k == 0 ? 1 : 0;
  if (p == 1) return k == n ? 1 : 0;
  if (k == 0) return PowerOfComplement(p, n);
  if (k == n) return ZeroOrMore(std::pow(p, n));
  const double a = BoundedShape(k);
  const double b = BoundedShape(n - k);
  return ZeroOrMore(BinomialTerm(BetaPointAt(p, a, b), a, b).Value());
}

double NQDistFun::IdfBin(double q, double n, double p, long& status) {
  constexpr int kNotWholeTrials = 1;
  constexpr int kOutOfRange = 2;
  constexpr double kSlack = 2.842170943040401e-14;  // 2^-45
  if (!IsWhole(n)) return Fail(kNotWholeTrials, status);
  if (n < 1 || !IsProbability(q) || !IsProbability(p)) return Fail(kOutOfRange, status);
  status = kSuccess;
  if (q == 0) return p == 1 ? n - 1 : -1;
  if (p == 0) return 0;
  if (p == 1 || q == 1) return n;

  // The slack is relative to the smaller tail, so that far quantiles are told apart too.
  const double goal = q - kSlack * std::min(q, 1 - q);
  const double z = probit(q);
  // `about` is the expansion of Cornish and Fisher 1938 up to the skewness.
  const double about = z * std::sqrt(n * p * (1 - p)) + n * p + (z * z - 1) * (1 - 2 * p) / 6 - 0.5;
  double k = std::clamp(std::floor(about), 0.0, n);
  double low = -1;  // the cdf is below the goal at low, and not below it at high
  double high = n;
  for (double step = 1; low < k && k < high; step *= 2) {
    const bool reached = BinomialLowerTail(k, n, p) >= goal;
    (reached ? high : low) = k;
    k += reached ? -step : step;
  }
  while (high - low > 1) {
    const double middle = std::floor(low + (high - low) / 2);
    if (middle <= low || middle >= high) break;  // neighbours among the doubles
    (BinomialLowerTail(middle, n, p) >= goal ? high : low) = middle;
  }
  return high;
}

double NQDistFun::PdfNegBin(double k, double r, double p, long& status) {
  if (IsRefused(!(r >= 0 && p > 0 && p <= 1) || std::isnan(k), status)) return NQMV::Missing();
  if (k < 0 || !IsWhole(k)) return 0;
  if (p == 1 || r == 0) return k == 0 ? 1 : 0;
  const double shape = BoundedShape(r);
  if (k == 0) return ZeroOrMore(std::pow(p, shape));
  if (k == 1) {
    const double root = std::pow(p, shape / 2);
    return ZeroOrMore(root * (shape * (1 - p)) * root);
  }
  if (k > kLargestShape) return 0;
  if (shape == 1) return ZeroOrMore(p * PowerOfComplement(p, k));
  // C(k + r - 1, k) p^r (1-p)^k = p^r (1-p)^k / (k B(r, k)) holds for r < 1 too.
  const auto term = BetaTerm(BetaPointAt(p, shape, k), shape, k);
  return ZeroOrMore(ExpTerm{term.exponent, term.factor / k}.Value());
}

double NQDistFun::PdfHyper(long k, long total, long draws, long successes) {
  if (draws <= 0 || successes <= 0 || draws > total || successes > total) return NQMV::Missing();
  if (k < 0 || k > std::min(draws, successes)) return NQMV::Missing();
  const long othersLeft = total - successes - draws + k;
  if (othersLeft < 0) return NQMV::Missing();
  const FourfoldTable at = {static_cast<double>(k), static_cast<double>(successes - k),
                            static_cast<double>(draws - k), static_cast<double>(othersLeft)};
  return AsProbability(HypergeometricTerm(at).Value());
}

double NQDistFun::CDFHyper(double k, double total, double successes, double draws, int& status) {
  const auto isCount = [total](double count) {
    return IsWhole(count) && count >= 0 && count <= total;
  };
  if (IsRefused(!(total >= 1 && total <= kLargestShape) || !isCount(total) || !isCount(successes) ||
                    !isCount(draws) || std::isnan(k),
                status))
    return NQMV::Missing();
  const double whole = std::floor(k);
  const double others = total - successes;
  if (whole < std::max(0.0, draws - others)) return 0;
  if (whole >= std::min(successes, draws)) return 1;
  const double othersDrawn = draws - whole;
  const FourfoldTable at = {whole, successes - whole, othersDrawn, others - othersDrawn};
  if (at.RatioDown() < 1) return HypergeometricLowerTail(at);
  // More than k of the drawn are marked when fewer than successes - k of those left are.
  return 1 - HypergeometricLowerTail(at.SwapDrawnAndLeft().Down(1));
}

}  // namespace NQMath_940
