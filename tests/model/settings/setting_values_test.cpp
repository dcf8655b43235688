// The values of settings: conversions and order.
#include <nqcommon/model/settings/NQNumValue.h>
#include <nqcommon/model/settings/NQSettingListValue.h>
#include <nqcommon/model/settings/NQStrValue.h>
#include <nqcommon/model/settings/NQVecValue.h>

#include <variant>

#include "support/comma_locale.h"
#include "support/testing.h"

namespace NQXML_940 {
namespace {

using namespace nqtest;
using Given = std::variant<int, double, long long, const char*>;

std::unique_ptr<INQSettingValue> ValueOf(const Given& given) {
  const auto make = [](auto x) -> std::unique_ptr<INQSettingValue> {
    if constexpr (std::is_same_v<decltype(x), const char*>)
      return std::make_unique<NQStrValue>(x);
    else
      return std::make_unique<NQNumValue>(x);
  };
  return std::visit(make, given);
}

NQSettings Holding(double x) {
  NQSettings settings;
  settings.AddSetting("x", x, false);
  return settings;
}

std::string Conversions(const INQSettingValue& value) {
  std::ostringstream text;
  text.imbue(std::locale::classic());
  text.precision(17);
  text << value.GetInt() << ' ' << value.GetLongLong() << ' ' << value.GetDouble() << ' '
       << (value.GetBool() ? "true " : "false ") << value.GetString();
  return text.str();
}

TEST(SettingValues, Convert) {
  const std::pair<Given, std::string> rows[] = {
#include "model/settings/conversion_cases.inc"
  };
  for (const auto& [given, want] : rows) EXPECT_EQ(Conversions(*ValueOf(given)), want);
  EXPECT_EQ(Conversions(NQNumValue()), "-2147483648 -2147483648 -nan false -nan");
  EXPECT_EQ(NQNumValue(std::size_t{4294967298}).GetString(), "4294967298");
  EXPECT_FALSE(NQStrValue(std::string("true\0", 5)).GetBool());
  const std::string none = "-2147483648 -9223372036854775808 2.2250738585072014e-308 true ";
  EXPECT_EQ(Conversions(NQSettingListValue(Holding(1))), none);
  EXPECT_EQ(Conversions(NQVecValue<int>({1})), none);
  for (const double x : {NQNumValue().GetDouble(), NQStrValue().GetDouble()})
    EXPECT_EQ(std::bit_cast<std::uint64_t>(x), 0xFFFFFFFFFFEFFFFF);
}

TEST(SettingValues, NoLocaleChangesNumbers) {
  InEachCommaLocale([] {
    EXPECT_EQ(Conversions(NQNumValue(1234.5)), "1234 1234 1234.5 true 1234.5");
    EXPECT_EQ(Conversions(NQNumValue(1234567)), "1234567 1234567 1234567 true 1234567");
    EXPECT_EQ(Conversions(NQStrValue("1234.5x")), "1234 1234 1234.5 false 1234.5x");
  });
  const CommaLocale locale;
  EXPECT_EQ(NQStrValue("0,5").GetDouble(), 0.5) << "the decimal character of the locale";
}

// Those of "=", "<" and ">" that hold.
std::string Relations(const INQSettingValue& a, const INQSettingValue& b) {
  EXPECT_EQ(a == b, b == a);
  return std::string(a == b ? "=" : "") + (a < b ? "<" : "") + (b < a ? ">" : "");
}

TEST(SettingValues, EqualityAndOrder) {
  using Integers = NQVecValue<int>;
  using Reals = NQVecValue<double>;
  using Lists = NQVecValue<NQSettings>;
  using Nested = NQSettingListValue;
  const std::tuple<Given, Given, const char*> rows[] = {
#include "model/settings/relation_cases.inc"
  };
  for (const auto& [a, b, want] : rows)
    EXPECT_EQ(Relations(*ValueOf(a), *ValueOf(b)), want) << ValueOf(a)->GetString();
  EXPECT_EQ(Relations(NQStrValue("z"), Integers()), "<");
  EXPECT_EQ(Relations(Integers({9}), Nested()), "<");
  EXPECT_EQ(Relations(Integers({1, 2}), Integers({1, 2, 0})), "<");
  EXPECT_EQ(Relations(Integers({1, 2}), Integers({1, 2})), "=");
  EXPECT_EQ(Relations(Reals({1.0}), Reals({1 + 0x1p-52})), "<");
  EXPECT_EQ(Relations(Lists({Holding(1), Holding(2)}), Lists({Holding(1), Holding(3)})), "<");
  EXPECT_EQ(Relations(Lists({Holding(1)}), Lists({Holding(1), {}})), "<");
  EXPECT_EQ(Relations(Lists({Holding(1)}), Lists({Holding(1)})), "=");
  EXPECT_EQ(Relations(Nested(Holding(1)), Nested(Holding(2))), "<");
  EXPECT_EQ(Relations(Nested(Holding(1)), Nested(Holding(1))), "=");
  EXPECT_EQ(Relations(Integers(), Lists()).size(), 1u);  // one is less
  EXPECT_FALSE(Integers() == Lists());
}

}  // namespace
}  // namespace NQXML_940
