#pragma once

#include <string>
#include <string_view>

#include <nqcommon/xml/utf8_conversion.h>

namespace NQXML_940::internal {

// MbToUTF8 for many texts: opens the converter once.
class Utf8Converter {
 public:
  // From the character set of the C locale in force.
  Utf8Converter();
  explicit Utf8Converter(const char* charset);
  ~Utf8Converter();
  Utf8Converter(const Utf8Converter&) = delete;
  Utf8Converter& operator=(const Utf8Converter&) = delete;

  // MbToUTF8(text), each text on its own; valid until the next call.
  std::string_view Convert(std::string_view text);

 private:
  iconv_t fConverter;
  std::string fBuffer;
};

}  // namespace NQXML_940::internal
