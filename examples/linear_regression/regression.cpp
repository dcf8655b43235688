#include "regression.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <new>
#include <numeric>
#include <stdexcept>
#include <utility>

#include <nqcommon/math/matrix/NQRectMatrix.h>
#include <nqcommon/math/stats/NQMeansXProducts.h>

#include "fit_parts.h"
#include "support/products.h"

using NQMath_940::NQMeansXProducts;
using NQMath_940::NQRectMatrix;
using NQMath_940::NQSymMatrix;
using support::CaseReader;
using support::Chunk;
using support::Column;
using support::kBlockRows;
using support::ModelData;

namespace regression {
namespace {

constexpr double kEpsilon = std::numeric_limits<double>::epsilon();

// ---- First reading: cross-products --------------------------------------------------------------

struct ProductsPart {
  static constexpr bool kIsOfOneLength = true;
  NQMeansXProducts products;
  support::InputSummaries summaries;

  void Merge(ProductsPart&& right) {
    if (!products.Merge(right.products)) throw std::runtime_error("the weights are too large");
    summaries.Merge(right.summaries);
  }
  template <class A>
  void Transfer(A& a) {
    support::TransferProducts(a, products);
    a(summaries);
  }
};

ProductsPart ReadProducts(const ModelData& data, const std::vector<Column>& columns,
                          const FitOptions& options, Chunk& chunk) {
  const int nColumns = static_cast<int>(columns.size());
  ProductsPart part;
  part.products =
      NQMeansXProducts(nColumns, options.intercept, data.HasFrequency(), data.HasWeight());
  if (options.charts) part.summaries = support::InputSummaries(data);
  NQRectMatrix block(kBlockRows, nColumns + int{data.HasFrequency()} + int{data.HasWeight()}, true);
  if (!block.IsValidMatrix() || part.products.GetNVars() != nColumns) throw std::bad_alloc();
  int filled = 0;
  const auto update = [&] {
    if (filled > 0 && !part.products.Update(block, filled))
      throw std::runtime_error("the weights are too large");
    filled = 0;
  };
  CaseReader taken(data);
  taken.Start(chunk);
  while (taken.Next()) {
    double* row = block.GetRowPtr(filled);
    support::FillRow(columns, taken.Values(), row);
    double* weights = row + nColumns;
    if (data.HasFrequency()) *weights++ = taken.Frequency();
    if (data.HasWeight()) *weights = taken.Weight();
    if (options.charts) part.summaries.Add(taken);
    if (++filled == kBlockRows) update();
  }
  update();
  return part;
}

// ---- First fit: the sweep -----------------------------------------------------------------------

FirstFit MakeFirstFit(const Sweep& sweep, const std::vector<Column>& columns,
                      const NQMeansXProducts& products, bool intercept) {
  FirstFit first;
  first.intercept = intercept;
  first.sumWeights = products.GetNCases();
  std::vector<double> b;
  sweep.swept.GetRegCoeffs(b, sweep.isIn);
  const auto take = [&](std::size_t j) {
    first.columns.push_back(columns[j]);
    first.means.push_back(intercept ? products.GetMeans()[j] : 0);
  };
  for (const int j : sweep.kept) {
    take(static_cast<std::size_t>(j));
    first.b.push_back(b[static_cast<std::size_t>(j)]);
  }
  take(columns.size() - 1);
  if (!sweep.kept.empty()) first.factor = CholeskyFactor(Submatrix(sweep.products, sweep.kept));
  const int target = static_cast<int>(columns.size()) - 1;
  // What the subtraction has left may be rounding alone, and negative.
  const double residual = std::max(sweep.swept.GetElem(target, target),
                                   16 * kEpsilon * kEpsilon * sweep.totalSumOfSquares);
  first.rootMeanSquare = std::sqrt(residual / first.sumWeights);
  return first;
}

// ---- Second fit: of the residuals to the nearly orthonormal columns ----------------------------

SecondFit Correct(const FirstFit& first, const ResidualPart& part) {
  const int n = static_cast<int>(first.b.size());
  const NQSymMatrix& products = part.products.GetXProds();
  SecondFit fit;
  fit.b = first.b;
  fit.residualSumOfSquares = products.GetElem(n, n);
  fit.meansOfQ = part.products.GetMeans();
  const double meanOfE = fit.meansOfQ.back();
  fit.meansOfQ.pop_back();
  if (!first.intercept) std::fill(fit.meansOfQ.begin(), fit.meansOfQ.end(), 0.0);
  fit.alpha = first.intercept ? meanOfE : 0;
  if (n > 0) {
    std::vector<int> rows(first.b.size());
    std::iota(rows.begin(), rows.end(), 0);
    fit.factorOfQ = CholeskyFactor(Submatrix(products, rows));
    std::vector<double> u(first.b.size());
    for (int k = 0; k < n; ++k) u[static_cast<std::size_t>(k)] = products.GetElem(n, k);
    fit.factorOfQ.LTSubstitute(u);
    for (const double x : u) fit.residualSumOfSquares -= x * x;
    fit.gamma = u;
    fit.factorOfQ.TSolveSubst(fit.gamma);
    for (std::size_t k = 0; k < u.size(); ++k) fit.alpha -= fit.gamma[k] * fit.meansOfQ[k];
    std::vector<double> change = fit.gamma;
    first.factor.TSolveSubst(change);
    for (std::size_t k = 0; k < u.size(); ++k) fit.b[k] += change[k];

    // The product of two lower triangles.
    fit.factor = Valid(NQSymMatrix(n, true));
    for (int i = 0; i < n; ++i) {
      for (int j = 0; j <= i; ++j) {
        double sum = 0;
        for (int k = j; k <= i; ++k)
          sum += first.factor.GetElem(i, k) * fit.factorOfQ.GetElem(k, j);
        fit.factor.SetElem(i, j, sum);
      }
    }
    std::vector<double> fitted;
    fit.factor.ComputeLTransV(fit.b, fitted);
    for (const double x : fitted) fit.fittedSumOfSquares += x * x;
  }

  // Numbers of the data are rounded; scaled, they are below 2.
  double squares = 1;
  for (const double b : fit.b) squares += b * b;
  const double rounding = first.sumWeights * 16 * kEpsilon * kEpsilon * squares;
  if (fit.residualSumOfSquares <= rounding) fit.residualSumOfSquares = 0;
  return fit;
}

}  // namespace

NQSymMatrix Valid(NQSymMatrix matrix) {
  if (!matrix.IsValidMatrix()) throw std::bad_alloc();
  return matrix;
}

NQSymMatrix Submatrix(const NQSymMatrix& s, const std::vector<int>& rows) {
  NQSymMatrix part;
  if (!s.ExtractSubmatrix(rows, part)) throw std::bad_alloc();
  return part;
}

NQSymMatrix CholeskyFactor(NQSymMatrix s) {
  std::vector<double> diagonal;
  s.GetDiagonal(diagonal);
  if (s.LTChol(diagonal, 0, false) != 0)
    throw std::runtime_error("the inputs are too close to a combination of one another");
  return s;
}

Sweep SweepColumns(const NQSymMatrix& products) {
  Sweep sweep{products, products, {}, {}, 0};
  const int target = products.GetNRows() - 1;
  std::vector<int> inputs(static_cast<std::size_t>(target));
  std::iota(inputs.begin(), inputs.end(), 0);
  // The check flag would raise references below 1 and so refuse columns that vary little.
  sweep.swept.SweepOnSelected(inputs, NQMath_940::defaultepse, sweep.isIn, false);
  for (const int j : inputs) {
    if (sweep.isIn.IsIn(j)) sweep.kept.push_back(j);
  }
  sweep.totalSumOfSquares = products.GetElem(target, target);
  return sweep;
}

Predictor::Answer Predictor::At(const double* values) const {
  const std::size_t n = b.size();
  std::vector<double> d(n);
  support::FillRow(columns, values, d.data());
  double fit = constant, leverage = 1 / sumWeights;
  for (std::size_t k = 0; k < n; ++k) {
    d[k] -= centre[k];
    fit += b[k] * d[k];
  }
  if (n > 0) factor.LTSubstitute(d);
  for (const double x : d) leverage += x * x;
  return {std::scalbn(fit, exponent), leverage};
}

Regression Fit(const ModelData& data, const FitOptions& options, support::Team& team) {
  Regression fit;
  fit.target = data.NameOf(data.TargetPosition());
  fit.intercept = options.intercept;
  fit.rows = data.Counts();
  fit.n = fit.rows.sumFrequency;
  const std::vector<Column> columns = support::DesignColumns(data, options.intercept);
  const std::size_t terms = columns.size() - 1 + (options.intercept ? 1 : 0);
  if (fit.n < static_cast<double>(terms)) {
    std::string message = "too few cases: " + std::to_string(fit.rows.used) + " for " +
                          std::to_string(terms) + " coefficients";
    for (const std::string& note : data.Notes()) message += "; " + note;
    throw std::runtime_error(message);
  }

  auto products = team.Gather<ProductsPart>(
      data.File(), [&](Chunk& chunk) { return ReadProducts(data, columns, options, chunk); });
  fit.summaries = std::move(products.summaries);
  const Sweep sweep = SweepColumns(products.products.GetXProds());
  const FirstFit first = MakeFirstFit(sweep, columns, products.products, options.intercept);
  const auto residuals = team.Gather<ResidualPart>(data.File(), [&](Chunk& chunk) {
    ResidualPart part(data, first, options.charts);
    part.Add(data, first, chunk);
    return part;
  });
  const SecondFit second = Correct(first, residuals);
  Describe(fit, data, columns, sweep, first, second, residuals, options.charts);
  return fit;
}

}  // namespace regression
