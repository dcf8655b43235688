#include "saved_variables.h"

#include <memory>
#include <sstream>
#include <stdexcept>

#include <nqcommon/output/NQPMMLTags.h>
#include <nqcommon/xml/ExportFormat.h>
#include <nqcommon/xml/SaveXMLTags.h>
#include <nqcommon/xml/XMLDocType.h>
#include <nqcommon/xml/save_format.h>

using NQXML_940::SaveXMLTags::SAVEXML_DTD_LOC;
using NQXML_940::SaveXMLTags::XML_ELE_ROOT;

namespace support {
namespace {

constexpr std::size_t kLongestSavedLine = 255;

}  // namespace

std::string SavedVariables(ModelData& data, const InputSummaries& summaries) {
  summaries.StoreIn(data, data.Variables());
  std::ostringstream out;
  NQXML_940::ExportFormat format;
  const std::unique_ptr<NQXML_940::XMLDocType> head(
      NQXML_940::XMLDocType::Create(XML_ELE_ROOT, SAVEXML_DTD_LOC, 0));
  head->ToStream(out, format, false);
  NQXML_940::StartRoot(out, NQPMMLTags::XML_VAL_HEADRIGHT);
  data.Variables().WriteObjectXML(out, 1);
  NQXML_940::EndRoot(out);
  std::string text = out.str() + "\n";
  for (std::size_t at = 0, end = 0; (end = text.find('\n', at)) != text.npos; at = end + 1) {
    if (end - at > kLongestSavedLine)
      throw std::runtime_error("a name or category is too long to be read back from --save");
  }
  return text;
}

}  // namespace support
