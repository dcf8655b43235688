#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include <nqcommon/export.h>
#include <nqcommon/xml/XMLInterface.h>

namespace NQXML_940 {

namespace internal {
class TreeWriter;
}

// The head of a document: the declaration and the document type.
//
//   <?xml version="1.0" encoding="UTF-8" ?>
//   <!DOCTYPE name SYSTEM "systemId">
//
// Both lines end with a line feed. With an extension text, the internal subset, a line feed, [,
// that text, a line feed and ] stand before the last >. Nothing is escaped; the format is not used.
class NQ_API XMLDocType final : public XMLInterface {
 public:
  // The number is kept and not written.
  static XMLDocType* Create(std::string name, std::string systemId, std::int64_t number);

  // Appends a line feed and `text` to the extension text; returns the length of that text then.
  std::size_t AddExtension(const std::string& text);

  void ToString(std::string& out, ExportFormat& format) const override;
  void ToStream(std::ostream& os, ExportFormat& format, bool utf8) const override;
  XMLDocType* Clone() const override;

 private:
  friend class internal::TreeWriter;

  XMLDocType(std::string name, std::string systemId, std::int64_t number);

  std::string fName;
  std::string fSystemId;
  std::string fExtension;
  std::int64_t fNumber;
};

}  // namespace NQXML_940
