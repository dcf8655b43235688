#include <nqcommon/xml/XMLElement.h>

#include <utility>

#include <nqcommon/xml/internal/TreeWriter.h>

namespace NQXML_940 {

XMLElement::XMLElement(std::string name) : fName(std::move(name)) {}

XMLElement* XMLElement::Create(std::string name) { return new XMLElement(std::move(name)); }

// Each element is emptied before it is deleted, for deletion that recurses would exhaust the stack.
XMLElement::~XMLElement() {
  std::vector<std::vector<Child>> pending;
  const auto empty = [&pending](XMLElement& element) {
    if (!element.fvChildren.empty()) pending.push_back(std::move(element.fvChildren));
  };
  empty(*this);
  while (!pending.empty()) {
    const std::vector<Child> children = std::move(pending.back());
    pending.pop_back();
    for (const Child& child : children) {
      if (const auto* element = std::get_if<std::unique_ptr<XMLElement>>(&child)) empty(**element);
    }
  }
}

void XMLElement::ToString(std::string& out, ExportFormat& format) const {
  internal::TreeWriter(out).Write(*this, format);
}

void XMLElement::ToStream(std::ostream& os, ExportFormat& format, bool utf8) const {
  internal::TreeWriter(os, utf8).Write(*this, format);
}

XMLElement* XMLElement::Clone() const {
  std::unique_ptr<XMLElement> root(Create(fName));
  std::vector<std::pair<const XMLElement*, XMLElement*>> pending = {{this, root.get()}};
  while (!pending.empty()) {
    const auto [source, copy] = pending.back();
    pending.pop_back();
    for (const auto& attribute : source->fvAttributes) copy->AddAttribute(attribute->Clone());
    for (const Child& child : source->fvChildren) {
      if (const auto* text = std::get_if<std::unique_ptr<XMLString>>(&child)) {
        copy->AddElement((*text)->Clone());
      } else {
        const XMLElement* element = std::get<std::unique_ptr<XMLElement>>(child).get();
        XMLElement* elementCopy = Create(element->fName);
        copy->AddElement(elementCopy);
        pending.emplace_back(element, elementCopy);
      }
    }
  }
  return root.release();
}

void XMLElement::AddElement(XMLElement* element) {
  if (element == nullptr || element == this) return;
  fvChildren.emplace_back(std::unique_ptr<XMLElement>(element));
}

void XMLElement::AddElement(XMLString* text) {
  if (text != nullptr) fvChildren.emplace_back(std::unique_ptr<XMLString>(text));
}

void XMLElement::AddAttribute(XMLAttribute* attribute) {
  if (attribute != nullptr) fvAttributes.emplace_back(std::unique_ptr<XMLAttribute>(attribute));
}

void XMLElement::AddAttribute(std::string name, const std::string& value) {
  AddAttribute(XMLAttribute::Create(std::move(name), value));
}

void XMLElement::AddAttribute(std::string name, double value) {
  AddAttribute(XMLAttribute::Create(std::move(name), value));
}

void XMLElement::AddAttribute(std::string name, double value, bool replaceSeparator) {
  AddAttribute(XMLAttribute::Create(std::move(name), value, replaceSeparator));
}

}  // namespace NQXML_940
