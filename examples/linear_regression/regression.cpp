#include "regression.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <new>
#include <numeric>
#include <stdexcept>
#include <utility>

#include <nqcommon/math/matrix/NQBitSet.h>
#include <nqcommon/math/matrix/NQRectMatrix.h>
#include <nqcommon/math/numeric/NQDistFun.h>
#include <nqcommon/math/stats/NQMeansXProducts.h>

#include "input_summaries.h"

using NQMath_940::NQBitSet;
using NQMath_940::NQDistFun;
using NQMath_940::NQMeansXProducts;
using NQMath_940::NQRectMatrix;
using NQMath_940::NQSymMatrix;

namespace regression {
namespace {

constexpr double kUndefined = std::numeric_limits<double>::quiet_NaN();
constexpr double kConfidence = 0.95;

// A column of the design, the target's last: (x - first) 2^-exponent of a continuous variable, 1 or
// 0 for a category.
struct Column {
  int variable;
  int category;  // -1: continuous
  int exponent = 0;
  double scale = 1;   // 2^-exponent
  double origin = 0;  // scaled
};

Column ContinuousColumn(const ModelData& data, int variable, bool intercept) {
  constexpr int kMostScaled = 1000;  // 2^-1000 and 2^1000 are normal numbers
  const Range& range = data.RangeOf(variable);
  const double largest = std::max(std::fabs(range.min), std::fabs(range.max));
  Column column{variable, -1};
  if (largest > 0) column.exponent = std::clamp(std::ilogb(largest), -kMostScaled, kMostScaled);
  column.scale = std::ldexp(1.0, -column.exponent);
  if (intercept) column.origin = range.first * column.scale;
  return column;
}

std::vector<Column> DesignColumns(const ModelData& data, bool intercept) {
  std::vector<Column> columns;
  bool allCategories = !intercept;
  for (int i = 0; i < data.NInputs(); ++i) {
    if (!data.IsCategorical(i)) {
      columns.push_back(ContinuousColumn(data, i, intercept));
      continue;
    }
    const int nCategories = data.Variables().GetVarAt(i)->GetNumberOfCategories();
    for (int code = allCategories || nCategories == 1 ? 0 : 1; code < nCategories; ++code)
      columns.push_back({i, code});
    allCategories = false;
  }
  columns.push_back(ContinuousColumn(data, data.TargetPosition(), intercept));
  return columns;
}

// Gathers cases in blocks for NQMeansXProducts.
class CaseBlocks {
 public:
  CaseBlocks(const ModelData& data, const std::vector<Column>& columns, const FitOptions& options)
      : fColumns(columns),
        fFrequency(data.HasFrequency()),
        fWeight(data.HasWeight()),
        fBlock(options.blockRows, static_cast<int>(columns.size()) + int{fFrequency} + int{fWeight},
               true),
        fProducts(static_cast<int>(columns.size()), options.intercept, fFrequency, fWeight) {
    if (!fBlock.IsValidMatrix() || fProducts.GetNVars() == 0) throw std::bad_alloc();
  }

  void Add(const Case& taken) {
    double* to = fBlock.GetRowPtr(fFilled);
    for (const Column& column : fColumns) {
      const double x = taken.values[static_cast<std::size_t>(column.variable)];
      *to++ = column.category < 0 ? x * column.scale - column.origin : x == column.category ? 1 : 0;
    }
    if (fFrequency) *to++ = taken.frequency;
    if (fWeight) *to = taken.weight;
    if (++fFilled == fBlock.GetNRows()) Update();
  }

  const NQMeansXProducts& Finish() {
    if (fFilled > 0) Update();
    return fProducts;
  }

 private:
  void Update() {
    if (!fProducts.Update(fBlock, fFilled)) throw std::runtime_error("the weights are too large");
    fFilled = 0;
  }

  const std::vector<Column>& fColumns;
  bool fFrequency;
  bool fWeight;
  NQRectMatrix fBlock;
  int fFilled = 0;
  NQMeansXProducts fProducts;
};

// The cross-products after the sweep: over the columns swept minus the inverse of their
// cross-products C, in the target's row the coefficients.
struct SweptColumns {
  NQSymMatrix s;
  NQBitSet swept;
  std::vector<double> b;  // 0 where not swept
  double totalSumOfSquares;
  double residualSumOfSquares;

  bool Has(std::size_t column) const { return swept.IsIn(static_cast<int>(column)); }
};

SweptColumns SweepColumns(NQSymMatrix s) {
  const int target = s.GetNRows() - 1;
  std::vector<double> sumsOfSquares;
  s.GetDiagonal(sumsOfSquares);

  std::vector<int> inputs(static_cast<std::size_t>(target));
  std::iota(inputs.begin(), inputs.end(), 0);
  NQBitSet swept;
  // The check flag would raise references below 1 and so refuse columns that vary little.
  s.SweepOnSelected(inputs, NQMath_940::defaultepse, swept, false);

  // The residual is what the sums of squares of the target and of its parts along the columns leave
  // when they cancel; their rounding cannot be told from a residual.
  std::vector<double> b;
  s.GetRegCoeffs(b, swept);
  double cancelled = sumsOfSquares.back();
  for (std::size_t j = 0; j < b.size(); ++j) cancelled += b[j] * b[j] * sumsOfSquares[j];
  const double rounding = 4 * s.GetNRows() * std::numeric_limits<double>::epsilon() * cancelled;
  double residual = s.GetElem(target, target);
  if (residual <= rounding) residual = 0;
  return {std::move(s), swept, std::move(b), sumsOfSquares.back(), residual};
}

// A fit in the making: what the coefficients and their covariances are put together from.
class Estimates {
 public:
  Estimates(const std::vector<Column>& columns, const NQMeansXProducts& products,
            const SweptColumns& system, double sigma, double df, bool intercept)
      : fColumns(columns),
        fSystem(system),
        fSigma(sigma),
        fDf(df),
        fIntercept(intercept),
        fSumWeights(products.GetNCases()),
        fMeans(columns.size()) {
    if (!intercept) return;
    for (std::size_t j = 0; j < columns.size(); ++j) {
      if (j + 1 == columns.size() || system.Has(j))
        fMeans[j] = products.GetMeans()[j] + columns[j].origin;
    }
    fMeanOfTarget = std::exchange(fMeans.back(), 0);
  }

  std::vector<Coefficient> Coefficients(const ModelData& data) const {
    std::vector<Coefficient> coefficients;
    if (fIntercept) coefficients.push_back(Intercept());
    for (std::size_t j = 0; j < fSystem.b.size(); ++j) {
      const int variable = fColumns[j].variable;
      const int category = fColumns[j].category;
      Coefficient c =
          fSystem.Has(j) ? Described(fSystem.b[j], StandardError(j), Unit(j)) : Redundant();
      c.name = data.Variables().GetVarAt(variable)->GetVariableName();
      if (category >= 0) c.name += '=' + data.Variables().GetEncoderAt(variable)->Decode(category);
      c.variable = variable;
      c.category = category;
      coefficients.push_back(std::move(c));
    }
    return coefficients;
  }

  // By the delta method from cov(b) = sigma^2 C^-1 and the mean of the target, which is
  // uncorrelated with b.
  NQSymMatrix Covariance() const {
    std::vector<std::size_t> kept;
    for (std::size_t j = 0; j < fSystem.b.size(); ++j) {
      if (fSystem.Has(j)) kept.push_back(j);
    }
    const int first = fIntercept ? 1 : 0;
    NQSymMatrix covariance(first + static_cast<int>(kept.size()), true);
    if (!covariance.IsValidMatrix()) throw std::bad_alloc();
    std::vector<double> sm;
    fSystem.s.ComputeSV(fMeans, sm);
    if (fIntercept)
      covariance.SetElem(0, 0, Scaled(InterceptVariance(), UnitOfTarget(), UnitOfTarget()));
    for (std::size_t i = 0; i < kept.size(); ++i) {
      const int row = first + static_cast<int>(i);
      if (fIntercept)
        covariance.SetElem(row, 0, Scaled(sm[kept[i]], Unit(kept[i]), UnitOfTarget()));
      for (std::size_t j = 0; j <= i; ++j) {
        const double inverse =
            -fSystem.s.GetElem(static_cast<int>(kept[i]), static_cast<int>(kept[j]));
        covariance.SetElem(row, first + static_cast<int>(j),
                           Scaled(inverse, Unit(kept[i]), Unit(kept[j])));
      }
    }
    return covariance;
  }

 private:
  int UnitOfTarget() const { return fColumns.back().exponent; }
  int Unit(std::size_t j) const { return UnitOfTarget() - fColumns[j].exponent; }
  double Scaled(double x, int unit1, int unit2) const {
    return std::scalbn(std::scalbn(x * fSigma * fSigma, unit1), unit2);
  }
  double InterceptVariance() const { return 1 / fSumWeights - fSystem.s.ComputeVSV(fMeans); }
  double StandardError(std::size_t j) const {
    const int row = static_cast<int>(j);
    return fSigma * std::sqrt(-fSystem.s.GetElem(row, row));
  }

  Coefficient Intercept() const {
    double constant = fMeanOfTarget;
    for (std::size_t j = 0; j < fSystem.b.size(); ++j) constant -= fSystem.b[j] * fMeans[j];
    Coefficient c = Described(constant, fSigma * std::sqrt(InterceptVariance()), UnitOfTarget());
    c.name = "(Intercept)";
    return c;
  }

  // The figures by t, in units of 2^unit.
  Coefficient Described(double estimate, double stdError, int unit) const {
    const double t = estimate / stdError;
    const double width =
        fDf > 0 ? stdError * NQDistFun::IdfT((1 + kConfidence) / 2, fDf, NQMath_940::defaultepsz,
                                             NQMath_940::defaultepse)
                : kUndefined;
    Coefficient c;
    c.estimate = std::scalbn(estimate, unit);
    c.stdError = std::scalbn(stdError, unit);
    c.t = t;
    c.sig = std::isnan(t) ? kUndefined : 2 * NQDistFun::SigT(std::fabs(t), fDf);
    c.lower = std::scalbn(estimate - width, unit);
    c.upper = std::scalbn(estimate + width, unit);
    return c;
  }

  static Coefficient Redundant() {
    Coefficient c;
    c.stdError = c.t = c.sig = c.lower = c.upper = kUndefined;
    c.redundant = true;
    return c;
  }

  const std::vector<Column>& fColumns;
  const SweptColumns& fSystem;
  double fSigma;
  double fDf;
  bool fIntercept;
  double fSumWeights;
  std::vector<double> fMeans;  // scaled; 0 where not swept, and all 0 without an intercept
  double fMeanOfTarget = 0;
};

// The figures of the whole; `scale` is the exponent of the target.
void DescribeFit(Regression& fit, const SweptColumns& system, double sigma, int scale) {
  const double total = system.totalSumOfSquares;
  const double residual = system.residualSumOfSquares;
  fit.residualStdDev = std::scalbn(sigma, scale);
  fit.rSquared = total > 0 ? 1 - residual / total : kUndefined;
  fit.adjustedRSquared = 1 - (1 - fit.rSquared) * (fit.n - int{fit.intercept}) / fit.dfResidual;
  fit.fStatistic =
      fit.dfModel > 0 ? (total - residual) / fit.dfModel / (sigma * sigma) : kUndefined;
  fit.fSig = std::isnan(fit.fStatistic)
                 ? kUndefined
                 : NQDistFun::SigF(fit.fStatistic, fit.dfModel, fit.dfResidual);
}

}  // namespace

Regression Fit(const ModelData& data, const FitOptions& options, InputSummaries* summaries) {
  Regression fit;
  fit.target = data.Variables().GetVarAt(data.TargetPosition())->GetVariableName();
  fit.intercept = options.intercept;
  fit.rows = data.Counts();
  fit.n = fit.rows.sumFrequency;
  const std::vector<Column> columns = DesignColumns(data, options.intercept);
  const std::size_t terms = columns.size() - 1 + (options.intercept ? 1 : 0);
  if (fit.n < static_cast<double>(terms)) {
    throw std::runtime_error("too few cases: " + std::to_string(fit.rows.used) + " for " +
                             std::to_string(terms) + " coefficients");
  }

  CaseBlocks blocks(data, columns, options);
  data.ForEachCase([&](const Case& taken) {
    blocks.Add(taken);
    if (summaries) summaries->Add(taken);
  });
  const NQMeansXProducts& products = blocks.Finish();
  const SweptColumns system = SweepColumns(products.GetXProds());

  fit.dfModel = system.swept.InSet();
  const double fitted = fit.dfModel + (options.intercept ? 1 : 0);
  if (fitted == 0) throw std::runtime_error("nothing to fit: no intercept and no usable input");
  fit.dfResidual = fit.n - fitted;
  const double sigma =
      fit.dfResidual > 0 ? std::sqrt(system.residualSumOfSquares / fit.dfResidual) : kUndefined;
  DescribeFit(fit, system, sigma, columns.back().exponent);
  const Estimates estimates(columns, products, system, sigma, fit.dfResidual, options.intercept);
  fit.coefficients = estimates.Coefficients(data);
  for (const Coefficient& c : fit.coefficients) {
    if (!std::isfinite(c.estimate))
      throw std::runtime_error("the coefficient of '" + c.name + "' is not finite");
  }
  fit.covariance = estimates.Covariance();
  return fit;
}

}  // namespace regression
