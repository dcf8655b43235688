#include <nqcommon/common/text_conversion.h>

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <iostream>
#include <limits>
#include <locale>
#include <system_error>
#include <type_traits>

namespace NQCommon_940 {

namespace {

constexpr std::string_view kDigits = "0123456789";

std::string_view WithoutBlanks(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size()));
  return text;
}

// Takes one character of the set off the text, where it starts with one.
bool Take(std::string_view& text, std::string_view set) {
  const bool found = !text.empty() && set.find(text.front()) != set.npos;
  if (found) text.remove_prefix(1);
  return found;
}

// Takes the digits off the text: how many.
std::size_t TakeDigits(std::string_view& text) {
  const std::size_t count = std::min(text.find_first_not_of(kDigits), text.size());
  text.remove_prefix(count);
  return count;
}

// The characters of a number without a plus sign, for std::from_chars, which takes none.
std::string_view Number(std::string_view text, std::string_view rest) {
  text.remove_suffix(rest.size());
  Take(text, "+");
  return text;
}

template <class T>
std::errc Convert(std::string_view number, T& value) {
  return std::from_chars(number.data(), number.data() + number.size(), value).ec;
}

template <class Integer>
bool ReadInteger(std::string_view text, Integer& value) {
  text = WithoutBlanks(text);
  if (text.empty()) return false;
  std::string_view rest = text;
  Take(rest, "+-");
  value = 0;
  if (TakeDigits(rest) == 0) return false;
  if (Convert(Number(text, rest), value) == std::errc()) return true;
  value = text.front() == '-' ? std::numeric_limits<Integer>::min()
                              : std::numeric_limits<Integer>::max();
  return false;
}

// Whether a number that is out of range is too large, and not too near to zero: where its first
// digit but 0 stands, counted from the decimal point, and its exponent tell.
bool IsTooLarge(std::string_view number) {
  const std::size_t mantissa = std::min(number.find_first_of("eE"), number.size());
  const std::size_t point = std::min(number.find('.'), mantissa);
  const std::size_t first = number.find_first_of("123456789");
  int exponent = 0;
  if (mantissa < number.size()) ReadInteger(number.substr(mantissa + 1), exponent);
  return exponent + static_cast<long long>(point) > static_cast<long long>(first);
}

bool IsDecimalPoint(char c, const std::locale& locale) {
  return c == std::use_facet<std::numpunct<char>>(locale).decimal_point();
}

}  // namespace

// ---- Writing ------------------------------------------------------------------------------------

template <typename T>
std::string T2Str(T value) {
  if constexpr (std::is_same_v<T, double>) {
    char text[16];  // the longest is like -1.79769e+308
    constexpr int kStreamDigits = 6;
    return {text, std::to_chars(text, text + sizeof text, value, std::chars_format::general,
                                kStreamDigits)
                      .ptr};
  } else {
    return std::to_string(value);
  }
}

// ---- Reading ------------------------------------------------------------------------------------

bool ReadNumber(std::string_view text, double& value) {
  text = WithoutBlanks(text);
  if (text.empty()) return false;
  std::string_view rest = text;
  Take(rest, "+-");
  std::size_t nDigits = TakeDigits(rest);
  if (Take(rest, ".")) nDigits += TakeDigits(rest);
  value = 0;
  if (nDigits == 0) return false;
  if (Take(rest, "eE")) {
    Take(rest, "+-");
    if (TakeDigits(rest) == 0) return false;
  }
  const std::string_view number = Number(text, rest);
  if (Convert(number, value) == std::errc()) return true;
  const bool isTooLarge = IsTooLarge(number);
  const double magnitude = isTooLarge ? std::numeric_limits<double>::max() : 0.0;
  value = number.front() == '-' ? -magnitude : magnitude;
  return !isTooLarge;
}

bool ReadNumber(std::string_view text, int& value) { return ReadInteger(text, value); }
bool ReadNumber(std::string_view text, long& value) { return ReadInteger(text, value); }
bool ReadNumber(std::string_view text, long long& value) { return ReadInteger(text, value); }

template <typename T>
bool Str2T(const std::string& text, T& value) {
  if constexpr (std::is_same_v<T, bool>) {
    long long number = value;
    const bool isRead = ReadNumber(text, number);
    value = number != 0;
    return isRead && (number == 0 || number == 1);
  } else if constexpr (std::is_same_v<T, double>) {
    const std::size_t point = text.find_first_not_of(" \t\n\v\f\r+-0123456789");
    if (point == text.npos || text[point] == '.') return ReadNumber(text, value);
    if (!IsDecimalPoint(text[point], std::cout.getloc()) &&
        !IsDecimalPoint(text[point], std::locale()))
      return ReadNumber(text, value);
    std::string number = text;
    number[point] = '.';
    return ReadNumber(number, value);
  } else {
    return ReadNumber(text, value);
  }
}

template std::string T2Str<double>(double);
template std::string T2Str<bool>(bool);
template std::string T2Str<long long>(long long);
template bool Str2T<double>(const std::string&, double&);
template bool Str2T<bool>(const std::string&, bool&);
template bool Str2T<int>(const std::string&, int&);
template bool Str2T<long long>(const std::string&, long long&);

}  // namespace NQCommon_940
