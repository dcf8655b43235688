#include <nqcommon/xml/XMLObj.h>

#include <utility>

#include <nqcommon/common/NQMV.h>
#include <nqcommon/xml/SaveXMLTags.h>
#include <nqcommon/xml/XMLUtil.h>
#include <nqcommon/xml/internal/escape.h>
#include <nqcommon/xml/internal/value_kinds.h>
#include <nqcommon/xml/write_tree.h>

namespace NQXML_940 {
namespace {

using internal::kValueKind;
using internal::ValueKind;

// The value is a string or a double: what attributes are made of.
template <class Value>
int WriteLine(std::ostream& os, const XMLObj& object, const ValueKind& kind, const Value& value) {
  std::string line = "\n" + XMLUtil::GetTabs(object.GetNTabs());
  if (object.GetNTabs() >= 0) line += '\t';
  line.append("<").append(kind.fElement).append(" ");
  internal::AppendAttribute(line, kind.fAttribute, value);
  Write(os, line += "/>");
  return 0;
}

}  // namespace

XMLObj::XMLObj(std::string name, int nTabs) : fName(std::move(name)), fNTabs(nTabs) {}

int XMLObj::StartObj(std::ostream& os) const {
  Write(os, "\n" + XMLUtil::GetTabs(fNTabs) + "<" + SaveXMLTags::XML_ELE_OBJ + " " +
                SaveXMLTags::XML_ATT_OBJ + "=\"" + fName + "\">");
  return 0;
}

int XMLObj::EndObj(std::ostream& os) const {
  Write(os, "\n" + XMLUtil::GetTabs(fNTabs) + "</" + SaveXMLTags::XML_ELE_OBJ + ">");
  return 0;
}

int XMLObj::WriteSubElement(std::ostream& os, int value) const {
  return WriteLine(os, *this, kValueKind<int>, static_cast<double>(value));
}

int XMLObj::WriteSubElement(std::ostream& os, unsigned int value) const {
  return WriteLine(os, *this, kValueKind<unsigned>, static_cast<double>(value));
}

int XMLObj::WriteSubElement(std::ostream& os, bool value) const {
  return WriteLine(os, *this, kValueKind<bool>, value ? 1.0 : 0.0);
}

int XMLObj::WriteSubElement(std::ostream& os, long value) const {
  return WriteLine(os, *this, kValueKind<long>, static_cast<double>(value));
}

int XMLObj::WriteSubElement(std::ostream& os, double value) const {
  const ValueKind& kind = kValueKind<double>;
  if (NQCommon_940::NQMV::IsMissing(value))
    return WriteLine(os, *this, kind, SaveXMLTags::XML_VAL_MISSING);
  return WriteLine(os, *this, kind, value);
}

int XMLObj::WriteSubElement(std::ostream& os, const std::string& value) const {
  return WriteLine(os, *this, kValueKind<std::string>, value);
}

int XMLObj::WriteSubElement(std::ostream& os, const char* value) const {
  return WriteSubElement(os, std::string(value == nullptr ? "" : value));
}

}  // namespace NQXML_940
