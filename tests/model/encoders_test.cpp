// The encoders, their user-missing values and labels.
#include <nqcommon/model/NQCatNumEncoder.h>
#include <nqcommon/model/NQContEncoder.h>
#include <nqcommon/model/NQRoundEncoder.h>
#include <nqcommon/model/NQStringEncoder.h>

#include <climits>
#include <map>
#include <random>

#include "support/testing.h"

using namespace NQXML_940;
using namespace nqtest;

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
#include "model/category_cases.inc"
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
#include "model/binning_cases.inc"
  };
  for (const auto& [encoder, cutPoints, values, bins] : rows) {
    SCOPED_TRACE(Displayed(encoder));
    EXPECT_EQ(encoder.GetCutPoints(), cutPoints);
    EXPECT_NE(encoder.GetNumberOfBins(), 1);
    for (std::size_t i = 0; i < values.size(); ++i)
      EXPECT_EQ(encoder.Encode(values[i]), bins[i]) << values[i];
  }
  EXPECT_EQ(Displayed(NQBinningEncoder({1, 4})),
            "\nNQBinningEncoder display start\nNumber of bins = 3\nCut points\n  1 4"
            "\nNQBinningEncoder display end");
  const NQBinningEncoder many(0, 2e9, 2000000000);
  EXPECT_EQ(many.Encode(1234567890), 1234567889) << "without memory for the cut points";
}

TEST(NQBinningEncoder, Rebinning) {
  const NQBinningEncoder six(0, 6, 6);
  const struct {
    const char* label;
    Doubles counts;
    double minCount, adjustedTo;
    Doubles adjusted;
    int n;
    Doubles rebinned;
  } rows[] = {
#include "model/rebinning_cases.inc"
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
  EXPECT_TRUE(encoder.SetMissingInterval(90, 99));
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
  const Doubles wanted[] = {{1, no, no, 2, no, no, no, no, no, kInf, no},
                            {2, 1, no, 3, no, no, no, no, no, kInf, no},
                            {1.9, 0.9, 0.4, 2.5, no, no, no, no, no, kInf, no}};
  for (int option = 0; option < 3; ++option) {
    NQRoundEncoder encoder{INQVariable::WRoundingOption(option)};
    encoder.SetMissingInterval(90, 99);
    Doubles got;
    for (double weight : weights) got.push_back(encoder.Encode(weight));
    EXPECT_EQ(got, wanted[option]) << option;
  }
}

TEST(INQEncoder, LabelsAndDeclaredValues) {
  NQStringEncoder encoder(Texts{"x", "y"});
  EXPECT_TRUE(encoder.SetValueLabel(1, "Y") && encoder.GetValueLabels().size() == 2);
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

TEST(INQEncoder, WhatDoesNotApply) {
  NQCatNumEncoder numeric(Doubles{1});
  NQStringEncoder string(Texts{"1"});
  NQContEncoder continuous(0, 4, 2);
  NQRoundEncoder rounding;
  double low = 7, high = 7;
  EXPECT_EQ((Doubles{numeric.Encode("1"), numeric.EncodeConst("1"), string.Encode(1),
                     string.EncodeConst(1)}),
            Doubles(4, -1));
  EXPECT_EQ((Doubles{continuous.Encode("1"), continuous.EncodeConst("1"), rounding.Encode("1"),
                     rounding.EncodeConst("1"), string.DecodeNum(0), rounding.DecodeNum(0)}),
            Doubles(6, kMissing));
  EXPECT_TRUE(rounding.GetValueLabels().empty() && continuous.GetValueLabels().empty());
  EXPECT_EACH(false, string.AddDiscreteUserMissing(1, ""), string.IsMissing(1),
              string.SetMissingInterval(0, 1), numeric.AddDiscreteUserMissing("1", ""),
              numeric.IsMissing("1"), continuous.SetValueLabels({"a"}),
              rounding.SetValueLabel(0, ""), string.GetMissingInterval(low, high));
  EXPECT_EQ((Doubles{low, high}), Doubles(2, kMissing));
}
