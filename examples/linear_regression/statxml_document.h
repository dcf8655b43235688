// A fit as a StatXML document.
#pragma once

#include <string>

#include "regression.h"

namespace regression {

// Below the root, in this order:
//   TrainingSummary targetField isIntercept dataName
//                                   Counts (missing: rows with a missing cell; invalid: rows with a
//                                   bad weight), Statistics of the fit, a FieldInfo for the
//                                   reference category of each categorical input
//   FTest fStatistic df1 df2 sig
//   UnivariateData                  for the target and each input: a histogram or a bar chart
//   ParameterEstimates              ParameterStats paramIndex paramName estimate stdError tTest sig
//                                   confIntervalLower confIntervalUpper isRedundant standardized:
//                                   the RegressionParameter
//   ModelTestStats                  for each input: FTest fieldName fStatistic df1 df2 sig vif
//   BivariateData                   "residuals": fit, residual and cases, binned
//   BivariateData                   "normal quantiles": normal, residual in standard deviations
//   MultivariateData                "influence": row, leverage, cooksDistance, residual
//   Matrix                          covariances of the estimates that are not redundant
// Figures that are not finite are left out, __MISSING__ in lists.
std::string StatXmlDocument(const support::ModelData& data, const Regression& fit);

}  // namespace regression
