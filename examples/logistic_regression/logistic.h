// Maximum likelihood for a target of two categories, by iteratively reweighted least squares.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include <nqcommon/common/NQWarnings.h>
#include <nqcommon/math/matrix/NQSymMatrix.h>
#include <nqcommon/math/stats/NQIterationReporter.h>

#include "ranking.h"
#include "support/coefficient.h"
#include "support/design.h"
#include "support/input_summaries.h"
#include "support/model_data.h"
#include "support/team.h"

namespace logistic {

// Undefined figures are NaN.
struct Coefficient : support::Coefficient {
  double z = 0;
  double margin = 0;  // half the width of the estimate's 95% confidence bounds
  double oddsRatio = 0;
  double lower = 0;  // 95% confidence bounds of the odds ratio
  double upper = 0;
};

// Codes of warnings. Names of inputs and coefficients are their parameters in NQWarnings.
enum Warning : long {
  kSeparated = 1,  // the inputs
  kNotConverged,   // the first discrete datum is the number of iterations
  kRedundant,      // the coefficients
};

// A likelihood-ratio test: of an input, or of all of them.
struct Test {
  int variable = -1;
  double df = 0;
  double chiSquare = 0;
  double sig = 0;
};

struct LogisticFit {
  std::string target, event, other;
  double n = 0;  // cases used: the sum of the frequency weights
  double events = 0;
  support::CaseCounts rows;
  double deviance = 0;
  double nullDeviance = 0;
  double dfModel = 0;     // coefficients that are not redundant, without the intercept
  double dfResidual = 0;  // n less all coefficients that are not redundant
  double aic = 0;
  double bic = 0;
  double mcFadden = 0;
  double nagelkerke = 0;
  int iterations = 0;
  bool converged = false;
  // Inputs along which the likelihood grows for ever: some combination of theirs tells the events
  // from the rest, of all cases or of some. Their estimates are where the iteration stood.
  std::vector<std::string> separated;
  NQCommon_940::NQWarnings warnings;      // see Warning
  std::vector<Coefficient> coefficients;  // the intercept; by input
  std::vector<Test> terms;                // by input
  Test model;
  Ranking ranking;
  double auc = 0;
  double aucBinning = 0;    // what the bins can have changed of it, at most
  double cutoff = 0.5;      // cases with a probability above it are classified as events
  double table[2][2] = {};  // [is an event][is classified as one]

  // What predicts: columns that are not redundant, as the design scales them.
  std::vector<support::Column> columns;
  std::vector<double> b;
  double constant = 0;
  std::vector<double> centre;           // weighted means of the columns
  double varianceAtCentre = 0;          // of the linear predictor there
  NQMath_940::NQSymMatrix covariance;   // of b
  NQMath_940::NQSymMatrix covariances;  // of the estimates that are not redundant
  support::InputSummaries summaries;    // when asked for

  double LinearPredictor(const double* values) const;
  double StdError(const double* values) const;  // of the linear predictor
  // Of the linear predictor at these distances of the columns from their centre.
  double Variance(const std::vector<double>& distances) const;
};

struct FitOptions {
  // Hears of each iteration: estimates as scaled, number, halvings, deviance, seconds.
  std::function<void(const NQMath_940::NQIterationReporter&)> report;
  double cutoff = 0.5;
  int maxIterations = 25;
  bool summaries = false;
};

// The event's code among the target's categories: that of the text; without one "1" of "0" and "1",
// else the last in byte order. Throws std::runtime_error unless there are two categories, one of
// them the text.
int EventCode(const support::ModelData& data, const std::string& text);

// Fits. Each iteration reads the cases once, for this fit and for those without each of the inputs
// at the same time.
//
// Step         The working residuals (y - p) / (p (1 - p)) with weights f p (1 - p) go into
//              NQMeansXProducts; sweeping the columns in leaves the step (Nelder and Wedderburn
//              1972, in its form of differences, which is exact where the score is 0). The first
//              has p = (f y + 1/2) / (f + 1).
// Halving      A step after which the deviance is larger is halved until it is not.
// Convergence  The deviance changes by less than 1e-8 of itself and 0.1, and no column changes a
//              linear predictor by more than 1e-8 of the largest that it makes and 1.
// Separation   The deviance has converged, or the iterations are used up, while a column still
//              changes a linear predictor by more than 0.01.
// Redundancy   as of linear regression, by the columns alone
// Memory       p(p+1)/2 numbers for p columns, once for each input and a few times for each thread
//
// Throws std::runtime_error for fewer cases than coefficients.
LogisticFit Fit(const support::ModelData& data, int event, const FitOptions& options,
                support::Team& team);

}  // namespace logistic
