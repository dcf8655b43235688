// Predictions for the rows of a table.
#pragma once

#include <cstdint>
#include <ostream>
#include <string>

#include "regression.h"

namespace regression {

struct PredictionCounts {
  std::int64_t rows = 0;
  std::int64_t missing = 0;  // rows without figures for a missing cell
  std::int64_t unseen = 0;   // for a category that the fit does not know
};

// Writes the rows of the table as they stand, each followed by the fit, its standard error, its 95%
// bounds and those of a new case of weight 1: fit, se, lower, upper, predLower, predUpper. Rows
// with a missing cell or an unknown category of an input have empty cells instead. The table has a
// column of each input, in any order; the dialect is that of the data. Throws std::runtime_error.
PredictionCounts WritePredictions(const support::ModelData& data, const Regression& fit,
                                  const std::string& path, support::Team& team, std::ostream& out);

}  // namespace regression
