// Least squares by sweeping the cross-product matrix of a model's cases.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <nqcommon/math/matrix/NQSymMatrix.h>

#include "model_data.h"

namespace regression {

class InputSummaries;

// Undefined figures are NaN; one divided by a residual of 0 may be infinite.
struct Coefficient {
  std::string name;   // "(Intercept)", the variable, or variable=category
  int variable = -1;  // its position; -1 for the intercept
  int category = -1;  // its code; -1 for a continuous variable
  double estimate = 0;
  double stdError = 0;
  double t = 0;
  double sig = 0;    // of t, both tails
  double lower = 0;  // 95% confidence bounds
  double upper = 0;
  bool redundant =
      false;  // a linear combination of those before it: estimate 0, the rest undefined
};

struct Regression {
  std::string target;
  bool intercept = true;
  double n = 0;  // cases used: the sum of the frequency weights
  CaseCounts rows;
  double dfModel = 0;     // coefficients that are not redundant, without the intercept
  double dfResidual = 0;  // n less all coefficients that are not redundant
  double residualStdDev = 0;
  double rSquared = 0;  // this and F are about zero without an intercept, about the mean with one
  double adjustedRSquared = 0;
  double fStatistic = 0;
  double fSig = 0;
  std::vector<Coefficient> coefficients;  // the intercept, if any; by input
  NQMath_940::NQSymMatrix covariance;     // of the estimates that are not redundant
};

struct FitOptions {
  bool intercept = true;
  int blockRows = 1024;  // cases handed over to NQMeansXProducts at a time
};

// Reads the cases of the model, adds them to `summaries` too unless that is null, and fits.
//
// Columns     a continuous input has one; a categorical input one for each category but the first,
//             the reference category. Without an intercept the first categorical input has all; so
//             has one of a single category, a constant.
// Weights     a frequency weight counts cases; a regression weight scales the residual variance.
// Accuracy    columns are taken about their first value, in units of a power of two: neither their
//             place nor their unit matters. The relative error is some 1e-16 times the square of
//             the condition number of the centred columns scaled to unit length.
// Redundancy  a column is redundant when those before it leave at most 1e-12 of its sum of squares
//             (about the mean with an intercept), or when it would leave so little of one of them.
// Perfect fit a residual sum of squares that rounding alone may have left is 0.
// Memory      p(p+1)/2 numbers a few times, for p columns
//
// Throws std::runtime_error for fewer cases than coefficients, redundant ones included, and when
// there is nothing to fit.
Regression Fit(const ModelData& data, const FitOptions& options, InputSummaries* summaries);

}  // namespace regression
