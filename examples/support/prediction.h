// Predictions for the rows of a table.
#pragma once

#include <cstdint>
#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "model_data.h"
#include "team.h"

namespace support {

struct PredictionCounts {
  std::int64_t rows = 0;
  std::int64_t missing = 0;  // rows without figures for a missing cell
  std::int64_t unseen = 0;   // for a category that the fit does not know
};

// The cells of a prediction from the values of the inputs, by position; as many as there are
// titles.
using Scorer = std::function<void(const double* values, std::vector<std::string>& cells)>;

// The cell of a figure: empty where it is not finite.
std::string FigureCell(double x);

// Writes the rows of the table as they stand, those of a database as AppendRow has it, each
// followed by the cells of its prediction. Rows with a missing cell or an unknown category of an
// input have empty cells instead. The table has a column of each input, in any order; the dialect
// is that of the data. Throws std::runtime_error.
PredictionCounts WritePredictions(const ModelData& data, const std::vector<std::string>& titles,
                                  const Scorer& score, const SourceName& table, Team& team,
                                  std::ostream& out);

// How many rows have a prediction: a line.
void PrintCounts(std::ostream& out, const PredictionCounts& counts);

}  // namespace support
