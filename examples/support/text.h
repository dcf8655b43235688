// Texts for documents and messages.
#pragma once

#include <string>
#include <string_view>

namespace support {

// Whether the text is UTF-8, of characters that XML 1.0 allows: no control characters but tab, line
// feed and carriage return, no surrogates, neither U+FFFE nor U+FFFF.
bool IsXmlText(std::string_view text);

// The text between single quotes for a message of one line, cut after 60 bytes.
std::string Quoted(std::string_view text);

// The shortest decimal text that reads back as x; "inf", "-inf" and "nan" otherwise.
std::string Shortest(double x);

// A JSON string, and a JSON number: null where x is not finite.
std::string JsonString(std::string_view text);
std::string JsonNumber(double x);

}  // namespace support
