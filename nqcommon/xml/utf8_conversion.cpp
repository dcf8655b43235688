#include <nqcommon/xml/utf8_conversion.h>

#include <langinfo.h>

#include <cstddef>
#include <cstring>
#include <string_view>

#include <nqcommon/xml/internal/Utf8Converter.h>

namespace NQXML_940 {

namespace {

constexpr char kLastResort[] = "8859-1";
constexpr char kIso[] = "ISO";
constexpr std::size_t kMaxGrowth = 4;  // bytes of UTF-8 for one byte of text

iconv_t NoConverter() {
  return reinterpret_cast<iconv_t>(-1);  // NOLINT: what iconv_open returns
}

iconv_t Open(const char* charset) {
  const iconv_t converter = iconv_open("UTF-8", charset);
  return converter != NoConverter() ? converter : iconv_open("utf8", charset);
}

}  // namespace

namespace internal {

Utf8Converter::Utf8Converter() : Utf8Converter(nl_langinfo(CODESET)) {}

Utf8Converter::Utf8Converter(const char* charset) : fConverter(iconvOpen(charset)) {}

Utf8Converter::~Utf8Converter() {
  if (fConverter != NoConverter()) iconv_close(fConverter);
}

std::string_view Utf8Converter::Convert(std::string_view text) {
  if (fConverter == NoConverter()) return {};
  if (fBuffer.size() < kMaxGrowth * text.size()) fBuffer.resize(kMaxGrowth * text.size());
  iconv(fConverter, nullptr, nullptr, nullptr, nullptr);  // forgets where the text before stopped
  char* in = const_cast<char*>(text.data());              // NOLINT: iconv does not write there
  std::size_t inLeft = text.size();
  char* out = fBuffer.data();
  std::size_t outLeft = kMaxGrowth * text.size();
  iconv(fConverter, &in, &inLeft, &out, &outLeft);
  return {fBuffer.data(), static_cast<std::size_t>(out - fBuffer.data())};
}

}  // namespace internal

std::string MbToUTF8(std::string text) {  // NOLINT(performance-unnecessary-value-param)
  return std::string(internal::Utf8Converter().Convert(text));
}

iconv_t iconvOpen(const char* charset) {
  if (charset == nullptr) return NoConverter();
  const char* name = charset;
  for (;;) {
    const iconv_t converter = Open(name);
    if (converter != NoConverter() || name == kLastResort) return converter;
    const bool isIso = std::strncmp(name, kIso, std::strlen(kIso)) == 0;
    if (isIso) name += std::strlen(kIso);
    name = isIso ? name + std::strspn(name, " ") : kLastResort;
  }
}

}  // namespace NQXML_940
