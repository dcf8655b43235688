#include <nqcommon/common/text_conversion.h>

#include <iostream>
#include <locale>
#include <sstream>
#include <type_traits>

namespace NQCommon_940 {

namespace {

void ReplaceFirst(std::string& text, char from, char to) {
  if (const auto at = text.find(from); at != std::string::npos) text[at] = to;
}

}  // namespace

template <typename T>
std::string T2Str(T value) {
  std::ostringstream stream;
  stream << value;
  std::string text = stream.str();
  if constexpr (std::is_same_v<T, double>) ReplaceFirst(text, ',', '.');
  return text;
}

template <typename T>
void Str2T(const std::string& text, T& value) {
  std::istringstream stream(text);
  if constexpr (std::is_same_v<T, double>) {
    const std::locale locale = std::cout.getloc();
    std::string number = text;
    ReplaceFirst(number, '.', std::use_facet<std::numpunct<char>>(locale).decimal_point());
    stream.str(number);
  }
  stream >> value;
}

template std::string T2Str<double>(double);
template std::string T2Str<bool>(bool);
template std::string T2Str<long long>(long long);
template void Str2T<double>(const std::string&, double&);
template void Str2T<bool>(const std::string&, bool&);
template void Str2T<long long>(const std::string&, long long&);

}  // namespace NQCommon_940
