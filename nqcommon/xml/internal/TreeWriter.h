#pragma once

#include <cstddef>
#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>

#include <nqcommon/xml/ExportFormat.h>
#include <nqcommon/xml/internal/OutputBuffer.h>
#include <nqcommon/xml/internal/Utf8Converter.h>

namespace NQXML_940 {

class XMLAttribute;
class XMLDocType;
class XMLElement;
class XMLString;

namespace internal {

// The one form of each node, for strings and for streams: ToString and ToStream are calls of Write.
class TreeWriter {
 public:
  explicit TreeWriter(std::string& out) : fOut(out) {}
  TreeWriter(std::ostream& os, bool utf8) : fOut(os) {
    if (utf8) fConverter.emplace();
  }

  template <class Node>
  void Write(const Node& node, ExportFormat& format) {
    Put(node, format);
    fOut.Flush();
  }

 private:
  void Put(const XMLAttribute& attribute, const ExportFormat& format);
  void Put(const XMLDocType& doctype, const ExportFormat& format);
  void Put(const XMLElement& element, ExportFormat& format);
  void Put(const XMLString& text, ExportFormat& format);

  // The start tag of an element without its brackets.
  void PutTag(const XMLElement& element, const ExportFormat& format);
  // PutAttribute writes a text name="value", of which the name has that length.
  void PutAttribute(std::string_view text, std::size_t nameLength);

  // Data writes what is not markup, and converts it where the writer converts.
  void Data(std::string_view text);
  void Tabs(int n);

  OutputBuffer fOut;
  std::optional<Utf8Converter> fConverter;
};

}  // namespace internal
}  // namespace NQXML_940
