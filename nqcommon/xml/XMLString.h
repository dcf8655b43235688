#pragma once

#include <string>

#include <nqcommon/export.h>
#include <nqcommon/xml/XMLInterface.h>

namespace NQXML_940 {

namespace internal {
class TreeWriter;
}

// Character data. Only & and < are escaped; >, quotes, tabs, line ends and blanks are written as
// they are, so that a text with "]]>" in it makes a document that is not well formed. It clears the
// new-paragraph flag, so that the end tag follows on the same line.
class NQ_API XMLString final : public XMLInterface {
 public:
  static XMLString* Create(std::string text);

  void ToString(std::string& out, ExportFormat& format) const override;
  void ToStream(std::ostream& os, ExportFormat& format, bool utf8) const override;
  XMLString* Clone() const override;

 private:
  friend class internal::TreeWriter;

  explicit XMLString(std::string text);

  std::string fText;  // escaped
};

}  // namespace NQXML_940
