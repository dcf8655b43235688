// Text of numbers. Every writer of the system takes its numbers from here.
#pragma once

#include <string>

#include <nqcommon/export.h>

namespace NQXML_940 {

// The number with up to 15 significant digits: the text of printf's "%.15g" in the classic locale,
// whatever the locales in force are.
//
//   0.1  3  -0  1e+20  1e-05  0.333333333333333  4.94065645841247e-324  inf  -inf  nan  -nan
//
// The buffer of the second form is not used, and may be null.
NQ_API std::string ReplaceSep(double value);
NQ_API std::string ReplaceSep(double value, char* buffer);

// Appends the same text.
NQ_API void AppendNumber(std::string& text, double value);

// Without `useFormat` as ReplaceSep. With it as printf of `format`, of "%.15g" where that is null,
// and so with the decimal character of the C locale in force.
//
// Only the first conversion of a double is obeyed: a % with printf's flags - + blank # 0 ', digits
// of a width and of a precision, an l without effect, and one of a A e E f F g G. "%%" is a percent
// sign. Any other conversion (%d, %s, %n, %*g, %Lg, a second %g, one too wide for printf) has no
// argument to take, and is printed as it stands. The text may have any length.
NQ_API std::string Format(double value, bool useFormat, const char* format);

// The number as a double, as ReplaceSep writes it: 1000000000000000 is 1e+15.
NQ_API std::string Format(long value);

// ";".
NQ_API std::string GetListSeparator();

// The decimal character of the C locale in force.
NQ_API std::string GetDecimalCharacter();

// "%.15g".
NQ_API std::string GetDefaultNumericFormat();

}  // namespace NQXML_940
