#pragma once

#include <string>

#include <nqcommon/export.h>

// Text of numbers and numbers of text with the rules of the standard streams in their default
// configuration, and so in the global locale, but with "." as the decimal point of a double.
// Defined for double, bool and long long only.
namespace NQCommon_940 {

// The text of a value: a double with six significant digits in the shorter of fixed and scientific
// form (0.1, 1e+06, -1.79769e+308), a bool as the digit 1 or 0, an integer in decimal.
//
// Of a double, the first "," becomes ".": the decimal comma of the global locale. The separators of
// a locale that groups thousands stay: 1234.5 is then "1.234.5", and 123456 is "123.456".
template <typename T>
NQ_API std::string T2Str(T value);

// Reads a number from the start of `text`, after blanks, up to the first character that cannot
// continue it. Empty or blank text leaves `value` as it was; text that starts with no number gives
// zero. Of a double, the first "." is first replaced by the decimal point of std::cout's locale, so
// that "." text is understood while that locale and the global one are the same.
//
//   text       double                         long long         bool
//   "12abc"    12                             12                true
//   "3.5x"     3.5                            3                 true
//   "+7"       7                              7                 true
//   "0x10"     0 (decimal only)               0                 false
//   "abc"      0 ("inf" and "nan" too)        0                 false
//   "12e"      0 (the exponent is missing)    12                true
//   "1e-400"   0                              1                 true
//   "1e999"    the largest finite double      1                 true
//   19 nines   1e19                           the largest       true
//
// Numbers out of range give the nearest end of the range. So the system-missing value written with
// 15 digits, "-1.79769313486232e+308", which lies just beyond, comes back as itself.
template <typename T>
NQ_API void Str2T(const std::string& text, T& value);

extern template NQ_API std::string T2Str<double>(double);
extern template NQ_API std::string T2Str<bool>(bool);
extern template NQ_API std::string T2Str<long long>(long long);
extern template NQ_API void Str2T<double>(const std::string&, double&);
extern template NQ_API void Str2T<bool>(const std::string&, bool&);
extern template NQ_API void Str2T<long long>(const std::string&, long long&);

}  // namespace NQCommon_940
