#include <nqcommon/math/numeric/NQDistFun.h>

#include <algorithm>
#include <cmath>

#include <nqcommon/common/NQMV.h>
#include <nqcommon/math/kernels/log_gamma.h>
#include <nqcommon/math/numeric/internal/failure.h>
#include <nqcommon/math/numeric/internal/incomplete_beta.h>
#include <nqcommon/math/numeric/internal/trapezoid.h>

namespace NQMath_940 {

using internal::ExpOrZero;
using internal::Fail;
using internal::kInvalidArguments;
using internal::kSuccess;
using NQCommon_940::NQMV;

namespace {

bool IsWhole(double x) { return std::floor(x) == x; }

bool IsProbability(double p) { return p >= 0 && p <= 1; }

// ln(C(k + rest, k) p^k (1-p)^rest), by deviances and Stirling differences (Loader 2000), which do
// not cancel as the log gammas of the binomial coefficient do. Neither count need be whole.
double LogBinomialTerm(double k, double rest, double p) {
  if (k == 0) return rest * std::log1p(-p);
  if (rest == 0) return k * std::log(p);
  const double a = internal::BoundedShape(k);
  const double b = internal::BoundedShape(rest);
  return internal::LogBetaTerm(internal::BetaPointAt(p, a, b), a, b) + std::log(1 / a + 1 / b);
}

// P(X <= k), 0 <= k < n, 0 < p < 1: 1 - I_p(k + 1, n - k) (Abramowitz and Stegun 1964, 26.5.24).
double BinomialLowerTail(double k, double n, double p) {
  if (k == 0) return ExpOrZero(n * std::log1p(-p));
  const double a = internal::BoundedShape(k + 1);
  const double b = internal::BoundedShape(n - k);
  return internal::IncompleteBeta(internal::BetaPointAt(p, a, b), a, b).upper;
}

// Items by two marks; the sums of the rows and columns are given, so that one count moves them all.
struct FourfoldTable {
  double markedDrawn;
  double markedLeft;
  double othersDrawn;
  double othersLeft;

  FourfoldTable Down(double by) const {
    return {markedDrawn - by, markedLeft + by, othersDrawn + by, othersLeft - by};
  }
  FourfoldTable SwapDrawnAndLeft() const {
    return {markedLeft, markedDrawn, othersLeft, othersDrawn};
  }
  // P of the table with one marked item fewer among the drawn, over P of this one.
  double RatioDown() const {
    return markedDrawn / (markedLeft + 1) * (othersLeft / (othersDrawn + 1));
  }
};

// ln P of the table, whole or not: the marked and the other items drawn as two binomial variables,
// given their sum. Any common probability gives the same value; the share of the drawn, or of the
// left where that is less and has more digits, keeps the three terms small.
double LogHypergeometricTerm(const FourfoldTable& at) {
  const double drawn = at.markedDrawn + at.othersDrawn;
  const double left = at.markedLeft + at.othersLeft;
  if (drawn > left) return LogHypergeometricTerm(at.SwapDrawnAndLeft());
  const double p = drawn / (drawn + left);
  return LogBinomialTerm(at.markedDrawn, at.markedLeft, p) +
         LogBinomialTerm(at.othersDrawn, at.othersLeft, p) - LogBinomialTerm(drawn, left, p);
}

// From this scale of change on, in items, a sum over the items is taken as an integral: what the
// terms of the Euler-Maclaurin formula up to the third derivative leave is about scale^-6/30000.
constexpr double kSmoothFrom = 200;

// The sum of P over this table and all below, over P of this one: the integral by the double
// exponential rule for a half line (Takahasi and Mori 1974), 1/2, and P'/12 - P"'/720 by central
// differences.
double SmoothSum(const FourfoldTable& from, double total, double scale) {
  constexpr double kStep = 0.125;
  const double atEnd = LogHypergeometricTerm(from);
  const double integral = internal::IntegrateLine(kStep, [&](double v) {
    const double distance = scale * std::exp(v - std::exp(-v));
    // What all the counts can hold of the distance; the slope does for the rest.
    const double held = (2 * total + distance) - 2 * total;
    const FourfoldTable at = from.Down(held);
    if (!(at.markedDrawn > 0 && at.othersLeft > 0)) return 0.0;
    const double rest = 1 + (distance - held) * (at.RatioDown() - 1);
    return std::exp(LogHypergeometricTerm(at) - atEnd) * rest * distance * (1 + std::exp(-v));
  });
  const double oneDown = from.RatioDown();
  const double oneUp = 1 / from.Down(-1).RatioDown();
  const double inner = oneUp - oneDown;
  const double outer = oneUp / from.Down(-2).RatioDown() - oneDown * from.Down(1).RatioDown();
  return integral + 0.5 + (82 * inner - 11 * outer) / 1440;
}

// P of this table and all below, for a table up to about the mean: P falls downwards.
double HypergeometricLowerTail(const FourfoldTable& from) {
  constexpr double kNegligible = 1e-18;
  const double first = ExpOrZero(LogHypergeometricTerm(from));
  const double marked = from.markedDrawn + from.markedLeft;
  const double others = from.othersDrawn + from.othersLeft;
  const double drawn = from.markedDrawn + from.othersDrawn;
  const double total = marked + others;
  const double variance =
      marked * (drawn / total) * (others / total) * ((total - drawn) / (total - 1));
  const double scale = std::min(std::sqrt(variance), 1 / (1 - from.RatioDown()));
  if (scale > kSmoothFrom) return first * SmoothSum(from, total, scale);

  double sum = 1;
  double term = 1;
  for (FourfoldTable at = from; term > kNegligible * sum; at = at.Down(1)) {
    term *= at.RatioDown();
    sum += term;
  }
  return first * sum;
}

}  // namespace

double NQDistFun::dnlbnc(const double& n, const double& k, long& status) {
  constexpr double kExactUpTo = 33;  // the product of the factors fits a double exactly
  if (!(k >= 0 && k <= n)) return Fail(kInvalidArguments, status);
  status = kSuccess;
  if (k == 0 || k == n) return 0;
  const double smaller = internal::BoundedShape(std::min(k, n - k));
  if (n <= kExactUpTo && IsWhole(n) && IsWhole(k)) {
    double product = 1;
    for (int i = 1; i <= static_cast<int>(smaller); ++i) product = product * (n - smaller + i) / i;
    return std::log(product);
  }
  const double rest = internal::BoundedShape(n - smaller);
  const double coefficient =
      internal::LogGammaRatio(smaller, rest + 1) - internal::LogGamma(smaller + 1);
  return std::max(coefficient, 0.0);
}

double NQDistFun::CdfBin(double k, double n, double p, long& status) {
  constexpr int kNotWholeTrials = 3;
  if (!IsWhole(n)) return Fail(kNotWholeTrials, status);
  if (n < 1 || !IsProbability(p) || std::isnan(k)) return Fail(kInvalidArguments, status);
  status = kSuccess;
  const double whole = std::floor(k);
  if (whole < 0) return 0;
  if (whole >= n || p == 0) return 1;
  return p == 1 ? 0 : BinomialLowerTail(whole, n, p);
}

double NQDistFun::PdfBin(double k, double n, double p, long& status) {
  if (!(n >= 1) || !IsProbability(p) || std::isnan(k)) return Fail(kInvalidArguments, status);
  status = kSuccess;
  if (!IsWhole(k) || k < 0 || k > n) return 0;
  if (p == 0) return k == 0 ? 1 : 0;
  if (p == 1) return k == n ? 1 : 0;
  return ExpOrZero(LogBinomialTerm(k, k == n ? 0 : n - k, p));
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

  // Relative to the smaller tail, so that far quantiles are told apart too.
  const double goal = q - kSlack * std::min(q, 1 - q);
  const double z = probit(q);
  // Cornish and Fisher 1938, to the skewness
  const double about = z * std::sqrt(n * p * (1 - p)) + n * p + (z * z - 1) * (1 - 2 * p) / 6 - 0.5;
  double k = std::clamp(std::floor(about), 0.0, n);
  double low = -1;  // the cdf is below the goal here, and not here:
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
  if (!(r >= 0 && p > 0 && p <= 1) || std::isnan(k)) return Fail(kInvalidArguments, status);
  status = kSuccess;
  if (k < 0 || !IsWhole(k)) return 0;
  if (p == 1 || r == 0) return k == 0 ? 1 : 0;
  const double shape = internal::BoundedShape(r);
  if (k == 0) return ExpOrZero(shape * std::log(p));
  if (k == 1) return ExpOrZero(shape * std::log(p)) * shape * (1 - p);
  if (k > internal::kLargestShape) return 0;
  if (shape == 1) return p * ExpOrZero(k * std::log1p(-p));
  // C(k + r - 1, k) p^r (1-p)^k = p^r (1-p)^k / (k B(r, k)), for r < 1 too
  const auto point = internal::BetaPointAt(p, shape, k);
  return ExpOrZero(internal::LogBetaTerm(point, shape, k) - std::log(k));
}

double NQDistFun::PdfHyper(long k, long total, long draws, long successes) {
  if (draws <= 0 || successes <= 0 || draws > total || successes > total) return NQMV::Missing();
  if (k < 0 || k > std::min(draws, successes)) return NQMV::Missing();
  const long othersLeft = total - successes - draws + k;
  if (othersLeft < 0) return NQMV::Missing();
  return ExpOrZero(
      LogHypergeometricTerm({static_cast<double>(k), static_cast<double>(successes - k),
                             static_cast<double>(draws - k), static_cast<double>(othersLeft)}));
}

double NQDistFun::CDFHyper(double k, double total, double successes, double draws, int& status) {
  const auto isCount = [total](double count) {
    return IsWhole(count) && count >= 0 && count <= total;
  };
  if (!(total >= 1 && total <= internal::kLargestShape) || !isCount(total) || !isCount(successes) ||
      !isCount(draws) || std::isnan(k))
    return Fail(kInvalidArguments, status);
  status = kSuccess;
  const double whole = std::floor(k);
  const double others = total - successes;
  if (whole < std::max(0.0, draws - others)) return 0;
  if (whole >= std::min(successes, draws)) return 1;
  const double othersDrawn = draws - whole;
  const FourfoldTable at = {whole, successes - whole, othersDrawn, others - othersDrawn};
  if (at.RatioDown() < 1) return internal::AsProbability(HypergeometricLowerTail(at));
  // More than k of the drawn are marked when fewer than successes - k of those left are.
  return 1 - internal::AsProbability(HypergeometricLowerTail(at.SwapDrawnAndLeft().Down(1)));
}

}  // namespace NQMath_940
