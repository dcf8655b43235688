#pragma once

#include <string>
#include <string_view>

namespace NQXML_940::internal {

// Appends XMLUtil::Escape(text).
void AppendEscaped(std::string& out, std::string_view text);

}  // namespace NQXML_940::internal
