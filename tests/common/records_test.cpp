// Rows, named values and the iterator over arrays in memory.
#include <nqcommon/common/MemoryRecordIterator.h>
#include <nqcommon/common/ValueRecord.h>

#include <map>
#include <random>

#include "support/testing.h"

namespace NQCommon_940 {
namespace {

using nqtest::Doubles;
using nqtest::Texts;

Doubles Of(const Record* record) {
  return record ? Doubles(record->GetAll(), record->GetAll() + record->Size()) : Doubles();
}

TEST(Record, LengthsAndCopies) {
  Record record(-3);
  EXPECT_EQ(Of(&record), Doubles{0});
  record[0] = 5;
  EXPECT_TRUE(record.Resize(1));
  EXPECT_EQ(record[0], 5) << "the same length keeps the contents";
  EXPECT_TRUE(record.Resize(2));
  record[0] = 1, record[1] = 2;
  Record copy(0);
  copy = record;
  record[0] = 9;
  EXPECT_EQ(Of(&copy), (Doubles{1, 2}));
  const Record moved = std::move(record);
  EXPECT_EQ(record.Size(), 0);  // NOLINT(bugprone-use-after-move): left empty
  EXPECT_TRUE(moved.Size() == 2 && record.Resize(-1));
  copy = record;
  EXPECT_EQ(copy.Size(), 0);
  const RawRecord raw(2);
  EXPECT_TRUE(RawRecord(raw)[1].fFlag && raw[1].fText.empty() && raw[1].fValue == 0);
}

TEST(MemoryRecordIterator, Passes) {
  double ids[] = {11, 12}, values[] = {1, 2, 3, 4}, weights[] = {0.5, 1};
  MemoryRecordIterator plain(2, 2, ids, values, nullptr), weighted(2, 2, ids, values, weights);
  for (int pass = 0; pass < 2; ++pass) {
    for (const Doubles& row : {Doubles{11, 1, 2}, Doubles{12, 3, 4}}) {
      EXPECT_TRUE(plain.HasMore());
      EXPECT_EQ(Of(plain.Next()), row);
    }
    EXPECT_FALSE(plain.HasMore());
    EXPECT_EQ(plain.GetFailReason(), 1);
    EXPECT_EQ(plain.Next(), nullptr);
    EXPECT_EQ(plain.NewPass(), 0);
  }
  weighted.Next();
  EXPECT_EQ(Of(weighted.Next()), (Doubles{12, 3, 4, 1}));
  MemoryRecordIterator unnamed(2, 1, nullptr, values, nullptr), one(1, 0, ids, nullptr, nullptr);
  unnamed.Next();
  EXPECT_EQ(Of(unnamed.Next()), (Doubles{2, 2}));
  EXPECT_EQ(Of(one.Next()), Doubles{11});
  MemoryRecordIterator empty(0, 2, nullptr, nullptr, nullptr);
  EXPECT_FALSE(empty.HasMore());
  empty.NewPass();
  EXPECT_TRUE(empty.HasMore());
  EXPECT_EQ(empty.Next(), nullptr);
  EXPECT_FALSE(empty.HasMore());
}

TEST(ValueRecord, NamesAndPositions) {
  ValueRecord record, other;
  EXPECT_EQ(record.IndexOf("b"), -1);
  EXPECT_EQ(record.Add("b", 2), 0);
  EXPECT_EQ(record.Add("a", "text"), 1);
  EXPECT_EQ(record.Add("b", 3), 0);
  EXPECT_EACH(false, record.Set("c", 1, false), record.Set("a", 1, true), record.Contains("c"));
  EXPECT_EQ(record.Get("a").GetString() + record.Get(0).GetString(), "text3");
  record.SetMissingValue(1);
  EXPECT_EACH(true, record.Contains("b"), record.Set("a", 1.5, true), record.Get("c").IsNull(),
              record.Get(-1).IsNull(), record.Get(2).IsNull())
      << "a null value takes any type";
  other.Add("0", 7);
  EXPECT_EACH(true, record.AddAll(record), record.AddAll(ValueRecord()), other.AddAll(record));
  EXPECT_EQ(other.Names(false), (Texts{"0", "a", "b"}));
  EXPECT_EQ(record.Names(true), (Texts{"a", "b"}));
  EXPECT_TRUE(other.Remove("0"));
  EXPECT_FALSE(other.Remove("0"));
  EXPECT_EQ(other.GetName(0) + other.GetName(1) + other.GetName(2) + other.GetName(-1), "ab");
  EXPECT_EQ(other.Add("new", true), 2);
  ValueRecord typed(Texts{"b", "i", "s"});
  typed.SetValue(0, true), typed.SetValue(1, 7), typed.SetValue(2, "x");
  EXPECT_EQ(typed.Get(0).GetString() + typed.Get(1).GetString() + typed.Get(2).GetString(), "17x");
  typed.Clear();
  EXPECT_TRUE(typed.Size() == 0 && !typed.Contains("b"));
}

static_assert(std::is_nothrow_move_constructible_v<ValueRecord>);
static_assert(std::is_nothrow_move_assignable_v<ValueRecord>);

// A copy that takes or loses a name leaves the other's alone.
TEST(ValueRecord, CopiesShareNamesUntilTheyChange) {
  ValueRecord first(Texts{"a", "b", "", "b"}), second = first, third;
  second.Add("c", 5UL);
  second.SetValue(0, 7L);
  third = second;
  EXPECT_TRUE(third.Remove("b"));
  first.Add("d", true);
  const auto text = [](const ValueRecord& record) {
    std::string line;
    for (const std::string& name : record.Names(false)) line += name + record.Get(name).GetString();
    return line;
  };
  EXPECT_EQ(text(first) + "|" + text(second) + "|" + text(third), "abd1|a7bc5|a7c5");
  const ValueRecord moved = std::move(second);
  EXPECT_EQ(text(second) + text(moved), "a7bc5");
  second.Add("b", 1);
  EXPECT_EQ(text(second), "b1");
}

// Names that begin alike for less than, exactly and more than eight bytes, some with a NUL.
TEST(ValueRecord, FindsNamesAsAMap) {
  std::mt19937 random(1);
  for (int round = 0; round < 300; ++round) {
    ValueRecord record;
    std::map<std::string, int> map;
    for (int i = 0; i < 40; ++i) {
      std::string name(random() % 11, 'a');
      if (!name.empty()) name.back() = "\0ab\xC3"[random() % 4];
      const int want = map.emplace(name, record.Size()).first->second;
      EXPECT_EQ(record.Add(name, i), want) << name;
      if (i % 8 == 0 && record.Remove(name))
        for (auto& other : map) other.second -= other.second > map[name];
      if (i % 8 == 0) map.erase(name);
    }
    const Texts names = record.Names(true);
    EXPECT_TRUE(std::equal(names.begin(), names.end(), map.begin(), map.end(),
                           [&](const std::string& name, const auto& entry) {
                             return name == entry.first && record.IndexOf(name) == entry.second;
                           }));
  }
}

TEST(ValueRecord, EqualityGoesByTheOrderOfNames) {
  ValueRecord ab, yx;
  ab.Add("a", 1), ab.Add("b", 2);
  yx.Add("y", 2), yx.Add("x", 1);
  EXPECT_TRUE(ab == yx);
  yx.Add("x", 2);
  EXPECT_FALSE(ab == yx);
  yx.Remove("y");
  EXPECT_FALSE(ab == yx);
  ab.ClearValues();
  EXPECT_TRUE(ab == ab);
  EXPECT_FALSE(ab == ValueRecord(ab)) << "null equals nothing";
}

TEST(ValueRecord, Displays) {
  ValueRecord record;
  record.Add("x", 0.5), record.Add("a", Value());
  EXPECT_EQ(nqtest::Displayed(record),
            "\nValueRecord display start\nx = 0.5\na = miss\nValueRecord display end");
}

}  // namespace
}  // namespace NQCommon_940
