#include <nqcommon/xml/number_format.h>

#include <algorithm>
#include <charconv>
#include <clocale>
#include <cstddef>
#include <cstdio>
#include <string_view>

namespace NQXML_940 {

namespace {

constexpr int kDefaultDigits = 15;
constexpr char kDefaultFormat[] = "%.15g";

// The length of the conversion of a double that `text` starts with, 0 if it starts with none.
std::size_t ConversionLength(std::string_view text) {
  std::size_t length = 0;
  const auto skip = [&](std::string_view set) {
    length = std::min(text.find_first_not_of(set, length), text.size());
  };
  const auto take = [&](std::string_view set) {
    const bool found = length < text.size() && set.find(text[length]) != set.npos;
    length += found ? 1 : 0;
    return found;
  };
  constexpr std::string_view kDecimals = "0123456789";
  if (!take("%")) return 0;
  skip("-+ #0'");
  skip(kDecimals);
  if (take(".")) skip(kDecimals);
  take("l");
  return take("aAeEfFgG") ? length : 0;
}

// Appends what printf makes of one conversion; the conversion itself where printf cannot.
void AppendConverted(std::string& out, const std::string& conversion, double value) {
  const int length = std::snprintf(nullptr, 0, conversion.c_str(), value);
  if (length < 0) {
    out += conversion;
    return;
  }
  const std::size_t start = out.size();
  const std::size_t size = static_cast<std::size_t>(length);
  out.resize(start + size);
  std::snprintf(&out[start], size + 1, conversion.c_str(), value);  // its end is the string's own
}

std::string Print(std::string_view format, double value) {
  std::string out;
  bool isPrinted = false;
  while (!format.empty()) {
    const std::size_t length = isPrinted ? 0 : ConversionLength(format);
    if (length > 0) {
      AppendConverted(out, std::string(format.substr(0, length)), value);
      isPrinted = true;
    } else {
      out += format.front();
    }
    const bool isPercentSign = format.substr(0, 2) == "%%";
    format.remove_prefix(isPercentSign ? 2 : std::max<std::size_t>(length, 1));
  }
  return out;
}

}  // namespace

void AppendNumber(std::string& text, double value) {
  char digits[32];  // the longest is like -1.23456789012345e-300
  const auto end = std::to_chars(digits, digits + sizeof digits, value, std::chars_format::general,
                                 kDefaultDigits);
  text.append(digits, end.ptr);
}

std::string ReplaceSep(double value) {
  std::string text;
  AppendNumber(text, value);
  return text;
}

std::string ReplaceSep(double value, char* /*buffer*/) { return ReplaceSep(value); }

std::string Format(double value, bool useFormat, const char* format) {
  if (!useFormat) return ReplaceSep(value);
  return Print(format == nullptr ? kDefaultFormat : format, value);
}

std::string Format(long value) { return ReplaceSep(static_cast<double>(value)); }

std::string GetListSeparator() { return ";"; }

std::string GetDecimalCharacter() { return std::localeconv()->decimal_point; }

std::string GetDefaultNumericFormat() { return kDefaultFormat; }

}  // namespace NQXML_940
