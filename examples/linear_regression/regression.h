// Least squares by sweeping the cross-product matrix of a model's cases.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <nqcommon/math/matrix/NQSymMatrix.h>

#include "support/coefficient.h"
#include "support/design.h"
#include "support/input_summaries.h"
#include "support/model_data.h"
#include "support/quantile_bins.h"

namespace regression {

// Undefined figures are NaN; one divided by a residual of 0 may be infinite.
struct Coefficient : support::Coefficient {
  double t = 0;
  double lower = 0;  // 95% confidence bounds
  double upper = 0;
  double standardized = 0;  // the estimate in standard deviations of target and column
};

// An input: all its coefficients together.
struct Term {
  int variable = 0;
  double df = 0;  // how many coefficients the fit would lose without it
  double f = 0;   // the test that they are all 0
  double sig = 0;
  double vif = 0;  // variance inflation, generalised (Fox and Monette 1992); for all of them
};

struct InfluentialCase {
  std::int64_t row = 0;  // of the file, from 1 below the header
  double leverage = 0;
  double cooksDistance = 0;
  double residual = 0;
};

// Target minus fit, not weighted.
struct ResidualFigures {
  double min = 0;
  double q1 = 0;
  double median = 0;
  double q3 = 0;
  double max = 0;
};

// What predicts: the columns of the design that are not redundant, about their centre.
struct Predictor {
  std::vector<support::Column> columns;
  std::vector<double> centre;  // of the scaled columns, without their origins; 0 with no intercept
  std::vector<double> b;       // scaled
  double constant = 0;         // the fit at the centre
  int exponent = 0;            // of the target's unit
  double sigma = 0;            // in that unit
  double sumWeights = 0;       // W with an intercept, whose variance is sigma^2 / W; else infinite
  NQMath_940::NQSymMatrix factor;  // L, L L' being the cross-products of the columns

  struct Answer {
    double fit;
    double leverage;  // of a case of weight 1
  };
  Answer At(const double* values) const;
};

struct Regression {
  std::string target;
  bool intercept = true;
  double n = 0;  // cases used: the sum of the frequency weights
  support::CaseCounts rows;
  double dfModel = 0;     // coefficients that are not redundant, without the intercept
  double dfResidual = 0;  // n less all coefficients that are not redundant
  double residualStdDev = 0;
  double rSquared = 0;  // this and F are about zero without an intercept, about the mean with one
  double adjustedRSquared = 0;
  double fStatistic = 0;
  double fSig = 0;
  double logLik = 0;
  double aic = 0;
  double bic = 0;
  double durbinWatson = 0;
  double conditionNumber = 0;  // of the columns' correlation matrix: largest to least eigenvalue
  std::vector<Coefficient> coefficients;  // the intercept, if any; by input
  NQMath_940::NQSymMatrix covariance;     // of the estimates that are not redundant
  std::vector<Term> terms;                // by input
  ResidualFigures residuals;
  std::vector<InfluentialCase> influence;  // the ten largest Cook's distances, falling
  Predictor predictor;

  // For charts, when asked for.
  support::InputSummaries summaries;
  std::vector<support::Point> residualPlot;  // fit and residual, binned
  // Normal quantiles and those of the residuals times the root of their weights, divided by
  // the residual standard deviation.
  std::vector<support::Point> normalPlot;
};

struct FitOptions {
  bool intercept = true;
  bool charts = false;
};

// The readings of the file that ModelData and Fit make, for the progress bar.
inline constexpr int kPasses = 3;

// Reads the cases of the model twice and fits.
//
// Columns     see DesignColumns
// Weights     a frequency weight counts cases; a regression weight scales the residual variance.
// Accuracy    The first reading sums cross-products, whose sweep gives coefficients with some
//             1e-16 times the square of the condition number of the centred columns scaled to unit
//             length. The second takes the columns times the inverse of the cross-products'
//             Cholesky factor, which are nearly orthonormal, and the residuals; a fit of those
//             to these corrects both factor and coefficients (CholeskyQR2: Yamamoto, Nakatsukasa,
//             Yanagisawa and Fukaya 2015). The error is then as of an orthogonal
//             factorisation: some 1e-16 times the condition number.
// Redundancy  a column is redundant when those before it leave at most 1e-12 of its sum of squares
//             (about the mean with an intercept), or when it would leave so little of one of them.
// Perfect fit a residual sum of squares that the rounding of the data alone may have left is 0.
// Memory      p(p+1)/2 numbers for p columns, a few times for each thread
//
// Throws std::runtime_error for fewer cases than coefficients, redundant ones included, and when
// there is nothing to fit.
Regression Fit(const support::ModelData& data, const FitOptions& options, support::Team& team);

}  // namespace regression
