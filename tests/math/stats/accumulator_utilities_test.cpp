#include <nqcommon/math/stats/NQHashKey.h>
#include <nqcommon/math/stats/NQIterationReporter.h>
#include <nqcommon/math/stats/NQPackedInt.h>
#include <nqcommon/math/stats/NQTimeUtil.h>

#include <gtest/gtest.h>

#include <climits>
#include <tuple>

#include "support/displayed.h"
#include "support/each.h"
#include "support/special_values.h"

using namespace NQMath_940;
using nqtest::Displayed;
using testing::PrintToString;

namespace {

using Ints = std::vector<int>;

TEST(NQPackedInt, PacksAndUnpacks) {
  const std::tuple<int, Ints, Ints, Ints> rows[] = {
#include "math/stats/packed_code_cases.inc"
  };
  for (const auto& [lower, numbers, unpacked, want] : rows) {
    NQPackedInt packer;
    Ints packed(5, -1), values, both = unpacked;
    EXPECT_EACH(true, packer.SetForSequence(static_cast<int>(numbers.size()), lower, numbers),
                packer.Pack(both, packed, true), packer.Unpack(values, packed));
    EXPECT_EQ(packed, want);
    EXPECT_EQ(values, unpacked);
    EXPECT_EACH(true, packer.Pack(both, both, false), both == want) << PrintToString(both);
    EXPECT_EACH(true, packer.Unpack(both, both), both == unpacked) << PrintToString(both);
  }
}

TEST(NQPackedInt, RefusesAndLeavesTheOutput) {
  NQPackedInt packer(3, 1, {3, 4, 5, 6});
  const Ints before = {7, 7};
  Ints out = before;
  for (const Ints& values : {Ints{4, 1, 1}, Ints{1, 0, 1}, Ints{1, 1, INT_MIN}, Ints{1, 1}})
    EXPECT_FALSE(packer.Pack(values, out, true)) << PrintToString(values);
  EXPECT_EACH(false, packer.Pack({1, 1}, out, false), packer.Unpack(out, {}), out != before);
  EXPECT_TRUE(packer.Pack({INT_MAX, INT_MIN, INT_MAX}, out, false));  // wraps around
  EXPECT_EQ((Ints{packer.GetNDiffVal(-1), packer.GetNDiffVal(2), packer.GetNDiffVal(3)}),
            (Ints{-1, 5, -1}));
  for (const auto& [n, numbers] :
       {std::pair{0, Ints{1}}, {-1, Ints{1}}, {2, Ints{1}}, {2, Ints{1, 0}}, {1, Ints{INT_MIN}}}) {
    out = before;
    EXPECT_EACH(false, packer.SetForSequence(n, 0, numbers), packer.Pack({0, 0}, out, true),
                packer.Unpack(out, {0, 0}), out != before)
        << n << PrintToString(numbers);
    EXPECT_EQ(packer.GetNDiffVal(0), -1);
  }
}

TEST(NQHashKey, HashFollowsElementsAndOffset) {
  NQHashKey key(3), other(3), wide(51);
  for (const int i : {2, 0, 1, 2}) key[i] = 100 - i;
  other[0] = -1;
  for (const int i : {1, 2}) other[i] = key[i];
  EXPECT_EQ(key.GetHash(), (99 * 5) ^ (98 * 7));
  EXPECT_EACH(true, other.GetHash() == key.GetHash(), other < key, key != other);
  wide[49] = INT_MAX;
  wide[50] = -2;
  EXPECT_EQ(wide.GetHash(), 2147483645 ^ -10);  // 3 (2^31 - 1) modulo 2^32, and 5 again

  for (const int taken : {9377656, 9377657 - INT_MAX, -9})
    ASSERT_TRUE(NQHashKey::SetElementOffset(taken)) << taken;
  for (const int refused : {9377657, INT_MAX, INT_MIN, 9377657 - INT_MAX - 1})
    EXPECT_FALSE(NQHashKey::SetElementOffset(refused)) << refused;
  EXPECT_EQ(NQHashKey::GetElementUpperBound(), 9377666);
  EXPECT_EQ(key.GetHash(), (90 * 5) ^ (89 * 7));
  other[0] = 100;
  EXPECT_EACH(true, other == key, other.GetHash() == key.GetHash());
  EXPECT_EACH(true, NQHashKey(2).GetHash() == -9 * 5, NQHashKey(-3).Size() == 0,
              NQHashKey(1).Size() == 1);
  Ints packed;  // in units of up to 100 combinations
  EXPECT_EACH(true, NQHashKey::SetElementOffset(9377657 - 100),
              NQPackedInt(3, 0, {10, 10, 2}).Pack({9, 9, 1}, packed, true));
  EXPECT_EQ(packed, Ints({99, 1}));
  NQHashKey empty, moved(std::move(key));
  EXPECT_EACH(true, NQHashKey::SetElementOffset(0), moved.Size() == 3,
              empty.GetHash() == key.GetHash());  // key has no elements now
}

TEST(NQTimeUtil, TicksStayInRange) {
  const std::clock_t begin = std::clock();
  NQTimeUtil timer;
  int ticks = 0, calls = 0;
  double seconds = 0;
  for (const std::clock_t end = std::clock() + 2000; std::clock() < end;) continue;
  timer.Accumulate();
  timer.Accumulate();  // the start goes on: the same ticks again
  timer.GetTime(ticks, seconds, calls);
  EXPECT_EACH(true, ticks >= 4000, ticks <= 2 * (std::clock() - begin), seconds == ticks / 1e6,
              calls == 2)
      << ticks;
  for (const auto& [taken, want] : {std::pair{INT_MIN, INT_MAX},
                                    {-1, INT_MAX},
                                    {INT_MAX, 0},
                                    {INT_MAX, -INT_MAX},
                                    {2, INT_MIN}}) {
    timer.Decrement(taken);
    timer.GetTime(ticks, seconds, calls);
    EXPECT_EQ(ticks, want) << taken;
  }
  timer.Reset();
  timer.GetTime(ticks, seconds, calls);
  EXPECT_EACH(true, ticks == 0, calls == 0);
}

TEST(AccumulatorUtilities, DisplayAndNameTheirParts) {
  const std::vector<double> a = {1}, b = {2}, c = {3};
  NQIterationReporter report;
  report.SetInfo(&c, 4, 5, 6.5, 7.5);
  EXPECT_EACH(true, report.VectorMeasure("paramEstim2") == nullptr,
              report.ScaleMeasure("loglik") == 6.5, report.ScaleMeasure("time") == 7.5);
  report.SetInfo(&a, &b, &c, 8, 9.5, nqtest::kMissing);
  EXPECT_EACH(true, report.DiscreteMeasure("iterNum") == 8,
              report.DiscreteMeasure("stepHalving") == 5, report.DiscreteMeasure("x") == -1,
              report.ScaleMeasure("x") == nqtest::kMissing, report.VectorMeasure("x") == nullptr,
              report.VectorMeasure("paramEstim") == &a, report.VectorMeasure("paramEstim3") == &c);
  NQIterationReporter cleared = report;
  cleared.Reset();
  EXPECT_TRUE(Displayed(cleared) == Displayed(NQIterationReporter()));
  NQTimeUtil timer("sweep");
  timer.Decrement(-7);
  NQHashKey key(2);
  key[1] = -5;
  const std::string rows[][3] = {
#include "golden/accumulator_displays.inc"
  };
  for (const auto& [name, shown, want] : rows) EXPECT_EQ(shown, want) << name;
}

}  // namespace
