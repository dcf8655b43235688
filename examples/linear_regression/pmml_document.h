// A fit as a PMML 4.3 document.
#pragma once

#include <string>

#include "input_summaries.h"
#include "model_data.h"
#include "regression.h"

namespace regression {

// Header, DataDictionary, and a RegressionModel with MiningSchema, ModelStats of the inputs and the
// RegressionTable. Redundant coefficients have no predictor. The same fit gives the same bytes.
std::string PmmlDocument(const ModelData& data, const Regression& fit, InputSummaries& summaries);

}  // namespace regression
