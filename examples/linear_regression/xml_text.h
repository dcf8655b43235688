// Text that may stand in an XML document.
#pragma once

#include <string_view>

namespace regression {

// Whether the text is UTF-8, of characters that XML 1.0 allows: no control characters but tab, line
// feed and carriage return, no surrogates, neither U+FFFE nor U+FFFF.
bool IsXmlText(std::string_view text);

}  // namespace regression
