// The words that the diagnostic display shows for the codes of an enumeration.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include <nqcommon/common/display.h>

namespace NQXML_940::internal {

// Writes the label and the word of the code, `other` for a code outside the table.
template <std::size_t n>
void DisplayCodeWord(const std::string& label, int code, const std::string_view (&words)[n],
                     std::string_view other) {
  const auto i = static_cast<std::size_t>(code);  // a negative code lies past every end
  NQDisplay_940::DisplayText(1, label + std::string(i < n ? words[i] : other));
}

}  // namespace NQXML_940::internal
