// Lists as the text of an element: items with single blanks between them.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include <nqcommon/common/NQMV.h>
#include <nqcommon/xml/XMLElement.h>
#include <nqcommon/xml/number_format.h>

namespace NQXML_940::internal {

// The values of an array as the interfaces take it: none where it is null or the count below 1.
template <class T, class Count>
std::span<const T> Listed(const T* values, Count n) {
  if (values == nullptr || n < 1) return {};
  return {values, static_cast<std::size_t>(n)};
}

// Adds the items as one text, none where there are no items. `append(text, item)` appends an item.
// Cost  linear in the length of the text.
template <class Items, class Append>
void AddList(XMLElement& element, const Items& items, Append append) {
  if (items.empty()) return;
  std::string text;
  bool isFirst = true;
  for (const auto& item : items) {
    if (!std::exchange(isFirst, false)) text += ' ';
    append(text, item);
  }
  element.AddElement(XMLString::Create(std::move(text)));
}

// Numbers as Format writes them, in every locale, and the word for each that is missing.
inline void AddNumbers(XMLElement& element, std::span<const double> values,
                       std::string_view missing) {
  AddList(element, values, [missing](std::string& text, double value) {
    if (NQCommon_940::NQMV::IsMissing(value))
      text += missing;
    else
      AppendNumber(text, value);
  });
}

}  // namespace NQXML_940::internal
