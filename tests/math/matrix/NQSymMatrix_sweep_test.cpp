// Sweep: inverses with exact answers, refusals and the state after them, the drivers' rules.
#include <nqcommon/math/matrix/NQSymMatrix.h>

#include <cmath>
#include <tuple>

#include "math/matrix/matrix_support.h"
#include "support/known_matrices.h"

namespace NQMath_940 {
namespace {

using namespace nqtest;

TEST(NQSymMatrixSweep, InvertsKnownMatrices) {
  for (const KnownMatrix& known : KnownMatrices()) {
    NQSymMatrix s = ToSym(known.matrix);
    NQBitSet swept;
    EXPECT_TRUE(s.SweepOnAll(1e-14, swept, true, true, true)) << known.name;
    EXPECT_EQ(swept.InSet(), s.GetNRows()) << known.name;
    EXPECT_LE(known.InverseError(s), 1) << known.name;
  }
}

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
  NQBitSet nonRedundant(4);
  before.GetDiagonal(t);
  EXPECT_TRUE(s.CheckMDependent(2, 1e-12, t, swept, nonRedundant));
  EXPECT_FALSE(s.CheckMDependent(4, 1e-12, t, swept, nonRedundant));
  EXPECT_FALSE(s.SweepOnSelected({1, 0}, 1e-12, swept, true)) << "swept diagonals are negative";
  EXPECT_TRUE(s.SweepOnSelected({1, 0}, 1e-12, swept, true, &t));
  EXPECT_EQ(swept.InSet(), 0);
  for (std::size_t k = 0; k < before.AsVectorConst().size(); ++k)
    EXPECT_NEAR(s.AsVectorConst()[k], before.AsVectorConst()[k], 1e-11);
}

// In the production form and in plain loops.
TEST(NQSymMatrixSweep, RefusalsChangeNothing) {
  const Bits none{false, false}, second{false, true};
  for (const auto& [name, matrix, before, k, eps, t, check, result] :
       std::vector<std::tuple<const char*, Values, Bits, int, double, Values, bool, bool>>{
#include "golden/matrix_sweep_refusals.inc"
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
  for (const auto& [check, given, rows, raised] :
       {std::tuple{false, true, 1, 0.25}, {true, false, 0, 0.25}, {true, true, 0, 1.0}}) {
    Values t{0.25};
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
    NQSymMatrix d = FromPacked({2, 0, 0, 0, 0, 8});
    NQBitSet fresh;
    EXPECT_TRUE(d.SweepOnMany(3, 1e-14, pivotBefore, fresh, logDet, true));
    EXPECT_CLOSE(logDet, pivotBefore ? std::log(16) : -std::log(16), 1e-15);
    EXPECT_TRUE(fresh == NQBitSet(Bits{true, false, true}));
  }
  NQSymMatrix s = FromPacked({2, 0, 2});
  for (auto [rows, eps, size, t] : {std::tuple<int, double, int, Values>{0, 1e-12, 2, {1, 1}},
                                    {3, 1e-12, 3, {1, 1}},
                                    {2, 0, 2, {1, 1}},
                                    {2, 1e-12, 1, {1, 1}},
                                    {2, 1e-12, 2, {1, -1}},
                                    {2, 1e-12, 2, {1}}}) {
    NQBitSet swept(size);
    double logDet = 5;
    EXPECT_FALSE(s.SweepOnMany(rows, eps, true, swept, logDet, true, &t));
    EXPECT_EQ(logDet, 5);
  }
  NQBitSet swept(2), shortSet(1);
  Values t{1, -1};
  EXPECT_FALSE(s.SweepOnSelected({0, 2}, 1e-12, swept, true) ||
               s.SweepOnSelected({-1}, 1e-12, swept, false) ||
               s.SweepOnSelected({0}, 1e-12, shortSet, true) ||
               s.SweepOnSelected({0}, 1e-12, swept, true, &t));
  EXPECT_EQ(s.AsVector(), Values({2, 0, 2}));
}

TEST(NQSymMatrixSweep, RedundantRowsEndAsZeroAndGiveAGeneralisedInverse) {
  const NQSymMatrix m = FromPacked({4, 2, 5, 6, 7, 13, 1, 0, 1, 3});  // 2 = 0 + 1
  NQSymMatrix g = m;
  NQBitSet swept, nonRedundant;
  EXPECT_TRUE(g.SweepOnAll(1e-12, swept, true, true, true));
  EXPECT_TRUE(swept == NQBitSet(Bits{true, true, false, true}));
  for (int j = 0; j < 4; ++j) EXPECT_EQ(g.GetElem(2, j), 0);
  EXPECT_EQ(g.CheckGMG(m, 1e-12, nonRedundant), 0);
  EXPECT_TRUE(nonRedundant == swept);
  g.SetElem(0, 1, g.GetElem(0, 1) + 0.1);
  EXPECT_GT(g.CheckGMG(m, 1e-12, nonRedundant), 0);
  EXPECT_EQ(g.CheckGMG(NQSymMatrix(3, true), 1e-12, nonRedundant), -1);
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
