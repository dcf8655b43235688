// Names of RegressionModel in PMML 4.3 that are not among NQPMMLTags.
#pragma once

#include <string>

namespace NQRegressionTags {

inline const std::string XML_ELE_CATEGORICALPREDICTOR = "CategoricalPredictor";
inline const std::string XML_ELE_NUMERICPREDICTOR = "NumericPredictor";
inline const std::string XML_ELE_PREDICTORTERM = "PredictorTerm";
inline const std::string XML_ELE_REGRESSIONTABLE = "RegressionTable";

inline const std::string XML_ATT_COEFFICIENT = "coefficient";
inline const std::string XML_ATT_EXPONENT = "exponent";
inline const std::string XML_ATT_INTERCEPT = "intercept";
inline const std::string XML_ATT_TARGETFIELDNAME = "targetFieldName";

inline const std::string XML_VAL_CAUCHIT = "cauchit";
inline const std::string XML_VAL_CLOGLOG = "cloglog";
inline const std::string XML_VAL_EXP = "exp";
inline const std::string XML_VAL_LINEARREGRESSION = "linearRegression";
inline const std::string XML_VAL_LOGISTICREGRESSION = "logisticRegression";
inline const std::string XML_VAL_LOGIT = "logit";
inline const std::string XML_VAL_LOGLOG = "loglog";
inline const std::string XML_VAL_NONE = "none";
inline const std::string XML_VAL_PROBIT = "probit";

}  // namespace NQRegressionTags
