// An element as the bytes of one line.
#pragma once

#include <memory>
#include <string>

#include <nqcommon/xml/XMLElement.h>

namespace nqtest {

// Deletes the element; no element is "null".
inline std::string Text(NQXML_940::XMLElement* element) {
  const std::unique_ptr<NQXML_940::XMLElement> owner(element);
  std::string text;
  NQXML_940::ExportFormat format;
  format.SetFormat(false);
  if (element == nullptr) return "null";
  element->ToString(text, format);
  return text;
}

}  // namespace nqtest
