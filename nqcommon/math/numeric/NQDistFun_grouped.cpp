#include <nqcommon/math/numeric/NQDistFun.h>

#include <algorithm>
#include <cmath>
#include <cstddef>

#include <nqcommon/common/NQMV.h>

namespace NQMath_940 {

using NQCommon_940::NQMV;

namespace {

using Vector = std::vector<double>;

// (1 - f) low.value + f high.value, f the place of `target` among the cumulative frequencies.
struct Knot {
  double value;
  double cumulative;
};

double Interpolate(const Knot& low, const Knot& high, double target) {
  const double span = high.cumulative - low.cumulative;
  if (!(span > 0)) return NQMV::Missing();
  // An open first or last class has an infinite bound.
  if (target == low.cumulative) return low.value;
  if (target == high.cumulative) return high.value;
  const double f = (target - low.cumulative) / span;
  return NQMV::MissingIfNaN((1 - f) * low.value + f * high.value);
}

// The knots of class i, of which `below` precede in frequency: its two ends, or its midpoint and
// that of the next class.
struct Segment {
  Knot low;
  Knot high;
};

constexpr long kFound = 0;
constexpr long kBelowFirst = 1;
constexpr long kAboveLast = 2;
constexpr long kInvalid = -1;

enum class Ends { kMidpoints, kWidths, kBounds };

Segment SegmentOf(Ends ends, std::size_t i, double below, const Vector& values, const Vector& freqs,
                  const Vector& bounds) {
  const double above = below + freqs[i];
  if (ends == Ends::kMidpoints)
    return {{values[i], below + 0.5 * freqs[i]}, {values[i + 1], above + 0.5 * freqs[i + 1]}};
  if (ends == Ends::kBounds) return {{bounds[i], below}, {bounds[i + 1], above}};
  const double half = 0.5 * (bounds[i + 1] - bounds[i]);
  return {{values[i] - half, below}, {values[i] + half, above}};
}

// The value of the observation of that rank, 1 the first.
double ValueAtRank(std::size_t n, const Vector& values, const Vector& freqs, double rank) {
  double below = 0;
  for (std::size_t i = 0; i + 1 < n; ++i) {
    below += freqs[i];
    if (below >= rank) return values[i];
  }
  return values[n - 1];
}

double ValueAtRankFromTop(std::size_t n, const Vector& values, const Vector& freqs, double total,
                          double rank) {
  double below = total;
  for (std::size_t i = n; i-- > 1;) {
    below -= freqs[i];
    if (below < rank) return values[i];
  }
  return values[0];
}

bool IsFrequencyTable(std::size_t n, const Vector& values, const Vector& freqs, double total) {
  double sum = 0;
  for (std::size_t i = 0; i < n; ++i) {
    if (!(freqs[i] >= 0) || std::isnan(values[i]) || (i > 0 && !(values[i] > values[i - 1])))
      return false;
    sum += freqs[i];
  }
  return sum == total;
}

}  // namespace

void NQDistFun::GPTile(long n, double pct, const Vector& values, const Vector& freqs,
                       const Vector& bounds, long method, double& result, long& status) {
  result = NQMV::Missing();
  status = kInvalid;
  if (n < 2) return;
  const auto classes = static_cast<std::size_t>(n);
  const Ends ends = method <= 0 ? Ends::kMidpoints : method == 1 ? Ends::kWidths : Ends::kBounds;
  if (freqs.size() < classes || (ends != Ends::kBounds && values.size() < classes) ||
      (ends != Ends::kMidpoints && bounds.size() < classes + 1))
    return;
  double total = 0;
  for (std::size_t i = 0; i < classes; ++i) total += freqs[i];
  const double target = pct / 100 * total;
  if (std::isnan(target) || std::isinf(total)) return;

  const std::size_t segments = ends == Ends::kMidpoints ? classes - 1 : classes;
  double below = 0;
  for (std::size_t i = 0; i < segments; ++i) {
    const Segment at = SegmentOf(ends, i, below, values, freqs, bounds);
    if (target < at.low.cumulative) {
      status = kBelowFirst;
      return;
    }
    if (target <= at.high.cumulative) {
      status = kFound;
      result = Interpolate(at.low, at.high, target);
      return;
    }
    below += freqs[i];
  }
  status = kAboveLast;
}

void NQDistFun::Mednci(long n, const Vector& values, const Vector& freqs, double total,
                       double confPct, bool flag, double& lower, double& upper,
                       double& achievedPct) {
  lower = upper = achievedPct = NQMV::Missing();
  if (!(total > 2 && confPct >= 0 && confPct <= 100) || std::isinf(total) || n < 1) return;
  const auto distinct = static_cast<std::size_t>(n);
  if (values.size() < distinct || freqs.size() < distinct) return;
  if (flag && !IsFrequencyTable(distinct, values, freqs, total)) return;
  long status = 0;
  const double quantile = IdfBin(0.5 - confPct / 200, total, 0.5, status);
  if (NQMV::IsMissing(quantile)) return;
  // No observations reach 100 percent: the whole range then, at what it reaches.
  const double j = std::max(quantile, 0.0);
  lower = ValueAtRank(distinct, values, freqs, std::min(j + 1, total));
  upper = ValueAtRankFromTop(distinct, values, freqs, total, std::max(total - j, 1.0));
  achievedPct = 200 * (cdfbet(0.5, j + 1, total - j, status) - 0.5);
}

}  // namespace NQMath_940
