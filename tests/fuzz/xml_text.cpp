// A tree of elements written as XML and read by another library is the same tree.
#include <nqcommon/xml/XMLElement.h>
#include <nqcommon/xml/XMLString.h>

#include <memory>

#include <libxml/parser.h>
#include <libxml/tree.h>

#include "any_bytes.h"

using NQXML_940::XMLElement;

namespace {

// Every character that has rules of its own; no ">" in texts, which can end as "]]>", and no
// carriage return, which a reader turns into a line feed.
std::string NextText(nqtest::Bytes& bytes, bool isAttribute) {
  static const char* const pieces[] = {"a",  " ", "  ", "&", "<",      "\"",         "'", "\t",
                                       "\n", "]", ";",  "#", "\u00e9", "\U0001f600", ">", "\r"};
  std::string text;
  for (unsigned n = bytes.Next() % 6; n > 0; --n)
    text += pieces[bytes.Next() % (isAttribute ? 16 : 14)];
  return text;
}

// Makes an element, and appends to `told` what a reader of it must find.
XMLElement* Next(nqtest::Bytes& bytes, int depth, std::string& told) {
  static const char* const names[] = {"a", "bc", "d-e", "f\u00e9"};
  const std::string name = names[bytes.Next() % 4];
  XMLElement* const element = XMLElement::Create(name);
  told += '<' + name;
  for (unsigned i = bytes.Next() % 4; i > 0; --i) {
    const std::string value = NextText(bytes, true);
    element->AddAttribute(names[i], value);
    told += '|' + std::string(names[i]) + '|' + value;
  }
  told += '>';
  for (unsigned n = bytes.Next() % 4; n > 0; --n) {
    if (depth > 0 && bytes.Next() % 2 == 0) {
      element->AddElement(Next(bytes, depth - 1, told));
    } else {
      const std::string text = NextText(bytes, false);
      element->AddElement(NQXML_940::XMLString::Create(text));
      told += text;
    }
  }
  told += "</>";
  return element;
}

std::string TextOf(const xmlChar* text) { return reinterpret_cast<const char*>(text); }

void Tell(const xmlNode* node, std::string& told) {
  if (node->type == XML_TEXT_NODE) {
    told += TextOf(node->content);
    return;
  }
  told += '<' + TextOf(node->name);
  for (const xmlAttr* attribute = node->properties; attribute; attribute = attribute->next) {
    told += '|' + TextOf(attribute->name) + '|';
    if (attribute->children) told += TextOf(attribute->children->content);
  }
  told += '>';
  for (const xmlNode* child = node->children; child; child = child->next) Tell(child, told);
  told += "</>";
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  nqtest::Bytes bytes(data, size);
  std::string want, text, got;
  const std::unique_ptr<XMLElement> root(Next(bytes, 5, want));
  NQXML_940::ExportFormat format;
  format.SetFormat(false);
  root->ToString(text, format);
  xmlDoc* const document =
      xmlReadMemory(text.data(), static_cast<int>(text.size()), nullptr, "UTF-8", XML_PARSE_NONET);
  nqtest::Require(document != nullptr);
  Tell(xmlDocGetRootElement(document), got);
  xmlFreeDoc(document);
  nqtest::Require(got == want);
  return 0;
}
