// A fit as a StatXML document.
#pragma once

#include <string>

#include "logistic.h"

namespace logistic {

// Below the root, in this order:
//   TrainingSummary targetField isIntercept dataName event other converged
//                                   as support::StatXmlSummary, with the figures of the fit
//   Message severity                for each warning
//   ChiTest chiSquare df1 sig       the likelihood-ratio test of all inputs
//   UnivariateData                  for the target and each input: a histogram or a bar chart
//   ParameterEstimates              ParameterStats paramIndex paramName estimate stdError zTest sig
//                                   confIntervalLower confIntervalUpper expEstimate expCILower
//                                   expCIUpper isRedundant: the RegressionParameter
//   ModelTestStats                  for each input: ChiTest fieldName chiSquare df1 sig
//   Matrix                          cases by category, as they are and as they are classified
//   BivariateData                   "ROC curve": falsePositives, truePositives, probability
//   BivariateData                   "calibration": mean probability, share of events and cases
//   Matrix                          covariances of the estimates that are not redundant
// Figures that are not finite are left out, __MISSING__ in lists.
std::string StatXmlDocument(const support::ModelData& data, const LogisticFit& fit);

}  // namespace logistic
