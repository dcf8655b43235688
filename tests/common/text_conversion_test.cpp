#include <nqcommon/common/text_conversion.h>

#include <gtest/gtest.h>

#include <sstream>

#include "support/comma_locale.h"

using namespace NQCommon_940;

template <typename T>
static T Read(const std::string& text, T before) {
  Str2T(text, before);
  return before;
}

// The text read as each type.
static std::string Numbers(const std::string& text) {
  std::ostringstream numbers;
  numbers.precision(17);
  numbers << Read(text, -5.0) << ' ' << Read(text, -5LL) << ' ' << Read(text, true);
  return numbers.str();
}

TEST(TextConversion, FollowsTheStreams) {
  const char* const rows[][2] = {
#include "golden/common_text_conversion.inc"
  };
  for (const auto& [text, want] : rows) EXPECT_EQ(Numbers(text), want) << text;
  EXPECT_EQ(T2Str(0.1) + T2Str(1e6) + T2Str(true) + T2Str(false) + T2Str(-12LL), "0.11e+0610-12");
}

TEST(TextConversion, RepairsTheFirstSeparatorOnly) {
  for (const bool grouped : {false, true}) {
    const nqtest::CommaLocale locale(grouped);
    EXPECT_EQ(T2Str(1234.5), grouped ? "1.234.5" : "1234.5");
    EXPECT_EQ(Read("1234.5", 0.0), 1234.5);
    EXPECT_EQ(Read("1.234.5", 0.0), 1.234);
  }
}
