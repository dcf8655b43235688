// What a program that fits a model does around the fit.
#pragma once

#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "command_line.h"
#include "model_data.h"
#include "output_files.h"
#include "prediction.h"
#include "ranks.h"

namespace support {

// The local date: 2026-11-22.
std::string Today();

// Writes the predictions that are asked for and the report, which gives way to predictions on
// standard output; then gives the documents their names and tells the notes.
void Deliver(const std::string& program, const Request& request, const ModelData& data, Team& team,
             OutputFiles& documents, const std::vector<std::string>& titles, const Scorer& score,
             const std::function<void(std::ostream&)>& report);

// A rank that cannot read the data would leave the others waiting for its part: all throw then.
// Nothing without ranks.
void AgreeOnData(const std::string& path, Ranks* ranks);

// Runs the program and turns what it throws into a line on standard error and an exit status. Of
// several ranks, which all fail alike, the first speaks. `ranks` is null for one process.
int ExitStatusOf(const std::string& program, Ranks* ranks, const std::function<int()>& run);

}  // namespace support
