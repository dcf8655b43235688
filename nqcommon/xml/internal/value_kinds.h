// Which element and attribute hold a value of a type in a saved object: one table for the writer
// and the readers.
#pragma once

#include <string>

#include <nqcommon/xml/SaveXMLTags.h>

namespace NQXML_940::internal {

struct ValueKind {
  const std::string& fElement;
  const std::string& fAttribute;
};

// The first kind is that of int, unsigned and bool.
template <class T>
inline const ValueKind kValueKind{SaveXMLTags::XML_ELE_INT, SaveXMLTags::XML_ATT_INT};

template <>
inline const ValueKind kValueKind<long>{SaveXMLTags::XML_ELE_LONG, SaveXMLTags::XML_ATT_LONG};

template <>
inline const ValueKind kValueKind<double>{SaveXMLTags::XML_ELE_DOUBLE, SaveXMLTags::XML_ATT_DOUBLE};

template <>
inline const ValueKind kValueKind<std::string>{SaveXMLTags::XML_ELE_STRING,
                                               SaveXMLTags::XML_ATT_STRING};

}  // namespace NQXML_940::internal
