#include <nqcommon/xml/utf8_conversion.h>

#include <gtest/gtest.h>

#include <clocale>
#include <string>

#include <nqcommon/xml/internal/Utf8Converter.h>

using namespace NQXML_940;

TEST(Utf8Conversion, EndsAtTheFirstBadByte) {
  EXPECT_EQ(MbToUTF8(std::string("a\0b\xC3\xA9z", 6)), std::string("a\0b", 3));
  ASSERT_NE(std::setlocale(LC_CTYPE, "C.UTF-8"), nullptr);
  EXPECT_EQ(MbToUTF8("é日𝛽z") + "|" + MbToUTF8("é\xE9z") + "|" + MbToUTF8("z日\xE6\x97"),
            "é日𝛽z|é|z日");
  std::setlocale(LC_CTYPE, "C");
}

// One converter takes each text as a new one does, whatever the text before ended in.
TEST(Utf8Conversion, CharacterSets) {
  const struct {
    const char *charset, *text, *utf8;
  } rows[] = {{"ISO-8859-1", "caf\xE9\xFF", "caféÿ"},
              {"UTF-8", "a\xE6\x97", "a"},
              {"SHIFT_JIS", "a\x93\xFA\x93", "a日"},
              {"ISO-2022-JP", "\x1B$BF|", "日"},
              {"ISO-2022-JP", "F|", "F|"},
              {"ISOISO 8859_1", "\xE9", "é"}};  // known as 8859_1
  for (const auto& row : rows) {
    internal::Utf8Converter converter(row.charset);
    for (const auto& other : rows) {
      converter.Convert(other.text);
      EXPECT_EQ(converter.Convert(row.text), row.utf8) << row.charset << " after " << other.text;
    }
  }
}

// The C library does not know the last resort, "8859-1", either.
TEST(Utf8Conversion, UnknownCharacterSets) {
  const iconv_t none = reinterpret_cast<iconv_t>(-1);
  for (const char* charset : {"no such set", "ISO none", "ISOISOx", "8859-1", ""}) {
    const char* name = *charset == '\0' ? nullptr : charset;
    EXPECT_EQ(iconvOpen(name), none) << charset;
    EXPECT_EQ(internal::Utf8Converter(name).Convert("abc"), "") << charset;
  }
}
