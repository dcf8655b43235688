// Cholesky: factors, determinants, inverses, solves and the positive-definite repair.
#include <nqcommon/math/matrix/NQSymMatrix.h>

#include <array>
#include <cmath>
#include <tuple>

#include "math/matrix/matrix_support.h"
#include "support/known_matrices.h"

namespace NQMath_940 {
namespace {

using namespace nqtest;

// L L' of an integer factor whose third row has no pivot: row 2 = row 0 + 2 row 1.
const Dense kFactor{{2, 0, 0, 0}, {1, 3, 0, 0}, {4, 6, 0, 0}, {5, 1, 0, 2}};
NQSymMatrix RankThree() { return ToSym(kFactor * Trans(kFactor)); }

Values DiagonalOf(const NQSymMatrix& s) {
  Values t;
  s.GetDiagonal(t);
  return t;
}

TEST(NQSymMatrixCholesky, RankDeficient) {
  const Values t = DiagonalOf(RankThree());
  NQSymMatrix s = RankThree(), withSet = s, withPivot = s;
  NQBitSet set = NQBitSet(Bits{true, true, true, true, true});
  double minPivot = 7;
  EXPECT_TRUE(s.LTChol(t, 1e-12, true) == 1 && withSet.LTChol(t, 1e-12, set, true) == 1 &&
              withPivot.LTChol(1e-12, minPivot, true) == 1);
  for (const NQSymMatrix& factor : {s, withSet, withPivot})
    EXPECT_EQ(Lower(ToDense(factor)), kFactor);
  EXPECT_TRUE(set == NQBitSet(Bits{true, true, false, true, false}) && minPivot == 0);

  Indices kept, above;
  EXPECT_EQ((std::array{RankThree().CholIndNonRed(0, 1e-12, kept),
                        FromPacked({4, 0, 9}).CholIndNonRed(4, 0, above),
                        RankThree().CholIndNonRed(-1, 1e-12, above)}),
            (std::array{1, 1, -1}));
  EXPECT_EQ(kept, (Indices{0, 1, 3}));
  EXPECT_EQ(above, (Indices{1})) << "4 is not above 4";
}

TEST(NQSymMatrixCholesky, RefusedArguments) {
  for (const auto& [name, order, t, eps, check, result] :
       {std::tuple<const char*, int, Values, double, bool, int>{"eps", 1, {1}, -1, true, -1},
        {"reference", 1, {-1}, 1, true, -1},
        {"eps unchecked", 1, {1}, -1, false, 0},
        {"order 0", 0, {}, 1e-12, true, 0},
        {"order 0, eps", 0, {}, -1, true, -1},
        {"t too short", 2, {1}, 1, false, -1}}) {
    NQSymMatrix s(order, true);
    s.AddToDiagonal(4);
    NQBitSet set = NQBitSet(Bits{true});
    EXPECT_EQ(s.LTChol(t, eps, check), result) << name;
    s.AddToDiagonal(2);
    EXPECT_EQ(s.LTChol(t, eps, set, check), result) << name;
    if (result == 0) continue;
    EXPECT_EQ(s.Trace(), 6 * order) << name << " changed the matrix";
    EXPECT_TRUE(set == NQBitSet(Bits{true})) << name;
  }
  double refused = 0, none = 0;
  EXPECT_EQ(NQSymMatrix(2, true).LTChol(-1, refused, true), -1);
  EXPECT_EQ(NQSymMatrix().LTChol(1e-12, none, true), 0);
  EXPECT_TRUE(refused == kMissing && none == kMissing);
}

TEST(NQSymMatrixCholesky, Determinants) {
  for (const auto& [name, matrix, mantissa, power] :
       std::vector<std::tuple<const char*, Dense, double, int>>{
#include "golden/matrix_determinants.inc"
       }) {
    NQDeterminant det{7, 7};
    EXPECT_TRUE(ToSym(matrix).ComputeDeterminant(1e-14, det)) << name;
    // Compared as a ratio, for 9.99.. x 10^p and 1.00.. x 10^(p+1) are neighbours.
    const double ratio = det.first * std::pow(10, det.second - power);
    EXPECT_CLOSE(ratio, mantissa, power == -320 ? 1e-4 : 1e-12) << name;
    if (mantissa != 0) {
      EXPECT_TRUE(std::fabs(det.first) >= 1 && std::fabs(det.first) < 10) << name;
    } else {
      EXPECT_EQ(det, NQDeterminant(0, 0)) << name;
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
  EXPECT_EQ(Lower(ToDense(l)), inverse);
  det = {7, 7};
  NQSymMatrix singular = FromPacked({2, 3, 0, 5, 6, 8});
  EXPECT_EQ(singular.LTDetInverse(det, 10), 1);
  EXPECT_EQ(det, NQDeterminant(7, 7)) << "job without a determinant";
  EXPECT_EQ(Lower(ToDense(singular)), (Dense{{0.5, 0, 0}, {0, 0, 0}, {-0.3125, 0, 0.125}}));
  EXPECT_EQ(singular.LTDetInverse(det, 1), 1);
  EXPECT_EQ(det, NQDeterminant(0, 0));
}

// A matrix of another storage, as far as its type code goes.
struct OtherType : NQSymMatrix {
  int GetType() const override { return 1; }
};

TEST(NQSymMatrixCholesky, Inverses) {
  for (const KnownMatrix& known : KnownMatrices()) {
    NQSymMatrix s = ToSym(known.matrix);
    EXPECT_EQ(s.CholInverse(DiagonalOf(s), 1e-16, s), s.GetNRows())
        << known.name << ", into itself";
    EXPECT_LE(known.InverseError(s), 1) << known.name;
  }
  // Without row 2 of RankThree the rest has the inverse of its own submatrix.
  const NQSymMatrix s = RankThree();
  const Values t = DiagonalOf(s);
  NQSymMatrix out, part, expected;
  NQBitSet set, swept;
  double minPivot = 7;
  EXPECT_EQ(s.CholInverse(t, 1e-12, out, set), 3);
  EXPECT_TRUE(set == NQBitSet(Bits{true, true, false, true}));
  ASSERT_TRUE(s.ExtractSubmatrix({0, 1, 3}, part));
  part.SweepOnAll(1e-12, swept, true, false, true);
  ASSERT_TRUE(part.ExpandSym({0, 1, 3}, 4, expected));
  EXPECT_LE(Distance(ToDense(out), ToDense(expected)), 1e-13);
  EXPECT_EQ(s.CholInverse(t, 1e-12, out, minPivot), 3);
  EXPECT_EQ(minPivot, 0);

  OtherType other;
  double refused = 7;
  EXPECT_EQ((std::array{s.CholInverse(t, 1e-12, other), s.CholInverse(t, 1e-12, other, set),
                        s.CholInverse(t, 1e-12, other, minPivot),
                        s.CholInverse({1}, 1e-12, out, refused)}),
            (std::array{-1, -1, -1, -1}));
  EXPECT_TRUE(minPivot == kMissing && refused == kMissing && !s.ComputeSTransS(other));
}

TEST(NQSymMatrixCholesky, Solves) {
  // Consistent right-hand sides S x of a singular S: the dropped unknown is 0.
  const Values x{3, -2, 0, 5}, b = Trans(ToDense(RankThree()) * Column(x))[0];
  NQSymMatrix s = RankThree(), indefinite = FromPacked({-4, 1, 2});
  Values got = b;
  EXPECT_EQ(s.LTSolve(got, 1e-12, got), 1);
  EXPECT_LE(Distance({got}, {x}), 1e-12);
  EXPECT_EQ(got[2], 0);
  s = RankThree();
  EXPECT_EQ(s.LTSolve({1, 2}, 1e-12, got) + s.LTSolve(b, kNaN, got), -2);
  EXPECT_EQ(ToDense(s), ToDense(RankThree()));
  EXPECT_EQ(indefinite.LTSolve({1, 4}, 2, got), 2)
      << "no pivot is ever the root of a negative number";
}

TEST(NQSymMatrixCholesky, PositiveDefiniteRepair) {
  for (const auto& [name, matrix, eps, atMost, smallest] :
       std::vector<std::tuple<const char*, Dense, double, int, double>>{
#include "golden/matrix_repairs.inc"
       }) {
    SCOPED_TRACE(name);
    const NQSymMatrix before = ToSym(matrix);
    NQSymMatrix s = before;
    bool changed = true;
    double shift = 5, max = 0, min = 0, maxBefore = 0;
    const int result = s.TransformToPositiveDefinite(eps, changed, shift);
    EXPECT_EQ(changed, atMost > 1);
    if (!changed) {
      EXPECT_TRUE(result == atMost && shift == 0) << result;
      EXPECT_TRUE(AreSame(s.AsVector(), before.AsVectorConst()));
      continue;
    }
    EXPECT_TRUE(result > 2 && result <= atMost) << result;
    s.MaxMinDiag(max, min);
    EXPECT_CLOSE(max, 1, 1e-14);
    // shift = c + 0.01 (largest diagonal + c), c >= -smallest found to 2 eps
    before.MaxMinDiag(maxBefore, min);
    const double c = (shift - 0.01 * maxBefore) / 1.01;
    EXPECT_NEAR(c, -smallest, 1e-5 * std::fabs(smallest));
    EXPECT_CLOSE(s.GetElem(1, 0) * (shift + maxBefore), matrix[1][0], 1e-14);
    EXPECT_EQ(s.LTChol(1e-12, min, true), 0);
  }
}

}  // namespace
}  // namespace NQMath_940
