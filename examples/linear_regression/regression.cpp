#include "regression.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <new>
#include <numbers>
#include <numeric>
#include <set>
#include <stdexcept>
#include <utility>

#include <nqcommon/math/matrix/NQBitSet.h>
#include <nqcommon/math/matrix/NQEigenValues.h>
#include <nqcommon/math/matrix/NQRectMatrix.h>
#include <nqcommon/math/numeric/NQDistFun.h>
#include <nqcommon/math/stats/NQMeansXProducts.h>

#include "residual_pass.h"
#include "support/products.h"

using NQMath_940::NQBitSet;
using NQMath_940::NQDistFun;
using NQMath_940::NQMeansXProducts;
using NQMath_940::NQRectMatrix;
using NQMath_940::NQSymMatrix;
using support::CaseReader;
using support::Chunk;
using support::Column;
using support::ModelData;

namespace regression {
namespace {

constexpr double kUndefined = std::numeric_limits<double>::quiet_NaN();
constexpr double kConfidence = 0.95;
constexpr double kEpsilon = std::numeric_limits<double>::epsilon();

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

// (L L')^-1
NQSymMatrix InverseOfProduct(NQSymMatrix factor) {
  factor.LTInverse();
  factor.LTLTransL();
  return factor;
}

double Significance(double t, double df) {
  return std::isnan(t) ? kUndefined : 2 * NQDistFun::SigT(std::fabs(t), df);
}

double SignificanceOfF(double f, double df1, double df2) {
  return std::isnan(f) ? kUndefined : NQDistFun::SigF(f, df1, df2);
}

// ---- First reading: cross-products --------------------------------------------------------------

constexpr int kBlockRows = 256;

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

struct Sweep {
  NQSymMatrix products;  // of all columns, the target's last
  NQSymMatrix swept;
  NQBitSet isIn;
  std::vector<int> kept;  // the columns swept
  double totalSumOfSquares = 0;
};

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

// Scaled. With q the columns' deviations from the centre times the inverse of the first factor.
struct SecondFit {
  NQSymMatrix factorOfQ;
  std::vector<double> meansOfQ;
  std::vector<double> gamma;  // coefficients of the residuals on q
  double alpha = 0;           // their constant
  NQSymMatrix factor;         // L, L L' being the cross-products of the columns
  std::vector<double> b;
  double fittedSumOfSquares = 0;
  double residualSumOfSquares = 0;
};

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

// ---- The figures --------------------------------------------------------------------------------

// Puts the figures of the whole together from the two fits.
class Figures {
 public:
  Figures(Regression& result, const ModelData& data, const std::vector<Column>& columns,
          const Sweep& sweep, const FirstFit& first, const SecondFit& second,
          const ResidualPart& part)
      : fResult(result),
        fData(data),
        fColumns(columns),
        fSweep(sweep),
        fFirst(first),
        fSecond(second),
        fPart(part),
        fUnitOfTarget(columns.back().exponent) {
    const bool intercept = fFirst.intercept;
    const double fitted = static_cast<double>(fFirst.b.size()) + int{intercept};
    if (fitted == 0) throw std::runtime_error("nothing to fit: no intercept and no usable input");
    fResult.dfModel = static_cast<double>(fFirst.b.size());
    fResult.dfResidual = fResult.n - fitted;
    fSigma = fResult.dfResidual > 0 ? std::sqrt(fSecond.residualSumOfSquares / fResult.dfResidual)
                                    : kUndefined;
    if (!fFirst.b.empty()) fInverse = InverseOfProduct(fSecond.factor);
  }

  void Describe() {
    Whole();
    SetPredictor();
    Coefficients();
    Covariance();
    Terms();
    Information();
    ConditionNumber();
    Residuals();
    Influence();
  }

  void Charts();

 private:
  double Scaled(double x, int unit) const { return std::scalbn(x, unit); }
  int Unit(const Column& column) const { return fUnitOfTarget - column.exponent; }
  double CentreOf(std::size_t k) const {
    return fFirst.intercept ? fFirst.means[k] + fFirst.columns[k].origin : 0;
  }

  void Whole();
  void SetPredictor();
  void Coefficients();
  Coefficient Described(double estimate, double stdError, int unit) const;
  Coefficient Intercept() const;
  void Covariance();
  void Terms();
  Term TermOf(int variable, const std::vector<int>& places) const;
  void Information();
  void ConditionNumber();
  void Residuals();
  void Influence();

  Regression& fResult;
  const ModelData& fData;
  const std::vector<Column>& fColumns;
  const Sweep& fSweep;
  const FirstFit& fFirst;
  const SecondFit& fSecond;
  const ResidualPart& fPart;
  int fUnitOfTarget;
  double fSigma = 0;     // scaled
  NQSymMatrix fInverse;  // of the cross-products of the columns kept
};

void Figures::Whole() {
  const double total = fSweep.totalSumOfSquares;
  const double residual = fSecond.residualSumOfSquares;
  const double fitted = fSecond.fittedSumOfSquares;
  fResult.residualStdDev = Scaled(fSigma, fUnitOfTarget);
  // Whichever is the smaller of the two has lost no digits by cancellation.
  fResult.rSquared = !(total > 0)        ? kUndefined
                     : residual < fitted ? 1 - residual / total
                                         : fitted / total;
  fResult.adjustedRSquared =
      total > 0 ? 1 - residual / total * (fResult.n - int{fResult.intercept}) / fResult.dfResidual
                : kUndefined;
  fResult.fStatistic =
      fResult.dfModel > 0 ? fitted / fResult.dfModel / (fSigma * fSigma) : kUndefined;
  fResult.fSig = SignificanceOfF(fResult.fStatistic, fResult.dfModel, fResult.dfResidual);
}

void Figures::SetPredictor() {
  Predictor& predictor = fResult.predictor;
  predictor.columns.assign(fFirst.columns.begin(), fFirst.columns.end() - 1);
  predictor.centre.assign(fFirst.means.begin(), fFirst.means.end() - 1);
  predictor.b = fSecond.b;
  predictor.constant = fFirst.means.back() + fFirst.columns.back().origin + fSecond.alpha;
  predictor.exponent = fUnitOfTarget;
  predictor.sigma = fSigma;
  predictor.sumWeights =
      fFirst.intercept ? fFirst.sumWeights : std::numeric_limits<double>::infinity();
  predictor.factor = fSecond.factor;
}

// The figures by t, in units of 2^unit.
Coefficient Figures::Described(double estimate, double stdError, int unit) const {
  const double df = fResult.dfResidual;
  const double width =
      df > 0 ? stdError * NQDistFun::IdfT((1 + kConfidence) / 2, df, NQMath_940::defaultepsz,
                                          NQMath_940::defaultepse)
             : kUndefined;
  Coefficient c;
  c.estimate = Scaled(estimate, unit);
  c.stdError = Scaled(stdError, unit);
  c.t = estimate / stdError;
  c.sig = Significance(c.t, df);
  c.lower = Scaled(estimate - width, unit);
  c.upper = Scaled(estimate + width, unit);
  c.standardized = kUndefined;
  return c;
}

// The fit where all columns are 0. Its variance is that of the mean of the target, which is
// uncorrelated with the coefficients, and that of their part.
Coefficient Figures::Intercept() const {
  double constant = fResult.predictor.constant;
  std::vector<double> centre;
  for (std::size_t k = 0; k < fSecond.b.size(); ++k) {
    centre.push_back(CentreOf(k));
    constant = std::fma(-fSecond.b[k], centre[k], constant);
  }
  double variance = 1 / fFirst.sumWeights;
  fSecond.factor.LTSubstitute(centre);
  for (const double x : centre) variance += x * x;
  Coefficient c = Described(constant, fSigma * std::sqrt(variance), fUnitOfTarget);
  c.name = "(Intercept)";
  return c;
}

void Figures::Coefficients() {
  std::vector<Coefficient>& coefficients = fResult.coefficients;
  std::set<std::string> names;
  if (fFirst.intercept) {
    coefficients.push_back(Intercept());
    names.insert(coefficients.back().name);
  }
  std::size_t k = 0;
  for (std::size_t j = 0; j + 1 < fColumns.size(); ++j) {
    const Column& column = fColumns[j];
    Coefficient c;
    if (fSweep.isIn.IsIn(static_cast<int>(j))) {
      const int row = static_cast<int>(k);
      c = Described(fSecond.b[k], fSigma * std::sqrt(fInverse.GetElem(row, row)), Unit(column));
      const int place = static_cast<int>(j);
      c.standardized = fSecond.b[k] *
                       std::sqrt(fSweep.products.GetElem(place, place) / fSweep.totalSumOfSquares);
      ++k;
    } else {
      c.stdError = c.t = c.sig = c.lower = c.upper = c.standardized = kUndefined;
      c.redundant = true;
    }
    c.variable = column.variable;
    c.category = column.category;
    c.name = fData.NameOf(c.variable);
    if (c.category >= 0)
      c.name += '=' + fData.CategoriesOf(c.variable)[static_cast<std::size_t>(c.category)];
    while (!names.insert(c.name).second) c.name = '"' + c.name + '"';
    coefficients.push_back(std::move(c));
    if (!std::isfinite(coefficients.back().estimate))
      throw std::runtime_error("the coefficient of '" + coefficients.back().name +
                               "' is not finite");
  }
}

// By the delta method from cov(b) = sigma^2 C^-1 and the mean of the target.
void Figures::Covariance() {
  const std::size_t n = fSecond.b.size();
  const int first = fFirst.intercept ? 1 : 0;
  NQSymMatrix covariance = Valid(NQSymMatrix(first + static_cast<int>(n), true));
  const double variance = fSigma * fSigma;
  const auto unit = [&](std::size_t k) { return Unit(fFirst.columns[k]); };
  const auto scaled = [](double x, int unit1, int unit2) {
    return std::scalbn(std::scalbn(x, unit1), unit2);
  };
  std::vector<double> centre;
  for (std::size_t k = 0; k < n; ++k) centre.push_back(CentreOf(k));
  std::vector<double> product;
  if (n > 0) fInverse.ComputeSV(centre, product);
  if (first == 1) {
    const double stdError = fResult.coefficients[0].stdError;
    covariance.SetElem(0, 0, stdError * stdError);
  }
  for (std::size_t i = 0; i < n; ++i) {
    const int row = first + static_cast<int>(i);
    if (first == 1)
      covariance.SetElem(row, 0, scaled(-variance * product[i], unit(i), fUnitOfTarget));
    for (std::size_t j = 0; j <= i; ++j) {
      const double inverse = fInverse.GetElem(static_cast<int>(i), static_cast<int>(j));
      covariance.SetElem(row, first + static_cast<int>(j),
                         scaled(variance * inverse, unit(i), unit(j)));
    }
  }
  fResult.covariance = std::move(covariance);
}

// ---- Terms --------------------------------------------------------------------------------------

double LogDeterminant(const NQSymMatrix& s) {
  const NQSymMatrix factor = CholeskyFactor(s);
  double sum = 0;
  for (int i = 0; i < factor.GetNRows(); ++i) sum += 2 * std::log(factor.GetElem(i, i));
  return sum;
}

void Figures::Terms() {
  std::vector<int> places;  // among the columns kept
  for (int variable = 0, k = 0; variable < fData.NInputs(); ++variable) {
    places.clear();
    for (; k < static_cast<int>(fSecond.b.size()) &&
           fFirst.columns[static_cast<std::size_t>(k)].variable == variable;
         ++k) {
      places.push_back(k);
    }
    fResult.terms.push_back(TermOf(variable, places));
  }
}

// The columns are tested as they are in the fit: b' (C^-1)^-1 b over their block of the inverse. A
// column that was redundant beside them may take their place when they go, and then the fit loses
// less: the sweep tells how much.
Term Figures::TermOf(int variable, const std::vector<int>& places) const {
  Term term{variable, 0, kUndefined, kUndefined, kUndefined};
  if (places.empty()) return term;
  const NQSymMatrix block = Submatrix(fInverse, places);
  std::vector<int> rows;
  std::vector<double> b;
  for (const int k : places) {
    rows.push_back(fSweep.kept[static_cast<std::size_t>(k)]);
    b.push_back(fSecond.b[static_cast<std::size_t>(k)]);
  }
  const NQSymMatrix products = Submatrix(fSweep.products, rows);
  term.vif = std::exp(LogDeterminant(block) + LogDeterminant(products));
  term.df = static_cast<double>(places.size());
  double sumOfSquares = 0;
  CholeskyFactor(block).LTSubstitute(b);
  for (const double x : b) sumOfSquares += x * x;

  std::vector<int> others;
  const int target = fSweep.swept.GetNRows() - 1;
  for (int j = 0; j < target; ++j) {
    if (!fSweep.isIn.IsIn(j) && fColumns[static_cast<std::size_t>(j)].variable != variable)
      others.push_back(j);
  }
  if (!others.empty()) {
    std::vector<int> left;
    for (int j = 0; j < target; ++j) {
      if (fColumns[static_cast<std::size_t>(j)].variable != variable) left.push_back(j);
    }
    left.push_back(target);
    const Sweep without = SweepColumns(Submatrix(fSweep.products, left));
    const double lost =
        static_cast<double>(fSweep.kept.size()) - static_cast<double>(without.kept.size());
    if (lost < term.df) {
      const int last = without.swept.GetNRows() - 1;
      sumOfSquares = without.swept.GetElem(last, last) - fSecond.residualSumOfSquares;
      term.df = lost;
    }
  }
  if (term.df > 0) {
    term.f = sumOfSquares / term.df / (fSigma * fSigma);
    term.sig = SignificanceOfF(term.f, term.df, fResult.dfResidual);
  }
  return term;
}

// ---- Other figures ------------------------------------------------------------------------------

// Those of a normal linear model, the variance of which is one of the parameters.
void Figures::Information() {
  const double n = fResult.n;
  const double parameters = fResult.n - fResult.dfResidual + 1;
  const double logSumOfSquares =
      std::log(fSecond.residualSumOfSquares) + 2 * fUnitOfTarget * std::numbers::ln2;
  fResult.logLik = (fPart.sumLogWeights -
                    n * (std::log(2 * std::numbers::pi) + 1 - std::log(n) + logSumOfSquares)) /
                   2;
  fResult.aic = -2 * fResult.logLik + 2 * parameters;
  fResult.bic = -2 * fResult.logLik + std::log(n) * parameters;
}

void Figures::ConditionNumber() {
  const int n = static_cast<int>(fSecond.b.size());
  fResult.conditionNumber = kUndefined;
  if (n == 0) return;
  NQSymMatrix correlations = Submatrix(fSweep.products, fSweep.kept);
  std::vector<double> squares;
  correlations.GetDiagonal(squares);
  for (int i = 0; i < n; ++i) {
    for (int j = 0; j <= i; ++j) {
      const double unit = std::sqrt(squares[static_cast<std::size_t>(i)]) *
                          std::sqrt(squares[static_cast<std::size_t>(j)]);
      correlations.SetElem(i, j, i == j ? 1 : correlations.GetElem(i, j) / unit);
    }
  }
  NQMath_940::NQEigenValues eigen(correlations, kEpsilon, 100);
  std::vector<double> values;
  if (eigen.GetSorted(values, true) == n && values.back() > 0)
    fResult.conditionNumber = values.front() / values.back();
}

void Figures::Residuals() {
  const bool perfect = fSecond.residualSumOfSquares == 0;
  const auto scaled = [&](double x) { return perfect ? 0 : Scaled(x, fUnitOfTarget); };
  const auto quantile = [&](double p) {
    return scaled(std::clamp(fPart.residuals.Quantile(p), fPart.min, fPart.max));
  };
  fResult.residuals = {scaled(fPart.min), quantile(0.25), quantile(0.5), quantile(0.75),
                       scaled(fPart.max)};
  fResult.durbinWatson = perfect ? kUndefined : fPart.sumSquaredSteps / fPart.sumSquares;
}

void Figures::Influence() {
  const double parameters = fResult.n - fResult.dfResidual;
  if (!(fSigma > 0)) return;
  for (const Candidate& candidate : fPart.candidates) {
    double residual = candidate.residual - fSecond.alpha;
    double leverage = fFirst.intercept ? 1 / fFirst.sumWeights : 0;
    std::vector<double> q = candidate.q;
    for (std::size_t k = 0; k < q.size(); ++k) {
      residual -= fSecond.gamma[k] * q[k];
      q[k] -= fSecond.meansOfQ[k];
    }
    if (!q.empty()) fSecond.factorOfQ.LTSubstitute(q);
    for (const double x : q) leverage += x * x;
    leverage *= candidate.weight;
    const double ratio = residual / (fSigma * (1 - leverage));
    fResult.influence.push_back({candidate.row, leverage,
                                 candidate.weight * ratio * ratio * leverage / parameters,
                                 Scaled(residual, fUnitOfTarget)});
  }
  std::stable_sort(fResult.influence.begin(), fResult.influence.end(),
                   [](const InfluentialCase& a, const InfluentialCase& b) {
                     return a.cooksDistance > b.cooksDistance;
                   });
}

void Figures::Charts() {
  if (!(fSigma > 0)) return;
  for (const PlotCell& cell : fPart.plot) {
    if (cell.frequency == 0) continue;
    fResult.residualPlot.push_back({Scaled(cell.fit / cell.frequency, fUnitOfTarget),
                                    Scaled(cell.residual / cell.frequency, fUnitOfTarget),
                                    cell.frequency});
  }
  const support::QuantileBins& bins = fData.HasWeight() ? fPart.weighted : fPart.residuals;
  const int points = static_cast<int>(std::min(fResult.n, 99.0));
  for (int i = 0; i < points; ++i) {
    // Few residuals are shown one by one.
    const double p = (i + 0.5) / points;
    const double place = fResult.n == points && points > 1 ? i / (points - 1.0) : p;
    fResult.normalPlot.push_back({NQDistFun::IdfNorm(p, 0, 1), bins.Quantile(place) / fSigma, 1});
  }
}

}  // namespace

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
  Figures figures(fit, data, columns, sweep, first, second, residuals);
  figures.Describe();
  if (options.charts) figures.Charts();
  return fit;
}

}  // namespace regression
