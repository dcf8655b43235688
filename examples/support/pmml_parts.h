// The parts of a PMML document that models from files share.
#pragma once

#include <string>
#include <vector>

#include "coefficient.h"
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

// A RegressionTable without predictors.
Tree PmmlTable(double intercept);
// The predictor of a coefficient that is not the intercept's.
Tree PmmlPredictor(const ModelData& data, const Coefficient& c);

// The RegressionTable of coefficients, each a support::Coefficient; redundant ones are left out.
template <class C>
Tree PmmlTable(const ModelData& data, const std::vector<C>& coefficients) {
  const bool intercept = !coefficients.empty() && coefficients.front().variable < 0;
  Tree table = PmmlTable(intercept ? coefficients.front().estimate : 0);
  // Numeric predictors come before categorical ones.
  for (const bool categorical : {false, true}) {
    for (const C& c : coefficients) {
      if (c.variable >= 0 && !c.redundant && (c.category >= 0) == categorical)
        Append(table, PmmlPredictor(data, c));
    }
  }
  return table;
}

}  // namespace support
