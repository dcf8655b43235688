#include <nqcommon/math/numeric/NQMathFun.h>

#include <vector>

#include <support/compare.h>
#include <support/each.h>
#include <support/special_values.h>

namespace {

using namespace nqtest;
using NQMath_940::NQMathFun;

using Vector = std::vector<double>;

TEST(NQMathFun, DigammaAndTrigamma) {
  const struct {
    double x, psi, psiTolerance, psi1, psi1Tolerance;
  } rows[] = {
#include <reference/digamma_trigamma.inc>
  };
  for (const auto& r : rows) {
    EXPECT_CLOSE(NQMathFun::Digamma(r.x), r.psi, r.psiTolerance) << r.x;
    EXPECT_CLOSE(NQMathFun::Trigamma(r.x), r.psi1, r.psi1Tolerance) << r.x;
  }
}

TEST(NQMathFun, SmallAndValidNumbers) {
  EXPECT_EACH(true, NQMathFun::IsValidDouble(kMissing), NQMathFun::IsValidDouble(kMax),
              NQMathFun::QLReps(-0x1p-53, 1));
  EXPECT_EACH(false, NQMathFun::IsValidDouble(kInf), NQMathFun::IsValidDouble(-kInf),
              NQMathFun::IsValidDouble(kNaN), NQMathFun::QLReps(0x1p-52, 1),
              NQMathFun::QLReps(0, 0), NQMathFun::QLReps(0, -1));
  EXPECT_EQ(NQMathFun::ReplaceIfSmall(-1e-31, 1e-30), 1e-30);
  EXPECT_EQ(NQMathFun::ReplaceIfSmall(-1e-30, 1e-30), -1e-30);
}

TEST(NQMathFun, BinSearch) {
  const Vector v = {2, 6, 10, 14, 18};
  const std::vector<int> ints = {2, 6, 10, 14, 18};
  const struct {
    int lo, hi, x, want[2];
  } rows[] = {
#include <reference/bin_search.inc>
  };
  for (const auto& r : rows) {
    for (const int flag : {0, 1}) {
      const auto label = ::testing::Message()
                         << r.lo << ".." << r.hi << ", " << r.x << ", " << flag;
      EXPECT_EQ(NQMathFun::BinSearch(v, r.lo, r.hi, r.x, flag), r.want[flag]) << label;
      EXPECT_EQ(NQMathFun::BinSearch(ints, r.lo, r.hi, r.x, flag), r.want[flag]) << label;
    }
  }
  EXPECT_EQ(NQMathFun::BinSearch(v, 0, 4, kNaN, false), -1);
  EXPECT_EQ(NQMathFun::BinSearch(v, 0, 0, kNaN, true), -1);
  EXPECT_EQ(NQMathFun::BinSearch(Vector{}, 0, 0, 1, false), -2);
  EXPECT_EQ(NQMathFun::BinSearch(Vector{1, 2, 2, 2, 3}, 0, 4, 2, true), 3);
}

TEST(NQMathFun, FindTwoLargest) {
  const auto find = [](const Vector& v) {  // of all entries, of those not missing
    Vector got(4, -77);
    NQMathFun::FindTwoLargest(v, got[0], got[1]);
    NQMathFun::FindTwoLargestNonMiss(v, got[2], got[3]);
    return got;
  };
  EXPECT_TRUE(AreSame(find({}), Vector(4, kMissing)));
  EXPECT_TRUE(AreSame(find({4}), {4, kMissing, 4, kMissing}));
  EXPECT_TRUE(AreSame(find({3, 7, 7, 5}), {7, 7, 7, 7}));
  EXPECT_TRUE(AreSame(find({9, 1, 2}), {9, 2, 9, 2}));
  EXPECT_TRUE(AreSame(find({kNaN, 2, kNaN, 1}), {2, 1, 2, 1}));
  EXPECT_TRUE(AreSame(find({kMissing, 2, -kInf}), {2, kMissing, 2, -kInf}));
}

TEST(NQMathFun, VMaxRelDiff) {
  EXPECT_EQ(NQMathFun::VMaxRelDiff({}, {1}, 1), 0);
  EXPECT_EQ(NQMathFun::VMaxRelDiff({1, 5, -4, 100}, {1, 3, -7}, -1), 0.5);
  EXPECT_CLOSE(NQMathFun::VMaxRelDiff({2e-6}, {0}, 0), 2, 1e-15);
  EXPECT_SAME(NQMathFun::VMaxRelDiff({kNaN, 9}, {1, 1}, 1), kNaN);
}

}  // namespace
