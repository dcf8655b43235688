#include "pmml_document.h"

#include <utility>

#include <nqcommon/output/NQPMMLTags.h>

#include "support/text.h"

using namespace NQPMMLTags;
using support::Append;
using support::ModelData;
using support::NewElement;
using support::Tree;

namespace logistic {
namespace {

Tree TableOf(const std::string& category, double intercept) {
  Tree table = NewElement("RegressionTable");
  table->AddAttribute("intercept", support::Shortest(intercept));
  table->AddAttribute(XML_ATT_TARGETCATEGORY, category);
  return table;
}

Tree EventTable(const ModelData& data, const LogisticFit& fit) {
  Tree table = TableOf(fit.event, fit.coefficients.front().estimate);
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

std::string PmmlDocument(const ModelData& data, const LogisticFit& fit,
                         const support::PmmlOptions& options) {
  const Tree root = support::PmmlRoot(data, "Logistic regression of " + fit.target, options);
  Tree model = NewElement(XML_ELE_REGRESSIONMODEL);
  model->AddAttribute(XML_ATT_FUNCTIONNAME, XML_VAL_CLASSIFICATION);
  model->AddAttribute(XML_ATT_ALGORITHMNAME, std::string("maximumLikelihood"));
  model->AddAttribute(XML_ATT_MODELTYPE, std::string("logisticRegression"));
  model->AddAttribute("targetFieldName", fit.target);
  model->AddAttribute(XML_ATT_NORMALIZATIONMETHOD, std::string("logit"));
  Append(model, support::MiningSchema(data));
  support::AppendModelStats(model, data, fit.summaries);
  Append(model, EventTable(data, fit));
  Append(model, TableOf(fit.other, 0));
  Append(root, std::move(model));
  return support::DocumentText(root);
}

}  // namespace logistic
