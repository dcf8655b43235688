// A fit as a PMML 4.3 document.
#pragma once

#include <string>

#include "regression.h"
#include "support/pmml_parts.h"

namespace regression {

// Header, DataDictionary, and a RegressionModel with MiningSchema, ModelStats of the inputs and the
// RegressionTable, whose numbers read back as the same doubles. Redundant coefficients have no
// predictor. The same fit gives the same bytes unless there is a timestamp.
std::string PmmlDocument(const support::ModelData& data, const Regression& fit,
                         const support::PmmlOptions& options);

}  // namespace regression
