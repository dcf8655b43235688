#include <nqcommon/math/numeric/LobattoQuad.h>

#include <algorithm>
#include <array>
#include <cmath>

#include <nqcommon/common/NQMV.h>
#include <nqcommon/common/NQStatus.h>
#include <nqcommon/common/memory_guard.h>
#include <nqcommon/math/numeric/BoundsList.h>

namespace NQMath_940 {

using NQCommon_940::NQMV;

namespace {

constexpr long kIterationLimit = 901;
constexpr long kMissingValue = 902;

// The rule on [0, 1]: nodes 0, (1 -+ sqrt(3/7))/2, 1/2 and 1, weights 1/20, 49/180 and 16/45.
constexpr double kLeftNode = 0.17267316464601146;
constexpr double kRightNode = 0.8273268353539885;
constexpr std::array<double, 5> kWeights = {0.05, 0.2722222222222222, 0.35555555555555557,
                                            0.2722222222222222, 0.05};

}  // namespace

double LobattoQuad::SumUp(double a, double b) {
  if (!fIntegrand || b <= a) return 0;
  const double h = b - a;
  const std::array<double, 5> nodes = {a, a + kLeftNode * h, a + 0.5 * h, a + kRightNode * h, b};
  double sum = 0;
  for (std::size_t k = 0; k < nodes.size(); ++k) {
    const double value = fIntegrand->Evaluate(nodes[k]);
    if (NQMV::IsMissing(value)) return NQMV::Missing();
    sum += kWeights[k] * value;
  }
  return h * sum;
}

double LobattoQuad::Integrate(double a, double b) {
  fNIterations = 0;
  fWarnings->ClearWarnings();
  if (!fIntegrand) return 0;
  AdjustBounds(a, b);
  if (b <= a) return 0;
  const double span = b - a;
  if (!std::isfinite(span)) return Fail();

  BoundsList intervals(this);
  if (!intervals.Initialize(a, b)) return Fail();
  double total = 0;
  bool unfinished = true;
  while (unfinished && !StopOuterLoop(intervals.GetFirstLeft(), b, span)) {
    double integral = 0;
    if (!RefineFirst(intervals, integral)) return Fail();
    ++fNIterations;
    total += integral;
    unfinished = intervals.Remove() > 0;
  }
  if (unfinished && fNIterations >= fMaxIter) {
    double whole = 0;
    double halves = 0;
    intervals.Initialize(intervals.GetFirstLeft(), b);
    intervals.ComputeI0andI1(whole, halves);
    if (NQMV::IsMissing(halves)) return Fail();
    total += halves;
    Warn(kIterationLimit);
  }
  return total;
}

bool LobattoQuad::StopOuterLoop(double left, double right, double span) const {
  return fNIterations >= fMaxIter || (right - left) / span <= fCloseness;
}

bool LobattoQuad::StopInnerLoop(double i0, double i1, int splits) const {
  const double larger = std::max(std::fabs(i0), std::fabs(i1));
  if (larger == 0) return true;
  const double diff = std::fabs(i1 - i0) / (fAbsConvergence ? 1 : larger);
  return diff <= fTolerance || splits >= fMaxSplits;
}

void LobattoQuad::AdjustBounds(double& a, double& b) {
  const double pivot = fBoundaryAdjustmentPivot;
  const bool adjustRight = fAdjustRight && pivot < b;
  const bool adjustLeft = fAdjustLeft && a < pivot;
  if (!adjustRight && !adjustLeft) return;
  const double atPivot = fIntegrand->Evaluate(pivot);
  const double threshold = fBoundaryAdjustmentCoef * std::fabs(atPivot);
  // Without a usable threshold everything would look negligible, and the interval would vanish.
  if (NQMV::IsMissing(atPivot) || !std::isfinite(threshold)) return;
  if (adjustRight) b = AdjustedEnd(b, threshold);
  if (adjustLeft) a = AdjustedEnd(a, threshold);
}

double LobattoQuad::AdjustedEnd(double end, double threshold) {
  const double pivot = fBoundaryAdjustmentPivot;
  double h = (end - pivot) / 2;
  // An infinite distance never shrinks.
  if (!std::isfinite(h) || !(std::fabs(fIntegrand->Evaluate(end)) < threshold)) return end;
  // Where h is lost beside the pivot there is no point left to try.
  for (; pivot + h != pivot; h /= 2) {
    const double value = fIntegrand->Evaluate(pivot + h);
    if (NQMV::IsMissing(value) || std::fabs(value) >= threshold) break;
  }
  return pivot + 2 * h;
}

bool LobattoQuad::RefineFirst(BoundsList& intervals, double& integral) {
  for (int splits = 0;; ++splits) {
    double whole = 0;
    intervals.ComputeI0andI1(whole, integral);
    if (NQMV::IsMissing(integral)) return false;
    if (StopInnerLoop(whole, integral, splits)) return true;
    if (!intervals.Split()) return false;
  }
}

void LobattoQuad::Warn(long code) {
  using namespace NQCommon_940;
  GuardMemory([&] { fWarnings->AddWarning(NQStatus(code, true), NQWarnings::ToBoth); });
}

double LobattoQuad::Fail() {
  Warn(kMissingValue);
  return NQMV::Missing();
}

}  // namespace NQMath_940
