#include "pmml_document.h"

#include <utility>

#include <nqcommon/output/NQPMMLTags.h>

#include "support/text.h"

using namespace NQPMMLTags;
using support::Append;
using support::ModelData;
using support::NewElement;
using support::Tree;

namespace regression {
namespace {

Tree RegressionTable(const ModelData& data, const Regression& fit) {
  Tree table = NewElement("RegressionTable");
  table->AddAttribute("intercept",
                      support::Shortest(fit.intercept ? fit.coefficients.front().estimate : 0.0));
  // Numeric predictors come before categorical ones.
  for (const bool categorical : {false, true}) {
    for (const Coefficient& c : fit.coefficients) {
      if (c.variable >= 0 && !c.redundant && (c.category >= 0) == categorical)
        Append(table, support::PmmlPredictor(data, c.variable, c.category, c.estimate));
    }
  }
  return table;
}

}  // namespace

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
  Append(model, RegressionTable(data, fit));
  Append(root, std::move(model));
  return support::DocumentText(root);
}

}  // namespace regression
