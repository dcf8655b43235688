#include <nqcommon/output/NQVariateData.h>

#include <nqcommon/output/NQStatXMLTags.h>
#include <nqcommon/output/NQStatXMLUtil.h>

namespace NQXML_940 {

using namespace NQStatXMLTags;

bool NQVariateData::SetStatistics(std::vector<std::string> names, Statistics values) {
  const auto size = [](const auto& list) { return list.size(); };
  if (names.size() != std::visit(size, values)) return false;
  fvStatisticNames = std::move(names);
  fvStatistics = std::move(values);
  return true;
}

XMLElement* NQVariateData::GetUnivariateDataElem() const {
  return NQStatXMLUtil::CreateElemVarData(XML_ELE_UNIVARIATEDATE, fDescription, *this);
}

XMLElement* NQVariateData::GetBivariateDataElem() const {
  return NQStatXMLUtil::CreateElemVarData(XML_ELE_BIVARIATEDATE, fDescription, *this);
}

XMLElement* NQVariateData::GetMultiVariateDataElem() const {
  return NQStatXMLUtil::CreateElemVarData(XML_ELE_MULTIVARIATEDATA, fDescription, *this);
}

}  // namespace NQXML_940
