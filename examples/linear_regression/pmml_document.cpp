#include "pmml_document.h"

#include <memory>
#include <numeric>
#include <sstream>
#include <stdexcept>
#include <vector>

#include <nqcommon/model/INQVariable.h>
#include <nqcommon/model/NQApplicInfo4XML.h>
#include <nqcommon/output/NQPMMLExporter.h>
#include <nqcommon/output/NQPMMLTags.h>
#include <nqcommon/xml/XMLElement.h>
#include <nqcommon/xml/write_tree.h>

#include "version.h"

using namespace NQPMMLTags;
using NQCommon_940::NQPMMLExporter;
using NQCommon_940::NQStatus;
using NQXML_940::NQVarList;
using NQXML_940::XMLElement;

namespace regression {
namespace {

// The element, taken over, when its export went well.
XMLElement* Exported(const NQStatus& status, XMLElement* element) {
  if (status.IsOK()) return element;
  delete element;
  throw std::runtime_error("PMML export failed with code " + std::to_string(status.GetErrorCode()));
}

// "predicted" is the target for most consumers. The weights are no "frequencyWeight" or
// "analysisWeight": some take fields of a usage unknown to them for inputs that must be there.
const char* Usage(const ModelData& data, int position) {
  if (position < data.NInputs()) return "active";
  return position == data.TargetPosition() ? "predicted" : "supplementary";
}

XMLElement* MiningSchema(const ModelData& data) {
  const NQVarList& variables = data.Variables();
  XMLElement* schema = XMLElement::Create(XML_ELE_MININGSCHEMA);
  for (int i = 0; i < variables.GetNumVars(); ++i) {
    XMLElement* field = XMLElement::Create(XML_ELE_MININGFIELD);
    field->AddAttribute(XML_ATT_MININGFIELDNAME, variables.GetVarAt(i)->GetVariableName());
    field->AddAttribute(XML_ATT_MININGFIELDUSE, std::string(Usage(data, i)));
    schema->AddElement(field);
  }
  return schema;
}

XMLElement* RegressionTable(const ModelData& data, const Regression& fit) {
  XMLElement* table = XMLElement::Create("RegressionTable");
  table->AddAttribute("intercept", fit.intercept ? fit.coefficients.front().estimate : 0.0);
  // Numeric predictors come before categorical ones.
  for (const bool categorical : {false, true}) {
    for (const Coefficient& c : fit.coefficients) {
      if (c.variable < 0 || c.redundant || (c.category >= 0) != categorical) continue;
      XMLElement* predictor =
          XMLElement::Create(categorical ? "CategoricalPredictor" : "NumericPredictor");
      predictor->AddAttribute(XML_ATT_NAME,
                              data.Variables().GetVarAt(c.variable)->GetVariableName());
      if (categorical)
        predictor->AddAttribute(XML_ATT_VALUE,
                                data.Variables().GetEncoderAt(c.variable)->Decode(c.category));
      predictor->AddAttribute("coefficient", c.estimate);
      table->AddElement(predictor);
    }
  }
  return table;
}

XMLElement* ModelStats(const ModelData& data, const NQPMMLExporter& exporter,
                       InputSummaries& summaries) {
  auto stats = std::unique_ptr<XMLElement>(XMLElement::Create(XML_ELE_MODELSTATS));
  for (int i = 0; i < data.NInputs(); ++i) {
    XMLElement* input = nullptr;
    const NQStatus status = exporter.ExportUniStats(summaries.Statistics(i), input);
    stats->AddElement(Exported(status, input));
  }
  return stats.release();
}

}  // namespace

std::string PmmlDocument(const ModelData& data, const Regression& fit, InputSummaries& summaries) {
  const NQPMMLExporter exporter(nullptr);
  const NQXML_940::NQApplicInfo4XML application(kProgramName, kProgramVersion, "");
  const auto root = std::unique_ptr<XMLElement>(exporter.ExportPMMLElement());

  XMLElement* part = nullptr;
  NQStatus status =
      exporter.ExportHeader(&application, "Linear regression of " + fit.target, false, part);
  root->AddElement(Exported(status, part));

  // Named one by one: without indices the regression weight, which has no role, would be left out.
  std::vector<int> all(static_cast<std::size_t>(data.Variables().GetNumVars()));
  std::iota(all.begin(), all.end(), 0);
  status = exporter.ExportDataDictionary(data.Variables(), all, part);
  root->AddElement(Exported(status, part));

  XMLElement* model = XMLElement::Create(XML_ELE_REGRESSIONMODEL);
  root->AddElement(model);
  model->AddAttribute(XML_ATT_FUNCTIONNAME, XML_VAL_REGRESSION);
  model->AddAttribute(XML_ATT_ALGORITHMNAME, std::string("leastSquares"));
  model->AddAttribute(XML_ATT_MODELTYPE, std::string("linearRegression"));
  model->AddAttribute("targetFieldName", fit.target);
  model->AddElement(MiningSchema(data));
  if (data.NInputs() > 0) model->AddElement(ModelStats(data, exporter, summaries));
  model->AddElement(RegressionTable(data, fit));

  std::ostringstream out;
  NQXML_940::WriteTree(out, nullptr, root.get(), true);
  return out.str() + "\n";
}

}  // namespace regression
