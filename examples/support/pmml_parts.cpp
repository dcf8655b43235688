#include "pmml_parts.h"

#include <cstring>
#include <ctime>
#include <numeric>
#include <stdexcept>
#include <utility>
#include <vector>

#include <nqcommon/output/NQPMMLExporter.h>
#include <nqcommon/output/NQPMMLTags.h>

using namespace NQPMMLTags;
using NQCommon_940::NQPMMLExporter;
using NQCommon_940::NQStatus;
using NQXML_940::XMLElement;
using NQXML_940::XMLString;

namespace support {
namespace {

// What `fill` exports, when that went well.
template <class Fill>
Tree Exported(const Fill& fill) {
  XMLElement* element = nullptr;
  const NQStatus status = fill(element);
  Tree tree(element);
  if (!status.IsOK()) {
    throw std::runtime_error("PMML export failed with code " +
                             std::to_string(status.GetErrorCode()));
  }
  return tree;
}

// Not by the exporter, which signs a header that has no copyright line with one of its own: a
// user's model does not carry that.
Tree Header(const std::string& description, const PmmlOptions& options) {
  Tree header = NewElement(XML_ELE_HEADER);
  if (!options.copyright.empty()) header->AddAttribute(XML_ATT_HEADRIGHT, options.copyright);
  header->AddAttribute(XML_ATT_DESCRIPTION, description);
  Tree application = NewElement(XML_ELE_APPLICATION);
  application->AddAttribute(XML_ATT_NAME, options.program);
  application->AddAttribute(XML_ATT_VERSION, options.version);
  Append(header, std::move(application));
  if (!options.timestamp) return header;
  const std::time_t now = std::time(nullptr);
  char text[32];
  ctime_r(&now, text);
  Tree timestamp = NewElement(XML_ELE_TIMESTAMP);
  timestamp->AddElement(XMLString::Create(std::string(text, std::strlen(text) - 1)));
  Append(header, std::move(timestamp));
  return header;
}

// "predicted" is the target for most consumers. The weights are no "frequencyWeight" or
// "analysisWeight": some take fields of a usage unknown to them for inputs that must be there.
const char* Usage(const ModelData& data, int position) {
  if (position < data.NInputs()) return "active";
  return position == data.TargetPosition() ? "predicted" : "supplementary";
}

}  // namespace

Tree PmmlRoot(const ModelData& data, const std::string& description, const PmmlOptions& options) {
  const NQPMMLExporter exporter(nullptr);
  Tree root(exporter.ExportPMMLElement());
  Append(root, Header(description, options));
  // Named one by one: without indices the regression weight, which has no role, would be left out.
  std::vector<int> all(static_cast<std::size_t>(data.Variables().GetNumVars()));
  std::iota(all.begin(), all.end(), 0);
  Append(root, Exported([&](XMLElement*& out) {
           return exporter.ExportDataDictionary(data.Variables(), all, out);
         }));
  return root;
}

Tree MiningSchema(const ModelData& data) {
  Tree schema = NewElement(XML_ELE_MININGSCHEMA);
  for (int i = 0; i < data.Variables().GetNumVars(); ++i) {
    Tree field = NewElement(XML_ELE_MININGFIELD);
    field->AddAttribute(XML_ATT_MININGFIELDNAME, data.NameOf(i));
    field->AddAttribute(XML_ATT_MININGFIELDUSE, std::string(Usage(data, i)));
    Append(schema, std::move(field));
  }
  return schema;
}

void AppendModelStats(const Tree& model, const ModelData& data, const InputSummaries& summaries) {
  if (data.NInputs() == 0) return;
  const NQPMMLExporter exporter(nullptr);
  Tree stats = NewElement(XML_ELE_MODELSTATS);
  for (int i = 0; i < data.NInputs(); ++i) {
    Append(stats, Exported([&](XMLElement*& out) {
             return exporter.ExportUniStats(summaries.Statistics(data, i), out);
           }));
  }
  Append(model, std::move(stats));
}

Tree PmmlPredictor(const ModelData& data, const Coefficient& c, int sign) {
  Tree predictor = NewElement(c.category < 0 ? "NumericPredictor" : "CategoricalPredictor");
  predictor->AddAttribute(XML_ATT_NAME, data.NameOf(c.variable));
  if (c.category >= 0) {
    const auto code = static_cast<std::size_t>(c.category);
    predictor->AddAttribute(XML_ATT_VALUE, data.CategoriesOf(c.variable)[code]);
  }
  predictor->AddAttribute("coefficient", Shortest(sign * c.estimate + 0.0));
  return predictor;
}

}  // namespace support
