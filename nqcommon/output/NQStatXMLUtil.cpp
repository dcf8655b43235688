#include <nqcommon/output/NQStatXMLUtil.h>

#include <algorithm>

#include <nqcommon/output/NQPMMLTags.h>
#include <nqcommon/output/NQStatXMLTags.h>
#include <nqcommon/output/internal/joined_list.h>
#include <nqcommon/output/internal/new_element.h>
#include <nqcommon/xml/number_format.h>

namespace NQXML_940 {

using namespace NQStatXMLTags;
using internal::AddList;
using internal::Listed;
using internal::NewElement;
using internal::NonEmpty;

namespace {

constexpr char kMissingWord[] = "__MISSING__";

void AddText(XMLElement& element, const std::string& text) {
  element.AddElement(XMLString::Create(text));
}

internal::ElementPtr NewArray(const std::string& type, std::size_t n) {
  return NewElement(NQPMMLTags::XML_ELE_ARRAY, NQPMMLTags::XML_ATT_TYPE, type,
                    NQPMMLTags::XML_ATT_LOWER_N, static_cast<double>(n));
}

XMLElement* VariateData(const std::string& element, const std::string& name) {
  return NewElement(element, NQPMMLTags::XML_ATT_NAME, NonEmpty{name}).release();
}

}  // namespace

// ---- Root and generic elements ------------------------------------------------------------------

XMLElement* NQStatXMLUtil::BuildRoot() {
  return NewElement(XML_ELE_SATAXML, XML_ATT_XMLNS, XML_VAL_XMLNS, NQPMMLTags::XML_ATT_XMLNSXSI,
                    NQPMMLTags::XML_VAL_SCHEMAINSTANCE, NQPMMLTags::XML_ATT_VERSION,
                    XML_VAL_XMLVERSION, NQPMMLTags::XML_ATT_SCHEMALOC, XML_VAL_SCHEMALOCATION)
      .release();
}

XMLElement* NQStatXMLUtil::CreateElemUnivarData(const std::string& name) {
  return VariateData(XML_ELE_UNIVARIATEDATE, name);
}

XMLElement* NQStatXMLUtil::CreateElemBivarData(const std::string& name) {
  return VariateData(XML_ELE_BIVARIATEDATE, name);
}

XMLElement* NQStatXMLUtil::CreateElemMultivariateData(const std::string& name) {
  return VariateData(XML_ELE_MULTIVARIATEDATA, name);
}

XMLElement* NQStatXMLUtil::CreateElemStructuredData(const std::string& name) {
  return VariateData(XML_ELE_STRUCTUREDDATE, name);
}

XMLElement* NQStatXMLUtil::CreateElem(const std::string& name, const std::string& attribute,
                                      const std::string& value) {
  return NewElement(name, attribute, value).release();
}

XMLElement* NQStatXMLUtil::CreateElem(const std::string& name, const std::string& attribute,
                                      double value) {
  return NewElement(name, attribute, value).release();
}

XMLElement* NQStatXMLUtil::CreateElem(const std::string& name, const std::string& attribute1,
                                      const std::string& value1, const std::string& attribute2,
                                      const std::string& value2) {
  return NewElement(name, attribute1, value1, attribute2, value2).release();
}

XMLElement* NQStatXMLUtil::CreateElem(const std::string& name, const std::string& attribute1,
                                      const std::string& value1, const std::string& attribute2,
                                      const std::string& value2, const std::string& attribute3,
                                      const std::string& value3) {
  return NewElement(name, attribute1, value1, attribute2, value2, attribute3, value3).release();
}

// ---- Lists --------------------------------------------------------------------------------------

void NQStatXMLUtil::AddIntList(XMLElement& element, const std::vector<int>& values) {
  AddList(element, values, AppendNumber);
}

void NQStatXMLUtil::AddIntList(XMLElement& element, const int* values, int n) {
  AddList(element, Listed(values, n),
          [](std::string& text, int value) { text += Format(value, true, "%.0g"); });
}

void NQStatXMLUtil::AddDoublesList(XMLElement& element, const std::vector<double>& values) {
  internal::AddNumbers(element, values, kMissingWord);
}

void NQStatXMLUtil::AddDoublesList(XMLElement& element, const double* values, int n) {
  internal::AddNumbers(element, Listed(values, n), kMissingWord);
}

void NQStatXMLUtil::AddStringList(XMLElement& element, const std::vector<std::string>& values) {
  const bool isQuoted = std::any_of(values.begin(), values.end(), [](const std::string& value) {
    return value.find(' ') != value.npos;
  });
  std::string escaped;
  AddList(element, values, [isQuoted, &escaped](std::string& text, const std::string& value) {
    ReplaceSpecialChar(value, escaped);
    if (isQuoted) text += '"';
    text += escaped;
    if (isQuoted) text += '"';
  });
}

void NQStatXMLUtil::ReplaceSpecialChar(const std::string& in, std::string& out) {
  std::string escaped;
  escaped.reserve(in.size());
  for (const char c : in) {
    if (c == '"' || c == '\\') escaped += '\\';
    escaped += c;
  }
  out = std::move(escaped);
}

// ---- Arrays -------------------------------------------------------------------------------------

XMLElement* NQStatXMLUtil::CreateElemArray(const int* values, int n) {
  auto array =
      NewElement(NQPMMLTags::XML_ELE_ARRAY, NQPMMLTags::XML_ATT_TYPE, NQPMMLTags::XML_VAL_INT);
  AddIntList(*array, values, n);
  return array.release();
}

XMLElement* NQStatXMLUtil::CreateElemArray(const std::vector<int>& values) {
  auto array = NewArray(NQPMMLTags::XML_VAL_INT, values.size());
  AddIntList(*array, values);
  return array.release();
}

XMLElement* NQStatXMLUtil::CreateElemArray(const double* values, int n) {
  auto array = NewArray(XML_VAL_REAL, Listed(values, n).size());
  AddDoublesList(*array, values, n);
  return array.release();
}

XMLElement* NQStatXMLUtil::CreateElemArray(const std::vector<double>& values) {
  auto array = NewArray(XML_VAL_REAL, values.size());
  AddDoublesList(*array, values);
  return array.release();
}

XMLElement* NQStatXMLUtil::CreateElemArray(const std::string& list, int n) {
  auto array = NewArray(XML_VAL_STRING, static_cast<std::size_t>(std::max(n, 0)));
  if (n > 0) AddText(*array, list);
  return array.release();
}

XMLElement* NQStatXMLUtil::CreateElemArray(const std::vector<std::string>& values) {
  auto array = NewArray(XML_VAL_STRING, values.size());
  AddStringList(*array, values);
  return array.release();
}

}  // namespace NQXML_940
