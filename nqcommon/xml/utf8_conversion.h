// Conversion of the platform's multibyte text to UTF-8.
#pragma once

#include <iconv.h>

#include <string>

#include <nqcommon/export.h>

namespace NQXML_940 {

// `text`, which is in the character set of the C locale in force, in UTF-8. It runs in a UTF-8
// locale too.
//
// The result ends, silently, at the first byte that the conversion cannot take: a byte that is not
// in the character set, a character cut off at the end, or one that would make the UTF-8 longer
// than four times the text. So a program that never calls setlocale loses its text from the first
// byte above 127 on. The result is empty where the platform cannot convert from the character set.
NQ_API std::string MbToUTF8(std::string text);

// A converter from `charset` to "UTF-8", or to "utf8" where the platform knows that name only. A
// charset that it does not know is tried again without a leading "ISO" and the blanks behind that,
// and then as "8859-1". (iconv_t)-1 when all of that fails or `charset` is null; otherwise the
// caller closes it by iconv_close.
NQ_API iconv_t iconvOpen(const char* charset);

}  // namespace NQXML_940
