// The names in a file of saved objects.
#pragma once

#include <string>

namespace NQXML_940::SaveXMLTags {

inline const std::string XML_ELE_ROOT = "NQXMLRoot";
inline const std::string XML_ELE_HEADER = "NQXMLRoot";  // the header is the root's start tag
inline const std::string XML_ATT_COPYRIGHT = "copyright";
inline const std::string XML_ELE_OBJ = "Obj";
inline const std::string XML_ATT_OBJ = "name";
inline const std::string XML_ELE_INT = "Int";
inline const std::string XML_ATT_INT = "value";
inline const std::string XML_ELE_LONG = "Long";
inline const std::string XML_ATT_LONG = "value";
inline const std::string XML_ELE_DOUBLE = "Double";
inline const std::string XML_ATT_DOUBLE = "value";
inline const std::string XML_VAL_MISSING = "Missing";
inline const std::string XML_ELE_STRING = "String";
inline const std::string XML_ATT_STRING = "value";
inline const std::string SAVEXML_DTD_LOC = "savexml.dtd";

}  // namespace NQXML_940::SaveXMLTags
