#pragma once

#include <cstddef>
#include <string>

#include <nqcommon/export.h>
#include <nqcommon/xml/XMLInterface.h>

namespace NQXML_940 {

class XMLElement;

namespace internal {
class TreeWriter;
}

// A name and a value, written name="value" with the value escaped by XMLUtil::Escape and no blank
// before it. The format is not used.
class NQ_API XMLAttribute final : public XMLInterface {
 public:
  static XMLAttribute* Create(const std::string& name, const std::string& value);

  // A number as ReplaceSep writes it. The flag of the second form has no effect.
  static XMLAttribute* Create(const std::string& name, double value);
  static XMLAttribute* Create(const std::string& name, double value, bool replaceSeparator);

  void ToString(std::string& out, ExportFormat& format) const override;
  void ToStream(std::ostream& os, ExportFormat& format, bool utf8) const override;
  XMLAttribute* Clone() const override;

 private:
  friend class XMLElement;
  friend class internal::TreeWriter;

  XMLAttribute(std::string text, std::size_t nameLength);

  std::string fText;  // as it is written: the value is escaped once, and never read
  std::size_t fNameLength;
};

}  // namespace NQXML_940
