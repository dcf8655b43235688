// Ordinary least squares by sweeping the cross-product matrix.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "csv_table.h"

namespace regression {

struct Coefficient {
  std::string name;
  double estimate;
  double stdError;
  double t;
  bool redundant;  // a linear combination of the inputs before it: estimate 0, the rest undefined
};

// A figure that is undefined is NaN; one divided by a residual of 0 is infinite or NaN.
struct Regression {
  std::string target;
  bool intercept;
  std::int64_t n;
  std::int64_t dfModel;  // inputs that are not redundant
  std::int64_t dfResidual;
  double residualStdDev;
  double rSquared;  // this and F are about zero without an intercept, about the mean with one
  double fStatistic;
  std::vector<Coefficient> coefficients;  // the intercept, if any, then the inputs
};

// Fits the last column by those before it; all have the same number of rows.
//
// Accuracy    sums are as if taken in twice the precision, columns centred before they are
//             multiplied; no unit of a column is too small or too large.
// Redundancy  an input is redundant when the inputs before it leave at most 1e-12 of its sum of
//             squares (about the mean with an intercept), or when it would leave so little of one
//             of them. The second part finds the difference of two near-equal inputs, whose
//             rounding is far more than 1e-12 of it. A constant is redundant beside an intercept.
// Perfect fit a residual sum of squares that rounding alone may have left is 0.
//
// Throws std::runtime_error when the rows leave no degrees of freedom for the residual.
Regression Fit(std::vector<Column> columns, bool intercept);

}  // namespace regression
