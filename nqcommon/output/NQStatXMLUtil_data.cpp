#include <nqcommon/output/NQStatXMLUtil.h>

#include <algorithm>

#include <nqcommon/output/NQPMMLTags.h>
#include <nqcommon/output/NQStatXMLTags.h>
#include <nqcommon/output/internal/new_element.h>

namespace NQXML_940 {

using namespace NQStatXMLTags;
using internal::ElementPtr;
using internal::NewElement;
using internal::NonEmpty;
using internal::NotMissing;
using internal::PassedElements;

namespace {

// MaxCoordinates tells how many coordinates, the first ones, an element has room for.
std::size_t MaxCoordinates(const std::string& name, std::size_t count) {
  if (name == XML_ELE_UNIVARIATEDATE) return std::min<std::size_t>(count, 2);
  if (name == XML_ELE_BIVARIATEDATE) return std::min<std::size_t>(count, 3);
  return count;
}

template <class... Values>
XMLElement* Coordinates(const std::string& feature, const std::string& field,
                        const std::string& statistic, ElementPtr further, const Values&... values) {
  ElementPtr element = NewElement(XML_ELE_COORDINATES, NQPMMLTags::XML_ATT_FEATURE, feature,
                                  NQPMMLTags::XML_ATT_FIELD, NonEmpty{field}, XML_ATT_STATISTIC,
                                  NonEmpty{statistic});
  element->AddElement(NQStatXMLUtil::CreateElemArray(values...));
  element->AddElement(further.release());
  return element.release();
}

// Coordinates without values are no element.
XMLElement* Coordinates(const std::string&, const std::string&, const std::string&, ElementPtr,
                        std::monostate) {
  return nullptr;
}

constexpr std::size_t kMaxRecordArrays = 2;

XMLElement* NewArray(const NQXMLRecordInfo::Values& values) {
  return std::visit([](const auto& list) { return NQStatXMLUtil::CreateElemArray(list); }, values);
}

template <class T>
XMLElement* NewArray(const std::vector<T>& values) {
  return NQStatXMLUtil::CreateElemArray(values);
}

template <class Array>
XMLElement* RecordInfo(const std::string& id, const std::string& label,
                       const std::vector<Array>& arrays) {
  ElementPtr element =
      NewElement(XML_ELE_RECORDINFO, XML_ATT_RECORDID, id, XML_ATT_RECORDLABEL, NonEmpty{label});
  for (std::size_t i = 0; i < std::min(arrays.size(), kMaxRecordArrays); ++i)
    element->AddElement(NewArray(arrays[i]));
  return element.release();
}

}  // namespace

// ---- Variate data -------------------------------------------------------------------------------

XMLElement* NQStatXMLUtil::CreateElemVarData(const std::string& name,
                                             const std::string& description,
                                             const NQVariateData& data) {
  ElementPtr element = NewElement(name, NQPMMLTags::XML_ATT_DESCRIPTION, NonEmpty{description});
  for (const NQXMLCounts& counts : data.GetCounts()) element->AddElement(CreateElemCounts(counts));
  const auto addStatistics = [&](const auto& values) {
    for (std::size_t i = 0; i < values.size(); ++i)
      element->AddElement(CreateElemStatistic(data.GetStatisticNames()[i], values[i]));
  };
  std::visit(addStatistics, data.GetStatistics());
  const auto& coordinates = data.GetCoordinates();
  const std::size_t count = MaxCoordinates(name, coordinates.size());
  for (std::size_t i = 0; i < count; ++i) element->AddElement(coordinates[i].GetCoordinates());
  return element.release();
}

XMLElement* NQStatXMLUtil::CreateElemCounts(const NQXMLCounts& counts) {
  return CreateElemCounts(counts.GetTotalFreq(), counts.GetMissingFreq(), counts.GetInvalidFreq(),
                          counts.GetCardinality());
}

XMLElement* NQStatXMLUtil::CreateElemCounts(double total, double missing, double invalid,
                                            double cardinality) {
  ElementPtr element =
      NewElement(XML_ELE_COUNTS, XML_ATT_TOTALFREQ, total, NQPMMLTags::XML_ATT_MISSINGFREQ,
                 NotMissing{missing}, NQPMMLTags::XML_ATT_INVALIDFREQ, NotMissing{invalid});
  if (cardinality >= 0) element->AddAttribute(NQPMMLTags::XML_ATT_CARDINALITY, cardinality);
  return element.release();
}

XMLElement* NQStatXMLUtil::CreateElemStatistic(const std::string& name, const std::string& value) {
  return NewElement(XML_ELE_STATISTIC, NQPMMLTags::XML_ATT_NAME, name, NQPMMLTags::XML_ATT_VALUE,
                    value)
      .release();
}

XMLElement* NQStatXMLUtil::CreateElemStatistic(const std::string& name, double value) {
  return NewElement(XML_ELE_STATISTIC, NQPMMLTags::XML_ATT_NAME, name, NQPMMLTags::XML_ATT_VALUE,
                    NotMissing{value})
      .release();
}

// ---- Coordinates --------------------------------------------------------------------------------

XMLElement* NQStatXMLUtil::CreateElemCoordinates(const std::string& feature,
                                                 const std::string& field,
                                                 const std::string& statistic, const int* values,
                                                 int n, XMLElement* further) {
  return Coordinates(feature, field, statistic, ElementPtr(further), values, n);
}

XMLElement* NQStatXMLUtil::CreateElemCoordinates(const std::string& feature,
                                                 const std::string& field,
                                                 const std::string& statistic,
                                                 const std::vector<int>& values,
                                                 XMLElement* further) {
  return Coordinates(feature, field, statistic, ElementPtr(further), values);
}

XMLElement* NQStatXMLUtil::CreateElemCoordinates(const std::string& feature,
                                                 const std::string& field,
                                                 const std::string& statistic, const double* values,
                                                 int n, XMLElement* further) {
  return Coordinates(feature, field, statistic, ElementPtr(further), values, n);
}

XMLElement* NQStatXMLUtil::CreateElemCoordinates(const std::string& feature,
                                                 const std::string& field,
                                                 const std::string& statistic,
                                                 const std::vector<double>& values,
                                                 XMLElement* further) {
  return Coordinates(feature, field, statistic, ElementPtr(further), values);
}

XMLElement* NQStatXMLUtil::CreateElemCoordinates(const std::string& feature,
                                                 const std::string& field,
                                                 const std::string& statistic,
                                                 const std::string& list, int n,
                                                 XMLElement* further) {
  return Coordinates(feature, field, statistic, ElementPtr(further), list, n);
}

XMLElement* NQStatXMLUtil::CreateElemCoordinates(const std::string& feature,
                                                 const std::string& field,
                                                 const std::string& statistic,
                                                 const std::vector<std::string>& values,
                                                 XMLElement* further) {
  return Coordinates(feature, field, statistic, ElementPtr(further), values);
}

XMLElement* NQStatXMLUtil::CreateElemCoordinates(const NQXMLCoordinates& coordinates,
                                                 XMLElement* further) {
  ElementPtr passed(further);
  const auto create = [&](const auto& values) {
    return Coordinates(coordinates.GetFeature(), coordinates.GetField(), coordinates.GetStatistic(),
                       std::move(passed), values);
  };
  return std::visit(create, coordinates.GetValues());
}

XMLElement* NQStatXMLUtil::CreateElemCoordinatesGroup(const NQXMLCoordinatesGroup& group) {
  ElementPtr element =
      NewElement(XML_ELE_COORDINATESGROUP, NQPMMLTags::XML_ATT_NAME, NonEmpty{group.GetName()});
  element->AddElement(group.GetShared().GetCoordinates());
  for (const NQXMLCoordinates& coordinates : group.GetCoordinates())
    element->AddElement(coordinates.GetCoordinates());
  return element.release();
}

XMLElement* NQStatXMLUtil::CreateElemCoordinatesGroup(XMLElement* shared,
                                                      const Elements& coordinates,
                                                      const std::string& name) {
  PassedElements passed(internal::One(shared), coordinates);
  return passed.AddTo(
      NewElement(XML_ELE_COORDINATESGROUP, NQPMMLTags::XML_ATT_NAME, NonEmpty{name}));
}

// ---- Records ------------------------------------------------------------------------------------

XMLElement* NQStatXMLUtil::CreateElemRecordInfo(const NQXMLRecordInfo& record) {
  return RecordInfo(record.GetId(), record.GetLabel(), record.GetArrays());
}

XMLElement* NQStatXMLUtil::CreateElemRecordInfo(const std::string& id, const std::string& label,
                                                const std::vector<std::vector<int>>& arrays) {
  return RecordInfo(id, label, arrays);
}

XMLElement* NQStatXMLUtil::CreateElemRecordInfo(const std::string& id, const std::string& label,
                                                const std::vector<std::vector<double>>& arrays) {
  return RecordInfo(id, label, arrays);
}

XMLElement* NQStatXMLUtil::CreateElemRecordInfo(
    const std::string& id, const std::string& label,
    const std::vector<std::vector<std::string>>& arrays) {
  return RecordInfo(id, label, arrays);
}

void NQStatXMLUtil::AddRecordInfos(XMLElement& element,
                                   const std::vector<NQXMLRecordInfo>& records) {
  for (const NQXMLRecordInfo& record : records) element.AddElement(CreateElemRecordInfo(record));
}

}  // namespace NQXML_940
