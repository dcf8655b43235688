// The second reading of a fit: residuals, and columns that are nearly orthonormal.
#pragma once

#include <cstdint>
#include <vector>

#include <nqcommon/math/matrix/NQSymMatrix.h>
#include <nqcommon/math/stats/NQMeansXProducts.h>

#include "support/design.h"
#include "support/model_data.h"
#include "support/products.h"
#include "support/quantile_bins.h"

namespace regression {

// A first fit, of the columns that are not redundant; everything scaled.
struct FirstFit {
  std::vector<support::Column> columns;  // of them, then the target
  std::vector<double> means;             // beside the origins; 0 without an intercept
  std::vector<double> b;
  NQMath_940::NQSymMatrix factor;  // L, L L' being the cross-products
  bool intercept = true;
  double sumWeights = 0;
  double rootMeanSquare = 0;  // of the weighted residuals, by the swept matrix; may be 0
};

// A case whose Cook's distance may be one of the largest.
struct Candidate {
  double score = 0;  // in the order of Cook's distances
  std::int64_t row = 0;
  double weight = 0;
  double residual = 0;
  std::vector<double> q;

  template <class A>
  void Transfer(A& a) {
    a(score);
    a(row);
    a(weight);
    a(residual);
    a(q);
  }
};

struct PlotCell {
  double frequency = 0;
  double fit = 0;  // sums over the cases
  double residual = 0;
};

// Of a run of chunks. With d the case's deviations from the centre, q = L^-1 d and e the residual
// of the first fit.
class ResidualPart {
 public:
  static constexpr bool kIsOfOneLength = true;
  static constexpr std::size_t kMostCandidates = 10;
  static constexpr int kPlotColumns = 48;
  static constexpr int kPlotRows = 24;

  ResidualPart() = default;  // to be read into
  ResidualPart(const support::ModelData& data, const FirstFit& first, bool charts);

  void Add(const support::ModelData& data, const FirstFit& first, support::Chunk& chunk);
  void Merge(ResidualPart&& right);
  template <class A>
  void Transfer(A& a);

  NQMath_940::NQMeansXProducts products;  // of q and e
  std::int64_t rows = 0;
  double sumLogWeights = 0;
  double min = 0;  // of e; of no cases when there are no rows used
  double max = 0;
  double sumSquares = 0;       // of e, not weighted by regression weights
  double sumSquaredSteps = 0;  // of the differences of successive e
  double firstResidual = 0;
  double lastResidual = 0;
  std::int64_t used = 0;
  support::QuantileBins residuals;
  support::QuantileBins weighted;     // e times the root of the weight; with a regression weight
  std::vector<PlotCell> plot;         // fit by residual, when charts are asked for
  std::vector<Candidate> candidates;  // falling

 private:
  void TakeResidual(double e, double fit, double frequency, double weight);
  void TakeCandidate(const double* q, double e, double weight, std::int64_t row,
                     const FirstFit& first);

  double fFitMin = 0;
  double fFitScale = 0;
  double fResidualScale = 0;
  bool fHasWeight = false;
};

// Candidates that are not there are written too, so that all parts are of one length.
template <class A>
void ResidualPart::Transfer(A& a) {
  support::TransferProducts(a, products);
  for (auto* number :
       {&sumLogWeights, &min, &max, &sumSquares, &sumSquaredSteps, &firstResidual, &lastResidual}) {
    a(*number);
  }
  a(rows);
  a(used);
  a(residuals);
  a(weighted);
  a(plot);
  candidates.resize(kMostCandidates);
  const std::size_t n = products.GetMeans().size() - 1;
  for (Candidate& candidate : candidates) {
    candidate.q.resize(n);
    a(candidate);
  }
  std::erase_if(candidates, [](const Candidate& candidate) { return candidate.row == 0; });
}

}  // namespace regression
