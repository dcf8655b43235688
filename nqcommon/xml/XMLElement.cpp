#include <nqcommon/xml/XMLElement.h>

#include <cstring>
#include <utility>

#include <nqcommon/xml/internal/TreeWriter.h>
#include <nqcommon/xml/internal/escape.h>

namespace NQXML_940 {

namespace {

// Room for the attributes that most elements have, so that the tag seldom moves.
constexpr std::size_t kTagRoom = 128;

}  // namespace

XMLElement::XMLElement(std::string name)
    : fTag(std::move(name)), fNameLength(fTag.size()), fTagEnd(fTag.size()) {}

XMLElement* XMLElement::Create(std::string name) { return new XMLElement(std::move(name)); }

XMLElement::~XMLElement() = default;

void XMLElement::ToString(std::string& out, ExportFormat& format) const {
  internal::TreeWriter(out).Write(*this, format);
}

void XMLElement::ToStream(std::ostream& os, ExportFormat& format, bool utf8) const {
  internal::TreeWriter(os, utf8).Write(*this, format);
}

XMLElement* XMLElement::Clone() const {
  std::unique_ptr<XMLElement> copy(Create(fTag.substr(0, fTagEnd)));
  copy->fNameLength = fNameLength;
  copy->fvChildren.reserve(fvChildren.size());
  for (const Child& child : fvChildren)
    std::visit([&](const auto& node) { copy->AddElement(node->Clone()); }, child);
  return copy.release();
}

void XMLElement::AddElement(XMLElement* element) {
  if (element == nullptr || element == this) return;
  fvChildren.emplace_back(std::unique_ptr<XMLElement>(element));
}

void XMLElement::AddElement(XMLString* text) {
  if (text != nullptr) fvChildren.emplace_back(std::unique_ptr<XMLString>(text));
}

template <class Append>
void XMLElement::AddText(std::size_t nameLength, Append append) {
  if (fTagEnd == fNameLength) fTag.reserve(kTagRoom);
  const std::size_t begin = fTagEnd + sizeof(AttributeHead);
  fTag.resize(begin);
  append(fTag);
  const AttributeHead head{nameLength, fTag.size() - begin};
  std::memcpy(&fTag[fTagEnd], &head, sizeof head);
  fTagEnd = fTag.size();
}

void XMLElement::AddAttribute(XMLAttribute* attribute) {
  if (attribute == nullptr) return;
  fvAdded.emplace_back(std::unique_ptr<XMLAttribute>(attribute));
  AddText(attribute->fNameLength, [&](std::string& tag) { tag += attribute->fText; });
}

void XMLElement::AddAttribute(const std::string& name, const std::string& value) {
  AddText(name.size(), [&](std::string& tag) { internal::AppendAttribute(tag, name, value); });
}

void XMLElement::AddAttribute(const std::string& name, double value) {
  AddText(name.size(), [&](std::string& tag) { internal::AppendAttribute(tag, name, value); });
}

void XMLElement::AddAttribute(const std::string& name, double value, bool /*replaceSeparator*/) {
  AddAttribute(name, value);
}

}  // namespace NQXML_940
