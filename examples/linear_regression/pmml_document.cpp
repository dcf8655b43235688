#include "pmml_document.h"

#include <utility>

#include <nqcommon/output/NQPMMLTags.h>

using namespace NQPMMLTags;
using support::Append;
using support::ModelData;
using support::NewElement;
using support::Tree;

namespace regression {

std::string PmmlDocument(const ModelData& data, const Regression& fit,
                         const support::PmmlOptions& options) {
  const Tree root = support::PmmlRoot(data, "Linear regression of " + fit.target, options);
  Tree model = NewElement(XML_ELE_REGRESSIONMODEL);
  model->AddAttribute(XML_ATT_FUNCTIONNAME, XML_VAL_REGRESSION);
  model->AddAttribute(XML_ATT_ALGORITHMNAME, std::string("leastSquares"));
  model->AddAttribute(XML_ATT_MODELTYPE, std::string("linearRegression"));
  model->AddAttribute("targetFieldName", fit.target);
  Append(model, support::MiningSchema(data));
  support::AppendModelStats(model, data, fit.summaries);
  Append(model, support::PmmlTable(data, fit.coefficients));
  Append(root, std::move(model));
  return support::DocumentText(root);
}

}  // namespace regression
