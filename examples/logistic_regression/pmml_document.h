// A fit as a PMML 4.3 document.
#pragma once

#include <string>

#include "logistic.h"
#include "support/pmml_parts.h"

namespace logistic {

// Header, DataDictionary, and a RegressionModel of the function "classification" with the
// normalization "logit": MiningSchema, ModelStats of the inputs, a RegressionTable of the event and
// one of the other category, which has the same numbers with the other sign: so the logits of the
// tables add up to 1, whether a consumer takes the second, its complement, or both by their sum.
// Numbers read back as the same doubles.
std::string PmmlDocument(const support::ModelData& data, const LogisticFit& fit,
                         const support::PmmlOptions& options);

}  // namespace logistic
