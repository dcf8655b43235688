#include <nqcommon/math/numeric/NQMathFun.h>

#include <vector>

#include <support/compare.h>
#include <support/special_values.h>

namespace {

using namespace nqtest;
using NQMath_940::NQMathFun;

using Vector = std::vector<double>;

// The runs were followed by hand.
TEST(NQMathFunVector, StridedKernels) {
  const Vector ramp = {1, 2, 3, 4, 5, 6, 7, 8};
  EXPECT_EQ(NQMathFun::DDot(3, ramp, 1, 2, ramp, 0, 3), 2 * 1 + 4 * 4 + 6 * 7);
  EXPECT_EQ(NQMathFun::DDot(3, ramp, 1, -2, ramp, 0, 3), 6 * 1 + 4 * 4 + 2 * 7);
  EXPECT_EQ(NQMathFun::DDot(3, ramp, 2, 0, ramp, 0, -1), 3 * (3 + 2 + 1));
  EXPECT_EQ(NQMathFun::DDot(0, {}, 99, 1, {}, -99, -1), 0);
  // one accumulator, in order, from either end
  const Vector order = {1, 1e100, -1e100, 3};
  EXPECT_EQ(NQMathFun::DDot(4, order, 0, 1, Vector(4, 1.0), 0, 1), 3);
  EXPECT_EQ(NQMathFun::DSum(4, order, 1), 3);
  EXPECT_EQ(NQMathFun::DSum(4, order, -1), 1);
  EXPECT_EQ(NQMathFun::DSum(10, {0.1}, 0), 1);  // ten additions would round to less
  EXPECT_EQ(NQMathFun::DASum(3, {9, -1, 9, 2, 9, -3}, 1, 2), 6);
  EXPECT_EQ(NQMathFun::DNrm2(2, {9, 3e300, 9, -4e300}, 1, -2), 5e300);
  EXPECT_EQ(NQMathFun::DNrm2(2, {-kInf, kInf}, 0, 1), kInf);

  Vector y(8);
  NQMathFun::Daxpy(3, 1, ramp, 1, 2, y, 2, 1);   // 2 4 6 to 2 3 4
  NQMathFun::Daxpy(3, -1, ramp, 1, 1, y, 2, 2);  // 2 3 4 from 2 4 6
  NQMathFun::Daxpy(3, 10, ramp, 1, -2, y, 0, 1);
  NQMathFun::Daxpy(3, 2, ramp, 1, 0, y, 7, 0);
  NQMathFun::Daxpy(1, 0, {kNaN}, 0, 1, y, 0, 1);
  NQMathFun::Daxpy(-1, 5, ramp, 0, 1, y, 0, 1);
  EXPECT_EQ(y, (Vector{60, 40, 20, 4, 3, 0, -4, 12}));

  Vector x = {1, kNaN, 3, kInf, -5, 6};
  NQMathFun::DScal(2, 0, x, 1, 2);
  NQMathFun::DScal(2, -1, x, 2, 2);
  NQMathFun::DScal(2, 3, x, 0, -5);
  EXPECT_TRUE(AreSame(x, {3, 0, -3, 0, 5, 18}));
  NQMathFun::DLoad(2, 8, x, 1, 3);
  NQMathFun::LRZero(x, 2, 2);
  EXPECT_TRUE(AreSame(x, {3, 8, 0, 0, 8, 18}));
}

// Packed rows 1 | 2 3 | 4 5 6 | 7 8 9 10: column 1 is 3 5 8 from position 2, first step 2.
TEST(NQMathFunVector, PackedTriangle) {
  const Vector packed = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10};
  EXPECT_EQ(NQMathFun::IIDot(3, packed, 2, 2, packed, 1, 2), 3 * 2 + 5 * 4 + 8 * 7);
  Vector t = packed;
  NQMathFun::IIAxpy(3, 10, packed, 2, 2, t, 1, 2);
  EXPECT_EQ(t, (Vector{1, 32, 3, 54, 5, 6, 87, 8, 9, 10}));
  NQMathFun::IIScal(2, -1, t, 2, 2);
  NQMathFun::IIScal(3, 2, t, 1, 2);
  NQMathFun::IIInit(4, 0, t, 0, 2);
  EXPECT_EQ(t, (Vector{0, 64, 0, 108, -5, 0, 174, 8, 9, 0}));

  t = packed;  // L'L by hand
  NQMathFun::LTGltl(4, t);
  EXPECT_EQ(t, (Vector{70, 82, 98, 87, 102, 117, 70, 80, 90, 100}));

  const Vector v = {1, -2, 3, 5};
  int row = 0;
  for (const double want : {44, 51, 57, 68}) {  // Sv
    EXPECT_EQ(NQMathFun::RVD(packed, 4, row, {1, 0, -2, 0, 3, 0, 5}, 2), want) << row;
    EXPECT_EQ(NQMathFun::RVD(packed, 4, row++, {5, 3, -2, 1}, -1), want) << row;
  }
  EXPECT_EQ(NQMathFun::VSV(packed, 4, v), 44 - 2 * 51 + 3 * 57 + 5 * 68);
  EXPECT_EQ(NQMathFun::VSV({}, 0, {}), 0);
  EXPECT_EQ((Vector{NQMathFun::RVD(packed, 4, 4, v, 1), NQMathFun::RVD(packed, 4, -1, v, 1),
                    NQMathFun::RVD(packed, 5, 0, v, 0), NQMathFun::RVD(packed, 4, 0, v, -2),
                    NQMathFun::VSV(packed, -1, v), NQMathFun::VSV(packed, 4, {1, 2, 3}),
                    NQMathFun::VSV({1, 2}, 2, v)}),
            Vector(7, kMissing));
}

}  // namespace
