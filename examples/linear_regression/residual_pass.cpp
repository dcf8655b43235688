#include "residual_pass.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <new>
#include <stdexcept>
#include <utility>

#include <nqcommon/math/matrix/NQRectMatrix.h>

#include "support/products.h"

using NQMath_940::NQRectMatrix;
using support::CaseReader;
using support::kBlockRows;
using support::ModelData;
using support::QuantileBins;

namespace regression {
namespace {

constexpr double kLeastRest = 1e-9;  // of 1 less a leverage; rounding leaves less of a 0

// L^-1, column by column: d(k) / L(k,k) is q(k), and L(i,k) q(k) leaves d(i).
class Whitener {
 public:
  explicit Whitener(const NQMath_940::NQSymMatrix& factor) : fN(factor.GetNRows()) {
    for (int k = 0; k < fN; ++k) {
      for (int i = k; i < fN; ++i) fColumns.push_back(factor.GetElem(i, k));
    }
  }

  void Apply(double* d) const {
    const double* column = fColumns.data();
    for (int k = 0; k < fN; ++k) {
      const double q = d[k] /= *column++;
      for (int i = k + 1; i < fN; ++i) d[i] -= *column++ * q;
    }
  }

 private:
  int fN;
  std::vector<double> fColumns;
};

// The place in `cells` equal parts of 0 .. 1; NaN is in the first.
int CellOf(double share, int cells) {
  const double place = share * cells;
  return !(place >= 0) ? 0 : place < cells ? static_cast<int>(place) : cells - 1;
}

}  // namespace

// Residuals are shown within 4 root mean squares; those beyond are in the outermost cells, whose
// means tell where. Quantiles of interest are between 1/512 and 64 of the residuals' own root mean
// square, which the weights tell apart from the weighted one.
ResidualPart::ResidualPart(const ModelData& data, const FirstFit& first, bool charts)
    : products(static_cast<int>(first.columns.size()), first.intercept, data.HasFrequency(),
               data.HasWeight()),
      fHasWeight(data.HasWeight()) {
  if (products.GetNVars() != static_cast<int>(first.columns.size())) throw std::bad_alloc();
  const double tiny = std::numeric_limits<double>::min();
  const double scale = std::max(first.rootMeanSquare, 1e3 * tiny);
  double least = scale, most = scale;
  if (fHasWeight) {
    const support::Range& weights = data.RangeOf(data.WeightPosition());
    least = std::clamp(scale / std::sqrt(weights.max), 1e3 * tiny, 0x1p900);
    most = std::clamp(scale / std::sqrt(weights.min), least, least * 0x1p60);
    weighted = QuantileBins(scale / 512, scale * 64);
  }
  residuals = QuantileBins(least / 512, most * 64);
  if (!charts) return;
  plot.resize(std::size_t{kPlotColumns} * kPlotRows);
  const support::Range& range = data.RangeOf(data.TargetPosition());
  const support::Column& target = first.columns.back();
  fFitMin = range.min * target.scale;
  fFitScale = 1 / (range.max * target.scale - fFitMin);
  fResidualScale = 1 / (8 * scale * std::sqrt(data.Counts().sumFrequency / first.sumWeights));
}

void ResidualPart::TakeResidual(double e, double fit, double frequency, double weight) {
  if (used++ == 0) {
    min = max = firstResidual = e;
  } else {
    sumSquaredSteps += (e - lastResidual) * (e - lastResidual);
  }
  lastResidual = e;
  min = std::min(min, e);
  max = std::max(max, e);
  sumSquares += frequency * e * e;
  residuals.Add(e, frequency);
  if (fHasWeight) {
    weighted.Add(std::sqrt(weight) * e, frequency);
    sumLogWeights += frequency * std::log(weight);
  }
  if (plot.empty()) return;
  const int column = CellOf((fit - fFitMin) * fFitScale, kPlotColumns);
  const int row = CellOf(e * fResidualScale + 0.5, kPlotRows);
  PlotCell& cell =
      plot[static_cast<std::size_t>(column) * kPlotRows + static_cast<std::size_t>(row)];
  cell.frequency += frequency;
  cell.fit += frequency * fit;
  cell.residual += frequency * e;
}

// Cook's distances are in the order of w e^2 h / (1-h)^2, with h the leverage w (1/W + q'q).
void ResidualPart::TakeCandidate(const double* q, double e, double weight, std::int64_t row,
                                 const FirstFit& first) {
  const std::size_t n = first.b.size();
  double leverage = first.intercept ? 1 / first.sumWeights : 0;
  for (std::size_t k = 0; k < n; ++k) leverage += q[k] * q[k];
  leverage *= weight;
  const double rest = 1 - leverage;
  if (!(rest > kLeastRest)) return;  // the case alone decides its fit: no distance is defined
  const double score = weight * e * e * leverage / (rest * rest);
  const bool isFull = candidates.size() == kMostCandidates;
  if (!(score > 0) || (isFull && score <= candidates.back().score)) return;
  if (isFull) candidates.pop_back();
  const auto place =
      std::find_if(candidates.begin(), candidates.end(),
                   [&](const Candidate& candidate) { return candidate.score < score; });
  candidates.insert(place, {score, row, weight, e, {q, q + n}});
}

void ResidualPart::Add(const ModelData& data, const FirstFit& first, support::Chunk& chunk) {
  const std::size_t n = first.b.size();
  const Whitener whitener(first.factor);
  NQRectMatrix block(
      kBlockRows, static_cast<int>(n) + 1 + int{data.HasFrequency()} + int{data.HasWeight()}, true);
  if (!block.IsValidMatrix()) throw std::bad_alloc();
  int filled = 0;
  const auto update = [&] {
    if (filled > 0 && !products.Update(block, filled))
      throw std::runtime_error("the weights are too large");
    filled = 0;
  };
  CaseReader taken(data);
  taken.Start(chunk);
  while (taken.Next()) {
    double* row = block.GetRowPtr(filled);
    support::FillRow(first.columns, taken.Values(), row);
    double e = row[n] - first.means[n];
    for (std::size_t k = 0; k < n; ++k) {
      row[k] -= first.means[k];
      e -= first.b[k] * row[k];
    }
    const double fit = row[n] + first.columns[n].origin - e;
    whitener.Apply(row);
    row[n] = e;
    double* weights = row + n + 1;
    if (data.HasFrequency()) *weights++ = taken.Frequency();
    if (data.HasWeight()) *weights = taken.Weight();
    TakeResidual(e, fit, taken.Frequency(), taken.Weight());
    TakeCandidate(row, e, taken.Weight(), taken.Row(), first);
    if (++filled == kBlockRows) update();
  }
  update();
  rows = taken.Row();
}

void ResidualPart::Merge(ResidualPart&& right) {
  if (!products.Merge(right.products)) throw std::runtime_error("the weights are too large");
  sumLogWeights += right.sumLogWeights;
  sumSquares += right.sumSquares;
  residuals.Merge(right.residuals);
  weighted.Merge(right.weighted);
  for (std::size_t i = 0; i < plot.size(); ++i) {
    plot[i].frequency += right.plot[i].frequency;
    plot[i].fit += right.plot[i].fit;
    plot[i].residual += right.plot[i].residual;
  }
  for (Candidate& candidate : right.candidates) {
    candidate.row += rows;
    candidates.push_back(std::move(candidate));
  }
  std::stable_sort(candidates.begin(), candidates.end(),
                   [](const Candidate& a, const Candidate& b) { return a.score > b.score; });
  if (candidates.size() > kMostCandidates) candidates.resize(kMostCandidates);
  rows += right.rows;
  if (right.used == 0) return;
  if (used == 0) {
    min = right.min;
    max = right.max;
    firstResidual = right.firstResidual;
  } else {
    const double step = right.firstResidual - lastResidual;
    sumSquaredSteps += step * step;
    min = std::min(min, right.min);
    max = std::max(max, right.max);
  }
  sumSquaredSteps += right.sumSquaredSteps;
  lastResidual = right.lastResidual;
  used += right.used;
}

}  // namespace regression
