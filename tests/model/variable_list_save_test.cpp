// Variables, encoders and the list in the save format: the layout, round trips, hostile files.
#include <nqcommon/model/NQRoundEncoder.h>
#include <nqcommon/model/NQStringEncoder.h>
#include <nqcommon/model/NQVarList.h>

#include <gtest/gtest.h>

#include "support/each.h"
#include "support/special_values.h"
#include "support/variable_list_checks.h"

using namespace NQXML_940;
using namespace nqtest;
using V = INQVariable;

static const std::string kSaved =
#include "golden/variable_list.inc"
    ;

static std::vector<std::string> Lines(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) lines.push_back(line + "\n");
  return lines;
}

static std::string Joined(const std::vector<std::string>& lines) {
  std::string text;
  for (const std::string& line : lines) text += line;
  return text;
}

static void ExpectReadBack(const NQVarList& list, std::size_t line) {
  NQVarList restored;
  EXPECT_EQ(Restore(restored, Saved(list)).failure, "") << "what line " << line << " left";
}

TEST(VariableListSave, RestoredAndSavedAgainItIsTheSameBytes) {
  NQVarList list = FullVariableList(), restored;
  list.RemoveVar(list.AddContVar("gone", "", 0, 1, V::RoleInput, false, 0));
  EXPECT_EQ(Saved(list), kSaved) << "an empty slot is not saved";
  restored.AddContVar("old", "", 0, 1, V::RoleInput, false, 0);
  const auto nLines = static_cast<int>(Lines(kSaved).size()) - 1;  // the first one is empty
  EXPECT_EQ(Restore(restored, kSaved).lines, nLines);
  std::ostringstream os;
  EXPECT_EQ(restored.WriteObjectXML(os, 0), nLines);
  EXPECT_EQ(os.str(), kSaved);
  EXPECT_EQ(Displayed(restored), Displayed(FullVariableList())) << "cut points, categories, all";
  NQRoundEncoder rounding(V::RoundAsIs);
  EXPECT_EQ(Restore(rounding, Saved(*list.GetEncoderAt(4))).lines, 7) << "an encoder on its own";
  EXPECT_EQ(rounding.Encode(0.6), 1);
}

TEST(VariableListSave, WhatTheFormatDoesNotKeep) {
  const NQCatVar numbers("a & b", " x", 0, V::LevelNumericCategorical, V::RoleInput, false,
                         {0.1, 0.1 + 2e-17, 2, 1.0 / 3, kInf});
  NQCatVar restored("", "", 0, V::LevelNumericCategorical, V::RoleInput, false);
  ASSERT_GT(Restore(restored, Saved(numbers)).lines, 0);
  EXPECT_EQ(restored.GetVariableName() + restored.GetVariableLabel(), "a &amp; b&#32;x");
  const INQEncoder& encoder = *restored.GetEncoder();
  EXPECT_EQ(encoder.GetNumberOfCategories(), 5) << "two are 0.1, and later codes stay";
  const std::pair<double, double> codes[] = {
      {0.1, 0}, {2, 2}, {1.0 / 3, -1}, {0.333333333333333, 3}};
  for (const auto& [value, code] : codes) EXPECT_EQ(encoder.EncodeConst(value), code) << value;
  EXPECT_EQ(encoder.DecodeNum(4), 0) << "infinity";

  NQContVar continuous("", "", 0, 0, V::RoleInput, false, 0);
  ASSERT_GT(Restore(continuous, Saved(NQContVar("cut", "", 0, 9, V::RoleInput, {1, 2}))).lines, 0);
  EXPECT_EQ(continuous.GetCutPoints(), (std::vector<double>{3, 6})) << "equal width, not 1 and 2";

  NQStringEncoder tooLong(std::vector<std::string>{std::string(240, 'x')});
  EXPECT_EQ(Restore(tooLong, Saved(tooLong)).failure, "NQStringEncoder");
}

// CanBeReadBack says beforehand what reading finds.
TEST(VariableListSave, WhatCanBeReadBack) {
  std::vector<std::pair<const char*, NQVarList>> rows(6);
  rows[0] = {"all kinds", FullVariableList()};
  for (std::size_t i = 1; i < 3; ++i) {
    rows[i] = {"a name", {}};
    rows[i].second.AddContVar(std::string(233 + i, 'x'), "", 0, 1, V::RoleInput, false, 0);
  }
  rows[3] = {"a line feed", {}};
  rows[3].second.AddCatVar("x", "", std::vector<std::string>{"a\nb"}, V::RoleInput, false);
  for (std::size_t i = 4; i < 6; ++i) {
    rows[i] = {"a categorical variable without encoder, with another", {}};
    rows[i].second.AddCatVar("x", "", 2, V::LevelStringCategorical, V::RoleTarget, false);
    dynamic_cast<NQCatVar&>(*rows[i].second.GetVarAt(0))
        .ChangeEncoder(i == 4 ? nullptr : new NQRoundEncoder());
  }
  for (const auto& [label, list] : rows) {
    NQVarList restored;
    EXPECT_EQ(Restore(restored, Saved(list)).failure.empty(), list.CanBeReadBack()) << label;
  }
  EXPECT_EACH(true, rows[0].second.CanBeReadBack(), rows[1].second.CanBeReadBack());
  EXPECT_FALSE(rows[1].second.CanBeReadBack(3)) << "three tabs more in each line";
}

TEST(VariableListSave, NamesWhatFailed) {
  NQVarList list = FullVariableList();
  const std::string before = Displayed(list);
  std::string names;
  for (int i = 0; i < 5; ++i)
    names += Restore(*list.GetVarAt(i), "").failure + " " +
             Restore(*list.GetEncoderAt(i), "").failure + " ";
  EXPECT_EQ(names,
            "NQContVar NQContEncoder NQContVar NQContEncoder NQCatVar NQCatNumEncoder "
            "NQCatVar NQStringEncoder NQWeightVar NQRoundEncoder from XML ");
  EXPECT_EQ(Restore(list, "<Obj name=\"NQVarlist\">\n").failure, "NQVarList");
  EXPECT_EQ(Restore(list, "", true).failure, "NQVarList")
      << "a stream that throws is a failure too";
  EXPECT_EQ(Displayed(list), before) << "without a start line nothing changes";
}

// One line of the saved list holds another number: the failure is the one named, or none.
TEST(VariableListSave, FilesThatMakeNoSense) {
  const struct {
    const char* label;
    const char* block;
    int line;  // of the block, its start line being 0
    int number;
    const char* failure;
  } rows[] = {
      {"more than there are", "NQVarList", 1, 2000000000, "NQCatVar"},
      {"level 0", "NQVarList", 2, 0, "NQVarList"},
      {"level of another class", "NQVarList", 2, 2, "NQCatVar"},
      {"bins below 0", "NQContVar", 4, -5, "NQContVar"},
      {"bins by the billion", "NQContVar", 4, 2000000000, ""},
      {"a role to come", "NQContVar", 3, 77, ""},
      {"no such encoder", "NQContEncoder", -1, 9, "NQContVar"},
      {"categories below 0", "NQCatVar", 5, -3, "NQCatVar"},
      {"not the level before", "NQCatVar", 6, 3, "NQVarList"},
      {"no encoder", "NQCatNumEncoder", -1, 0, "NQCatVar"},
      {"an encoder of bins", "NQCatNumEncoder", -1, 1, "NQCatVar"},
      {"values without end", "NQCatNumEncoder", 1, 2000000000, "NQCatNumEncoder"},
      {"missing without end", "NQStringEncoder", 6, 2000000000, "NQStringEncoder"},
      {"another rounding", "NQWeightVar", 3, 2, "NQWeightVar"},
      {"a second weight", "NQWeightVar", 12, 4, "NQVarList"},
      {"one continuous more", "NQWeightVar", 28, 4, "NQVarList"},
      {"a free count", "NQWeightVar", 30, -7, ""},
  };
  for (const auto& row : rows) {
    std::vector<std::string> lines = Lines(kSaved);
    const std::string start = std::string("<Obj name=\"") + row.block + '"';
    auto at = lines.begin();
    while (at->find(start) == std::string::npos) ++at;
    at[row.line] = "<Int value=\"" + std::to_string(row.number) + "\"/>\n";
    NQVarList list;
    EXPECT_EQ(Restore(list, Joined(lines)).failure, row.failure) << row.label;
  }
}

TEST(VariableListSave, TheWeightLivesOnAsTheWeightRead) {
  NQVarList list;
  list.SetWeightVar("old", "", V::RoundDown);
  list.AddContVar("x", "", 0, 1, V::RoleInput, false, 0);
  INQVariable* const weight = list.GetVarAt(0);
  ASSERT_GT(Restore(list, kSaved).lines, 0);
  EXPECT_EQ(list.GetVarAt(4), weight);
  EXPECT_EQ(list.GetWeightVarIndex(), 4);
  EXPECT_EQ(weight->GetVariableName(), "w");
  ASSERT_GT(Restore(list, Saved(NQVarList())).lines, 0) << "and is destroyed where none is read";
}

TEST(VariableListSave, CategoricalVariablesOfEveryLevelAreRead) {
  for (int level : {0, 1, 2, 3, 4, 9}) {
    NQCatVar restored("", "", 0, V::LevelStringCategorical, V::RoleInput, false);
    const NQCatVar variable("v", "", 2, V::MeasureLevel(level), V::RoleInput, false);
    EXPECT_EQ(Restore(restored, Saved(variable)).failure, "") << level;
    EXPECT_EQ(restored.GetMeasureLevel(), level);
  }
}

// Cut short before any line, or any line changed, a file is read or refused, and the list is fit
// for use either way: what it saves then can be read. A file cut short is refused, and what came
// before is there.
TEST(VariableListSave, EveryLineMissingOrAltered) {
  const std::vector<std::string> saved = Lines(kSaved);
  const auto ageEnd =
      static_cast<std::size_t>(std::find(saved.begin(), saved.end(), "\t</Obj>\n") - saved.begin());
  for (std::size_t i = 0; i < saved.size(); ++i) {
    NQVarList list;
    EXPECT_NE(Restore(list, Joined({saved.data(), saved.data() + i})).failure, "")
        << "before line " << i;
    EXPECT_EQ(list.FindVariable("age"), i > ageEnd ? 0 : -1) << "before line " << i;
    ExpectReadBack(list, i);
    for (const char* instead :
         {"\n", "<Int value=\"2000000000\"/>\n", "<Int value=\"-1\"/>\n", "<Int value=\"4\"/>\n",
          "<String value=\"x\"/>\n", "<Double value=\"Missing\"/>\n", "</Obj>\n"}) {
      std::vector<std::string> lines = saved;
      lines[i] = instead;
      CheckVariableListReader(Joined(lines));
      Restore(list, Joined(lines));
      ExpectReadBack(list, i);
    }
  }
  for (const std::string& seed : VariableListSeeds()) CheckVariableListReader(seed);
}
