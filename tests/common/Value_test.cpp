#include <nqcommon/common/NQException.h>
#include <nqcommon/common/Value.h>

#include <memory>
#include <stdexcept>

#include "support/comma_locale.h"
#include "support/safe_depth.h"
#include "support/testing.h"

using namespace NQCommon_940;
using namespace nqtest;

static constexpr double kAboveMissing = -1.7976931348623155e308;

static Value ArrayOf(const std::vector<Value>& elements) {
  Value array;
  array.Resize(0);
  for (const Value& element : elements) array[static_cast<int>(array.Size())] = element;
  return array;
}

static Value MapOf(const std::map<std::string, Value>& entries) {
  Value map;
  for (const auto& [key, value] : entries) map[key] = value;
  return map;
}

// "missing" where the value is, and what the four getters give.
static std::string Getters(const Value& value) {
  std::ostringstream text;
  text << (value.IsMissing() ? "missing " : "") << value.GetBool() << ' ' << value.GetInteger();
  text << ' ' << value.GetReal() << ' ' << value.GetString();
  return text.str();
}

TEST(Value, GettersConvertFromEveryType) {
  const std::pair<Value, const char*> rows[] = {
#include "common/getter_cases.inc"
      {ArrayOf({}), "0 0 0 {}"},
      {ArrayOf({false}), "1 1 1 {0}"},
      {MapOf({{"x", 1}, {"a", true}}), "1 2 2 [a:1,x:1]"},
      {ArrayOf({MapOf({{"k", ArrayOf({})}}), Value(), 0.5}), "1 3 3 {[k:{}],,0.5}"},
  };
  for (const auto& [value, want] : rows) EXPECT_EQ(Getters(value), want);
  EXPECT_EACH(true, Value(1).IsNumericValue(), Value(kNaN).IsNumericValue());
  EXPECT_EACH(false, Value(kAboveMissing).IsMissing(), Value(true).IsNumericValue(),
              Value("1").IsNumericValue(), Value().IsNumericValue());
}

TEST(Value, TextIgnoresLocaleAndBaseButNotPrecision) {
  std::ostringstream stream;
  stream.precision(10);
  stream << std::hex << std::boolalpha << ArrayOf({255, true, 1.0 / 3});
  EXPECT_EQ(stream.str(), "{255,1,0.3333333333}");
  const CommaLocale locale;
  EXPECT_EQ(Value(ArrayOf({0.5, 1234})).GetString(), "{0.5,1234}");
}

static std::string Relations(const Value& a, const Value& b) {
  return std::string(a == b ? "== " : "") + (a != b ? "!= " : "") + (a < b ? "< " : "") +
         (a > b ? "> " : "") + (a <= b ? "<= " : "") + (a >= b ? ">= " : "");
}

TEST(Value, Comparison) {
  Value deep = 1;
  for (int level = 0; level < kSafeDepth; ++level) {
    Value outer;
    outer[0] = std::move(deep);
    deep = std::move(outer);
  }
  const struct {
    Value a, b;
    const char* want;
  } rows[] = {
#include "common/value_comparisons.inc"
      {ArrayOf({1, 2}), ArrayOf({1, 2, 0}), "!= < <= "},
      {ArrayOf({kMissing, 1}), ArrayOf({5.0, 2}), "!= < <= "},  // the second element decides
      {ArrayOf({false}), ArrayOf({true}), "!= < <= "},          // elements compare by <
      {MapOf({{"a", 2}}), MapOf({{"a", 1}, {"b", 0}}), "!= > >= "},
      {MapOf({{"a", 9}}), MapOf({{"b", 0}}), "!= < <= "},
      {MapOf({{"a", deep}}), MapOf({{"a", deep}}), "== <= >= "},  // in linear time
  };
  for (const auto& row : rows)
    EXPECT_EQ(Relations(row.a, row.b), row.want) << row.a << ", " << row.b;
  EXPECT_EACH(true, Value::IsZeroDiff(1, 1 - 0x1p-32 - 0x1p-52, 0x1p20),  // 2^-52 k is less
              Value::IsZeroDiff(-0.0, 0, 0));
  EXPECT_EACH(false, Value::IsZeroDiff(1, 1 - 0x1p-32 - 0x1p-51, 0x1p20),
              Value::IsZeroDiff(0, 1e-300, 1e300), Value::IsZeroDiff(1e-300, 0, 1e300));
}

static std::string Describe(const Value& value) {
  return std::to_string(value.GetType()) + " " + value.GetString();
}

// The type and text after the change, or the failure that left them as they were.
template <typename Change>
static std::string After(Value value, Change change) {
  const std::string before = Describe(value);
  std::string failure;
  try {
    change(value, std::as_const(value));
    return Describe(value);
  } catch (const NQException& e) {
    failure = std::to_string(e.GetCode()) + " " + e.GetMessage();
  } catch (const std::logic_error&) {  // out of range, length
    failure = "standard";
  }
  return Describe(value) == before ? failure : "changed by a failure";
}

#define AFTER(start, ...) \
  After(start, []([[maybe_unused]] Value& v, [[maybe_unused]] const Value& c) { __VA_ARGS__; })

static const Value kArray = ArrayOf({1, "a", MapOf({{"k", "b"}})});
static const Value kMap = MapOf({{"k", kArray}});

TEST(Value, StrictAccess) {
  const std::string wrongType = "13 Value type wrong!";
  EXPECT_EQ(AFTER(Value(), v = static_cast<bool>(c)), wrongType);
  EXPECT_EQ(AFTER(2.0, v = static_cast<long long>(c)), wrongType);
  EXPECT_EQ(AFTER(2, v = static_cast<double>(c)), wrongType);
  EXPECT_EQ(AFTER(true, v = static_cast<std::string>(c)), wrongType);
  EXPECT_EQ(AFTER(Value(), static_cast<bool&>(v) |= false, v = static_cast<bool>(c)), "1 0");
  EXPECT_EQ(AFTER(Value(), static_cast<long long&>(v) += 7, v = static_cast<long long>(c)), "2 7");
  EXPECT_EQ(AFTER(Value(), static_cast<double&>(v) += 0.5, v = static_cast<double>(c)), "3 0.5");
  EXPECT_EQ(AFTER(Value(), v = (static_cast<std::string&>(v) += "a")), "4 a");
  EXPECT_EQ(AFTER(2, static_cast<bool&>(v) = true), wrongType);
  EXPECT_EQ(AFTER(true, static_cast<long long&>(v) = 2), wrongType);
  EXPECT_EQ(AFTER("2", static_cast<double&>(v) = 2), wrongType);
  EXPECT_EQ(AFTER(kArray, static_cast<std::string&>(v) = "a"), wrongType);
  EXPECT_EQ(kArray.GetStringRef() + static_cast<std::string>(Value("a")), "a");
  EXPECT_EQ(AFTER(-7, int n = v; v = n + static_cast<int>(c)), "2 -14");
  EXPECT_EQ(AFTER(1LL << 31, v = static_cast<int>(v)), wrongType);
  EXPECT_EQ(AFTER(1, v = 7UL, v.SetValue(-8L)), "2 -8");
  EXPECT_EQ(Describe(~0ULL), "2 9223372036854775807");
}

TEST(Value, ArraysAndMaps) {
  const std::string noArray = "13 This value is not an array!";
  EXPECT_EQ(AFTER(kArray, v = c[1]), "4 a");
  EXPECT_EQ(AFTER(Value(), v = c[0]), noArray);
  EXPECT_EQ(AFTER(kArray, v = c[3]), "14 Out of this array bounds!");
  EXPECT_EQ(AFTER(kArray, v = c[-1]), "standard");
  EXPECT_EQ(AFTER(kArray, v[3]), "5 {1,a,[k:b],}");
  EXPECT_EQ(AFTER(Value(), v[1] = 2), "5 {,2}");
  EXPECT_EQ(AFTER(kArray, v[5] = v[0], v[4000] = v[2], v.Resize(6)), "5 {1,a,[k:b],,,1}");
  EXPECT_EQ(AFTER("a", v[0] = 2), noArray);
  EXPECT_EQ(AFTER(Value(), v[-1] = 2), "standard");
  EXPECT_EQ(AFTER(kArray, v.Resize(1), v.Resize(2)), "5 {1,}");
  EXPECT_EQ(AFTER(kMap, v.Resize(1)), noArray);
  EXPECT_EQ(AFTER(Value(), v.Resize(-1)), "standard");
  EXPECT_EQ(AFTER(kMap, v["\xC3"] = v["k"][0]), "6 [k:{1,a,[k:b]},\xC3:1]");
  EXPECT_EQ(AFTER(5, v["k"]), "6 [k:]");
  EXPECT_EQ(kMap.Names(), Texts{"k"});
  EXPECT_TRUE(kMap.Contains("k"));
  EXPECT_EACH(false, kMap.Contains("K"), kArray.Contains("k"));
  EXPECT_EQ(kArray.Size(), 3);
  EXPECT_EQ(Value("ab").Size(), 2);
  EXPECT_EQ(Value(2.5).Size(), -1);
}

// Blocks that stay are megabytes here; the sanitizers' allocator, which counts none, tells of each.
TEST(Value, Assignment) {
  EXPECT_EQ(AFTER(Value(), v.SetValue(1), v.SetValue(-2)), "2 -2");
  EXPECT_EQ(AFTER(kArray, v.SetValue("b")), "4 b");
  EXPECT_EQ(AFTER(ArrayOf({1, kArray}), v.ClearValue()), "5 {,{,,[k:]}}");
  EXPECT_EQ(AFTER(kArray, v = c), "5 {1,a,[k:b]}");
  EXPECT_EQ(AFTER(kArray, v = std::move(*&v)), "5 {1,a,[k:b]}");
  EXPECT_EQ(AFTER(kArray, v = v[2]["k"]), "4 b");
  EXPECT_EQ(AFTER(kArray, v = std::move(v[2])), "6 [k:b]");
  EXPECT_EQ(AFTER(kArray, v[0] = v), "5 {{1,a,[k:b]},a,[k:b]}");
  EXPECT_EQ(AFTER("ab", v.SetValue(v.GetStringRef().c_str() + 1)), "4 b");
  EXPECT_EQ(AFTER("ab", v[v.GetStringRef()] = 1), "6 [ab:1]");
  const std::unique_ptr<Value> clone(kArray.Clone());
  const Value moved = std::move(*clone);
  EXPECT_EQ(Describe(*clone) + Describe(moved), "0 5 {1,a,[k:b]}");
}
