#include "regression.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <limits>
#include <new>
#include <numeric>
#include <stdexcept>
#include <utility>

#include <nqcommon/math/matrix/NQBitSet.h>
#include <nqcommon/math/matrix/NQSymMatrix.h>

using NQMath_940::NQBitSet;
using NQMath_940::NQSymMatrix;

namespace regression {
namespace {

constexpr double kUndefined = std::numeric_limits<double>::quiet_NaN();

// A sum that carries its rounding errors along (Ogita, Rump and Oishi 2005, Accurate sum and dot
// product, algorithm 4.4).
class CompensatedSum {
 public:
  void Add(double x) {
    const double sum = fSum + x;
    const double taken = sum - fSum;
    fError += (fSum - (sum - taken)) + (x - taken);
    fSum = sum;
  }
  double Total() const { return fSum + fError; }

 private:
  double fSum = 0;
  double fError = 0;
};

// A column in units of 2^exponent, less its mean.
struct Variable {
  std::string name;
  std::vector<double> values;
  int exponent = 0;
  double mean = 0;
};

// Near 1 no square overflows or underflows; a power of two costs no rounding.
void Rescale(Variable& variable) {
  double largest = 0;
  for (double x : variable.values) largest = std::max(largest, std::fabs(x));
  if (largest == 0) return;
  variable.exponent = std::ilogb(largest);
  for (double& x : variable.values) x = std::scalbn(x, -variable.exponent);
}

// Centres twice: the second mean is what the rounding of the first has left. A constant column
// becomes exactly 0.
void Centre(Variable& variable) {
  for (int pass = 0; pass < 2; ++pass) {
    CompensatedSum sum;
    for (double x : variable.values) sum.Add(x);
    const double mean = sum.Total() / static_cast<double>(variable.values.size());
    for (double& x : variable.values) x -= mean;
    variable.mean += mean;
  }
}

double InnerProduct(const std::vector<double>& x, const std::vector<double>& y) {
  CompensatedSum sum;
  for (std::size_t i = 0; i < x.size(); ++i) sum.Add(x[i] * y[i]);
  return sum.Total();
}

NQSymMatrix CrossProducts(const std::vector<Variable>& variables) {
  const int order = static_cast<int>(variables.size());
  NQSymMatrix s(order, true);
  if (!s.IsValidMatrix()) throw std::bad_alloc();
  for (int i = 0; i < order; ++i) {
    for (int j = 0; j <= i; ++j) {
      const auto& x = variables[static_cast<std::size_t>(i)].values;
      s.SetElem(i, j, InnerProduct(x, variables[static_cast<std::size_t>(j)].values));
    }
  }
  return s;
}

// The cross-products after the sweep: over the inputs swept minus the inverse of their
// cross-products C, in the target's row the coefficients.
struct SweptInputs {
  NQSymMatrix s;
  NQBitSet swept;
  double totalSumOfSquares;
  double residualSumOfSquares;
};

SweptInputs SweepInputs(NQSymMatrix s) {
  const int target = s.GetNRows() - 1;
  std::vector<double> sumsOfSquares;
  s.GetDiagonal(sumsOfSquares);

  std::vector<int> inputs(static_cast<std::size_t>(target));
  std::iota(inputs.begin(), inputs.end(), 0);
  NQBitSet swept;
  // The check flag would raise references below 1 and so refuse columns that vary little.
  s.SweepOnSelected(inputs, NQMath_940::defaultepse, swept, false);

  // The residual is what the sums of squares of the target and of its parts along the inputs leave
  // when they cancel; their rounding cannot be told from a residual.
  std::vector<double> b;
  s.GetRegCoeffs(b, swept);
  double cancelled = sumsOfSquares.back();
  for (std::size_t j = 0; j < b.size(); ++j) cancelled += b[j] * b[j] * sumsOfSquares[j];
  const double rounding = 4 * s.GetNRows() * std::numeric_limits<double>::epsilon() * cancelled;
  const double residual = s.GetElem(target, target);
  return {std::move(s), swept, sumsOfSquares.back(), residual <= rounding ? 0 : residual};
}

// The coefficients of the inputs, with one step of refinement by their residuals: the error of the
// sweep grows with the square of the columns' condition number, what then remains with the number
// itself (Björck 1996, Numerical Methods for Least Squares Problems, on iterative refinement).
std::vector<double> Solve(const std::vector<Variable>& variables, const SweptInputs& system) {
  std::vector<double> b;
  system.s.GetRegCoeffs(b, system.swept);
  std::vector<double> residuals = variables.back().values;
  for (std::size_t j = 0; j < b.size(); ++j) {
    for (std::size_t i = 0; i < residuals.size(); ++i)
      residuals[i] -= b[j] * variables[j].values[i];
  }

  std::vector<double> gradient(variables.size());
  std::vector<double> correction;
  for (std::size_t j = 0; j < b.size(); ++j) {
    if (system.swept.IsIn(static_cast<int>(j)))
      gradient[j] = InnerProduct(variables[j].values, residuals);
  }
  system.s.ComputeSV(gradient, correction);
  for (std::size_t j = 0; j < b.size(); ++j) {
    if (system.swept.IsIn(static_cast<int>(j))) b[j] -= correction[j];
  }
  return b;
}

// In the variables' units; `sigma` is the residual standard deviation.
std::vector<Coefficient> Coefficients(const std::vector<Variable>& variables,
                                      const SweptInputs& system, double sigma, bool intercept) {
  const Variable& target = variables.back();
  const std::vector<double> b = Solve(variables, system);
  std::vector<Coefficient> coefficients;
  CompensatedSum constant;
  constant.Add(target.mean);
  std::vector<double> means(variables.size());  // 0 where nothing was swept
  for (std::size_t j = 0; j < b.size(); ++j) {
    const Variable& input = variables[j];
    const int row = static_cast<int>(j);
    if (!system.swept.IsIn(row)) {
      coefficients.push_back({input.name, 0, kUndefined, kUndefined, true});
      continue;
    }
    const int unit = target.exponent - input.exponent;
    const double stdError = sigma * std::sqrt(-system.s.GetElem(row, row));
    coefficients.push_back(
        {input.name, std::scalbn(b[j], unit), std::scalbn(stdError, unit), b[j] / stdError, false});
    means[j] = input.mean;
    constant.Add(-b[j] * input.mean);
  }
  if (intercept) {
    // The mean of y and the coefficients are uncorrelated: variance s^2 (1/n + m' C^-1 m).
    const double n = static_cast<double>(target.values.size());
    const double stdError = sigma * std::sqrt(1 / n - system.s.ComputeVSV(means));
    const double estimate = constant.Total();
    coefficients.insert(coefficients.begin(),
                        {"(Intercept)", std::scalbn(estimate, target.exponent),
                         std::scalbn(stdError, target.exponent), estimate / stdError, false});
  }
  return coefficients;
}

std::vector<Variable> Prepare(std::vector<Column> columns, bool intercept) {
  std::vector<Variable> variables;
  for (Column& column : columns) {
    Variable& variable = variables.emplace_back();
    variable.name = std::move(column.name);
    variable.values = std::move(column.values);
    Rescale(variable);
    if (intercept) Centre(variable);
  }
  return variables;
}

}  // namespace

Regression Fit(std::vector<Column> columns, bool intercept) {
  const std::vector<Variable> variables = Prepare(std::move(columns), intercept);
  const Variable& target = variables.back();
  const SweptInputs system = SweepInputs(CrossProducts(variables));

  Regression fit;
  fit.target = target.name;
  fit.intercept = intercept;
  fit.n = std::ssize(target.values);
  fit.dfModel = system.swept.InSet();
  const std::int64_t terms = fit.dfModel + (intercept ? 1 : 0);
  if (terms == 0) throw std::runtime_error("nothing to fit: no intercept and no usable input");
  fit.dfResidual = fit.n - terms;
  if (fit.dfResidual < 1) {
    throw std::runtime_error("too few rows: " + std::to_string(fit.n) + " for " +
                             std::to_string(terms) + " coefficients and a residual");
  }

  const double total = system.totalSumOfSquares;
  const double residual = system.residualSumOfSquares;
  const double variance = residual / static_cast<double>(fit.dfResidual);
  const double sigma = std::sqrt(variance);
  fit.residualStdDev = std::scalbn(sigma, target.exponent);
  fit.rSquared = total > 0 ? 1 - residual / total : kUndefined;
  fit.fStatistic = fit.dfModel > 0
                       ? (total - residual) / static_cast<double>(fit.dfModel) / variance
                       : kUndefined;
  fit.coefficients = Coefficients(variables, system, sigma, intercept);
  return fit;
}

}  // namespace regression
