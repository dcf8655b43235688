#include <nqcommon/xml/XMLString.h>

#include <utility>

#include <nqcommon/xml/XMLUtil.h>
#include <nqcommon/xml/internal/TreeWriter.h>

namespace NQXML_940 {

XMLString::XMLString(std::string text) : fText(std::move(text)) {}

XMLString* XMLString::Create(std::string text) {
  XMLUtil::ReplaceAll(text, XMLUtil::AMPERSAND, XMLUtil::XML_AMPERSAND);
  XMLUtil::ReplaceAll(text, XMLUtil::LESS_THAN, XMLUtil::XML_LESS_THAN);
  return new XMLString(std::move(text));
}

void XMLString::ToString(std::string& out, ExportFormat& format) const {
  internal::TreeWriter(out).Write(*this, format);
}

void XMLString::ToStream(std::ostream& os, ExportFormat& format, bool utf8) const {
  internal::TreeWriter(os, utf8).Write(*this, format);
}

XMLString* XMLString::Clone() const { return new XMLString(fText); }

}  // namespace NQXML_940
