#pragma once

#include <string>
#include <string_view>

#include <nqcommon/export.h>

// Text of numbers and numbers of text, by rules that no locale changes. A stream in the classic
// locale reads and writes the same.
namespace NQCommon_940 {

// ---- Writing ------------------------------------------------------------------------------------

// The text of a value: a double with six significant digits in the shorter of fixed and scientific
// form (0.1, 1e+06, -1.79769e+308), a bool as the digit 1 or 0, an integer in decimal. Defined for
// double, bool and long long only.
template <typename T>
NQ_API std::string T2Str(T value);

// ---- Reading ------------------------------------------------------------------------------------

// Reads a number from the start of `text`, after blanks, up to the first character that cannot
// continue it. Empty or blank text leaves `value` as it was, text that starts with no number gives
// zero, and a number out of range gives the nearest end of the range: false is returned for each of
// the three. So the system-missing value written with 15 digits, "-1.79769313486232e+308", which
// lies just beyond, comes back as itself.
//
//   text         double                         integer           bool
//   "12abc"      12                             12                true (a)
//   "3.5x"       3.5                            3                 true (a)
//   "+7"         7                              7                 true (a)
//   "0x10"       0 (decimal only)               0                 false
//   "abc"        0 (b), "inf" and "nan" too     0 (b)             false (b)
//   "12e"        0 (b): no exponent             12                true (a)
//   "1e-400"     0                              1                 true
//   "1e999"      the largest finite double (b)  1                 true
//   19 nines     1e19                           the largest (b)   true (a)
//
// (a) a bool is read as an integer; any but 0 gives true, and any but 0 and 1 returns false.
// (b) false is returned.
NQ_API bool ReadNumber(std::string_view text, double& value);
NQ_API bool ReadNumber(std::string_view text, int& value);
NQ_API bool ReadNumber(std::string_view text, long& value);
NQ_API bool ReadNumber(std::string_view text, long long& value);

// ReadNumber, but of a double the decimal point may also be the decimal character of std::cout's
// locale or of the global one: whichever of them or "." comes first in the text. Defined for
// double, bool, int and long long only.
template <typename T>
NQ_API bool Str2T(const std::string& text, T& value);

extern template NQ_API std::string T2Str<double>(double);
extern template NQ_API std::string T2Str<bool>(bool);
extern template NQ_API std::string T2Str<long long>(long long);
extern template NQ_API bool Str2T<double>(const std::string&, double&);
extern template NQ_API bool Str2T<bool>(const std::string&, bool&);
extern template NQ_API bool Str2T<int>(const std::string&, int&);
extern template NQ_API bool Str2T<long long>(const std::string&, long long&);

}  // namespace NQCommon_940
