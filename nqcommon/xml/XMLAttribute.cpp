#include <nqcommon/xml/XMLAttribute.h>

#include <utility>

#include <nqcommon/xml/internal/TreeWriter.h>
#include <nqcommon/xml/internal/escape.h>

namespace NQXML_940 {

XMLAttribute::XMLAttribute(std::string text, std::size_t nameLength)
    : fText(std::move(text)), fNameLength(nameLength) {}

namespace {

template <class Value>
std::string AttributeText(const std::string& name, const Value& value) {
  std::string text;
  internal::AppendAttribute(text, name, value);
  return text;
}

}  // namespace

XMLAttribute* XMLAttribute::Create(const std::string& name, const std::string& value) {
  return new XMLAttribute(AttributeText(name, value), name.size());
}

XMLAttribute* XMLAttribute::Create(const std::string& name, double value) {
  return new XMLAttribute(AttributeText(name, value), name.size());
}

XMLAttribute* XMLAttribute::Create(const std::string& name, double value,
                                   bool /*replaceSeparator*/) {
  return Create(name, value);
}

void XMLAttribute::ToString(std::string& out, ExportFormat& format) const {
  internal::TreeWriter(out).Write(*this, format);
}

void XMLAttribute::ToStream(std::ostream& os, ExportFormat& format, bool utf8) const {
  internal::TreeWriter(os, utf8).Write(*this, format);
}

XMLAttribute* XMLAttribute::Clone() const { return new XMLAttribute(fText, fNameLength); }

}  // namespace NQXML_940
