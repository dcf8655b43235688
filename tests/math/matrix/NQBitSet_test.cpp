#include <nqcommon/math/matrix/NQBitSet.h>

#include <gtest/gtest.h>

#include <climits>
#include <string>

// A row of a table: the bits of s, the answer wanted of the call, the bits of s wanted after it.
#define ROW(before, want, after, ...)      \
  s = Make(before);                        \
  EXPECT_EQ(__VA_ARGS__, want) << #before; \
  EXPECT_EQ(Text(s), after) << #__VA_ARGS__

namespace NQMath_940 {
namespace {

NQBitSet Make(const std::string& text) {
  NQBitSet set;
  for (const char c : text) set.Append(c == '1');
  return set;
}

std::string Text(const NQBitSet& set) {
  std::string text;
  for (int i = 0; i < set.Size(); ++i) text += set.IsIn(i) ? '1' : '0';
  return text;
}

TEST(NQBitSet, AnswersAndContents) {
  NQBitSet s;
  ROW("11", false, "11", s.IsIn(2));
  ROW("11", false, "11", s.Set(-1, false));
  ROW("01", true, "11", s.Set(0, true));
  ROW("010", 5, "11111", (s.Resize(5, true), s.Size()));
  ROW("111", 0, "", (s.Resize(-1, true), s.Size()));
  ROW("", true, "", s.Duplicate(INT_MAX));
  ROW("", NQBitSet(-3), "", s);
  ROW("", true, "01", s.Set(std::vector{false, true}));
  ROW("00000", false, "00000", s.SetSubset({1, 7}, true));
  ROW("0000", true, "0101", s.SetSubset({3, 1, 3}, true));
  ROW("01", true, "01", s.SetSubset({}, true));
  ROW("0001", true, "0111", s.SetRange(1, 2, true));
  ROW("00", false, "00", s.SetRange(-1, 1, true));
  ROW("00", false, "00", s.SetRange(1, 0, true));
  ROW("00", false, "00", s.SetRange(0, 2, true));
  ROW("1", 2, "10", s.Append(false));
  ROW("10", true, "101010", s.Duplicate(2));
  ROW("10", true, "10", s.Duplicate(0));
  ROW("10", false, "10", s.Duplicate(INT_MAX));
  ROW("10", false, "10", s.Duplicate(-1));
  ROW("1011", 1, "0100", (s.Negate(), s.InSet()));
  ROW("1011", 0, "0000", (s.Clear(), s.InSet()));
  ROW("1101", 2, "1101", s.InRange(1, 3));
  ROW("1101", 1, "1101", s.InRange(0, 0));
  ROW("1101", 0, "1101", s.InRangeS(4, 0));
  ROW("1111", -1, "1111", s.InRange(2, 1));
  ROW("1111", -1, "1111", s.InRangeS(INT_MAX, INT_MAX));
  ROW("1111", -1, "1111", s.InRangeS(3, 2));
  ROW("1111", -1, "1111", s.InRangeS(2, -1));
  ROW("1101", Make("10"), "1101", s.GetSubset(1, 2));
  ROW("1101", Make("1"), "1101", s.GetSubset(3, 9));
  ROW("1101", s, "1101", s.GetSubset(INT_MIN, INT_MAX));
  const NQBitSet other = Make("011");
  ROW("10", other, "011", s = other);
  std::vector<int> members;
  ROW("0110", std::vector({1, 2}), "0110", (s.GetMembers(members), members));
  ROW("0110", 3, "111", (s.DoOR(s, Make("101")), s.InSet()));
  ROW("0110", 2, "011", (s.DoAND(Make("011"), s), s.InSet()));
  ROW("1", 1, "0001", (s.DoAND(Make("10110"), Make("0101")), s.InSet()));
  ROW("0010", true, "0010", s.IsNewFalse(Make("00"), 9));
  ROW("10", true, "10", s.IsNewFalse(Make("00"), 1));
  ROW("0010", false, "0010", s.IsNewFalse(Make("00"), 2));
  ROW("0010", false, "0010", s.IsNewFalse(Make("0011"), 4));
  ROW("01", true, "01", s < Make("010"));
  ROW("01", false, "01", s < Make("01"));
  ROW("01", true, "01", s != Make("010"));
}

TEST(NQBitSet, DisplayGoesToStandardOutput) {
  testing::internal::CaptureStdout();
  Make("10").Display();
  EXPECT_EQ(testing::internal::GetCapturedStdout(),
            "\nNQBitSet display start\nfbVec (size = 2)\n  t f\nNQBitSet display end");
}

}  // namespace
}  // namespace NQMath_940
