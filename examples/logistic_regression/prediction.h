// The fit of a row, for tables of predictions.
#pragma once

#include <string>
#include <vector>

#include "logistic.h"
#include "support/prediction.h"

namespace logistic {

// The event's probability, its 95% bounds, and the category that the cutoff makes of it.
inline const std::vector<std::string> kPredictionTitles = {"fit", "lower", "upper", "class"};

support::Scorer PredictionOf(const LogisticFit& fit);

}  // namespace logistic
