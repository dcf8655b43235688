#include <nqcommon/xml/internal/TreeWriter.h>

#include <cstddef>
#include <cstring>
#include <memory>
#include <variant>

#include <nqcommon/xml/XMLAttribute.h>
#include <nqcommon/xml/XMLDocType.h>
#include <nqcommon/xml/XMLElement.h>
#include <nqcommon/xml/XMLString.h>
#include <nqcommon/xml/XMLUtil.h>

namespace NQXML_940::internal {

void TreeWriter::Put(const XMLAttribute& attribute, const ExportFormat& /*format*/) {
  PutAttribute(attribute.fText, attribute.fNameLength);
}

void TreeWriter::PutAttribute(std::string_view text, std::size_t nameLength) {
  if (!fConverter) return fOut.Put(text);
  const std::size_t value = nameLength + std::strlen("=\"");
  Data(text.substr(0, nameLength));
  fOut.Put("=\"");
  Data(text.substr(value, text.size() - value - std::strlen("\"")));
  fOut.Put('"');
}

void TreeWriter::Put(const XMLDocType& doctype, const ExportFormat& /*format*/) {
  fOut.Put(XMLUtil::FIRST_LINE);
  fOut.Put("\n<!DOCTYPE ");
  Data(doctype.fName);
  fOut.Put(" SYSTEM \"");
  Data(doctype.fSystemId);
  fOut.Put('"');
  if (!doctype.fExtension.empty()) {
    fOut.Put("\n[");
    Data(doctype.fExtension);
    fOut.Put("\n]");
  }
  fOut.Put(">\n");
}

void TreeWriter::Put(const XMLString& text, ExportFormat& format) {
  Data(text.fText);
  format.SetIsNewParagraph(false);
}

void TreeWriter::Put(const XMLElement& element, ExportFormat& format) {
  if (format.IsNewParagraph()) fOut.Put('\n');
  if (format.HasIndentation()) Tabs(format.GetLevel());
  fOut.Put('<');
  PutTag(element, format);
  if (element.fvChildren.empty()) {
    fOut.Put("/>");
  } else {
    fOut.Put('>');
    format.IncreaseLevel();
    for (const auto& child : element.fvChildren)
      std::visit([&](const auto& node) { Put(*node, format); }, child);
    format.DecreaseLevel();
    if (format.IsNewParagraph()) {
      fOut.Put('\n');
      if (format.HasIndentation()) Tabs(format.GetLevel());
    }
    fOut.Put("</");
    Data(std::string_view(element.fTag).substr(0, element.fNameLength));
    fOut.Put('>');
  }
  format.SetIsNewParagraph(true);
}

void TreeWriter::PutTag(const XMLElement& element, const ExportFormat& format) {
  std::string_view tag(element.fTag.data(), element.fTagEnd);
  Data(tag.substr(0, element.fNameLength));
  tag.remove_prefix(element.fNameLength);
  while (!tag.empty()) {
    XMLElement::AttributeHead head;
    std::memcpy(&head, tag.data(), sizeof head);
    fOut.Put(' ');
    if (format.HasIndentation()) Tabs(format.GetLevel() + 1);
    PutAttribute(tag.substr(sizeof head, head.fLength), head.fNameLength);
    tag.remove_prefix(sizeof head + head.fLength);
  }
}

void TreeWriter::Data(std::string_view text) {
  fOut.Put(fConverter ? fConverter->Convert(text) : text);
}

void TreeWriter::Tabs(int n) {
  for (int i = 0; i < n; ++i) fOut.Put(*XMLUtil::ITEMINDENT);
}

}  // namespace NQXML_940::internal
