// The parts of a PMML document that models from files share.
#pragma once

#include <string>

#include "input_summaries.h"
#include "model_data.h"
#include "xml_tree.h"

namespace support {

struct PmmlOptions {
  std::string program, version;
  std::string copyright;  // empty: none
  bool timestamp = false;
};

// PMML with its header and the dictionary of all variables, weights included.
Tree PmmlRoot(const ModelData& data, const std::string& description, const PmmlOptions& options);

Tree MiningSchema(const ModelData& data);

// The statistics of the inputs; nothing where there are none.
void AppendModelStats(const Tree& model, const ModelData& data, const InputSummaries& summaries);

// The predictor of one coefficient: a numeric one for category -1.
Tree PmmlPredictor(const ModelData& data, int variable, int category, double coefficient);

}  // namespace support
