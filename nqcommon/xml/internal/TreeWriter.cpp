#include <nqcommon/xml/internal/TreeWriter.h>

#include <cstddef>
#include <cstring>
#include <memory>
#include <variant>
#include <vector>

#include <nqcommon/xml/XMLAttribute.h>
#include <nqcommon/xml/XMLDocType.h>
#include <nqcommon/xml/XMLElement.h>
#include <nqcommon/xml/XMLString.h>
#include <nqcommon/xml/XMLUtil.h>

namespace NQXML_940::internal {

void TreeWriter::Put(const XMLAttribute& attribute, const ExportFormat& /*format*/) {
  const std::string_view text = attribute.fText;
  if (!fConverter) return fOut.Put(text);
  const std::size_t value = attribute.fNameLength + std::strlen("=\"");
  Data(text.substr(0, attribute.fNameLength));
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

void TreeWriter::Put(const XMLElement& root, ExportFormat& format) {
  struct Open {
    const XMLElement* element;
    std::size_t next;  // the child to write
  };
  std::vector<Open> open;
  if (StartTag(root, format)) open.push_back({&root, 0});
  while (!open.empty()) {
    auto& [element, next] = open.back();
    if (next == element->fvChildren.size()) {
      EndTag(*element, format);
      open.pop_back();
      continue;
    }
    const XMLElement::Child& child = element->fvChildren[next++];
    if (const auto* text = std::get_if<std::unique_ptr<XMLString>>(&child)) {
      Put(**text, format);
    } else if (const XMLElement& inner = *std::get<std::unique_ptr<XMLElement>>(child);
               StartTag(inner, format)) {
      open.push_back({&inner, 0});
    }
  }
}

bool TreeWriter::StartTag(const XMLElement& element, ExportFormat& format) {
  if (format.IsNewParagraph()) fOut.Put('\n');
  if (format.HasIndentation()) Tabs(format.GetLevel());
  fOut.Put('<');
  Data(element.fName);
  for (const auto& attribute : element.fvAttributes) {
    fOut.Put(' ');
    if (format.HasIndentation()) Tabs(format.GetLevel() + 1);
    Put(*attribute, format);
  }
  if (element.fvChildren.empty()) {
    fOut.Put("/>");
    format.SetIsNewParagraph(true);
    return false;
  }
  fOut.Put('>');
  format.IncreaseLevel();
  return true;
}

void TreeWriter::EndTag(const XMLElement& element, ExportFormat& format) {
  format.DecreaseLevel();
  if (format.IsNewParagraph()) {
    fOut.Put('\n');
    if (format.HasIndentation()) Tabs(format.GetLevel());
  }
  fOut.Put("</");
  Data(element.fName);
  fOut.Put('>');
  format.SetIsNewParagraph(true);
}

void TreeWriter::Data(std::string_view text) {
  fOut.Put(fConverter ? fConverter->Convert(text) : text);
}

void TreeWriter::Tabs(int n) {
  for (int i = 0; i < n; ++i) fOut.Put(*XMLUtil::ITEMINDENT);
}

}  // namespace NQXML_940::internal
