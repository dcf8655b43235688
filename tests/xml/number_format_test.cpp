#include <nqcommon/xml/number_format.h>

#include <cstdio>
#include <random>

#include "support/comma_locale.h"
#include "support/testing.h"

using namespace NQXML_940;
using nqtest::kInf;

// The number and its neighbours, with both signs, as printf has them in its C locale.
static void ExpectAsPrintf(double value) {
  for (const double towards : {0.0, value, kInf}) {
    for (const double sign : {1.0, -1.0}) {
      const double x = std::copysign(std::nextafter(value, towards), sign);
      char text[64];
      std::snprintf(text, sizeof text, "%.15g", x);
      ASSERT_EQ(ReplaceSep(x), text) << std::hexfloat << x;
    }
  }
}

TEST(NumberFormat, AsPrintf) {
  for (const double edge : {0.0, kInf, nqtest::kNaN}) ExpectAsPrintf(edge);
  for (int power = -1074; power < 1024; ++power) ExpectAsPrintf(std::ldexp(1, power));
  for (int power = -323; power <= 308; ++power) {
    for (const char* digits : {"1", "2.5", "9.99999999999999", "9.999999999999995"})
      ExpectAsPrintf(std::strtod((digits + ("e" + std::to_string(power))).c_str(), nullptr));
  }
  std::mt19937_64 random(1);
  for (int i = 0; i < 100000; ++i) {
    ExpectAsPrintf(std::bit_cast<double>(random()));
    ExpectAsPrintf(static_cast<double>(random() % 1000000) * 1e-9);
    // halves between two texts, which go to the even one
    ExpectAsPrintf(100000000000000.5 + static_cast<double>(random() % 800000000000000));
    ExpectAsPrintf(10000000000000.25 + static_cast<double>(random() % 80000000000000) / 2);
  }
}

TEST(NumberFormat, CallersFormatIsOneConversionOfADouble) {
  const std::pair<const char*, std::string> rows[] = {
#include "xml/format_cases.inc"
      {"%600.1f", std::string(596, ' ') + "15.0"},
  };
  for (const auto& [format, text] : rows) EXPECT_EQ(Format(15, true, format), text) << format;
}

TEST(NumberFormat, OnlyACallersFormatFollowsTheLocale) {
  EXPECT_EQ(GetDecimalCharacter() + Format(0.1, true, nullptr), ".0.1");
  const nqtest::CommaCLocale locale;
  EXPECT_EQ(GetDecimalCharacter() + Format(0.1, true, nullptr), ",0,1");
  EXPECT_EQ(GetListSeparator() + GetDefaultNumericFormat(), ";%.15g");
  EXPECT_EQ(Format(1234567.5, true, "%'.1f"), "1.234.567,5");
  for (const auto& text : {ReplaceSep(1234567.5, nullptr), Format(1234567.5, false, "%f")})
    EXPECT_EQ(text, "1234567.5");
  EXPECT_EQ(Format(-1234567L) + Format(1234567890123456789L), "-12345671.23456789012346e+18");
}
