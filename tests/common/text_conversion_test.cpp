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
  EXPECT_EQ(Numbers("12abc"), "12 12 1");
  EXPECT_EQ(Numbers(" \t3.5x"), "3.5 3 1");
  EXPECT_EQ(Numbers("+7"), "7 7 1");
  EXPECT_EQ(Numbers("0x10"), "0 0 0");
  EXPECT_EQ(Numbers("abc"), "0 0 0");
  EXPECT_EQ(Numbers("inf"), "0 0 0");
  EXPECT_EQ(Numbers("12e"), "0 12 1");
  EXPECT_EQ(Numbers("1e-400"), "0 1 1");
  EXPECT_EQ(Numbers("1e999"), "1.7976931348623157e+308 1 1");
  EXPECT_EQ(Numbers("-1.79769313486232e+308"), "-1.7976931348623157e+308 -1 1");
  EXPECT_EQ(Numbers("-9999999999999999999"), "-1e+19 -9223372036854775808 1");
  EXPECT_EQ(Numbers(""), "-5 -5 1");
  EXPECT_EQ(Numbers(" \n"), "-5 -5 1");
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
