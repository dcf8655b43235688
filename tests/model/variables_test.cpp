// The variables: kinds, status, bins, and what they own.
#include <nqcommon/model/NQCatNumEncoder.h>
#include <nqcommon/model/NQCatVar.h>
#include <nqcommon/model/NQContEncoder.h>
#include <nqcommon/model/NQContVar.h>
#include <nqcommon/model/NQWeightVar.h>
#include <nqcommon/xml/XMLElement.h>

#include <climits>
#include <functional>
#include <memory>

#include "support/testing.h"

using namespace NQXML_940;
using namespace nqtest;
using V = INQVariable;

TEST(NQCatVar, EncoderOfTheLevelAndStatus) {
  const int rows[][7] = {
      // level, categories, seen; type of the encoder, categories, status, may be a flag
      {2, 3, 5, 2, 5, 0, 1},  {3, 3, 2, 3, 3, 0, 1}, {3, 0, 0, 3, 0, 2, 1}, {2, 1, 0, 2, 1, 1, 1},
      {2, -4, 1, 2, 1, 1, 1}, {1, 0, 2, 3, 2, 0, 0}, {4, 0, 0, 3, 0, 2, 0},
  };
  for (const auto& [level, categories, seen, type, count, status, isFlag] : rows) {
    SCOPED_TRACE(testing::Message() << "level " << level << " of " << categories);
    NQCatVar variable("v", "", categories, V::MeasureLevel(level), V::RoleInput, false);
    for (int i = 0; i < seen; ++i) {
      variable.GetEncoder()->Encode(i);
      variable.GetEncoder()->Encode(std::to_string(i));
    }
    EXPECT_EQ(variable.GetEncoder()->GetEncoderType(), type);
    EXPECT_EQ(variable.GetVarStatus(), status);
    EXPECT_EQ(variable.GetNumberOfCategories(), count) << "updated for the status";
    EXPECT_EQ(variable.SetFlagVariable(true), isFlag);
    EXPECT_EQ(variable.IsFlagVariable(), isFlag);
    variable.ChangeEncoder(nullptr);
    EXPECT_EQ(variable.UpdateNumberOfCategories(), count) << "never lowered";
  }
}

TEST(NQCatVar, CategoriesGivenAndBinaryFlag) {
  NQCatVar texts("v", "", 1, V::LevelStringCategorical, V::RoleInput, false,
                 {2.5, 1, kMissing, 2.5});
  EXPECT_EQ(texts.GetNumberOfCategories(), 2);
  EXPECT_EQ(texts.GetEncoder()->EncodeConst("2.5"), 0);
  const int rows[][4] = {{1, 1, 1, 1}, {1, 2, 0, -1}, {1, 0, 1, 0}, {0, 1, 0, -1}, {1, -1, 0, -1}};
  for (const auto& [on, index, isOn, stored] : rows) {
    texts.SetBinaryFlag(on, index);
    EXPECT_EQ(texts.IsBinaryFlag(), isOn) << on << index;
    EXPECT_EQ(texts.GetTrueIndex(), stored) << on << index;
  }
}

TEST(NQContVar, RangeBinsAndStatus) {
  const double rows[][6] = {
      // min, max, is binned, bins; bins of the encoder, status
      {0, 10, 1, 5, 5, 0}, {0, 10, 0, 5, 0, 0}, {3, 3, 1, 5, 0, 1},    {3, 2, 1, 5, 0, 2},
      {0, 1, 1, 1, 0, 0},  {0, 1, 1, -2, 0, 0}, {kNaN, 1, 1, 5, 0, 0}, {0, kInf, 1, 5, 0, 0},
  };
  for (const auto& [min, max, isBinned, bins, count, status] : rows) {
    SCOPED_TRACE(testing::Message() << min << " .. " << max << " in " << bins);
    NQContVar variable("v", "", min, max, V::RoleInput, isBinned == 1, static_cast<int>(bins));
    EXPECT_EQ(variable.GetNumberOfCategories(), count);
    EXPECT_EQ(variable.GetVarStatus(), status);
    EXPECT_FALSE(variable.SetFlagVariable(true));
    variable.ChangeEncoder(nullptr);
    EXPECT_EQ(variable.GetNumberOfCategories(), std::max(bins, 0.0));
  }
}

TEST(NQContVar, BinsFollowTheRange) {
  NQContVar variable("v", "", kMissing, kMissing, V::RoleInput, true, 5);
  auto* const encoder = new NQContEncoder(Doubles{7, 3});
  const NQBinningEncoder four(0, 8, 4);
  const struct {
    const char* label;
    std::function<void()> step;
    Doubles cutPoints;
    int bins;
  } rows[] = {
      {"asked for, no range yet", [&] { variable.ChangeEncoder(variable.GetEncoder()); }, {}, 5},
      {"a range", [&] { variable.SetMinMax(0, 10); }, {2, 4, 6, 8}, 5},
      {"another range", [&] { variable.SetMinMax(0, 20); }, {4, 8, 12, 16}, 5},
      {"two of them", [&] { variable.SetNBins(2); }, {10}, 2},
      {"no range", [&] { variable.SetMinMax(1, 1); }, {}, 2},
      {"a range again", [&] { variable.SetMinMax(0, 6); }, {3}, 2},
      {"one is none", [&] { variable.SetNBins(1); }, {}, 1},
      {"fewer than none", [&] { variable.SetNBins(-1); }, {}, 0},
      {"one cut point", [&] { variable.ChangeEncoder(new NQContEncoder(Doubles{7})); }, {7}, 2},
      {"given", [&] { variable.ChangeEncoder(encoder); }, {3, 7}, 3},
      {"given ones stay", [&] { variable.SetMinMax(0, 30); }, {3, 7}, 3},
      {"equal instead", [&] { variable.SetNBins(variable.GetNBins()); }, {10, 20}, 3},
      {"by the encoder", [&] { encoder->SetBinning(four); }, {2, 4, 6}, 4},
      {"which is heard", [&] { variable.SetMinMax(0, 4); }, {1, 2, 3}, 4},
      {"no encoder", [&] { variable.ChangeEncoder(nullptr); }, {}, 4},
      {"encoder without bins", [&] { variable.ChangeEncoder(new NQContEncoder()); }, {}, 4},
      {"for which none are asked", [&] { variable.SetMinMax(0, 9); }, {}, 4},
  };
  for (const auto& row : rows) {
    row.step();
    EXPECT_EQ(variable.GetCutPoints(), row.cutPoints) << row.label;
    EXPECT_EQ(variable.GetNBins(), row.bins) << row.label;
  }
}

// The sanitizers watch the deletes.
TEST(INQVariable, TakesOverEncoderAndFormat) {
  NQCatVar variable("c", "", 2, V::LevelNumericCategorical, V::RoleInput, true, {4, 5});
  NQContVar continuous("n", "", 0, 1, V::RoleInput, true, 2);
  variable.ChangeEncoder(new NQCatNumEncoder(Doubles{1, 5}));
  variable.ChangeEncoder(variable.GetEncoder());
  continuous.ChangeEncoder(continuous.GetEncoder());
  EXPECT_EQ(variable.GetEncoder()->EncodeConst(5), 1);
  EXPECT_EQ(continuous.GetCutPoints(), Doubles{0.5});
  variable.SetFieldFormatElement(XMLElement::Create("old"));
  variable.SetFieldFormatElement(XMLElement::Create("format"));
  variable.SetFieldFormatElement(variable.GetFieldFormatElement());
  NQCatVar assigned("a", "", 2, V::RoleTarget, false, {"a", "b"});
  assigned = variable = *&variable;
  EXPECT_EQ(Displayed(assigned), Displayed(variable));
  EXPECT_NE(assigned.GetEncoder(), variable.GetEncoder());
}

struct Words : V, INQEncoder {
  using INQEncoder::DisplayCode;
  using V::DisplayCode;

  template <class Code>
  static void Of(std::initializer_list<int> codes) {
    for (int code : codes) DisplayCode("", static_cast<Code>(code));
  }
};

struct AllWords {
  static void Display() {
    Words::Of<V::MeasureLevel>({-1, 0, 1, 2, 3, 4, 5});
    Words::Of<V::VariableRole>({0, 1, 2, 3, 4, 5, 6, 7});
    Words::Of<V::VariableStorage>({0, 1, 2, 3, 4, 5, 6});
    Words::Of<V::WRoundingOption>({0, 1, 2});
    Words::Of<V::VarStatus>({0, 1, 2, 3});
    Words::Of<INQEncoder::EncoderType>({0, 1, 2, 3, 4, 5, 14, 15, -1, INT_MIN});
  }
};

TEST(INQVariable, WordsOfCodes) {
  const char* const words =
#include "golden/code_words.inc"
      ;
  EXPECT_EQ(Displayed(AllWords()), words);
}
