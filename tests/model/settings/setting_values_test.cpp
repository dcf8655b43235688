#include <gtest/gtest.h>

#include <bit>
#include <climits>
#include <cstdint>
#include <sstream>

#include <nqcommon/model/settings/NQNumValue.h>
#include <nqcommon/model/settings/NQSettingListValue.h>
#include <nqcommon/model/settings/NQStrValue.h>
#include <nqcommon/model/settings/NQVecValue.h>

#include "support/comma_locale.h"
#include "support/special_values.h"

namespace NQXML_940 {
namespace {

using nqtest::kInf;
using nqtest::kMissing;
using nqtest::kNaN;
using Num = NQNumValue;
using Str = NQStrValue;

NQSettings Holding(double x) {
  NQSettings settings;
  settings.AddSetting("x", x, false);
  return settings;
}

// The value as int, 64-bit integer, double, bool and text.
std::string Conversions(const INQSettingValue& value) {
  std::ostringstream text;
  text.imbue(std::locale::classic());
  text.precision(17);
  text << value.GetInt() << ' ' << value.GetLongLong() << ' ' << value.GetDouble() << ' '
       << (value.GetBool() ? "true " : "false ") << value.GetString();
  return text.str();
}

TEST(SettingValues, Convert) {
  EXPECT_EQ(Conversions(Num()), "-2147483648 -2147483648 -nan false -nan");
  EXPECT_EQ(Conversions(Num(-7)), "-7 -7 -7 false -7");
  EXPECT_EQ(Conversions(Num(-2.75)), "-2 -2 -2.75 false -2.75");
  EXPECT_EQ(Conversions(Num(0.5)), "0 0 0.5 true 0.5");
  EXPECT_EQ(Conversions(Num(2147483647.5)), "2147483647 2147483647 2147483647.5 true 2.14748e+09");
  EXPECT_EQ(Conversions(Num(2147483648.0)), "-2147483648 2147483648 2147483648 true 2.14748e+09");
  EXPECT_EQ(Conversions(Num(0x1p63 - 1024)),
            "-2147483648 9223372036854774784 9.2233720368547748e+18 true 9.22337e+18");
  EXPECT_EQ(Conversions(Num(0x1p63)),
            "-2147483648 -9223372036854775808 9.2233720368547758e+18 true 9.22337e+18");
  EXPECT_EQ(Conversions(Num(kInf)), "-2147483648 -9223372036854775808 inf true inf");
  EXPECT_EQ(Conversions(Num(-kInf)), "-2147483648 -9223372036854775808 -inf false -inf");
  EXPECT_EQ(Conversions(Num(kNaN)), "-2147483648 -9223372036854775808 nan false nan");
  EXPECT_EQ(Conversions(Num(std::size_t{4294967298})), Conversions(Num(4294967298L)));
  EXPECT_EQ(Conversions(Num(4294967298L)), "2 4294967298 4294967298 true 4294967298");
  EXPECT_EQ(Conversions(Num(-4294967298LL)), "-2 -4294967298 -4294967298 false -4294967298");

  EXPECT_EQ(Conversions(Str("")), "0 0 -nan false ");
  EXPECT_EQ(Conversions(Str("\t-12.75x")), "-12 -12 -12.75 false \t-12.75x");
  EXPECT_EQ(Conversions(Str("- 5")), "0 0 0 false - 5");
  EXPECT_EQ(Conversions(Str("2147483648")), "2147483647 2147483648 2147483648 false 2147483648");
  EXPECT_EQ(Conversions(Str("-2e9")), "-2 -2 -2000000000 false -2e9");
  EXPECT_EQ(Conversions(Str("99999999999999999999")),
            "2147483647 9223372036854775807 1e+20 false 99999999999999999999");
  EXPECT_EQ(Conversions(Str("-99999999999999999999")),
            "-2147483648 -9223372036854775808 -1e+20 false -99999999999999999999");
  EXPECT_EQ(Conversions(Str("true")), "0 0 0 true true");
  EXPECT_EQ(Conversions(Str("True")), "0 0 0 false True");
  EXPECT_FALSE(Str(std::string("true\0", 5)).GetBool());

  const std::string none = "-2147483648 -9223372036854775808 2.2250738585072014e-308 true ";
  EXPECT_EQ(Conversions(NQSettingListValue(Holding(1))), none);
  EXPECT_EQ(Conversions(NQVecValue<int>({1})), none);

  for (const double x : {Num().GetDouble(), Str().GetDouble()})
    EXPECT_EQ(std::bit_cast<std::uint64_t>(x), 0xFFFFFFFFFFEFFFFF);
}

TEST(SettingValues, NoLocaleChangesNumbers) {
  nqtest::InEachCommaLocale([] {
    EXPECT_EQ(Conversions(Num(1234.5)), "1234 1234 1234.5 true 1234.5");
    EXPECT_EQ(Conversions(Num(1234567)), "1234567 1234567 1234567 true 1234567");
    EXPECT_EQ(Conversions(Str("1234.5x")), "1234 1234 1234.5 false 1234.5x");
    double number = 0;
    EXPECT_TRUE(NQSettings::Str2Double("1234.5x", &number));
    EXPECT_EQ(number, 1234.5);
    int integer = 0;
    EXPECT_TRUE(NQSettings::Str2Int("1234567", &integer));
    EXPECT_EQ(integer, 1234567);
  });
  const nqtest::CommaLocale locale;
  EXPECT_EQ(Str("0,5").GetDouble(), 0.5) << "the decimal character of the locale";
}

// Those of "=", "<" and ">" that hold.
std::string Relations(const INQSettingValue& a, const INQSettingValue& b) {
  EXPECT_EQ(a == b, b == a);
  return std::string(a == b ? "=" : "") + (a < b ? "<" : "") + (b < a ? ">" : "");
}

TEST(SettingValues, EqualityAndOrder) {
  using Ints = NQVecValue<int>;
  using Reals = NQVecValue<double>;
  using Lists = NQVecValue<NQSettings>;
  const double eps = 0x1p-52;

  EXPECT_EQ(Relations(Num(0.0), Num(-0.0)), "=");
  EXPECT_EQ(Relations(Num(1.0), Num(1 + eps)), "=<");
  EXPECT_EQ(Relations(Num(1.0), Num(1 + 2 * eps)), "<");
  EXPECT_EQ(Relations(Num(1e-310), Num(1e-310)), "");
  EXPECT_EQ(Relations(Num(kInf), Num(kInf)), "");
  EXPECT_EQ(Relations(Num(kNaN), Num(1.0)), "");
  EXPECT_EQ(Relations(Num(kMissing), Num(kMissing)), "=");
  EXPECT_EQ(Relations(Num(4294967297LL), Num(1LL)), ">");
  EXPECT_EQ(Relations(Num(4294967297LL), Num(1)), "=");  // different kinds: the 32-bit fields
  EXPECT_EQ(Relations(Num(2.75), Num(2)), "=");
  EXPECT_EQ(Relations(Num(3e9), Num(0)) + Relations(Num(0), Num(1.0)), "<<");
  EXPECT_EQ(Relations(Num(1.0), Num(3e9)), "<");  // closes the cycle
  EXPECT_EQ(Relations(Str("10"), Str("2")), "<");
  EXPECT_EQ(Relations(Str("a"), Str("a")), "=");
  EXPECT_EQ(Relations(Num(9.0), Str("1")) + Relations(Str("z"), Ints()), "<<");
  EXPECT_EQ(Relations(Ints({9}), NQSettingListValue()), "<");
  EXPECT_EQ(Relations(Ints({1, 2}), Ints({1, 2, 0})), "<");
  EXPECT_EQ(Relations(Ints({1, 2}), Ints({1, 2})), "=");
  EXPECT_EQ(Relations(Reals({1.0}), Reals({1 + eps})), "<");
  EXPECT_EQ(Relations(Lists({Holding(1), Holding(2)}), Lists({Holding(1), Holding(3)})), "<");
  EXPECT_EQ(Relations(Lists({Holding(1)}), Lists({Holding(1), {}})), "<");
  EXPECT_EQ(Relations(Lists({Holding(1)}), Lists({Holding(1)})), "=");
  EXPECT_EQ(Relations(NQSettingListValue(Holding(1)), NQSettingListValue(Holding(2))), "<");
  EXPECT_EQ(Relations(Ints(), Lists()).size(), 1u);  // one is less
  EXPECT_FALSE(Ints() == Lists());
}

}  // namespace
}  // namespace NQXML_940
