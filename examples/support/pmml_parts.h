// The parts of a PMML document that models from files share.
#pragma once

#include <string>
#include <vector>

#include "coefficient.h"
#include "input_summaries.h"
#include "model_data.h"
#include "text.h"
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

// The predictor of a coefficient that is not the intercept's, which is taken times the sign.
Tree PmmlPredictor(const ModelData& data, const Coefficient& c, int sign);

// The RegressionTable of coefficients, each a support::Coefficient; redundant ones are left out.
template <class C>
Tree PmmlTable(const ModelData& data, const std::vector<C>& coefficients, int sign = 1) {
  Tree table = NewElement("RegressionTable");
  const bool intercept = !coefficients.empty() && coefficients.front().variable < 0;
  table->AddAttribute("intercept",
                      Shortest(intercept ? sign * coefficients.front().estimate + 0.0 : 0));
  // Numeric predictors come before categorical ones.
  for (const bool categorical : {false, true}) {
    for (const C& c : coefficients) {
      if (c.variable >= 0 && !c.redundant && (c.category >= 0) == categorical)
        Append(table, PmmlPredictor(data, c, sign));
    }
  }
  return table;
}

}  // namespace support
