#include "pmml_document.h"

#include <utility>

#include <nqcommon/output/NQPMMLTags.h>

using namespace NQPMMLTags;
using support::Append;
using support::ModelData;
using support::NewElement;
using support::Tree;

namespace logistic {

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
  for (const int sign : {1, -1}) {
    Tree table = support::PmmlTable(data, fit.coefficients, sign);
    table->AddAttribute(XML_ATT_TARGETCATEGORY, sign > 0 ? fit.event : fit.other);
    Append(model, std::move(table));
  }
  Append(root, std::move(model));
  return support::DocumentText(root);
}

}  // namespace logistic
