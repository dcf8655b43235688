#include <nqcommon/math/numeric/NQMathFun.h>

#include <array>
#include <cmath>
#include <limits>

#include <nqcommon/common/NQMV.h>
#include <nqcommon/math/kernels/polynomial.h>

namespace NQMath_940 {

using NQCommon_940::NQMV;

namespace {

constexpr double kEpsilon = std::numeric_limits<double>::epsilon();

constexpr double kSmallestArgument = 1e-16;

// At z = x + 10 the first term that the asymptotic series leave out is below 1e-14.
constexpr int kShift = 10;

constexpr double kEulerGamma = 0.5772156649015329;

// The coefficients of powers of 1/z^2, from the Bernoulli numbers B(2k), k = 1 .. 6: -B(2k)/(2k)
// for psi, and B(2k) after a leading 1 for psi' (Abramowitz and Stegun 1964, 6.3.18 and 6.4.12).
constexpr std::array<double, 6> kDigammaSeries = {{-0.08333333333333333, 0.008333333333333333,
                                                   -0.003968253968253968, 0.004166666666666667,
                                                   -0.007575757575757576, 0.021092796092796094}};
constexpr std::array<double, 7> kTrigammaSeries = {{1, 0.16666666666666666, -0.03333333333333333,
                                                    0.023809523809523808, -0.03333333333333333,
                                                    0.07575757575757576, -0.2531135531135531}};

template <class T>
NQMathFun::Index FindBin(const std::vector<T>& v, NQMathFun::Index lo, NQMathFun::Index hi, T x,
                         bool flag) {
  const auto at = [&v](NQMathFun::Index i) { return v[static_cast<std::size_t>(i)]; };
  if (lo > hi || lo < 0 || hi >= static_cast<NQMathFun::Index>(v.size())) return -2;
  // These tests for x inside are in the form that NaN fails.
  if (!(flag ? x < at(hi) : x <= at(hi))) return -1;
  if (lo > 0 && !(flag ? x >= at(lo - 1) : x > at(lo - 1))) return -1;
  while (lo <= hi) {
    const NQMathFun::Index probe = lo + (hi - lo) / 2;
    if (at(probe) == x) return probe + (flag ? 1 : 0);
    if (at(probe) > x)
      hi = probe - 1;
    else
      lo = probe + 1;
  }
  return lo;
}

template <class Skip>
void FindTwoLargestBut(Skip skip, const std::vector<double>& v, double& first, double& second) {
  first = second = NQMV::Missing();
  std::size_t found = 0;
  for (const double x : v) {
    if (std::isnan(x) || skip(x)) continue;
    if (found == 0 || x > first) {
      second = first;
      first = x;
    } else if (found == 1 || x > second) {
      second = x;
    }
    ++found;
  }
}

}  // namespace

double NQMathFun::Digamma(double x) {
  if (x <= kSmallestArgument) return NQMV::Missing();
  // -1/x - gamma is the series about 0 up to its constant.
  if (x < 1e-5) return -1 / x - kEulerGamma;
  // The sum below goes back from z in steps of 1. It takes x + k, not z - k: near 0 the rounding of
  // z would cost digits of 1/x.
  const double z = x + kShift;
  const double s = 1 / (z * z);
  double psi = std::log(z) - 0.5 / z + s * internal::Polynomial(kDigammaSeries, s);
  double back = 0;
  for (int k = kShift - 1; k >= 0; --k) back += 1 / (x + k);
  return psi - back;
}

double NQMathFun::Trigamma(double x) {
  if (x <= kSmallestArgument) return NQMV::Missing();
  if (x < 0.0001) return 1 / (x * x);
  const double z = x + kShift;
  const double s = 1 / (z * z);
  double psi = internal::Polynomial(kTrigammaSeries, s) / z + s / 2;
  for (int k = kShift - 1; k >= 0; --k) psi += 1 / ((x + k) * (x + k));
  return psi;
}

bool NQMathFun::IsValidDouble(double x) {
  constexpr double kLargest = std::numeric_limits<double>::max();
  return -kLargest <= x && x <= kLargest;
}

bool NQMathFun::QLReps(double x, double y) { return std::fabs(x) < y * kEpsilon; }

double NQMathFun::ReplaceIfSmall(double x, double y) { return std::fabs(x) < y ? y : x; }

NQMathFun::Index NQMathFun::BinSearch(const std::vector<double>& v, Index lo, Index hi, double x,
                                      bool flag) {
  return FindBin(v, lo, hi, x, flag);
}

NQMathFun::Index NQMathFun::BinSearch(const std::vector<int>& v, Index lo, Index hi, int x,
                                      bool flag) {
  return FindBin(v, lo, hi, x, flag);
}

void NQMathFun::FindTwoLargest(const std::vector<double>& v, double& first, double& second) {
  FindTwoLargestBut([](double) { return false; }, v, first, second);
}

void NQMathFun::FindTwoLargestNonMiss(const std::vector<double>& v, double& first, double& second) {
  FindTwoLargestBut(NQMV::IsMissing, v, first, second);
}

double NQMathFun::VMaxRelDiff(const std::vector<double>& a, const std::vector<double>& b,
                              double t) {
  constexpr double kDefaultOffset = 1e-6;
  const double offset = t == 0 ? kDefaultOffset : std::fabs(t);
  double largest = 0;
  for (std::size_t i = 0; i < a.size() && i < b.size(); ++i) {
    const double diff = std::fabs(a[i] - b[i]) / (std::fabs(b[i]) + offset);
    if (std::isnan(diff)) return diff;
    if (diff > largest) largest = diff;
  }
  return largest;
}

}  // namespace NQMath_940
