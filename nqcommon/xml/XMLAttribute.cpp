#include <nqcommon/xml/XMLAttribute.h>

#include <cstring>
#include <utility>

#include <nqcommon/xml/internal/TreeWriter.h>
#include <nqcommon/xml/internal/escape.h>
#include <nqcommon/xml/number_format.h>

namespace NQXML_940 {

XMLAttribute::XMLAttribute(std::string text, std::size_t nameLength)
    : fText(std::move(text)), fNameLength(nameLength) {}

XMLAttribute* XMLAttribute::Create(std::string name, const std::string& value) {
  const std::size_t nameLength = name.size();
  std::string text = std::move(name);
  text.reserve(nameLength + value.size() + std::strlen("=\"\""));
  text += "=\"";
  internal::AppendEscaped(text, value);
  text += '"';
  return new XMLAttribute(std::move(text), nameLength);
}

XMLAttribute* XMLAttribute::Create(std::string name, double value) {
  return Create(std::move(name), Format(value, false, nullptr));
}

XMLAttribute* XMLAttribute::Create(std::string name, double value, bool /*replaceSeparator*/) {
  return Create(std::move(name), value);
}

void XMLAttribute::ToString(std::string& out, ExportFormat& format) const {
  internal::TreeWriter(out).Write(*this, format);
}

void XMLAttribute::ToStream(std::ostream& os, ExportFormat& format, bool utf8) const {
  internal::TreeWriter(os, utf8).Write(*this, format);
}

XMLAttribute* XMLAttribute::Clone() const { return new XMLAttribute(fText, fNameLength); }

}  // namespace NQXML_940
