#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <optional>
#include <stdexcept>
#include <utility>

#include <nqcommon/math/matrix/NQEigenValues.h>
#include <nqcommon/math/numeric/NQDistFun.h>

#include "fit_parts.h"

using NQMath_940::NQDistFun;
using NQMath_940::NQSymMatrix;
using support::Column;
using support::ModelData;

namespace regression {
namespace {

constexpr double kUndefined = std::numeric_limits<double>::quiet_NaN();
constexpr double kConfidence = 0.95;
constexpr double kEpsilon = std::numeric_limits<double>::epsilon();

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
  c.name = support::kInterceptName;
  return c;
}

void Figures::Coefficients() {
  std::vector<Coefficient>& coefficients = fResult.coefficients;
  if (fFirst.intercept) coefficients.push_back(Intercept());
  const std::vector<Column> columns(fColumns.begin(), fColumns.end() - 1);
  const std::vector<std::string> names =
      support::CoefficientNames(fData, columns, fFirst.intercept);
  std::size_t k = 0;
  for (std::size_t j = 0; j < columns.size(); ++j) {
    const Column& column = columns[j];
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
    c.name = names[j];
    coefficients.push_back(std::move(c));
    if (!std::isfinite(coefficients.back().estimate))
      throw std::runtime_error("the coefficient of '" + coefficients.back().name +
                               "' is not finite");
  }
}

void Figures::Covariance() {
  std::vector<double> centre;
  for (std::size_t k = 0; k < fSecond.b.size(); ++k) centre.push_back(CentreOf(k));
  fResult.covariance = support::Covariances(
      fInverse, fSigma * fSigma, fFirst.columns, fUnitOfTarget, centre,
      fFirst.intercept ? std::optional(fResult.coefficients[0].stdError) : std::nullopt);
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

void Describe(Regression& result, const ModelData& data, const std::vector<Column>& columns,
              const Sweep& sweep, const FirstFit& first, const SecondFit& second,
              const ResidualPart& part, bool charts) {
  Figures figures(result, data, columns, sweep, first, second, part);
  figures.Describe();
  if (charts) figures.Charts();
}

}  // namespace regression
