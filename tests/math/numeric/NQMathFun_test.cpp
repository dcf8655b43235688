#include <nqcommon/math/numeric/NQMathFun.h>

#include <vector>

#include <support/compare.h>
#include <support/each.h>
#include <support/special_values.h>

namespace {

using namespace nqtest;
using Fun = NQMath_940::NQMathFun;

using Vector = std::vector<double>;

TEST(NQMathFun, DigammaAndTrigamma) {
  const struct {
    double x, psi, psiTolerance, psi1, psi1Tolerance;
  } rows[] = {
#include <reference/digamma_trigamma.inc>
  };
  for (const auto& r : rows) {
    EXPECT_CLOSE(Fun::Digamma(r.x), r.psi, r.psiTolerance) << r.x;
    EXPECT_CLOSE(Fun::Trigamma(r.x), r.psi1, r.psi1Tolerance) << r.x;
  }
}

TEST(NQMathFun, SmallAndValidNumbers) {
  EXPECT_EACH(true, Fun::IsValidDouble(kMissing), Fun::IsValidDouble(kMax),
              Fun::QLReps(-0x1p-53, 1));
  EXPECT_EACH(false, Fun::IsValidDouble(kInf), Fun::IsValidDouble(-kInf), Fun::IsValidDouble(kNaN),
              Fun::QLReps(0x1p-52, 1), Fun::QLReps(0, 0), Fun::QLReps(0, -1));
  EXPECT_EQ(Fun::ReplaceIfSmall(-1e-31, 1e-30), 1e-30);
  EXPECT_EQ(Fun::ReplaceIfSmall(-1e-30, 1e-30), -1e-30);
}

TEST(NQMathFun, BinSearch) {
  const Vector v = {2, 6, 10, 14, 18};
  const std::vector<int> ints(v.begin(), v.end());
  const struct {
    int lo, hi, x, want[2];
  } rows[] = {
#include <reference/bin_search.inc>
  };
  for (const auto& r : rows) {
    for (const int flag : {0, 1}) {
      const auto label = ::testing::Message()
                         << r.lo << ".." << r.hi << ", " << r.x << ", " << flag;
      EXPECT_EQ(Fun::BinSearch(v, r.lo, r.hi, r.x, flag), r.want[flag]) << label;
      EXPECT_EQ(Fun::BinSearch(ints, r.lo, r.hi, r.x, flag), r.want[flag]) << label;
    }
  }
  EXPECT_EQ(Fun::BinSearch(v, 0, 4, kNaN, false), -1);
  EXPECT_EQ(Fun::BinSearch(v, 0, 0, kNaN, true), -1);
  EXPECT_EQ(Fun::BinSearch(Vector{}, 0, 0, 1, false), -2);
  EXPECT_EQ(Fun::BinSearch(Vector{1, 2, 2, 2, 3}, 0, 4, 2, true), 3);
}

TEST(NQMathFun, FindTwoLargest) {
  const auto find = [](const Vector& v) {  // of all entries, of those not missing
    Vector got(4, -77);
    Fun::FindTwoLargest(v, got[0], got[1]);
    Fun::FindTwoLargestNonMiss(v, got[2], got[3]);
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
  EXPECT_EQ(Fun::VMaxRelDiff({}, {1}, 1), 0);
  EXPECT_EQ(Fun::VMaxRelDiff({1, 5, -4, 100}, {1, 3, -7}, -1), 0.5);
  EXPECT_CLOSE(Fun::VMaxRelDiff({2e-6}, {0}, 0), 2, 1e-15);
  EXPECT_SAME(Fun::VMaxRelDiff({kNaN, 9}, {1, 1}, 1), kNaN);
}

// The runs were followed by hand.
TEST(NQMathFun, StridedKernels) {
  const Vector ramp = {1, 2, 3, 4, 5, 6, 7, 8};
  EXPECT_EQ(Fun::DDot(3, ramp, 1, 2, ramp, 0, 3), 2 * 1 + 4 * 4 + 6 * 7);
  EXPECT_EQ(Fun::DDot(3, ramp, 1, -2, ramp, 0, 3), 6 * 1 + 4 * 4 + 2 * 7);
  EXPECT_EQ(Fun::DDot(3, ramp, 2, 0, ramp, 0, -1), 3 * (3 + 2 + 1));
  EXPECT_EQ(Fun::DSum(0, {}, 0), 0);
  // one accumulator, in order, from either end
  const Vector order = {1, 1e100, -1e100, 3};
  EXPECT_EQ(Fun::DDot(4, order, 0, 1, Vector(4, 1.0), 0, 1), 3);
  EXPECT_EQ(Fun::DSum(4, order, 1), 3);
  EXPECT_EQ(Fun::DSum(4, order, -1), 1);
  EXPECT_EQ(Fun::DSum(10, {0.1}, 0), 1);  // ten additions would round to less
  EXPECT_EQ(Fun::DASum(3, {9, -1, 9, 2, 9, -3}, 1, 2), 6);
  EXPECT_EQ(Fun::DNrm2(2, {9, 3e300, 9, -4e300}, 1, -2), 5e300);
  EXPECT_EQ(Fun::DNrm2(2, {-kInf, kInf}, 0, 1), kInf);

  Vector y(8);
  Fun::Daxpy(3, 1, ramp, 1, 2, y, 2, 1);   // 2 4 6 to 2 3 4
  Fun::Daxpy(3, -1, ramp, 1, 1, y, 2, 2);  // 2 3 4 from 2 4 6
  Fun::Daxpy(3, 10, ramp, 1, -2, y, 0, 1);
  Fun::Daxpy(3, 2, ramp, 1, 0, y, 7, 0);
  Fun::Daxpy(1, 0, {kNaN}, 0, 1, y, 0, 1);
  Fun::Daxpy(-1, 5, ramp, 0, 1, y, 0, 1);
  EXPECT_EQ(y, (Vector{60, 40, 20, 4, 3, 0, -4, 12}));

  Vector x = {1, kNaN, 3, kInf, -5, 6};
  Fun::DScal(2, 0, x, 1, 2);
  Fun::DScal(2, -1, x, 2, 2);
  Fun::DScal(2, 3, x, 0, -5);
  EXPECT_TRUE(AreSame(x, {3, 0, -3, 0, 5, 18}));
  Fun::DLoad(2, 8, x, 1, 3);
  Fun::LRZero(x, 2, 1);
  EXPECT_TRUE(AreSame(x, {3, 8, 0, 0, 8, 18}));
}

// Packed rows 1 | 2 3 | 4 5 6 | 7 8 9 10: column 1 is 3 5 8 from position 2, first step 2.
TEST(NQMathFun, PackedTriangle) {
  const Vector packed = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10};
  EXPECT_EQ(Fun::IIDot(3, packed, 2, 2, packed, 1, 2), 3 * 2 + 5 * 4 + 8 * 7);
  Vector t = packed;
  Fun::IIAxpy(3, 10, packed, 2, 2, t, 1, 2);
  EXPECT_EQ(t, (Vector{1, 32, 3, 54, 5, 6, 87, 8, 9, 10}));
  Fun::IIScal(2, -1, t, 2, 2);
  Fun::IIScal(3, 2, t, 1, 2);
  Fun::IIInit(4, 0, t, 0, 2);
  EXPECT_EQ(t, (Vector{0, 64, 0, 108, -5, 0, 174, 8, 9, 0}));

  t = packed;  // L'L by hand
  Fun::LTGltl(4, t);
  Fun::LTGltl(-1, t);
  EXPECT_EQ(t, (Vector{70, 82, 98, 87, 102, 117, 70, 80, 90, 100}));

  const Vector v = {1, -2, 3, 5};
  int row = 0;
  for (const double want : {44, 51, 57, 68}) {  // Sv
    EXPECT_EQ(Fun::RVD(packed, 4, row, {1, 0, -2, 0, 3, 0, 5}, 2), want) << row;
    EXPECT_EQ(Fun::RVD(packed, 4, row++, {5, 3, -2, 1}, -1), want) << row;
  }
  EXPECT_EQ(Fun::VSV(packed, 4, v), 44 - 2 * 51 + 3 * 57 + 5 * 68);
  EXPECT_EQ(Fun::VSV({}, 0, {}), 0);
  EXPECT_EQ((Vector{Fun::RVD(packed, 4, 4, v, 1), Fun::RVD(packed, 4, -1, v, 1),
                    Fun::RVD(packed, 5, 0, v, 0), Fun::RVD(packed, 4, 0, {1, 0, -2, 0, 3, 0}, -2),
                    Fun::RVD({2}, 1, 0, {}, 1), Fun::VSV(packed, -1, v),
                    Fun::VSV(packed, 4, {1, 2, 3}), Fun::VSV({1, 2}, 2, v)}),
            Vector(8, kMissing));
}

}  // namespace
