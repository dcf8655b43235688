// Cholesky: factors, determinants, inverses, solves and the positive-definite repair.
#include <gtest/gtest.h>

#include <nqcommon/common/NQMV.h>
#include <nqcommon/math/matrix/NQSymMatrix.h>

#include <cmath>

#include "support/compare.h"
#include "support/dense.h"
#include "support/known_matrices.h"
#include "support/special_values.h"

namespace NQMath_940 {
namespace {

using NQCommon_940::NQMV;
using nqtest::Dense;
using nqtest::FromPacked;
using nqtest::kInf;
using nqtest::kNaN;
using nqtest::ToDense;
using nqtest::ToSym;
using nqtest::Trans;
using Vec = std::vector<double>;

// L L' of an integer factor whose third row has no pivot: row 2 = row 0 + 2 row 1.
const Dense kFactor{{2, 0, 0, 0}, {1, 3, 0, 0}, {4, 6, 0, 0}, {5, 1, 0, 2}};
NQSymMatrix RankThree() { return ToSym(kFactor * Trans(kFactor)); }

NQBitSet Bits(std::vector<bool> bits) { return NQBitSet(std::move(bits)); }

TEST(NQSymMatrixCholesky, RankDeficient) {
  std::vector<double> t;
  RankThree().GetDiagonal(t);
  NQSymMatrix s = RankThree();
  EXPECT_EQ(s.LTChol(t, 1e-12, true), 1);
  EXPECT_EQ(nqtest::Lower(ToDense(s)), kFactor);

  s = RankThree();
  NQBitSet set = Bits({true, true, true, true, true});
  EXPECT_EQ(s.LTChol(t, 1e-12, set, true), 1);
  EXPECT_TRUE(set == Bits({true, true, false, true, false}));

  s = RankThree();
  double minPivot = 0;
  EXPECT_EQ(s.LTChol(1e-12, minPivot, true), 1);
  EXPECT_EQ(minPivot, 0);

  std::vector<int> indices;
  EXPECT_EQ(RankThree().CholIndNonRed(0, 1e-12, indices), 1);
  EXPECT_EQ(indices, (std::vector<int>{0, 1, 3}));
  EXPECT_EQ(FromPacked({4, 0, 9}).CholIndNonRed(4, 0, indices), 1) << "4 is not above 4";
  EXPECT_EQ(indices, (std::vector<int>{1}));
  EXPECT_EQ(RankThree().CholIndNonRed(-1, 1e-12, indices), -1);
}

TEST(NQSymMatrixCholesky, RefusedArguments) {
  struct Row {
    const char* name;
    int order;
    std::vector<double> t;
    double eps;
    bool check;
    int result;
  };
  for (const Row& row :
       {Row{"negative eps", 1, {1}, -1, true, -1}, Row{"negative reference", 1, {-1}, 1, true, -1},
        Row{"negative eps unchecked", 1, {1}, -1, false, 0}, Row{"order 0", 0, {}, 1e-12, true, 0},
        Row{"order 0, negative eps", 0, {}, -1, true, -1},
        Row{"t too short", 2, {1}, 1, false, -1}}) {
    NQSymMatrix s(row.order, true);
    s.AddToDiagonal(4);
    NQBitSet set = Bits({true});
    EXPECT_EQ(s.LTChol(row.t, row.eps, row.check), row.result) << row.name;
    s.AddToDiagonal(2);
    EXPECT_EQ(s.LTChol(row.t, row.eps, set, row.check), row.result) << row.name;
    if (row.result == 0) continue;
    EXPECT_EQ(s.Trace(), 6 * row.order) << row.name << " changed the matrix";
    EXPECT_TRUE(set == Bits({true})) << row.name;
  }
  double minPivot = 0;
  EXPECT_EQ(NQSymMatrix(2, true).LTChol(-1, minPivot, true), -1);
  EXPECT_TRUE(NQMV::IsMissing(minPivot));
  EXPECT_EQ(NQSymMatrix().LTChol(1e-12, minPivot, true), 0);
  EXPECT_TRUE(NQMV::IsMissing(minPivot));
}

TEST(NQSymMatrixCholesky, Determinants) {
  struct Row {
    const char* name;
    Dense matrix;
    double mantissa;
    int power;
  };
  for (const Row& row : {
           Row{"overflows a double", {{1e300, 0, 0}, {0, 1e300, 0}, {0, 0, 3e300}}, 3, 900},
           Row{"underflows a double", {{1e-300, 0}, {0, 4e-300}}, 4, -600},
           Row{"subnormal", {{4e-320}}, 4, -320},
           Row{"Pascal", nqtest::Pascal(8).matrix, 1, 0},
           Row{"singular", {{1, 2}, {2, 4}}, 0, 0},
           Row{"not positive definite", {{1, 2}, {2, 1}}, 0, 0},
           Row{"infinite", {{kInf, 0}, {0, 1}}, 0, 0},
           Row{"NaN", {{kNaN, 0}, {0, 1}}, 0, 0},
       }) {
    NQDeterminant det{7, 7};
    EXPECT_TRUE(ToSym(row.matrix).ComputeDeterminant(1e-14, det)) << row.name;
    // Compared as a ratio, for 9.99.. x 10^p and 1.00.. x 10^(p+1) are neighbours.
    const double ratio = det.first * std::pow(10, det.second - row.power);
    EXPECT_CLOSE(ratio, row.mantissa, row.power == -320 ? 1e-4 : 1e-12) << row.name;
    if (row.mantissa != 0) {
      EXPECT_TRUE(std::fabs(det.first) >= 1 && std::fabs(det.first) < 10) << row.name;
    } else {
      EXPECT_EQ(det, NQDeterminant(0, 0)) << row.name;
    }
  }
  NQDeterminant det{7, 7};
  EXPECT_FALSE(NQSymMatrix().ComputeDeterminant(1e-14, det));
  EXPECT_FALSE(FromPacked({1}).ComputeDeterminant(-1, det));
  EXPECT_EQ(det, NQDeterminant(7, 7));
}

TEST(NQSymMatrixCholesky, DeterminantAndInverseOfAFactor) {
  NQSymMatrix l = FromPacked({2, 3, -4, 5, 6, 8});
  NQDeterminant det;
  EXPECT_EQ(l.LTDetInverse(det, 11), 0);
  EXPECT_EQ(det, NQDeterminant(-6.4, 1));
  const Dense inverse{{0.5, 0, 0}, {0.375, -0.25, 0}, {-0.59375, 0.1875, 0.125}};
  EXPECT_EQ(nqtest::Lower(ToDense(l)), inverse);
  det = {7, 7};
  NQSymMatrix singular = FromPacked({2, 3, 0, 5, 6, 8});
  EXPECT_EQ(singular.LTDetInverse(det, 10), 1);
  EXPECT_EQ(det, NQDeterminant(7, 7)) << "job without a determinant";
  EXPECT_EQ(nqtest::Lower(ToDense(singular)), (Dense{{0.5, 0, 0}, {0, 0, 0}, {-0.3125, 0, 0.125}}));
  EXPECT_EQ(singular.LTDetInverse(det, 1), 1);
  EXPECT_EQ(det, NQDeterminant(0, 0));
}

// A matrix of another storage, as far as its type code goes.
struct OtherType : NQSymMatrix {
  int GetType() const override { return 1; }
};

TEST(NQSymMatrixCholesky, Inverses) {
  for (const nqtest::KnownMatrix& known : nqtest::KnownMatrices()) {
    NQSymMatrix s = ToSym(known.matrix);
    std::vector<double> t;
    s.GetDiagonal(t);
    EXPECT_EQ(s.CholInverse(t, 1e-16, s), s.GetNRows()) << known.name << ", into itself";
    EXPECT_LE(known.InverseError(s), 1) << known.name;
  }
  // Without row 2 of RankThree the rest has the inverse of its own submatrix.
  NQSymMatrix out, part;
  NQBitSet set;
  double minPivot = 0;
  std::vector<double> t;
  RankThree().GetDiagonal(t);
  EXPECT_EQ(RankThree().CholInverse(t, 1e-12, out, set), 3);
  EXPECT_TRUE(set == Bits({true, true, false, true}));
  ASSERT_TRUE(RankThree().ExtractSubmatrix({0, 1, 3}, part));
  NQBitSet swept;
  part.SweepOnAll(1e-12, swept, true, false, true);
  NQSymMatrix expected;
  ASSERT_TRUE(part.ExpandSym({0, 1, 3}, 4, expected));
  for (std::size_t k = 0; k < 10; ++k)
    EXPECT_NEAR(out.AsVector()[k], expected.AsVector()[k], 1e-13) << k;
  EXPECT_EQ(RankThree().CholInverse(t, 1e-12, out, minPivot), 3);
  EXPECT_EQ(minPivot, 0);

  OtherType other;
  EXPECT_EQ(RankThree().CholInverse(t, 1e-12, other), -1);
  EXPECT_EQ(RankThree().CholInverse(t, 1e-12, other, set), -1);
  EXPECT_EQ(RankThree().CholInverse(t, 1e-12, other, minPivot), -1);
  EXPECT_TRUE(NQMV::IsMissing(minPivot));
  EXPECT_FALSE(RankThree().ComputeSTransS(other));
  EXPECT_EQ(RankThree().CholInverse({1}, 1e-12, out, minPivot), -1);
  EXPECT_TRUE(NQMV::IsMissing(minPivot));
}

TEST(NQSymMatrixCholesky, Solves) {
  // Consistent right-hand sides S x of a singular S: the dropped unknown is 0.
  const Dense x{{3}, {-2}, {0}, {5}};
  const std::vector<double> b = Trans(ToDense(RankThree()) * x)[0];
  NQSymMatrix s = RankThree();
  std::vector<double> got = b;
  EXPECT_EQ(s.LTSolve(got, 1e-12, got), 1);
  for (std::size_t i = 0; i < 4; ++i) EXPECT_NEAR(got[i], x[i][0], 1e-12) << i;
  EXPECT_EQ(got[2], 0);
  s = RankThree();
  EXPECT_EQ(s.LTSolve({1, 2}, 1e-12, got), -1);
  EXPECT_EQ(s.LTSolve(b, kNaN, got), -1);
  EXPECT_EQ(ToDense(s), ToDense(RankThree()));
  NQSymMatrix indefinite = FromPacked({-4, 1, 2});
  EXPECT_EQ(indefinite.LTSolve({1, 4}, 2, got), 2)
      << "no pivot is ever the root of a negative number";
}

TEST(NQSymMatrixCholesky, PositiveDefiniteRepair) {
  struct Row {
    const char* name;
    Dense matrix;
    double eps;
    int atMost;       // factorisations; the stated result where it is negative or 1
    double smallest;  // eigenvalue, known by construction
  };
  const Row rows[] = {
      {"order 1", {{-1}}, 1e-6, -1, 0},
      {"eps 0", {{1, 2}, {2, 1}}, 0, -2, 0},
      {"positive definite", {{2, 1}, {1, 2}}, 1e-6, 1, 1},
      {"indefinite", {{1, 2}, {2, 1}}, 1e-6, 30, -1},
      {"three rows", {{0, 1, 1}, {1, 0, 1}, {1, 1, 0}}, 1e-6, 30, -1},
      {"negative diagonal", {{-5, 0}, {0, -3}}, 1e-9, 50, -5},
      {"eps below rounding", {{1, 2}, {2, 1}}, 1e-300, 120, -1},
      {"large entries", {{1e12, 2e12}, {2e12, 1e12}}, 1e-6, 60, -1e12},
      {"NaN", {{1, kNaN}, {kNaN, 1}}, 1e-6, -3, 0},
      {"infinite", {{1, kInf}, {kInf, 1}}, 1e-6, -3, 0},
      {"at the range's end", {{-1e308, 0}, {0, 1}}, 1e-6, -3, 0},
      {"eps out of reach", {{1, 2}, {2, 1}}, 1e308, -3, 0},
  };
  for (const Row& row : rows) {
    NQSymMatrix s = ToSym(row.matrix);
    const std::vector<double> before = s.AsVector();
    bool changed = true;
    double shift = 5;
    const int result = s.TransformToPositiveDefinite(row.eps, changed, shift);
    EXPECT_EQ(changed, row.atMost > 1) << row.name;
    if (!changed) {
      EXPECT_EQ(result, row.atMost) << row.name;
      EXPECT_EQ(shift, 0) << row.name;
      EXPECT_TRUE(nqtest::AreSame(s.AsVector(), before)) << row.name;
      continue;
    }
    EXPECT_TRUE(result > 2 && result <= row.atMost) << row.name << ": " << result;
    double max = 0, min = 0;
    s.MaxMinDiag(max, min);
    EXPECT_CLOSE(max, 1, 1e-14) << row.name;
    // shift = c + 0.01 (largest diagonal + c), c >= -smallest found to 2 eps
    double maxBefore = 0;
    ToSym(row.matrix).MaxMinDiag(maxBefore, min);
    const double c = (shift - 0.01 * maxBefore) / 1.01;
    EXPECT_NEAR(c, -row.smallest, 1e-5 * std::fabs(row.smallest)) << row.name;
    const Dense m = ToDense(s);
    EXPECT_CLOSE(m[1][0] * (shift + maxBefore), row.matrix[1][0], 1e-14) << row.name;
    EXPECT_EQ(s.LTChol(1e-12, min, true), 0) << row.name;
  }
}

}  // namespace
}  // namespace NQMath_940
