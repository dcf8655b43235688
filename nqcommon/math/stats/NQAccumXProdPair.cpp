#include <nqcommon/math/stats/NQAccumXProdPair.h>

#include <algorithm>
#include <cmath>
#include <utility>

#include <nqcommon/common/NQMV.h>
#include <nqcommon/common/display.h>
#include <nqcommon/common/memory_guard.h>
#include <nqcommon/math/kernels/display_frame.h>
#include <nqcommon/math/kernels/packed_triangle.h>
#include <nqcommon/math/stats/internal/correlation.h>
#include <nqcommon/math/stats/internal/merge_list.h>

namespace NQMath_940 {

using internal::DiagIndex;
using internal::LowerIndex;
using internal::RowStart;
using NQCommon_940::GuardMemory;

// ---- Life cycle ---------------------------------------------------------------------------------

NQAccumXProdPair::NQAccumXProdPair(int nVars, int nAccum) : fNVars(std::max(nVars, 0)) {
  SetNAccum(nAccum);
  Resize(fNVars - 1);
}

NQAccumXProdPair::~NQAccumXProdPair() = default;

// Cells of 0 for a packed triangle of nRows. False, nothing changed, when memory ends.
bool NQAccumXProdPair::Resize(int nRows) {
  return GuardMemory(false, [&] {
    NQSymMatrix covar(nRows, true);
    if (!covar.IsValidMatrix()) return false;
    const std::size_t size = covar.AsVectorConst().size();
    *fCells = {std::vector<Batch>(size), std::vector<Stats>(size)};
    fmCovar = std::move(covar);
    return true;
  });
}

void NQAccumXProdPair::InitAll() {
  if (!Resize(fNVars)) *fCells = {};
}

void NQAccumXProdPair::InitAccumCounts(int cell) {
  if (HasCell(cell)) fCells->batches[static_cast<std::size_t>(cell)] = {};
}

void NQAccumXProdPair::SetNAccum(int nAccum) {
  if (nAccum > 0) fNAccum = nAccum;
}

std::size_t NQAccumXProdPair::CellCount() const {
  return std::min(fCells->stats.size(), fmCovar.AsVectorConst().size());
}

std::size_t NQAccumXProdPair::PairCount() const {
  return fNVars < 2 ? 0 : RowStart(static_cast<std::size_t>(fNVars) - 1);
}

// ---- Cases --------------------------------------------------------------------------------------

bool NQAccumXProdPair::Update(int i, double x, int j, double y, double w) {
  if (i < j) return Update(j, y, i, x, w);
  if (j < 0 || i == j || i >= fNVars) return false;
  const std::size_t cell = LowerIndex(static_cast<std::size_t>(i) - 1, static_cast<std::size_t>(j));
  return cell < CellCount() && AddToBatch(cell, x, y, w);
}

bool NQAccumXProdPair::Update(int cell, double x, double y, double w) {
  return HasCell(cell) && AddToBatch(static_cast<std::size_t>(cell), x, y, w);
}

void NQAccumXProdPair::Batch::Add(const Batch& other) {
  count += other.count;
  w += other.w;
  x += other.x;
  y += other.y;
  xx += other.xx;
  yy += other.yy;
  xy += other.xy;
}

bool NQAccumXProdPair::AddToBatch(std::size_t cell, double x, double y, double w) {
  Batch& batch = fCells->batches[cell];
  const double wx = w * x;
  const double wy = w * y;
  batch.Add({1, w, wx, wy, wx * x, wy * y, wx * y});
  return batch.count < fNAccum || Fold(cell);
}

bool NQAccumXProdPair::IncrStats(int cell) {
  return HasCell(cell) && Fold(static_cast<std::size_t>(cell));
}

bool NQAccumXProdPair::Fold(std::size_t cell) {
  Batch& batch = fCells->batches[cell];
  Stats& stats = fCells->stats[cell];
  const double w0 = stats.nCases;
  const double w1 = w0 + batch.w;
  if (!(w1 > 1)) return false;
  if (!(batch.w > 0)) return true;

  const double x = stats.meanX;
  const double y = stats.meanY;
  const double sumX = w0 * x + batch.x;
  const double sumY = w0 * y + batch.y;
  double& covariance = fmCovar.AsVector()[cell];
  stats.nCases = w1;
  stats.meanX = sumX / w1;
  stats.meanY = sumY / w1;
  stats.varX = (stats.varX * (w0 - 1) + w0 * x * x + batch.xx - sumX * stats.meanX) / (w1 - 1);
  stats.varY = (stats.varY * (w0 - 1) + w0 * y * y + batch.yy - sumY * stats.meanY) / (w1 - 1);
  covariance = (w0 * x * y + (w0 - 1) * covariance + batch.xy - stats.meanX * sumY) / (w1 - 1);
  batch = {};
  return true;
}

bool NQAccumXProdPair::Finish() {
  if (!HasPairs()) return false;
  bool all = true;
  for (std::size_t cell = 0; cell < PairCount(); ++cell) all = Fold(cell) && all;
  return all;
}

// ---- Merging ------------------------------------------------------------------------------------

// Adds statistics of other cases to those of a cell (Chan, Golub and LeVeque 1983).
void NQAccumXProdPair::MergeFolded(std::size_t cell, Stats theirs, double covariance) {
  Stats& ours = fCells->stats[cell];
  double& ourCovariance = fmCovar.AsVector()[cell];
  if (theirs.nCases == 0) return;
  if (ours.nCases == 0) {
    ours = theirs;
    ourCovariance = covariance;
    return;
  }
  const double w1 = ours.nCases;
  const double w2 = theirs.nCases;
  const double w = w1 + w2;
  const double dx = theirs.meanX - ours.meanX;
  const double dy = theirs.meanY - ours.meanY;
  // between (m2 - m1)^2 is W1 (m - m1)^2 + W2 (m - m2)^2.
  const double between = w1 * w2 / w;
  const auto pool = [&](double a, double b, double product) {
    return ((w1 - 1) * a + (w2 - 1) * b + between * product) / (w - 1);
  };
  ours = {w, ours.meanX + dx * w2 / w, ours.meanY + dy * w2 / w,
          pool(ours.varX, theirs.varX, dx * dx), pool(ours.varY, theirs.varY, dy * dy)};
  ourCovariance = pool(ourCovariance, covariance, dx * dy);
}

bool NQAccumXProdPair::Merge(const NQAccumXProdPair& other) {
  if (!other.HasPairs()) return false;
  if (fNVars == 0) {
    if (!Resize(other.fNVars - 1)) return false;
    fNVars = other.fNVars;
  }
  if (fNVars != other.fNVars || !HasPairs()) return false;
  for (std::size_t cell = 0; cell < PairCount(); ++cell) {
    // The batch is copied because the other accumulator may be this one.
    const Batch theirs = other.fCells->batches[cell];
    MergeFolded(cell, other.fCells->stats[cell], other.fmCovar.AsVectorConst()[cell]);
    fCells->batches[cell].Add(theirs);
    Fold(cell);
  }
  return true;
}

bool NQAccumXProdPair::Merge(const std::vector<const NQAccumXProdPair*>& others) {
  return internal::MergeList(*this, others);
}

bool NQAccumXProdPair::Merge(const std::vector<NQAccumXProdPair*>& others) {
  return internal::MergeList(*this, others);
}

// ---- Results ------------------------------------------------------------------------------------

NQAccumXProdPair::Stats NQAccumXProdPair::GetStats(int cell) const {
  return HasCell(cell) ? fCells->stats[static_cast<std::size_t>(cell)] : Stats{};
}

bool NQAccumXProdPair::SetStats(int cell, const Stats& stats, double covariance) {
  if (!HasCell(cell) || !(stats.nCases == 0 || stats.nCases > 1)) return false;
  const auto at = static_cast<std::size_t>(cell);
  fCells->stats[at] = stats;
  fmCovar.AsVector()[at] = covariance;
  return true;
}

const NQSymMatrix& NQAccumXProdPair::GetCorr() {
  if (!fmCorr.SetNRows(fNVars, true)) return fmCorr;
  const std::vector<double>& covar = fmCovar.AsVectorConst();
  double* corr = fmCorr.AsVector().data();
  const auto n = static_cast<std::size_t>(fmCorr.GetNRows());
  // root(r) is sqrt(cov(r, r)), and 0 where there is no such cell.
  const auto root = [&](std::size_t r) {
    return DiagIndex(r) < covar.size() ? std::sqrt(covar[DiagIndex(r)]) : 0.0;
  };
  for (std::size_t r = 0; r < n; ++r) {
    for (std::size_t c = 0; c <= r; ++c) {
      const double a = root(r);
      const double b = root(c);
      *corr++ = a > 0 && b > 0 ? covar[LowerIndex(r, c)] / std::sqrt(a) / std::sqrt(b)
                               : NQCommon_940::Getsysmis();
    }
  }
  return fmCorr;
}

// Makes the matrix whose off-diagonal elements are of(cell) and whose diagonal is missing.
template <class Of>
bool NQAccumXProdPair::MakeMatrix(NQSymMatrix& out, Of of) const {
  NQSymMatrix matrix(fNVars, true);
  if (!HasPairs() || !matrix.IsValidMatrix()) return false;
  double* element = matrix.AsVector().data();
  for (std::size_t i = 0, cell = 0; i < static_cast<std::size_t>(fNVars); ++i) {
    for (std::size_t j = 0; j < i; ++j) *element++ = of(cell++);
    *element++ = NQCommon_940::Getsysmis();
  }
  out = std::move(matrix);
  return true;
}

bool NQAccumXProdPair::GetCovarianceMatrix(NQSymMatrix& out) const {
  const std::vector<double>& covar = fmCovar.AsVectorConst();
  if (!MakeMatrix(out, [&](std::size_t cell) { return covar[cell]; })) return false;
  for (int i = 0; i < fNVars; ++i) {
    double mostCases = -1;
    for (int j = 0; j < fNVars; ++j) {
      if (j == i) continue;
      const auto row = static_cast<std::size_t>(std::max(i, j)) - 1;
      const Stats& stats = fCells->stats[LowerIndex(row, static_cast<std::size_t>(std::min(i, j)))];
      if (!(stats.nCases > mostCases)) continue;
      mostCases = stats.nCases;
      out.SetElem(i, i, i > j ? stats.varX : stats.varY);
    }
  }
  return true;
}

bool NQAccumXProdPair::GetCorrelationMatrix(NQSymMatrix& out) const {
  const std::vector<double>& covar = fmCovar.AsVectorConst();
  const auto correlation = [&](std::size_t cell) {
    const Stats& stats = fCells->stats[cell];
    return internal::Correlation(covar[cell], stats.varX, stats.varY);
  };
  if (!MakeMatrix(out, correlation)) return false;
  for (int i = 0; i < fNVars; ++i) out.SetElem(i, i, 1);
  return true;
}

// ---- Diagnostic display -------------------------------------------------------------------------

template <class Cell>
void NQAccumXProdPair::DisplayCells(const char* name, const std::vector<Cell>& cells,
                                    double Cell::*value) const {
  NQSymMatrix matrix(fmCovar);
  for (std::size_t k = 0; k < matrix.AsVector().size(); ++k) matrix.AsVector()[k] = cells[k].*value;
  NQDisplay_940::DisplayText(1, name);
  matrix.Display();
}

void NQAccumXProdPair::Display() const {
  using namespace NQDisplay_940;
  const std::vector<Batch>& batches = fCells->batches;
  const std::vector<Stats>& stats = fCells->stats;
  internal::DisplayObject("NQAccumXProdPair", [&] {
    DisplayI("Number of variables", fNVars);
    DisplayI("Number of accumulations", fNAccum);
    if (CellCount() == fmCovar.AsVectorConst().size()) {
      DisplayCells("The matrix of counts of accumulations", batches, &Batch::count);
      DisplayCells("The matrix of accumulated numbers of cases", batches, &Batch::w);
      DisplayCells("The matrix of accumulated sums of first variable", batches, &Batch::x);
      DisplayCells("The matrix of accumulated sums of second variable", batches, &Batch::y);
      DisplayCells("The matrix of accumulated sums of squares of first variable", batches,
                   &Batch::xx);
      DisplayCells("The matrix of accumulated sums of cross-products", batches, &Batch::xy);
      DisplayCells("The matrix of total numbers of cases", stats, &Stats::nCases);
      DisplayCells("The matrix of means of first variable", stats, &Stats::meanX);
      DisplayCells("The matrix of means of second variable", stats, &Stats::meanY);
      DisplayCells("The matrix of variances of first variable", stats, &Stats::varX);
      DisplayCells("The matrix of variances of second variable", stats, &Stats::varY);
    }
    DisplayText(1, "The matrix of covariances");
    fmCovar.Display();
    DisplayText(1, "The matrix of correlations");
    fmCorr.Display();
  });
}

}  // namespace NQMath_940
