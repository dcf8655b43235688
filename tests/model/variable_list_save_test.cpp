// Variables, encoders and the list in the save format: the layout, round trips, hostile files.
#include <nqcommon/model/NQRoundEncoder.h>
#include <nqcommon/model/NQStringEncoder.h>
#include <nqcommon/model/NQVarList.h>
#include <nqcommon/xml/save_format.h>

#include "support/testing.h"
#include "support/variable_list_checks.h"

using namespace NQXML_940;
using namespace nqtest;
using V = INQVariable;

static const std::string kSaved =
#include "golden/variable_list.inc"
    ;

static Texts Lines(const std::string& text) {
  Texts lines;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) lines.push_back(line + "\n");
  return lines;
}

static std::string Joined(const Texts& lines) {
  std::string text;
  for (const std::string& line : lines) text += line;
  return text;
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
  EXPECT_EQ(continuous.GetCutPoints(), (Doubles{3, 6})) << "equal width, not 1 and 2";
}

TEST(VariableListSave, UnescapedItIsTheListThatWasSaved) {
  NQVarList list, restored;
  list.AddCatVar("a & b", " x", Texts{"<12 yrs", "a  b"}, V::RoleInput, false);
  const MemoryFile file(Saved(list));
  std::ifstream in = file.Open();
  UnescapeStrings(in);
  restored.ReadObjectXML(in);
  EXPECT_EQ(Displayed(restored), Displayed(list));
}

// CanBeReadBack says beforehand what reading finds.
TEST(VariableListSave, WhatCanBeReadBack) {
  const auto named = [](std::size_t length) {
    NQVarList list;
    list.AddContVar(std::string(length, 'x'), "", 0, 1, V::RoleInput, false, 0);
    return list;
  };
  const auto encoded = [](INQEncoder* encoder) {
    NQVarList list;
    list.AddCatVar("x", "", 2, V::LevelStringCategorical, V::RoleTarget, false);
    dynamic_cast<NQCatVar&>(*list.GetVarAt(0)).ChangeEncoder(encoder);
    return list;
  };
  const std::pair<bool, NQVarList> rows[] = {
      {true, FullVariableList()}, {true, named(235)},
      {false, named(236)},        {true, encoded(new NQStringEncoder(Texts{"a\nb"}))},
      {false, encoded(nullptr)},  {false, encoded(new NQRoundEncoder())},
  };
  for (const auto& [isRead, list] : rows) {
    NQVarList restored;
    EXPECT_EQ(Restore(restored, Saved(list)).failure.empty(), isRead) << Saved(list);
    EXPECT_EQ(list.CanBeReadBack(), isRead) << Saved(list);
  }
  EXPECT_FALSE(rows[1].second.CanBeReadBack(3)) << "three tabs more in each line";
  EXPECT_FALSE(encoded(new NQStringEncoder(Texts{std::string("a\0b", 3)})).CanBeReadBack());
}

TEST(VariableListSave, NamesWhatFailed) {
  NQVarList list = FullVariableList();
  const std::string before = Displayed(list);
  std::string names;
  for (int i = 1; i < 5; ++i) names += Restore(*list.GetVarAt(i), "").failure + " ";
  for (int i = 1; i < 5; ++i) names += Restore(*list.GetEncoderAt(i), "").failure + " ";
  EXPECT_EQ(names,
            "NQContVar NQCatVar NQCatVar NQWeightVar "
            "NQContEncoder NQCatNumEncoder NQStringEncoder NQRoundEncoder from XML ");
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
#include "model/senseless_files.inc"
  };
  for (const auto& row : rows) {
    Texts lines = Lines(kSaved);
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
    Restore(restored, Saved(NQCatVar("v", "", 2, V::MeasureLevel(level), V::RoleInput, false)));
    EXPECT_EQ(restored.GetMeasureLevel(), level);
  }
}

// Cut short before any line, or any line changed, a file is read or refused, and the list is fit
// for use either way: what it saves then can be read. A file cut short is refused, and what came
// before is there.
TEST(VariableListSave, EveryLineMissingOrAltered) {
  const Texts saved = Lines(kSaved);
  const auto ageEnd =
      static_cast<std::size_t>(std::find(saved.begin(), saved.end(), "\t</Obj>\n") - saved.begin());
  for (std::size_t i = 0; i < saved.size(); ++i) {
    NQVarList list;
    EXPECT_NE(Restore(list, Joined({saved.data(), saved.data() + i})).failure, "")
        << "before line " << i;
    EXPECT_EQ(list.FindVariable("age"), i > ageEnd ? 0 : -1) << "before line " << i;
    EXPECT_EQ(Restore(list, Saved(list)).failure, "") << "before line " << i;
    for (const char* instead :
         {"\n", "<Int value=\"2000000000\"/>\n", "<Int value=\"-1\"/>\n", "<Int value=\"4\"/>\n",
          "<String value=\"x\"/>\n", "<Double value=\"Missing\"/>\n", "</Obj>\n"}) {
      Texts lines = saved;
      lines[i] = instead;
      CheckVariableListReader(Joined(lines));
      Restore(list, Joined(lines));
      EXPECT_EQ(Restore(list, Saved(list)).failure, "") << instead << "in line " << i;
    }
  }
}
