#pragma once

#include <string>
#include <string_view>

namespace NQXML_940::internal {

// Appends XMLUtil::Escape(text).
void AppendEscaped(std::string& out, std::string_view text);

// Append name="value": the text escaped, the number as ReplaceSep has it.
void AppendAttribute(std::string& out, std::string_view name, const std::string& value);
void AppendAttribute(std::string& out, std::string_view name, double value);

}  // namespace NQXML_940::internal
