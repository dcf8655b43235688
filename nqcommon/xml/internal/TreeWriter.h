#pragma once

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
  void Put(const XMLElement& root, ExportFormat& format);
  void Put(const XMLString& text, ExportFormat& format);

  // Returns true when the element has children, and so an end tag.
  bool StartTag(const XMLElement& element, ExportFormat& format);
  void EndTag(const XMLElement& element, ExportFormat& format);

  // What is not markup, and so converted where the writer converts.
  void Data(std::string_view text);
  void Tabs(int n);

  OutputBuffer fOut;
  std::optional<Utf8Converter> fConverter;
};

}  // namespace internal
}  // namespace NQXML_940
