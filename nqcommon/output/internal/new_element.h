// Elements put together in one expression, without a leak where memory ends half-way.
#pragma once

#include <array>
#include <concepts>
#include <memory>
#include <span>
#include <string>

#include <nqcommon/common/NQMV.h>
#include <nqcommon/output/NQStatXMLTags.h>
#include <nqcommon/xml/XMLElement.h>

namespace NQXML_940::internal {

using ElementPtr = std::unique_ptr<XMLElement>;

// The value of an attribute that is there only when its text is not empty.
struct NonEmpty {
  const std::string& text;
};

// The value of an attribute that is there only when the number is not system-missing.
struct NotMissing {
  double number;
};

inline void AddAttribute(XMLElement& element, const std::string& name, const std::string& value) {
  element.AddAttribute(name, value);
}

inline void AddAttribute(XMLElement& element, const std::string& name, NonEmpty value) {
  if (!value.text.empty()) element.AddAttribute(name, value.text);
}

inline void AddAttribute(XMLElement& element, const std::string& name, double value) {
  element.AddAttribute(name, value);
}

inline void AddAttribute(XMLElement& element, const std::string& name, NotMissing value) {
  if (!NQCommon_940::NQMV::IsMissing(value.number)) element.AddAttribute(name, value.number);
}

inline void AddAttribute(XMLElement& element, const std::string& name, int value) {
  element.AddAttribute(name, static_cast<double>(value));
}

// The value is of type bool exactly, because every pointer converts to bool.
inline void AddAttribute(XMLElement& element, const std::string& name,
                         std::same_as<bool> auto value) {
  using namespace NQStatXMLTags;
  element.AddAttribute(name, value ? XML_VAL_TRUE : XML_VAL_FALSE);
}

// AddAttributes takes names and values by turns.
inline void AddAttributes(XMLElement& /*element*/) {}

template <class Value, class... More>
void AddAttributes(XMLElement& element, const std::string& name, const Value& value,
                   const More&... more) {
  AddAttribute(element, name, value);
  AddAttributes(element, more...);
}

template <class... NamesAndValues>
ElementPtr NewElement(const std::string& name, const NamesAndValues&... attributes) {
  ElementPtr element(XMLElement::Create(name));
  AddAttributes(*element, attributes...);
  return element;
}

// Elements that a builder was handed: one, or a list.
using ElementList = std::span<XMLElement* const>;

inline ElementList One(XMLElement* const& element) { return {&element, 1}; }

// Up to three such lists on their way below a parent. What does not get there is deleted.
class PassedElements {
 public:
  explicit PassedElements(ElementList first, ElementList second = {}, ElementList third = {})
      : fLists{first, second, third} {}
  PassedElements(const PassedElements&) = delete;
  PassedElements& operator=(const PassedElements&) = delete;
  ~PassedElements() {
    for (const ElementList list : fLists) {
      for (const XMLElement* element : list) delete element;
    }
  }

  // The parent with the elements as its children, for the caller to return.
  XMLElement* AddTo(ElementPtr parent) {
    for (ElementList& list : fLists) {
      while (!list.empty()) parent->AddElement(TakeFirst(list));
    }
    return parent.release();
  }

 private:
  // The element taken has an owner from then on: AddElement owns it even where memory ends.
  static XMLElement* TakeFirst(ElementList& list) {
    XMLElement* const first = list.front();
    list = list.subspan(1);
    return first;
  }

  std::array<ElementList, 3> fLists;
};

}  // namespace NQXML_940::internal
