// Trees of the library's elements, owned at every moment.
#pragma once

#include <memory>
#include <sstream>
#include <string>
#include <utility>

#include <nqcommon/xml/XMLElement.h>
#include <nqcommon/xml/write_tree.h>

namespace support {

using Tree = std::unique_ptr<NQXML_940::XMLElement>;

inline Tree NewElement(const std::string& name) {
  return Tree(NQXML_940::XMLElement::Create(name));
}

// The library's builders give elements that the caller owns.
inline Tree Owned(NQXML_940::XMLElement* element) { return Tree(element); }

inline void Append(const Tree& parent, Tree child) { parent->AddElement(child.release()); }

inline std::string DocumentText(const Tree& root) {
  std::ostringstream out;
  NQXML_940::WriteTree(out, nullptr, root.get(), true);
  return out.str() + "\n";
}

}  // namespace support
