// Iteratively reweighted least squares of several models in the same readings.
#pragma once

#include <limits>
#include <vector>

#include <nqcommon/math/matrix/NQSymMatrix.h>

#include "logistic.h"

namespace logistic {

// A column that changes a linear predictor by more, in units of the largest one, still moves.
inline constexpr double kStillMoving = 0.01;

// One model among those that are fitted together: the columns it has, where it stands, and where
// it came from.
struct State {
  std::vector<int> columns;  // of the design; after the first step those that are not redundant
  std::vector<double> b;     // scaled
  double constant = 0;
  std::vector<double> step;
  double stepOfConstant = 0;
  double deviance = std::numeric_limits<double>::infinity();  // at the place before the step
  int iterations = 0;
  int halvings = 0;
  bool isStarted = false;
  bool isDone = false;
  bool converged = false;
  std::vector<double> movement;     // by column: how far the last step moved a linear predictor
  NQMath_940::NQSymMatrix inverse;  // of the weighted cross-products
  std::vector<double> means;
  double sumWeights = 0;

  double Predict(const double* row) const {
    double eta = constant;
    for (std::size_t k = 0; k < b.size(); ++k) eta += b[k] * row[columns[k]];
    return eta;
  }
};

// The model of all the design's columns, and those without each of the inputs: see Fit.
std::vector<State> Iterate(const support::ModelData& data,
                           const std::vector<support::Column>& columns, int event,
                           const FitOptions& options, support::Team& team);

}  // namespace logistic
