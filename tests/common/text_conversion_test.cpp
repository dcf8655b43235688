#include <nqcommon/common/text_conversion.h>

#include <random>

#include "support/comma_locale.h"
#include "support/testing.h"

using namespace NQCommon_940;

// What `read` makes of a value: the number, and "?" where it reports none.
template <typename T, typename Read>
static std::string As(T value, Read read) {
  const bool isRead = read(value);
  std::ostringstream text;
  text.imbue(std::locale::classic());
  text.precision(17);
  text << value << (isRead ? " " : "? ");
  return text.str();
}

template <typename T>
static std::string ByStr2T(const std::string& text, T before) {
  return As(before, [&](T& value) { return Str2T(text, value); });
}

template <typename T>
static std::string ByStream(const std::string& text, T before) {
  return As(before, [&](T& value) {
    std::istringstream stream(text);
    stream.imbue(std::locale::classic());
    return !(stream >> value).fail();
  });
}

TEST(TextConversion, ReadsAsTheHeaderShows) {
  const char* const rows[][2] = {
#include "common/text_cases.inc"
  };
  for (const auto& [text, want] : rows)
    EXPECT_EQ(ByStr2T(text, -5.0) + ByStr2T(text, -5LL) + ByStr2T(text, true), want) << text;
  EXPECT_EQ(T2Str(0.1) + T2Str(1e6) + T2Str(true) + T2Str(false) + T2Str(-12LL), "0.11e+0610-12");
}

// Any text is read as a stream of the classic locale reads it.
TEST(TextConversion, FollowsTheStreams) {
  std::mt19937 random(1);
  const std::string_view alphabet = "00123456789..eE+-+- \n\vx,";
  for (int i = 0; i < 60000; ++i) {
    std::string text(random() % 14, ' ');
    for (char& c : text) c = alphabet[random() % alphabet.size()];
    if (i % 4 == 0) text += "e" + std::to_string(static_cast<int>(random() % 800) - 400);
    if (i % 64 == 0) text.insert(0, 300, i % 128 == 0 ? '0' : '9');
    if (i % 64 == 1) text.insert(0, "." + std::string(320, '0'));
    ASSERT_EQ(ByStr2T(text, -5.0), ByStream(text, -5.0)) << text;
    ASSERT_EQ(ByStr2T(text, -5), ByStream(text, -5)) << text;
    ASSERT_EQ(ByStr2T(text, -5LL), ByStream(text, -5LL)) << text;
    ASSERT_EQ(ByStr2T(text, true), ByStream(text, true)) << text;
  }
}

TEST(TextConversion, NoLocaleChangesIt) {
  nqtest::InEachCommaLocale([] {
    EXPECT_EQ(T2Str(1234.5) + T2Str(-12345LL), "1234.5-12345");
    EXPECT_EQ(ByStr2T("0.5", 0.0) + ByStr2T("1.234.5", 0.0), "0.5 1.234 ");
    EXPECT_EQ(ByStr2T("1.234", 0LL), "1 ");
  });
  for (const bool inGlobal : {false, true}) {
    const nqtest::CommaLocale locale(inGlobal, !inGlobal);
    EXPECT_EQ(ByStr2T("0,5", 0.0) + ByStr2T("1,2.5", 0.0) + ByStr2T("1.2,5", 0.0), "0.5 1.2 1.2 ");
  }
  EXPECT_EQ(ByStr2T("0,5", 1.0), "0 ") << "no comma locale";
}
