// Sweep: inverses with exact answers, refusals and the state after them, the drivers' rules.
#include <gtest/gtest.h>

#include <nqcommon/math/matrix/NQSymMatrix.h>

#include <cmath>

#include "support/compare.h"
#include "support/dense.h"
#include "support/known_matrices.h"
#include "support/special_values.h"

namespace NQMath_940 {
namespace {

using nqtest::FromPacked;
using nqtest::kNaN;
using nqtest::ToSym;
using Vec = std::vector<double>;

NQBitSet Bits(std::vector<bool> bits) { return NQBitSet(std::move(bits)); }

TEST(NQSymMatrixSweep, InvertsKnownMatrices) {
  for (const nqtest::KnownMatrix& known : nqtest::KnownMatrices()) {
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
  EXPECT_TRUE(swept == Bits({true, true, false, false}));
  std::vector<double> b;
  ASSERT_TRUE(s.GetRegCoeffs(b, swept));
  EXPECT_CLOSE(b[0], 1, 1e-13);
  EXPECT_CLOSE(b[1], 2, 1e-13);
  EXPECT_EQ(b[2], 0);
  EXPECT_LE(std::fabs(s.GetElem(3, 3)), 1e-12) << "residual sum of squares";
  NQBitSet nonRedundant(4);
  std::vector<double> t;
  before.GetDiagonal(t);
  EXPECT_TRUE(s.CheckMDependent(2, 1e-12, t, swept, nonRedundant));
  EXPECT_FALSE(s.CheckMDependent(4, 1e-12, t, swept, nonRedundant));
  EXPECT_FALSE(s.SweepOnSelected({1, 0}, 1e-12, swept, true)) << "swept diagonals are negative";
  EXPECT_TRUE(s.SweepOnSelected({1, 0}, 1e-12, swept, true, &t));
  EXPECT_EQ(swept.InSet(), 0);
  for (std::size_t k = 0; k < before.AsVectorConst().size(); ++k)
    EXPECT_NEAR(s.AsVectorConst()[k], before.AsVectorConst()[k], 1e-11);
}

// One sweep of row k of a matrix of order 2, in the production form and in plain loops.
struct Sweep {
  Vec matrix;
  std::vector<bool> swept{false, false};
  int k = 0;
  double eps = 1e-12;
  Vec t{1, 1};
  bool check = false;

  void Expect(bool result, const char* name) const {
    for (bool plain : {false, true}) {
      if (plain && t.size() < 2) continue;  // the pointer forms trust their caller
      NQSymMatrix s = FromPacked(matrix);
      NQBitSet set(swept);
      EXPECT_EQ(plain ? s.SweepOrig(k, eps, t.data(), set, check) : s.Sweep(k, eps, t, set, check),
                result)
          << name;
      NQBitSet wanted(swept);
      if (result) wanted.Set(k, !wanted.IsIn(k));
      EXPECT_TRUE(set == wanted) << name;
      EXPECT_TRUE(result || nqtest::AreSame(s.AsVector(), matrix)) << name;
    }
  }
};

TEST(NQSymMatrixSweep, RefusalsChangeNothing) {
  Sweep{{0, 1, 1}}.Expect(false, "zero pivot");
  Sweep{{-2, 1, 1}}.Expect(false, "negative pivot");
  const std::vector<bool> none{false, false}, second{false, true};
  Sweep{{0.5, 0, 1}, none, 0, 0.25, {2, 1}}.Expect(false, "pivot at the bound");
  Sweep{{0.75, 0, 1}, none, 0, 0.25, {2, 1}}.Expect(true, "pivot above the bound");
  Sweep{{kNaN, 0, 1}, none, 0, 0.25, {2, 1}}.Expect(true, "NaN pivot: not below the bound");
  // (-1 - 1 / 0.5) 0.25 t[1] = -0.75 t[1]
  Sweep{{0.5, 1, -1}, second, 0, 0.25}.Expect(true, "swept row above its bound");
  Sweep{{0.5, 1, -1}, second, 0, 0.25, {1, 4.0 / 3}}.Expect(false, "swept row at its bound");
  Sweep{{0.5, kNaN, -1}, second, 0, 0.25}.Expect(false, "swept row of NaN");
  Sweep{{1, 0, -0.5}, second, 1, 1, {9, 9}}.Expect(true, "sweeping out is not tested");
  Sweep{{1, 0, 1}, none, 2, 1e-12, {1, 1}, true}.Expect(false, "check: row");
  Sweep{{1, 0, 1}, none, 0, 0, {1, 1}, true}.Expect(false, "check: eps");
  Sweep{{1, 0, 1}, {false}, 0, 1e-12, {1, 1}, true}.Expect(false, "check: set");
  Sweep{{1, 0, 1}, none, 0, 1e-12, {1, -1}, true}.Expect(false, "check: reference");
  Sweep{{1, 0, 1}, none, 0, 1e-12, {1}}.Expect(false, "too few references");
}

TEST(NQSymMatrixSweep, DriversRaiseReferencesOnlyWithCheck) {
  // A pivot of 0.25 with eps 0.5: below eps x 1, above eps x its own size.
  std::vector<double> t{0.25};
  NQBitSet swept;
  const auto sweepAll = [&](bool check, std::vector<double>* reference) {
    NQSymMatrix s = FromPacked({0.25});
    EXPECT_TRUE(s.SweepOnAll(0.5, swept, check, false, false, reference));
    return swept.InSet();
  };
  EXPECT_EQ(sweepAll(false, &t), 1);
  EXPECT_EQ(t[0], 0.25);
  EXPECT_EQ(sweepAll(true, nullptr), 0);
  EXPECT_EQ(sweepAll(true, &t), 0);
  EXPECT_EQ(t[0], 1) << "raised in the caller's vector";
}

TEST(NQSymMatrixSweep, FailedCheckOfSweepOnAllStillZeroesAndChangesSign) {
  for (const auto& [eps, reference] : {std::pair{0.0, 1.0}, std::pair{1e-12, -1.0}}) {
    NQSymMatrix s = FromPacked({2, 1, 2});
    std::vector<double> t{0.5, reference};
    NQBitSet swept(7);
    EXPECT_FALSE(s.SweepOnAll(eps, swept, true, false, true, &t));
    EXPECT_EQ(s.AsVector(), Vec({-2, -1, -2}));
    EXPECT_TRUE(swept == NQBitSet(2));
    EXPECT_EQ(t[0], 0.5);
    EXPECT_FALSE(s.SweepOnAll(eps, swept, true, true, false, &t));
    EXPECT_EQ(s.AsVector(), Vec({0, 0, 0}));
  }
}

TEST(NQSymMatrixSweep, ManyAndTheLogDeterminant) {
  for (bool pivotBefore : {true, false}) {
    NQSymMatrix s = ToSym(nqtest::Pascal(6).matrix);  // every leading determinant is 1
    NQBitSet swept = Bits({true, true, false, false, false, false});
    double logDet = 5;
    EXPECT_TRUE(s.SweepOnMany(4, 1e-14, pivotBefore, swept, logDet, true));
    EXPECT_NEAR(logDet, 0, 1e-12);
    EXPECT_EQ(swept.InSet(), 4);
    NQSymMatrix d = FromPacked({2, 0, 0, 0, 0, 8});
    NQBitSet fresh;
    EXPECT_TRUE(d.SweepOnMany(3, 1e-14, pivotBefore, fresh, logDet, true));
    EXPECT_CLOSE(logDet, pivotBefore ? std::log(16) : -std::log(16), 1e-15);
    EXPECT_TRUE(fresh == Bits({true, false, true}));
  }
  NQSymMatrix s = FromPacked({2, 0, 2});
  struct Row {
    int m;
    double eps;
    NQBitSet swept;
    std::vector<double> t;
  };
  for (Row row : {Row{0, 1e-12, NQBitSet(2), {1, 1}}, Row{3, 1e-12, NQBitSet(3), {1, 1}},
                  Row{2, 0, NQBitSet(2), {1, 1}}, Row{2, 1e-12, NQBitSet(1), {1, 1}},
                  Row{2, 1e-12, NQBitSet(2), {1, -1}}, Row{2, 1e-12, NQBitSet(2), {1}}}) {
    double logDet = 5;
    EXPECT_FALSE(s.SweepOnMany(row.m, row.eps, true, row.swept, logDet, true, &row.t));
    EXPECT_EQ(logDet, 5);
  }
  NQBitSet swept(2), shortSet(1);
  std::vector<double> t{1, -1};
  EXPECT_FALSE(s.SweepOnSelected({0, 2}, 1e-12, swept, true) ||
               s.SweepOnSelected({-1}, 1e-12, swept, false) ||
               s.SweepOnSelected({0}, 1e-12, shortSet, true) ||
               s.SweepOnSelected({0}, 1e-12, swept, true, &t));
  EXPECT_EQ(s.AsVector(), Vec({2, 0, 2}));
}

TEST(NQSymMatrixSweep, RedundantRowsEndAsZeroAndGiveAGeneralisedInverse) {
  const NQSymMatrix m = FromPacked({4, 2, 5, 6, 7, 13, 1, 0, 1, 3});  // 2 = 0 + 1
  NQSymMatrix g = m;
  NQBitSet swept, nonRedundant;
  EXPECT_TRUE(g.SweepOnAll(1e-12, swept, true, true, true));
  EXPECT_TRUE(swept == Bits({true, true, false, true}));
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
    void GetDiagonal(std::vector<double>& out) const override { out = {1e9, 1}; }
    bool ZeroOut(int i) override { return SetRowColToConst(i, 7); }
  } s;
  NQBitSet swept;
  EXPECT_TRUE(s.SweepOnAll(1e-6, swept, false, true, false));
  EXPECT_TRUE(swept == Bits({false, true}));
  EXPECT_EQ(s.GetElem(0, 0), 7);
}

}  // namespace
}  // namespace NQMath_940
