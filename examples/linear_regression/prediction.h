// The fit of a row, for tables of predictions.
#pragma once

#include <string>
#include <vector>

#include "regression.h"
#include "support/prediction.h"

namespace regression {

// The fit, its standard error, its 95% bounds and those of a new case of weight 1.
inline const std::vector<std::string> kPredictionTitles = {"fit",   "se",        "lower",
                                                           "upper", "predLower", "predUpper"};

support::Scorer PredictionOf(const Regression& fit);

}  // namespace regression
