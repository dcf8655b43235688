// Rows, named values and the iterator over arrays in memory.
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <limits>
#include <map>
#include <random>

#include <nqcommon/common/MemoryRecordIterator.h>
#include <nqcommon/common/ValueRecord.h>

#include "support/displayed.h"

namespace NQCommon_940 {
namespace {

using Numbers = std::vector<double>;

Numbers Of(const Record* record) {
  return record ? Numbers(record->GetAll(), record->GetAll() + record->Size()) : Numbers();
}

TEST(Record, LengthsAndCopies) {
  Record record(-3);
  EXPECT_EQ(Of(&record), Numbers{0});
  record[0] = 5;
  EXPECT_TRUE(record.Resize(1));
  EXPECT_EQ(record[0], 5) << "the same length keeps the contents";
  EXPECT_TRUE(record.Resize(2));
  record[0] = 1, record[1] = 2;
  Record copy(0);
  copy = record;
  record[0] = 9;
  EXPECT_EQ(Of(&copy), (Numbers{1, 2}));
  EXPECT_TRUE(record.Resize(-1));
  EXPECT_EQ(record.Size(), 0);
  copy = record;
  EXPECT_EQ(copy.Size(), 0);
  RawRecord raw(2);
  EXPECT_EQ(raw[1].fValue, 0);
  EXPECT_TRUE(raw[1].fFlag);
  EXPECT_EQ(raw[1].fText, "");
  raw[1].fText = "x";
  EXPECT_EQ(RawRecord(raw)[1].fText, "x");
}

#ifndef __SANITIZE_ADDRESS__  // whose allocator ends the process instead
TEST(Record, AllocationFailureIsAbsorbed) {
  rlimit before{};
  ASSERT_EQ(getrlimit(RLIMIT_AS, &before), 0);
  const rlimit low{rlim_t{1} << 30, before.rlim_max};
  RawRecord small(1);
  ASSERT_EQ(setrlimit(RLIMIT_AS, &low), 0);
  const int largest = std::numeric_limits<int>::max();
  const int length = RawRecord(largest).Size();
  const bool resized = small.Resize(largest);
  ASSERT_EQ(setrlimit(RLIMIT_AS, &before), 0);
  EXPECT_EQ(length, 0);
  EXPECT_FALSE(resized);
  EXPECT_EQ(small.Size(), 1);
}
#endif

TEST(MemoryRecordIterator, Passes) {
  double ids[] = {11, 12, 13}, values[] = {1, 2, 3, 4, 5, 6}, weights[] = {0.5, 1, 2};
  MemoryRecordIterator plain(3, 2, ids, values, nullptr), weighted(3, 2, ids, values, weights);
  for (int pass = 0; pass < 2; ++pass) {
    for (const Numbers& row : {Numbers{11, 1, 2}, Numbers{12, 3, 4}, Numbers{13, 5, 6}}) {
      EXPECT_TRUE(plain.HasMore());
      EXPECT_EQ(Of(plain.Next()), row);
    }
    EXPECT_FALSE(plain.HasMore());
    EXPECT_EQ(plain.GetFailReason(), 1);
    EXPECT_EQ(plain.Next(), nullptr);
    EXPECT_EQ(plain.NewPass(), 0);
  }
  weighted.Next();
  EXPECT_EQ(Of(weighted.Next()), (Numbers{12, 3, 4, 1}));
  MemoryRecordIterator empty(0, 2, nullptr, nullptr, nullptr);
  EXPECT_FALSE(empty.HasMore());
  empty.NewPass();
  MemoryRecordIterator unnamed(2, 1, nullptr, values, nullptr);
  EXPECT_EQ(Of(unnamed.Next()), (Numbers{1, 1}));
  EXPECT_EQ(Of(unnamed.Next()), (Numbers{2, 2}));
  int rounds = 0;
  for (; empty.HasMore(); ++rounds) EXPECT_EQ(empty.Next(), nullptr);
  EXPECT_EQ(rounds, 1);
}

TEST(ValueRecord, NamesAndPositions) {
  ValueRecord record, other;
  EXPECT_EQ(record.Add("b", Value(2)), 0);
  EXPECT_EQ(record.Add("a", Value("text")), 1);
  EXPECT_EQ(record.Add("b", Value(3)), 0);
  EXPECT_FALSE(record.Set("c", Value(1), false));
  EXPECT_FALSE(record.Set("a", Value(1), true));
  EXPECT_EQ(record.Get("a").GetString(), "text");
  record.SetMissingValue(1);
  EXPECT_TRUE(record.Set("a", Value(1.5), true)) << "a null value takes any type";
  EXPECT_TRUE(record.Get("c").IsNull());
  for (const int i : {-1, 2}) EXPECT_TRUE(record.Get(i).IsNull()) << i;
  record.AddAll(record);
  other.Add("0", Value(7));
  other.AddAll(record);
  EXPECT_EQ(other.Names(false), (std::vector<std::string>{"0", "a", "b"}));
  EXPECT_EQ(record.Names(true), (std::vector<std::string>{"a", "b"}));
  EXPECT_TRUE(other.Remove("0"));
  EXPECT_FALSE(other.Remove("0"));
  EXPECT_EQ(other.Names(false), (std::vector<std::string>{"a", "b"}));
  EXPECT_EQ(other.GetName(1) + other.GetName(2) + other.GetName(-1), "b");
  EXPECT_EQ(other.Add("new", Value(true)), 2);
  EXPECT_EQ(other.Size(), 3);
}

static_assert(std::is_nothrow_move_constructible_v<ValueRecord>);
static_assert(std::is_nothrow_move_assignable_v<ValueRecord>);

// A copy that takes or loses a name leaves the other's alone, and names of one beginning are told
// apart.
TEST(ValueRecord, CopiesShareNamesUntilTheyChange) {
  const std::vector<std::string> names = {"variable_2", "variable_1", "", "variable_1"};
  ValueRecord first(names), second = first, third;
  second.Add("variable", 5UL);
  second.SetValue(0, 7L);
  third = second;
  EXPECT_TRUE(third.Remove("variable_1"));
  first.Add("\xC3", true);
  const auto text = [](const ValueRecord& record) {
    std::string line;
    for (const std::string& name : record.Names(true))
      line += name + std::to_string(record.IndexOf(name)) + record.Get(name).GetString() + " ";
    return line;
  };
  EXPECT_EQ(text(first),
            "2 variable_11 variable_20 \xC3"
            "31 ");
  EXPECT_EQ(text(second), "2 variable35 variable_11 variable_207 ");
  EXPECT_EQ(text(third), "1 variable25 variable_207 ");
  const ValueRecord moved = std::move(second);
  EXPECT_EQ(text(second) + moved.GetName(3), "variable");
  second.Add("b", 1);
  EXPECT_EQ(text(second), "b01 ");
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
    const std::vector<std::string> names = record.Names(true);
    EXPECT_TRUE(std::equal(names.begin(), names.end(), map.begin(), map.end(),
                           [&](const std::string& name, const auto& entry) {
                             return name == entry.first && record.IndexOf(name) == entry.second;
                           }));
  }
}

TEST(ValueRecord, EqualityGoesByTheOrderOfNames) {
  ValueRecord ab, xy, ba;
  ab.Add("a", Value(1)), ab.Add("b", Value(2));
  xy.Add("y", Value(2)), xy.Add("x", Value(1));
  ba.Add("a", Value(2)), ba.Add("b", Value(1));
  EXPECT_TRUE(ab == xy);
  EXPECT_FALSE(ab == ba);
  xy.Remove("y");
  EXPECT_FALSE(ab == xy);
  ab.ClearValues();
  EXPECT_TRUE(ab == ab);
  EXPECT_FALSE(ab == ValueRecord(ab)) << "null equals nothing";
}

TEST(ValueRecord, Displays) {
  ValueRecord record;
  record.Add("x", Value(0.5)), record.Add("a", Value());
  EXPECT_EQ(nqtest::Displayed(record),
            "\nValueRecord display start\nx = 0.5\na = miss\nValueRecord display end");
}

}  // namespace
}  // namespace NQCommon_940
