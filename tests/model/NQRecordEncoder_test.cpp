// Records to rows of codes and numbers.
#include <nqcommon/model/NQRecordEncoder.h>

#include <nqcommon/common/Record.h>
#include <nqcommon/common/Value.h>
#include <nqcommon/common/ValueRecord.h>
#include <nqcommon/model/NQContVar.h>
#include <nqcommon/model/NQVarList.h>

#include <numeric>

#include "support/testing.h"

using namespace NQXML_940;
using namespace nqtest;
using NQCommon_940::Value;
using V = INQVariable;
using Values = std::vector<Value>;

// Fields x, code, name, w; and "gone", which no case has.
static NQVarList Fields() {
  NQVarList list;
  list.AddContVar("x", "", 0, 1, V::RoleInput, false, 0);
  list.AddCatVar("code", "", 0, V::LevelNumericCategorical, V::RoleInput, false);
  list.AddCatVar("name", "", 0, V::LevelStringCategorical, V::RoleTarget, false);
  list.SetWeightVar("w", "", V::RoundDown);
  list.AddCatVar("gone", "", 0, V::LevelStringCategorical, V::RoleInput, false);
  list.GetEncoderAt(0)->AddDiscreteUserMissing(99, "");
  list.GetEncoderAt(1)->AddDiscreteUserMissing(99, "");
  list.GetEncoderAt(2)->AddDiscreteUserMissing("none", "");
  return list;
}

TEST(NQRecordEncoder, CellsOfEveryKind) {
  const std::vector<int> four = {0, 1, 2, 3};
  const struct {
    const char* label;
    Values cells;
    const char* learnt;  // number and state of each cell
    const char* fixed;
  } rows[] = {
      {"values", {0.5, 7, "a", 2.9}, "0.5:0 0:0 0:0 2:0 ", "0.5:0 -1:2 -1:2 2:0 "},
      {"other types", {1, true, 5, true}, "1:0 0:0 0:0 1:0 ", "1:0 -1:2 -1:2 1:0 "},
      {"minus one is a number", {-1, -1.0, -1.5, 1}, "-1:0 0:0 0:0 1:0 ", "-1:0 -1:2 -1:2 1:0 "},
      {"null", Values(4), "miss:1 -1:1 -1:1 miss:1 ", "miss:1 -1:1 -1:1 miss:1 "},
      {"missing", Values(4, kMissing), "miss:1 -1:1 -1:1 miss:1 ", "miss:1 -1:1 -1:1 miss:1 "},
      {"declared", {99, 99, "none", 0.5}, "miss:1 -1:1 -1:1 miss:1 ", "miss:1 -1:1 -1:1 miss:1 "},
      {"texts", {"1", "1", "b", "1"}, "miss:3 -1:3 0:0 miss:3 ", "miss:3 -1:3 -1:2 miss:3 "},
      {"too short", {0.5}, "0.5:0 -1:1 -1:1 miss:1 ", "0.5:0 -1:1 -1:1 miss:1 "},
  };
  for (const auto& row : rows) {
    NQVarList list = Fields();
    NQRecordEncoder encoder(list, Texts{"x", "code", "name", "w", "x"}, four);
    const auto run = [&](bool learns) {
      double numbers[4];
      NQRecordEncoder::CellState states[4];
      const auto counts = learns ? encoder.Encode(row.cells, numbers, states)
                                 : encoder.EncodeConst(row.cells, numbers, states);
      std::ostringstream text;
      for (int i = 0; i < 4; ++i) {
        const bool isMissing = numbers[i] == kMissing;
        text << (isMissing ? "miss" : Value(numbers[i]).GetString()) << ':' << states[i] << ' ';
      }
      const auto others = 4 - std::count(states, states + 4, NQRecordEncoder::CellValue);
      EXPECT_EQ(counts.fNMissing + counts.fNUnseen + counts.fNMisfits, others) << row.label;
      EXPECT_EQ(counts.IsComplete(), others == 0) << row.label;
      return text.str();
    };
    EXPECT_EQ(run(false), row.fixed) << row.label;
    EXPECT_EQ(run(true), row.learnt) << row.label;
    EXPECT_EQ(run(false), row.learnt) << row.label << ", then known";
  }
}

TEST(NQRecordEncoder, ColumnsAndFields) {
  NQVarList list = Fields();
  list.RemoveVar(3);
  NQCommon_940::ValueRecord record;
  record.Add("name", "a");
  record.Add("code", 1LL << 60);
  NQRecordEncoder encoder(list, record);
  ASSERT_EQ(encoder.Size(), 4);
  EXPECT_EQ(encoder.GetVariableIndex(3), 4);
  EXPECT_EQ(encoder.GetAbsentNames(), (Texts{"x", "gone"}));
  double row[4];
  EXPECT_EQ(encoder.Encode(record, row).fNMissing, 2);
  EXPECT_EQ(encoder.EncodeConst(record, row).fNUnseen, 0);
  record.Set("name", 1LL << 60, false);
  encoder.Encode(record, row);
  EXPECT_EQ(list.GetEncoderAt(2)->Decode(1), "1152921504606846976") << "all digits";

  NQRecordEncoder numbers(list, Texts{"id", "code", "name"}, {1, 2, 9});
  NQCommon_940::Record cells(3);
  std::iota(cells.GetAll(), cells.GetAll() + 3, 0.5);
  EXPECT_FALSE(numbers.EncodeConst(cells, row).IsComplete());
  EXPECT_TRUE(numbers.Encode(cells, row).IsComplete());
  EXPECT_EQ(list.GetEncoderAt(2)->Decode(2), "2.5");
}
