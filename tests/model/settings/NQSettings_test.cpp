#include <nqcommon/model/settings/NQNumValue.h>
#include <nqcommon/model/settings/NQSettingListValue.h>
#include <nqcommon/model/settings/NQSettings.h>
#include <nqcommon/model/settings/NQStrValue.h>
#include <nqcommon/model/settings/NQVecValue.h>

#include <climits>
#include <random>

#include "support/safe_depth.h"
#include "support/testing.h"

namespace NQXML_940 {
namespace {

using namespace nqtest;
using Pairs = std::vector<std::pair<std::string, std::string>>;

NQSettings Holding(const std::string& name, double x) {
  NQSettings settings;
  settings.AddSetting(name, x, false);
  return settings;
}

// A value of no class of the library, which says that it is a list of integers.
struct Foreign : INQSettingValue {
  Foreign* Clone() const override { return new Foreign(*this); }
  bool operator==(const INQSettingValue&) const override { return false; }
  bool operator<(const INQSettingValue&) const override { return false; }
  int GetType() const override { return kList; }
  int GetSubType() const override { return 1; }
  void Display() const override { NQDisplay_940::DisplayText(1, "foreign"); }
};

// ---- Sequence and index -------------------------------------------------------------------------

const Texts kNames = {"", "a", "A", "b", "ab"};

// The plain model of a collection: its names and values in order.
struct Model : std::vector<std::pair<std::string, double>> {
  auto Find(const std::string& name) const {
    return std::find_if(begin(), end(), [&](const auto& s) { return s.first == name; });
  }
  bool Remove(const std::string& name, bool all) {
    if (!all && Find(name) != end()) return erase(Find(name)), true;
    return std::erase_if(*this, [&](const auto& s) { return s.first == name; }) > 0;
  }
};

void ExpectSame(const NQSettings& settings, const Model& model) {
  ASSERT_EQ(settings.Size(), model.size());
  Texts names{"before"};
  settings.GetSettingNames(names);
  for (std::size_t i = 0; i < model.size(); ++i) {
    ASSERT_EQ(names[i + 1], model[i].first);
    ASSERT_EQ(settings.GetSettingAt(i)->GetValue()->GetDouble(), model[i].second);
  }
  for (const std::string& name : kNames) {
    double got = -1;
    const auto want = model.Find(name);
    ASSERT_EQ(settings.GetSettingValByName(name, got), want != model.end());
    ASSERT_EQ(got, want != model.end() ? want->second : -1);
  }
}

TEST(NQSettings, SequenceAndIndexStayConsistent) {
  std::mt19937 random(20240607);
  NQSettings settings;
  Model model;
  for (int step = 0; step < 20000 && !HasFatalFailure(); ++step) {
    // Often the very text inside a setting that the operation removes.
    const std::string& name = !model.empty() && random() % 2 == 0
                                  ? settings.GetSettingAt(random() % model.size())->GetName()
                                  : kNames[random() % kNames.size()];
    const std::string key = name;
    const bool all = random() % 4 == 0;
    const auto operation = random() % 8;
    if (operation == 0) {
      ASSERT_EQ(settings.RemoveSetting(name, all), model.Remove(key, all));
    } else if (operation == 1) {
      NQSettings copy(settings = *&settings);
      ExpectSame(settings = std::move(copy), model);
      ExpectSame(copy, {});
    } else {
      settings.AddSetting(name, step, operation == 2);
      if (operation == 2) model.Remove(key, true);
      model.emplace_back(key, step);
    }
    ExpectSame(settings, model);
  }
}

// Where one operation is linear in the size this takes minutes.
TEST(NQSettings, ReplacingAndRemovingAreLogarithmic) {
  NQSettings settings;
  for (int i = 0; i < 300000; ++i) settings.AddSetting(std::to_string(i % 100000), i, true);
  for (int i = 0; i < 100000; i += 2) settings.RemoveSetting(std::to_string(i), false);
  EXPECT_EQ(settings.Size(), 50000u);
  EXPECT_EQ(settings.GetSettingAt(49999)->GetName(), "99999");
}

// ---- Nesting ------------------------------------------------------------------------------------

// Collections and lists of one collection in turn.
NQSettings Nested(int levels, double innermost) {
  NQSettings settings = Holding("x", innermost);
  for (int i = 0; i < levels; ++i) {
    NQSettings outer;
    if (i % 2 == 0) {
      outer.AddNewSetting("one", std::move(settings), "");
    } else {
      std::vector<NQSettings> list(1);
      list[0] = std::move(settings);
      outer.AddNewSetting("list", std::move(list), "");
    }
    settings = std::move(outer);
  }
  return settings;
}

TEST(NQSettings, NestToTheSafeDepth) {
  const NQSettings one = Nested(kSafeDepth, 1), two = Nested(kSafeDepth, 2);
  EXPECT_EQ(NQSettings(one).Compare(one), 0);
  EXPECT_EQ(one.Compare(two), -1);
  EXPECT_TRUE(*one.GetSettingAt(0) < *two.GetSettingAt(0));
  std::ostream nowhere(nullptr), &before = NQDisplay_940::GetOutStream();
  NQDisplay_940::SetOutStream(nowhere);
  two.Display();
  NQDisplay_940::SetOutStream(before);
  EXPECT_TRUE(
      Displayed(Nested(200, 7)).ends_with(std::string(600, ' ') + "x = 7\nNQSettings display end"));
}

TEST(NQSettings, HoldThemselvesByCopy) {
  NQSettings settings = Holding("x", 1);
  settings.AddNewSetting("self", settings, "tag");
  settings.AddNewSetting("self again", settings, "");
  NQSetting* again = settings.FindSetting("self again");
  again->SetValue(dynamic_cast<NQSettingListValue&>(*again->GetValue()).GetListValue());
  EXPECT_TRUE(settings.GetSettingValByName("self again", settings));  // a part replaces the whole
  EXPECT_EQ(settings.Size(), 2u);
  *settings.GetSettingAt(1) = *&*settings.GetSettingAt(1);
  EXPECT_EQ(settings.GetSettingAt(1)->GetType(), "tag");
  EXPECT_EACH(true, settings.GetSettingAt(1)->HasChild(), !settings.GetSettingAt(0)->HasChild(),
              !settings.GetSettingAt(1)->IsList(), NQSetting("", Ints{1}).IsList());
  EXPECT_TRUE(settings.GetSettingValByName("self", settings));
  EXPECT_EQ(Displayed(settings), Displayed(Holding("x", 1)));
  EXPECT_FALSE(settings.GetSettingValByName("x", settings));  // a number is no collection
}

TEST(NQSettings, CompareByValuesAlone) {
  const auto order = [](const NQSettings& a, const NQSettings& b) {
    EXPECT_EQ(b.Compare(a), -a.Compare(b));
    return a.Compare(b);
  };
  NQSettings longer = Holding("a", 1);
  longer.AddSetting("b", -9, false);
  EXPECT_EQ(order(Holding("a", 1), Holding("b", 1)), 0);
  EXPECT_EQ(order(Holding("a", 1), longer), -1);
  EXPECT_EQ(order(Holding("a", 2), longer), 1);
  EXPECT_EQ(order(Holding("a", kNaN), Holding("a", 1)), 0);
  EXPECT_EQ(order(Nested(1, 5), Nested(2, 5)), 1);  // a nested collection against a list
  NQSetting tagged = *longer.GetSettingAt(0);
  EXPECT_TRUE(tagged == *longer.GetSettingAt(0));
  tagged.SetType("t");
  EXPECT_FALSE(tagged == *longer.GetSettingAt(0) || tagged < *longer.GetSettingAt(0));
}

// ---- Arrays, getters, conversions ---------------------------------------------------------------

TEST(NQSettings, ArraysMayHoldNulls) {
  NQSettings settings, inner = Holding("x", 1);
  char text[] = "text";
  char* texts[] = {text, nullptr};
  NQSettings* lists[] = {nullptr, &inner};
  EXPECT_EACH(true, settings.AddNewSetting("texts", texts, 2, "t"),
              settings.AddNewSetting("lists", lists, 2, ""));
  EXPECT_EACH(false, settings.AddNewSetting("none", texts, 0, "t"),
              settings.AddNewSetting("none", lists, -1, "t"),
              settings.AddNewSetting("none", static_cast<char**>(nullptr), 2, "t"));
  EXPECT_EQ(Displayed(settings),
            "\nNQSettings display start\ntexts (t) (size = 2)\n  \"text\" \"\"\nlists (size = 2)"
            "\n  [0] (number of settings = 0)\n  [1] (number of settings = 1)\n    x = 1"
            "\nNQSettings display end");
  for (int k = 0; k < 2; ++k) {  // new ones replace nothing
    EXPECT_EACH(true, inner.AddNewSetting("x", 1.0, ""), inner.AddNewSetting("x", "", ""),
                inner.AddNewSetting("x", settings, ""), inner.AddNewSetting("x", NQSettings(), ""),
                inner.AddNewSetting("x", texts, 1, ""), inner.AddNewSetting("x", lists, 1, ""),
                inner.AddNewSetting("x", Ints{1}, ""));
  }
  EXPECT_EQ(inner.Size(), 15u);
}

// What the getters give from a value into a list that holds 7.
template <class Out, class In>
std::string Got(const In& value) {
  NQSettings settings = Holding("a", 0);
  settings.GetSettingAt(0)->SetValue(value);
  std::vector<Out> out(1);
  NQSettings::MapVecValue(NQSetting("", std::vector<int>{7}).GetValue(), out);
  const bool got = settings.GetSettingValByName("a", out);
  return (got ? "true " : "false ") + ::testing::PrintToString(out);
}

TEST(NQSettings, MapVecValue) {
  const NQVecValue<int> ints({3, -1, 2});
  const NQVecValue<double> reals({2.9, -2.9, 2147483648.0, kNaN, kMissing});
  const NQVecValue<std::string> texts({"1", "2x", " 3.75"}), bad({"1", "abc"}), none;
  const NQVecValue<Pairs::value_type> pairs({{"b", "1"}, {"a", "2"}});

  EXPECT_EQ(Got<int>(ints), "true { 3, -1, 2 }");
  EXPECT_EQ(Got<double>(ints), "true { 3, -1, 2 }");
  EXPECT_EQ(Got<std::string>(ints), "true { \"3\", \"-1\", \"2\" }");
  EXPECT_EQ(Got<int>(reals), "true { 2, -2, -2147483648, -2147483648, -2147483648 }");
  EXPECT_EQ(Got<std::string>(NQVecValue<double>({0.1, 1e6})), "true { \"0.1\", \"1e+06\" }");
  EXPECT_EQ(Got<int>(texts), "true { 1, 2, 3 }");
  EXPECT_EQ(Got<double>(texts), "true { 1, 2, 3.75 }");
  EXPECT_EQ(Got<int>(bad) + Got<int>(none) + Got<double>(bad), "false {}false {}false {}");
  EXPECT_EQ(Got<std::string>(none), "true {}");
  EXPECT_EQ(Got<Pairs::value_type>(pairs), "true { (\"b\", \"1\"), (\"a\", \"2\") }");
  EXPECT_EQ(Got<Pairs::value_type>(ints), "true { (\"\", \"\") }");
  EXPECT_EQ(Got<std::string>(pairs), "true { \"7\" }");
  EXPECT_EQ(Got<int>(5.0) + Got<int>(Foreign()), "true { 7 }true { 7 }");
  std::vector<int> out;
  EXPECT_FALSE(NQSettings::MapVecValue(nullptr, out));
}

template <class T>
std::string Fitted(const NQSettings& settings, const std::string& name, T out) {
  const bool fits = settings.GetSettingValIfFits(name, out);
  return (fits ? "fits " : "no ") + ::testing::PrintToString(out);
}

TEST(NQSettings, ValuesOfTheTypeAskedFor) {
  NQSettings s = Holding("one", 1);
  s.AddSetting("half", 0.5, false);
  s.AddSetting("big", 0x1p31, false);
  s.AddSetting("missing", kMissing, false);
  s.AddSetting("true", "true", false);
  s.AddSetting("digits", "12", false);
  s.AddNewSetting("list", std::vector<int>{1}, "");
  EXPECT_EQ(Fitted(s, "one", 7), "fits 1");
  EXPECT_EQ(Fitted(s, "half", 7), "no 7");
  EXPECT_EQ(Fitted(s, "big", 7), "no 7");
  EXPECT_EQ(Fitted(s, "big", 7L), "fits 2147483648");
  EXPECT_EQ(Fitted(s, "missing", 7LL), "no 7");
  EXPECT_EQ(Fitted(s, "digits", 7), "no 7");
  EXPECT_EQ(Fitted(s, "half", 7.0), "fits 0.5");
  EXPECT_EQ(Fitted(s, "list", 7.0), "no 7");
  EXPECT_EQ(Fitted(s, "true", false), "fits true");
  EXPECT_EQ(Fitted(s, "digits", false), "no false");
  EXPECT_EQ(Fitted(s, "one", false), "no false");
  EXPECT_EQ(Fitted(s, "digits", std::string()), "fits \"12\"");
  EXPECT_EQ(Fitted(s, "one", std::string()), "no \"\"");
  EXPECT_EQ(Fitted(s, "list", Ints()), "fits { 1 }");
  EXPECT_EQ(Fitted(s, "list", Doubles()), "no {}");
  EXPECT_EQ(Fitted(s, "none", 7), "no 7");
  long number = 0;
  EXPECT_TRUE(s.GetSettingValByName("big", number));
  EXPECT_EQ(number, 1L << 31);
}

// The output of the getter for an absent name.
template <class T>
T Absent(T out) {
  EXPECT_FALSE(NQSettings().GetSettingValByName("A", out));
  return out;
}

TEST(NQSettings, FailuresLeaveOutputsUntouched) {
  EXPECT_EACH(true, Absent(7) == 7, Absent(7L) == 7, Absent(7LL) == 7, Absent(7.0) == 7,
              Absent(true), Absent(std::string("7")) == "7", Absent(Ints{7}) == Ints{7},
              Absent(Holding("a", 1)) == Holding("a", 1));
  int i = 7;
  double d = 7;
  EXPECT_EACH(false, NQSettings::Str2Int("x1", &i), NQSettings::Str2Int("-2147483649", &i),
              NQSettings::Str2Int("", &i), NQSettings::Str2Double(" ", &d),
              NQSettings::Str2Double("1e999", &d), NQSettings::Str2Int("1", nullptr));
  EXPECT_EQ(i, d);
}

TEST(NQSettings, RenamedOnesAreFoundByTheOldNameUntilCopied) {
  NQSettings settings = Holding("old", 1);
  settings.GetSettingByName("old")->SetName("new");
  EXPECT_TRUE(settings.FindSetting("old"));
  EXPECT_TRUE(NQSettings(settings).FindSetting("new"));
}

TEST(NQSettings, DisplaysTheTree) {
  NQSettings settings = Holding("alpha", kMissing);
  settings.AddNewSetting("method", "step\nwise", "enum");
  settings.AddNewSetting("roles", Pairs{{"a", "in"}}, "");
  settings.AddNewSetting("low", std::vector<std::pair<std::string, double>>{{"a", 0.5}}, "");
  NQSettings outer = Holding("big", 0);
  outer.GetSettingAt(0)->SetValue(NQNumValue(LLONG_MIN));
  outer.AddNewSetting("criteria", settings, "tag");
  outer.AddNewSetting("other", 0.0, "");
  outer.GetSettingAt(2)->SetValue(Foreign());
  EXPECT_EQ(Displayed(outer),
            "\nNQSettings display start\nbig = -9223372036854775808"
            "\ncriteria (tag) (number of settings = 4)\n  alpha = miss\n  method (enum) = \"step"
            "\n  wise\"\n  roles (size = 1)\n    \"a\" = \"in\"\n  low (size = 1)\n    \"a\" = 0.5"
            "\nother\n  foreign\nNQSettings display end");
  EXPECT_EQ(Displayed(*settings.GetSettingAt(0)), "\nalpha = miss");
  EXPECT_EQ(Displayed(*outer.GetSettingAt(0)->GetValue()), "\nNQNumValue = -9223372036854775808");
  NQVecValue<int> ints({7});
  ints.GetVecValue().push_back(8);
  EXPECT_EQ(Displayed(ints) + Displayed(NQStrValue("s")) + Displayed(NQNumValue(7)),
            "\nNQVecValue (size = 2)\n  7 8\nNQStrValue = \"s\"\nNQNumValue = 7");
  EXPECT_EQ(Displayed(NQVecValue<std::pair<std::string, int>>({{"a", 7}})),
            "\nNQVecValue (size = 1)\n  \"a\" = 7");
  EXPECT_EQ(Displayed(NQSettingListValue(Holding("x", 1))),
            "\nNQSettingListValue (number of settings = 1)\n  x = 1");
  outer.Clear();
  EXPECT_EQ(outer.Size(), 0u);
}

}  // namespace
}  // namespace NQXML_940
