// Factors, determinants, inverses and solves of symmetric matrices by Cholesky and by sweep, the
// positive-definite repair, indefinite solves, rank-one changes of a factor; refusals and the state
// after them.
#include <nqcommon/math/matrix/NQSymMatrix.h>

#include <array>
#include <cmath>
#include <tuple>

#include "math/matrix/matrix_support.h"
#include "support/known_matrices.h"

namespace NQMath_940 {
namespace {

using namespace nqtest;

// ---- Cholesky

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
  double minPivot = 7, none = 7;
  EXPECT_EQ(s.LTChol(t, 1e-12, true), 1);
  EXPECT_EQ(withSet.LTChol(t, 1e-12, set, true), 1);
  EXPECT_EQ(withPivot.LTChol(1e-12, minPivot, true), 1);
  for (const NQSymMatrix& factor : {s, withSet, withPivot})
    EXPECT_EQ(Lower(ToDense(factor)), kFactor);
  EXPECT_EQ(set, NQBitSet(Bits{true, true, false, true, false}));
  EXPECT_EQ(minPivot, 0);
  Values x{1, 4};
  EXPECT_EQ(FromPacked({-4, 1, 2}).LTSolve(x, 2, x), 2) << "no pivot is a negative number's root";

  NQSymMatrix regular = FromPacked({4});
  EXPECT_EQ(regular.LTChol(1e-12, minPivot, true), 0);
  EXPECT_EQ(minPivot, 2);

  Indices kept, above;
  EXPECT_EQ((std::array{RankThree().CholIndNonRed(0, 1e-12, kept),
                        FromPacked({4, 0, 9}).CholIndNonRed(0, 0, above),
                        FromPacked({4, 0, 9}).CholIndNonRed(0, 1, above),
                        FromPacked({4, 0, 9}).CholIndNonRed(4, 0, above),
                        RankThree().CholIndNonRed(-1, 1e-12, above)}),
            (std::array{1, 0, 2, 1, -1}));
  EXPECT_EQ(kept, (Indices{0, 1, 3}));
  EXPECT_EQ(above, (Indices{1})) << "4 is not above 4";
  EXPECT_EQ(
      (std::array{NQSymMatrix(2, true).LTChol(-1, minPivot, true),
                  NQSymMatrix().LTChol(1e-12, none, true), NQSymMatrix().LTChol({}, -1, true)}),
      (std::array{-1, 0, -1}));
  EXPECT_EQ((Values{minPivot, none}), Values(2, kMissing));
}

TEST(NQSymMatrixCholesky, Determinants) {
  for (const auto& [name, matrix, mantissa, power] :
       std::vector<std::tuple<const char*, Dense, double, int>>{
#include "math/matrix/determinants_cases.inc"
       }) {
    NQDeterminant det{7, 7};
    EXPECT_TRUE(ToSym(matrix).ComputeDeterminant(1e-14, det)) << name;
    // Compared as a ratio, for 9.99.. x 10^p and 1.00.. x 10^(p+1) are neighbours.
    const double ratio = det.first * std::pow(10, det.second - power);
    EXPECT_CLOSE(ratio, mantissa, power == -320 ? 1e-4 : 1e-12) << name;
    EXPECT_TRUE(mantissa == 0 ? det == NQDeterminant(0, 0)
                              : std::fabs(det.first) >= 1 && std::fabs(det.first) < 10)
        << name;
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
  EXPECT_EQ(singular.LTDetInverse(det, 1), 1);
  EXPECT_EQ(det, NQDeterminant(0, 0));
}

TEST(NQSymMatrixCholesky, Inverses) {
  for (const KnownMatrix& known : KnownMatrices()) {
    NQSymMatrix s = ToSym(known.matrix), swept = s;
    NQBitSet set;
    EXPECT_EQ(s.CholInverse(DiagonalOf(s), 1e-16, s), s.GetNRows())
        << known.name << ", into itself";
    EXPECT_TRUE(swept.SweepOnAll(1e-14, set, true, true, true)) << known.name;
    EXPECT_EQ(set.InSet(), s.GetNRows()) << known.name;
    EXPECT_LE(std::max(known.InverseError(s), known.InverseError(swept)), 1) << known.name;
  }
  const NQSymMatrix s = RankThree();
  const Values t = DiagonalOf(s);
  NQSymMatrix out;
  NQDiagMatrix other;
  NQBitSet set;
  double minPivot = 7, refused = 7;
  EXPECT_EQ(s.CholInverse(t, 1e-12, out, minPivot), 3);
  EXPECT_EQ(minPivot, 0);
  // Nothing is checked: no reference value or eps is refused.
  EXPECT_EQ(FromPacked({4, 0, 9}).CholInverse({-1, 1}, -1, out, minPivot), 2);
  EXPECT_EQ(FromPacked({4, 0, 9}).CholInverse({-1, 1}, -1, out), 2);
  EXPECT_EQ(FromPacked({4, 0, 9}).CholInverse({-1, 1}, -1, out, set), 2);
  EXPECT_EQ(minPivot, 2);
  NQ_EXPECT_REFUSED(s.CholInverse(t, 1e-12, other), s.CholInverse(t, 1e-12, other, set),
                    s.CholInverse(t, 1e-12, other, minPivot),
                    s.CholInverse({1}, 1e-12, out, refused), minPivot, refused,
                    s.ComputeSTransS(other));
}

// S with row k replaced is dropped there, by whatever factors: the rest is that of its submatrix.
TEST(NQSymMatrixCholesky, ADroppedRowTakesNoPart) {
  const Dense regular{{4, 1, 2, 1}, {1, 5, 1, 2}, {2, 1, 6, 1}, {1, 2, 1, 7}};
  const Values b{3, -2, 4, 1};
  for (std::size_t k = 0; k < 4; ++k) {
    for (const double filler : {kNaN, kInf, -kInf}) {
      SCOPED_TRACE(::testing::Message() << "row " << k << " of " << filler);
      Dense matrix = regular;
      for (std::size_t j = 0; j < 4; ++j) matrix[k][j] = matrix[j][k] = filler;
      matrix[k][k] = kNaN;  // an infinite one would be a pivot
      NQSymMatrix part;
      Indices kept{0, 1, 2, 3}, independent;
      kept.erase(kept.begin() + static_cast<int>(k));
      NQBitSet set;
      ASSERT_TRUE(ToSym(regular).ExtractSubmatrix(kept, part));
      ASSERT_TRUE(part.SweepOnAll(1e-12, set, false, false, true));
      ASSERT_TRUE(part.ExpandSym(kept, 4, part));
      const Dense wanted = ToDense(part);
      Values x = Trans(wanted * Column(b))[0], got;

      const NQSymMatrix s = ToSym(matrix);
      const NQSymBlockDiagMatrix blocks({&s});
      NQSymMatrix inverse, ofBlocks, factor = s;
      EXPECT_EQ(s.CholInverse({4, 5, 6, 7}, 1e-12, inverse, set), 3);
      EXPECT_TRUE(set.GetMembers(independent) && independent == kept);
      EXPECT_EQ(blocks.CholInverse({4, 5, 6, 7}, 1e-12, ofBlocks), 3);
      for (const NQSymMatrix* out : {&inverse, &ofBlocks}) {
        EXPECT_LE(Distance(ToDense(*out), wanted), 1e-15);
        for (double entry : out->AsVectorConst()) EXPECT_FALSE(entry == 0 && std::signbit(entry));
      }
      NQDeterminant det;
      EXPECT_TRUE(s.ComputeDeterminant(1e-12, det));
      EXPECT_EQ(det, NQDeterminant(0, 0));
      EXPECT_EQ(s.CholIndNonRed(1e-9, 1e-12, independent), 1);
      EXPECT_EQ(independent, kept);

      got = b;
      EXPECT_EQ(factor.LTSolve(got, 1e-12, got), 1);
      EXPECT_LE(Distance({got}, {x}), 1e-15);
      // Also where the column of the dropped row is not zero, as LTChol leaves it.
      for (int i = static_cast<int>(k); i < 4; ++i) factor.SetElem(i, static_cast<int>(k), filler);
      factor.SetElem(static_cast<int>(k), static_cast<int>(k), 0);
      got = b;
      EXPECT_TRUE(factor.LTSubstitute(got) && factor.TSolveSubst(got));
      EXPECT_LE(Distance({got}, {x}), 1e-15);
      EXPECT_TRUE(factor.LTInverse());
      EXPECT_EQ(factor.GetElem(static_cast<int>(k), 0), 0);
      factor.LTLTransL();
      EXPECT_LE(Distance(ToDense(factor), wanted), 1e-15);
    }
  }
}

TEST(NQSymMatrixCholesky, PositiveDefiniteRepair) {
  const Dense five = ToDense(NQDiagMatrix(Values{0.25, -0.25, -0.25, -0.25, -0.25}));
  for (const auto& [name, matrix, eps, wanted, smallest] :
       std::vector<std::tuple<const char*, Dense, double, int, double>>{
#include "math/matrix/repairs_cases.inc"
       }) {
    SCOPED_TRACE(name);
    const NQSymMatrix before = ToSym(matrix);
    NQSymMatrix s = before;
    bool changed = true;
    double shift = 5, max = 0, min = 0, maxBefore = 0;
    EXPECT_EQ(s.TransformToPositiveDefinite(eps, changed, shift), wanted);
    EXPECT_EQ(changed, wanted > 1);
    if (!changed) {
      EXPECT_EQ(shift, 0);
      EXPECT_TRUE(AreSame(s.AsVector(), before.AsVectorConst()));
      continue;
    }
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

// ---- Indefinite matrices, and changes of a factor

TEST(NQSymMatrixIndefinite, Solves) {
  const Dense saddle{{0, 1}, {1, 5}};
  for (const auto& [name, matrix, want, eps, solves, leftOut] :
       std::vector<std::tuple<const char*, Dense, Values, double, bool, int>>{
#include "math/matrix/indefinite_systems_cases.inc"
       }) {
    const NQSymMatrix s = ToSym(matrix);
    const Values b = Trans(matrix * Column(want))[0];
    Values x{7}, general{7};
    EXPECT_EQ(s.SolveIndefinite(b, eps, x), solves) << name;
    EXPECT_EQ(s.SolveIndefiniteGI(b, eps, general), leftOut) << name;
    EXPECT_LE(Distance({x}, {solves ? want : Values{7}}), 1e-13) << name;
    EXPECT_LE(Distance({general}, {leftOut >= 0 ? want : Values{7}}), 1e-12) << name;
  }
  // With rows 0 and 2 alone: (1 3; 3 -4) x = (7, 8).
  const NQSymMatrix s = ToSym({{1, 2, 3}, {2, 0, -1}, {3, -1, -4}});
  Values x{7, 100, 8};
  NQ_EXPECT_REFUSED(s.SolveIndefinite(x, 0.9, NQBitSet(Bits{true, true, false}), x),
                    s.SolveIndefinite({1, 2}, 0, x), s.SolveIndefinite({1, 2}, 0, NQBitSet(3), x),
                    NQSymMatrix().SolveIndefinite({}, 0, x));
  ASSERT_TRUE(s.SolveIndefinite(x, 0, NQBitSet(Bits{true, false, true}), x));
  EXPECT_LE(Distance({x}, {{4, 0, 1}}), 1e-14);
  ASSERT_TRUE(FromPacked({-4}).SolveIndefinite({8}, 0, NQBitSet(Bits{true}), x));
  EXPECT_EQ(x, Values{-2});
}

// S = sum of +-v v' over fewer vectors than rows, all integers: exactly singular and consistent.
TEST(NQSymMatrixIndefinite, SingularIntegerSystemsAreSolved) {
  std::mt19937 random(13);
  for (std::size_t trial = 0; trial < 150; ++trial) {
    const std::size_t n = 2 + trial % 9, rank = 1 + trial % (n - 1);
    NQSymMatrix s(static_cast<int>(n), true);
    for (std::size_t k = 0; k < rank; ++k)
      s.IncrementByVV(RandomVector(n, random), k % 2 == 0 ? 1 : -1);
    Values b, x, back;
    ASSERT_TRUE(s.ComputeSV(RandomVector(n, random), b));
    EXPECT_GE(s.SolveIndefiniteGI(b, defaultepse, x), static_cast<int>(n - rank)) << trial;
    ASSERT_TRUE(s.ComputeSV(x, back));
    EXPECT_LE(Distance({back}, {b}), 1e-6) << trial;
  }
}

TEST(NQSymMatrixIndefinite, RankOneChangesOfAFactor) {
  const Dense three{{2, 0, 0}, {1, 3, 0}, {-4, 5, 1}}, hole{{2, 0, 0}, {1, 0, 0}, {3, 0, 4}};
  for (const auto& [l, v] : std::vector<std::pair<Dense, Values>>{
#include "math/matrix/factor_changes_cases.inc"
       }) {
    NQSymMatrix factor = ToSym(l);
    Dense wanted = Plus(l * Trans(l), 1, Column(v) * Dense{v});
    for (bool added : {true, false}) {
      ASSERT_TRUE(added ? factor.LTCholUpdateR1(v) : factor.LTCholDowndate(v));
      const Dense L = Lower(ToDense(factor));
      EXPECT_LE(Distance(L * Trans(L), wanted), 1e-11) << ::testing::PrintToString(v) << added;
      for (std::size_t i = 0; i < L.size(); ++i) EXPECT_GE(L[i][i], 0) << i;
      wanted = l * Trans(l);
    }
  }
  for (const auto& [packed, v] : std::vector<std::pair<Values, Values>>{
#include "math/matrix/refused_downdates_cases.inc"
       }) {
    NQSymMatrix factor = FromPacked(packed);
    EXPECT_FALSE(factor.LTCholDowndate(v)) << ::testing::PrintToString(v);
    EXPECT_EQ(factor.AsVector(), packed);
  }
  NQSymMatrix inRange = FromPacked({2, 1, 0});
  EXPECT_TRUE(inRange.LTCholDowndate({0.2, 0.1}));
  EXPECT_CLOSE(inRange.GetElem(0, 0), std::sqrt(3.96), 1e-15);
  EXPECT_FALSE(inRange.LTCholUpdateR1({1, 2, 3}));
}

// ---- Sweep

TEST(NQSymMatrixSweep, RegressionCoefficientsAndTheWayBack) {
  // Predictors 1, x and 2x, target 1 + 2x: the third row is refused.
  NQSymMatrix s(4, true);
  for (double x : {1.0, 2.0, 4.0, 8.0}) s.UpdateXX({1, x, 2 * x, 1 + 2 * x}, 1);
  const NQSymMatrix before = s;
  NQBitSet swept;
  EXPECT_TRUE(s.SweepOnSelected({0, 1, 2}, 1e-12, swept, true));
  EXPECT_TRUE(swept == NQBitSet(Bits{true, true, false, false}));
  Values b, t;
  ASSERT_TRUE(s.GetRegCoeffs(b, swept));
  for (std::size_t i = 0; i < 3; ++i)
    EXPECT_CLOSE(b[i], (Values{1, 2, 0})[i], i < 2 ? 1e-13 : 0) << i;
  EXPECT_LE(std::fabs(s.GetElem(3, 3)), 1e-12) << "residual sum of squares";
  EXPECT_TRUE(s.GetRegCoeffs(b, NQBitSet(4)));
  EXPECT_EQ(b, Values(3));
  NQBitSet nonRedundant(Bits{false, false, true, false});
  before.GetDiagonal(t);
  EXPECT_TRUE(s.CheckMDependent(2, 1e-12, t, swept, nonRedundant));
  EXPECT_EQ(nonRedundant, NQBitSet(4));
  EXPECT_FALSE(s.CheckMDependent(1, 1e-12, t, swept, nonRedundant)) << "it is swept";
  NQBitSet two(2);
  EXPECT_EACH(false, s.CheckMDependent(4, 1e-12, t, swept, nonRedundant),
              s.CheckMDependent(2, 1e-12, t, swept, two));
  EXPECT_EQ(nonRedundant, NQBitSet(Bits{false, true, false, false}));
  EXPECT_FALSE(s.SweepOnSelected({1, 0}, 1e-12, swept, true)) << "swept diagonals are negative";
  EXPECT_TRUE(s.SweepOnSelected({1, 0}, 1e-12, swept, true, &t));
  EXPECT_EQ(swept.InSet(), 0);
  EXPECT_LE(Distance(ToDense(s), ToDense(before)), 1e-11);
}

// y = 3 2 5 4 on x = 1 2 3 4, which is swept before its half, column 0: y = 2 + 0.6 x, and the
// inverse of (1, x)'(1, x) is 1.5 -0.5 / -0.5 0.2.
TEST(NQSymMatrixSweep, RegressionFromProductsAboutTheMeans) {
  NQSymMatrix s = FromPacked({1.25, 2.5, 5, 1.5, 3, 5}), inverse;
  NQBitSet swept;
  Values b;
  ASSERT_TRUE(s.SweepOnSelected({1, 0}, 1e-12, swept, false));
  ASSERT_TRUE(s.GetRegression(swept, {1.25, 2.5, 3.5}, 4, b, inverse));
  EXPECT_LE(Distance({b}, {{2, 0, 0.6}}), 1e-15);
  EXPECT_LE(Distance(ToDense(inverse), {{1.5, 0, -0.5}, {0, 0, 0}, {-0.5, 0, 0.2}}), 1e-15);
  ASSERT_TRUE(s.GetRegression(swept, {}, 4, b, inverse));
  EXPECT_LE(Distance({b}, {{0, 0, 0.6}}), 1e-15);
  EXPECT_LE(Distance(ToDense(inverse), {{0, 0, 0}, {0, 0, 0}, {0, 0, 0.2}}), 1e-15);
  NQ_EXPECT_REFUSED(s.GetRegression(swept, {2.5, 5}, 4, b, inverse),
                    NQSymMatrix().GetRegression(swept, {}, 4, b, inverse));
}

// In the production form and in plain loops.
TEST(NQSymMatrixSweep, RefusalsChangeNothing) {
  const Bits none{false, false}, second{false, true};
  for (const auto& [name, matrix, before, k, eps, t, check, result] :
       std::vector<std::tuple<const char*, Values, Bits, int, double, Values, bool, bool>>{
#include "math/matrix/sweep_refusals_cases.inc"
       }) {
    for (bool plain : {false, true}) {
      if (plain && t.size() < 2) continue;  // the pointer forms trust their caller
      NQSymMatrix s = FromPacked(matrix);
      NQBitSet swept(before), wanted(before);
      EXPECT_EQ(
          plain ? s.SweepOrig(k, eps, t.data(), swept, check) : s.Sweep(k, eps, t, swept, check),
          result)
          << name;
      if (result) wanted.Set(k, !wanted.IsIn(k));
      EXPECT_TRUE(swept == wanted) << name;
      EXPECT_TRUE(result || AreSame(s.AsVector(), matrix)) << name;
    }
  }
}

TEST(NQSymMatrixSweep, DriversRaiseReferencesOnlyWithCheck) {
  // A pivot of 0.25 with eps 0.5: below eps x 1, above eps x its own size.
  for (const auto& [check, given, reference, rows, raised] :
       {std::tuple{false, true, 0.25, 1, 0.25},
        {true, false, 0.25, 0, 0.25},
        {true, true, 0.25, 0, 1.0},
        {true, true, 1.5, 0, 1.5}}) {
    Values t{reference};
    NQBitSet swept;
    NQSymMatrix s = FromPacked({0.25});
    EXPECT_TRUE(s.SweepOnAll(0.5, swept, check, false, false, given ? &t : nullptr));
    EXPECT_TRUE(swept.InSet() == rows && t[0] == raised) << check << given;
  }
}

TEST(NQSymMatrixSweep, FailedCheckOfSweepOnAllStillZeroesAndChangesSign) {
  for (const auto& [eps, reference] : {std::pair{0.0, 1.0}, {1e-12, -1.0}}) {
    NQSymMatrix s = FromPacked({2, 1, 2});
    Values t{0.5, reference};
    NQBitSet swept(7);
    EXPECT_FALSE(s.SweepOnAll(eps, swept, true, false, true, &t));
    EXPECT_EQ(s.AsVector(), Values({-2, -1, -2}));
    EXPECT_TRUE(swept == NQBitSet(2) && t[0] == 0.5);
    EXPECT_FALSE(s.SweepOnAll(eps, swept, true, true, false, &t));
    EXPECT_EQ(s.AsVector(), Values({0, 0, 0}));
  }
}

TEST(NQSymMatrixSweep, ManyAndTheLogDeterminant) {
  for (bool pivotBefore : {true, false}) {
    NQSymMatrix s = ToSym(Pascal(6).matrix);  // every leading determinant is 1
    NQBitSet swept = NQBitSet(Bits{true, true, false, false, false, false});
    double logDet = 5;
    EXPECT_TRUE(s.SweepOnMany(4, 1e-14, pivotBefore, swept, logDet, true));
    EXPECT_TRUE(std::fabs(logDet) <= 1e-12 && swept.InSet() == 4) << logDet;
    NQSymMatrix d = FromPacked({2, 0, 0, 0, 0, 8, 0, 0, 0, 1});
    NQBitSet fresh, first;
    EXPECT_TRUE(d.SweepOnMany(3, 1e-14, pivotBefore, fresh, logDet, true));
    EXPECT_CLOSE(logDet, pivotBefore ? std::log(16) : -std::log(16), 1e-15);
    EXPECT_TRUE(fresh == NQBitSet(Bits{true, false, true, false}));
    EXPECT_TRUE(FromPacked({4}).SweepOnMany(1, 1e-14, pivotBefore, first, logDet, true));
    EXPECT_TRUE(first == NQBitSet(Bits{true}));
  }
  NQSymMatrix s = FromPacked({2, 0, 2});
  for (auto [rows, eps, size, t] : std::vector<std::tuple<int, double, int, Values>>{
#include "math/matrix/many_refusals_cases.inc"
       }) {
    NQBitSet swept(size);
    double logDet = 5;
    EXPECT_FALSE(s.SweepOnMany(rows, eps, true, swept, logDet, true, &t));
    EXPECT_EQ(logDet, 5);
  }
  NQBitSet swept(2), shortSet(1);
  Values t{1, -1};
  NQ_EXPECT_REFUSED(s.SweepOnSelected({0, 2}, 1e-12, swept, true),
                    s.SweepOnSelected({-1}, 1e-12, swept, false),
                    s.SweepOnSelected({0}, 1e-12, shortSet, true),
                    s.SweepOnSelected({0}, 1e-12, swept, true, &t));
  EXPECT_EQ(s.AsVector(), Values({2, 0, 2}));
}

TEST(NQSymMatrixSweep, RedundantRowsEndAsZeroAndGiveAGeneralisedInverse) {
  const NQSymMatrix m = FromPacked({4, 2, 5, 6, 7, 13, 1, 0, 1, 3});  // 2 = 0 + 1
  NQSymMatrix g = m;
  NQBitSet swept, nonRedundant;
  EXPECT_TRUE(g.SweepOnAll(1e-12, swept, true, true, true));
  EXPECT_TRUE(swept == NQBitSet(Bits{true, true, false, true}));
  for (int j = 0; j < 4; ++j)
    EXPECT_TRUE(g.GetElem(2, j) == 0 && !std::signbit(g.GetElem(2, j))) << j;
  EXPECT_EQ(g.CheckGMG(m, 1e-12, nonRedundant), 0);
  EXPECT_TRUE(nonRedundant == swept);
  g.SetElem(0, 1, g.GetElem(0, 1) + 0.1);
  EXPECT_GT(g.CheckGMG(m, 1e-12, nonRedundant), 0);
  EXPECT_EQ(g.CheckGMG(NQSymMatrix(3, true), 1e-12, nonRedundant), -1);
  EXPECT_EQ(FromPacked({0.5}).CheckGMG(FromPacked({2}), 0, nonRedundant), 0);
  // G M G is G (1 + 2^-20), too far from G for this eps.
  EXPECT_EQ(FromPacked({0x1p-40}).CheckGMG(FromPacked({0x1p40 + 0x1p20}), 0x1p-21, nonRedundant),
            1);
}

TEST(NQSymMatrixSweep, CallsGoThroughTheInterface) {
  struct Derived : NQSymMatrix {
    Derived() : NQSymMatrix(FromPacked({4, 0, 4})) {}
    void GetDiagonal(Values& out) const override { out = {1e9, 1}; }
    bool ZeroOut(int i) override { return SetRowColToConst(i, 7); }
  } s;
  NQBitSet swept;
  EXPECT_TRUE(s.SweepOnAll(1e-6, swept, false, true, false));
  EXPECT_TRUE(swept == NQBitSet(Bits{false, true}));
  EXPECT_EQ(s.GetElem(0, 0), 7);
}

}  // namespace
}  // namespace NQMath_940
