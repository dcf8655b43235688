// A fit as a StatXML document.
#pragma once

#include <string>

#include "input_summaries.h"
#include "model_data.h"
#include "regression.h"

namespace regression {

// Below the root, in this order:
//   TrainingSummary targetField isIntercept   Counts (missing: rows with a missing cell; invalid:
//                                             rows with a bad weight) and Statistics of the fit
//   FTest fStatistic df1 df2 sig
//   UnivariateData                            for each input: a histogram or a bar chart
//   ParameterEstimates                        ParameterStats paramIndex paramName estimate stdError
//                                             tTest sig confIntervalLower confIntervalUpper
//                                             isRedundant: the RegressionParameter
//   Matrix                                    covariances of the estimates that are not redundant
// Figures that are not finite are left out, __MISSING__ in lists.
std::string StatXmlDocument(const ModelData& data, const Regression& fit,
                            InputSummaries& summaries);

}  // namespace regression
