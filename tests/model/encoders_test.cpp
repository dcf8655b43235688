// The encoders, their user-missing values and labels.
#include <nqcommon/model/NQCatNumEncoder.h>
#include <nqcommon/model/NQContEncoder.h>
#include <nqcommon/model/NQRoundEncoder.h>
#include <nqcommon/model/NQStringEncoder.h>

#include <climits>
#include <map>
#include <random>
#include <string>

#include "support/compare.h"
#include "support/displayed.h"
#include "support/each.h"
#include "support/special_values.h"

using namespace NQXML_940;
using namespace nqtest;
using Doubles = std::vector<double>;
using Texts = std::vector<std::string>;

// The codes of the values one after the other. EncodeConst must know what Encode knows, and add
// nothing.
template <class Encoder, class T>
static Doubles Codes(Encoder encoder, const std::vector<T>& values) {
  Doubles codes;
  for (const T& value : values) {
    const double before = encoder.EncodeConst(value);
    codes.push_back(encoder.Encode(value));
    EXPECT_TRUE(before == -1 || before == codes.back());
    EXPECT_EQ(encoder.EncodeConst(value), codes.back());
    EXPECT_EQ(encoder.IsMissing(value), codes.back() == -1);
  }
  return codes;
}

TEST(NQCatNumEncoder, CodesInOrderOfFirstAppearance) {
  const struct {
    const char* label;
    Doubles interval, declared, values, codes;
  } rows[] = {
      {"first appearance", {}, {}, {5, 3, 5, 7}, {0, 1, 0, 2}},
      {"zeros are one", {}, {}, {-0.0, 1, 0.0}, {0, 1, 0}},
      {"NaN is one", {}, {}, {1, kNaN, -kNaN, 1, kInf, -kInf}, {0, 1, 1, 0, 2, 3}},
      {"close is not equal", {}, {}, {1, 1 + 2.3e-16, 1}, {0, 1, 0}},
      {"system-missing", {}, {}, {kMissing, 1, kMax}, {-1, 0, 1}},
      {"closed interval", {90, 99}, {}, {90, 99, 89.5, 99.5, kNaN}, {-1, -1, 0, 1, 2}},
      {"NaN bound", {kNaN, 90}, {}, {95, 9}, {0, 1}},
      {"the last interval holds", {90, 99, 1, 1}, {}, {95, 1}, {0, -1}},
      {"both ways", {1, 2}, {2, 3}, {1, 2, 3, 4}, {-1, -1, -1, 0}},
      {"declared zero and NaN", {}, {-0.0, kNaN}, {0.0, kNaN, 1}, {-1, -1, 0}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.label);
    NQCatNumEncoder encoder;
    for (std::size_t i = 0; i < row.interval.size(); i += 2)
      encoder.SetMissingInterval(row.interval[i], row.interval[i + 1]);
    for (double value : row.declared) encoder.AddDiscreteUserMissing(value, "m");
    EXPECT_EQ(Codes(encoder, row.values), row.codes);
  }
}

TEST(NQCatNumEncoder, DecodedAndDeclaredLater) {
  NQCatNumEncoder encoder(Doubles{0.1, -3, kMissing, 0.1, 1e300});
  EXPECT_EQ(encoder.Decode(0) + "|" + encoder.Decode(1) + "|" + encoder.Decode(2), "0.1|-3|1e+300");
  for (int code : {-1, 3, INT_MIN, INT_MAX}) {
    EXPECT_EQ(std::pair(encoder.Decode(code), encoder.DecodeNum(code)),
              std::pair(std::string(), kMissing))
        << code;
  }
  encoder.AddDiscreteUserMissing(-3, "");
  EXPECT_EQ(encoder.Encode(-3), -1) << "missing although it has a code";
  EXPECT_EQ(encoder.DecodeNum(1), -3);
}

TEST(NQStringEncoder, CodesInOrderOfFirstAppearance) {
  NQStringEncoder encoder;
  encoder.AddDiscreteUserMissing("none", "not told");
  const std::string withNul("a\0b", 3);
  EXPECT_EQ(Codes(encoder, Texts{"b", "a", "b", "", "B", "none", "a ", withNul, "a", "None"}),
            (Doubles{0, 1, 0, 2, 3, -1, 4, 5, 1, 6}));
}

// Against an ordered map with NaN after all numbers: integers, powers of two, values that differ in
// their last bits, and enough of them for the index to grow many times.
TEST(CategoryIndex, IsAnOrderedMapOfExactKeys) {
  const auto less = [](double a, double b) { return std::isnan(b) ? !std::isnan(a) : a < b; };
  std::mt19937 random(7);
  std::map<double, double, decltype(less)> numbers(less);
  std::map<std::string, double> texts;
  NQCatNumEncoder numeric;
  NQStringEncoder string;
  for (int i = 0; i < 300000; ++i) {
    const int pick = static_cast<int>(random() % 60000);
    const double forms[] = {1.0 * pick,  -1.0 * pick,        std::ldexp(1, pick % 2000 - 1000),
                            kNaN,        1 + pick * 0x1p-52, pick / 1024.0,
                            pick * 1e290};
    const double value = forms[random() % 7];
    const std::string text = std::to_string(random() % 50000);
    ASSERT_EQ(numeric.Encode(value), numbers.try_emplace(value, numbers.size()).first->second);
    ASSERT_EQ(string.Encode(text), texts.try_emplace(text, texts.size()).first->second);
  }
  for (const auto& [value, code] : numbers)
    ASSERT_TRUE(nqtest::IsSame(numeric.DecodeNum(static_cast<int>(code)) + 0.0, value + 0.0));
  for (const auto& [text, code] : texts) ASSERT_EQ(string.Decode(static_cast<int>(code)), text);
}

TEST(NQBinningEncoder, CutPointsAndBins) {
  const struct {
    NQBinningEncoder encoder;
    Doubles cutPoints, values, bins;
  } rows[] = {
      {{0, 10, 5}, {2, 4, 6, 8}, {2, 2.0001, 11, -kInf, kMissing, kNaN}, {0, 1, 4, 0, -1, -1}},
      {{0, 10, 1}, {}, {0, -0.0, -1e-300, -kInf, kMissing, kNaN}, {1, 1, 0, 0, -1, -1}},
      {{3, 3, 3}, {3, 3}, {3, 4}, {0, 2}},
      {{-0x1p1023, 0x1p1023, 4}, {-0x1p1022, 0, 0x1p1022}, {0, kMax}, {1, 3}},  // past kMax wide
      {{10, 0, 5}, {}, {-1}, {0}},                                              // no ranges
      {{0, kInf, 5}, {}, {7}, {1}},
      {{kMissing, 0, 5}, {}, {7}, {1}},
      {{0, 10, -4}, {}, {7}, {1}},
      {NQBinningEncoder({4, 1, kNaN, 4}), {1, 4}, {1, 2, 5}, {0, 1, 2}},
      {NQBinningEncoder({kNaN}), {}, {7}, {1}},
  };
  for (const auto& [encoder, cutPoints, values, bins] : rows) {
    EXPECT_EQ(encoder.GetCutPoints(), cutPoints);
    EXPECT_NE(encoder.GetNumberOfBins(), 1) << testing::PrintToString(cutPoints);
    for (std::size_t i = 0; i < values.size(); ++i)
      EXPECT_EQ(encoder.Encode(values[i]), bins[i])
          << values[i] << " among " << testing::PrintToString(cutPoints);
  }
  const NQBinningEncoder many(0, 2e9, 2000000000);
  EXPECT_EQ(many.Encode(1234567890), 1234567889) << "without memory for the cut points";
}

TEST(NQBinningEncoder, Rebinning) {
  const NQBinningEncoder six(0, 6, 6);
  const Doubles even(6, 1), all = {1, 2, 3, 4, 5};
  const struct {
    const char* label;
    Doubles counts;
    double minCount, adjustedTo;
    Doubles adjusted;
    int n;
    Doubles rebinned;
  } rows[] = {
      {"even, 1", even, 1, 6, all, 6, all},
      {"even, 2", even, 2, 3, {2, 4}, 3, {2, 4}},
      {"even, 3", even, 3, 2, {3}, 2, {3}},
      {"one bin would be left", even, 4, -1, all, 1, all},
      {"the rest goes left", {3, 3, 3, 1, 0, 1}, 3, 3, {1, 2}, 2, {2}},
      {"one heavy bin", {0, 9, 1, 1, 1, 1}, 3, 2, {2}, 3, {2}},
      {"the last bin alone", {0, 0, 0, 0, 0, 9}, 2, -1, all, 2, {5}},
      {"no counts", {kMissing, kNaN, -4, 0, 0, 0}, 2, -1, all, 2, all},
      {"infinite", {kInf, 0, 0, 0, 0, 0}, 2, -1, all, 2, all},
      {"one count short", {1, 1, 1, 1, 1}, 3, -1, all, 2, all},
  };
  for (const auto& row : rows) {
    NQBinningEncoder encoder = six;
    EXPECT_EQ(encoder.AdjustBinning(row.counts, row.minCount), row.adjustedTo) << row.label;
    EXPECT_EQ(encoder.GetCutPoints(), row.adjusted) << row.label;
    EXPECT_EQ(six.CreateRebinned(row.counts, row.n).GetCutPoints(), row.rebinned) << row.label;
  }
}

TEST(NQContEncoder, ValuesAsTheyAreAndTextsOfBins) {
  NQContEncoder encoder(0, 6, 3);
  encoder.SetMissingInterval(90, 99);
  for (double value : {17.5, kNaN, -kInf}) EXPECT_SAME(encoder.Encode(value), value);
  EXPECT_EQ(encoder.Encode(90), kMissing);
  const std::pair<std::string, double> bins[] = {
      {"", kMissing}, {"<= 2", 2}, {"(2, 4]", 4}, {"> 4", kMissing}, {"", kMissing}};
  for (int bin = -1; bin < 4; ++bin)
    EXPECT_EQ(std::pair(encoder.Decode(bin), encoder.DecodeNum(bin)), bins[bin + 1]) << bin;
  EXPECT_EQ(NQContEncoder().Decode(0), "");
}

TEST(NQRoundEncoder, DropsWhatIsNotPositive) {
  constexpr double no = kMissing;
  const Doubles weights = {1.9, 0.9, 0.4, 2.5, -0.4, -0.0, 95, no, kNaN, kInf, -kInf};
  const std::pair<int, Doubles> rows[] = {{0, {1, no, no, 2, no, no, no, no, no, kInf, no}},
                                          {1, {2, 1, no, 3, no, no, no, no, no, kInf, no}},
                                          {2, {1.9, 0.9, 0.4, 2.5, no, no, no, no, no, kInf, no}},
                                          {7, {1.9, 0.9, 0.4, 2.5, no, no, no, no, no, kInf, no}}};
  for (const auto& [option, rounded] : rows) {
    NQRoundEncoder encoder{INQVariable::WRoundingOption(option)};
    encoder.SetMissingInterval(90, 99);
    for (std::size_t i = 0; i < weights.size(); ++i)
      EXPECT_EQ(encoder.Encode(weights[i]), rounded[i]) << option << " of " << weights[i];
  }
}

TEST(INQEncoder, LabelsAndDeclaredValues) {
  NQStringEncoder encoder(Texts{"x", "y"});
  EXPECT_TRUE(encoder.SetValueLabel(1, "Y"));
  EXPECT_TRUE(encoder.SetValueLabel(2, encoder.GetValueLabels()[1])) << "the first without either";
  for (int code : {4, -1, INT_MAX, INT_MIN}) EXPECT_FALSE(encoder.SetValueLabel(code, "z")) << code;
  EXPECT_EQ(encoder.GetValueLabels(), (Texts{"", "Y", "Y"}));
  encoder.AddDiscreteUserMissing("m", "first");
  for (const char* text : {"m1", "m2", "m3", "m4"})  // the label is in the list that grows
    encoder.AddDiscreteUserMissing(text, encoder.GetMissValueLabels()[0]);
  encoder.AddDiscreteUserMissing("m", "second");
  encoder.AddDiscreteUserMissing(encoder.GetMissValueLabels()[1], "a label as a value");
  EXPECT_EQ(encoder.GetDiscreteMissValuesStr(), (Texts{"m", "m1", "m2", "m3", "m4", "first"}));
  EXPECT_EQ(encoder.GetMissValueLabels(),
            (Texts{"second", "first", "first", "first", "first", "a label as a value"}));
}

TEST(INQEncoder, WhatDoesNotApplyChangesNothing) {
  NQCatNumEncoder numeric(Doubles{1});
  NQStringEncoder string(Texts{"1"});
  NQContEncoder continuous(0, 4, 2);
  NQRoundEncoder rounding;
  const auto answers = [](INQEncoder& e) { return Doubles{e.Encode("1"), e.EncodeConst("1")}; };
  const std::string before =
      Displayed(numeric) + Displayed(string) + Displayed(continuous) + Displayed(rounding);
  EXPECT_EQ(answers(numeric), (Doubles{-1, -1}));
  EXPECT_EQ(answers(continuous), (Doubles{kMissing, kMissing}));
  EXPECT_EQ(answers(rounding), (Doubles{kMissing, kMissing}));
  EXPECT_EQ((Doubles{string.Encode(1), string.EncodeConst(1)}), (Doubles{-1, -1}));
  EXPECT_EQ(string.DecodeNum(0), kMissing);
  EXPECT_EACH(false, string.AddDiscreteUserMissing(1, ""), string.IsMissing(1),
              string.SetMissingInterval(0, 1), numeric.AddDiscreteUserMissing("1", ""),
              numeric.IsMissing("1"), continuous.SetValueLabels({"a"}),
              continuous.SetValueLabel(0, ""), rounding.SetValueLabels({"a"}),
              rounding.SetValueLabel(0, ""));
  EXPECT_EQ(Displayed(numeric) + Displayed(string) + Displayed(continuous) + Displayed(rounding),
            before);
}
