// Sweep: inverses with exact answers, refusals and the state after them, the drivers' rules.
#include <gtest/gtest.h>

#include <nqcommon/math/matrix/NQSymMatrix.h>

#include <cmath>
#include <functional>
#include <limits>

#include "support/compare.h"
#include "support/dense.h"
#include "support/known_matrices.h"

namespace NQMath_940 {
namespace {

using nqtest::Dense;
using nqtest::ToDense;
using nqtest::ToSym;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

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

TEST(NQSymMatrixSweep, RefusalsChangeNothing) {
  struct Row {
    const char* name;
    Dense matrix;
    std::vector<bool> swept;
    int k;
    double eps;
    std::vector<double> t;
    bool check;
    bool result;
  };
  const Row rows[] = {
      {"zero pivot", {{0, 1}, {1, 1}}, {false, false}, 0, 1e-12, {1, 1}, false, false},
      {"negative pivot", {{-2, 1}, {1, 1}}, {false, false}, 0, 1e-12, {1, 1}, false, false},
      {"pivot at the bound", {{0.5, 0}, {0, 1}}, {false, false}, 0, 0.25, {2, 1}, false, false},
      {"pivot above the bound", {{0.75, 0}, {0, 1}}, {false, false}, 0, 0.25, {2, 1}, false, true},
      {"NaN pivot is not below the bound",
       {{kNaN, 0}, {0, 1}},
       {false, false},
       0,
       0.25,
       {2, 1},
       false,
       true},
      // (-1 - 1 / 0.5) 0.25 t1 = -0.75 t1
      {"swept row above its bound",
       {{0.5, 0}, {1, -1}},
       {false, true},
       0,
       0.25,
       {1, 1},
       false,
       true},
      {"swept row at its bound",
       {{0.5, 0}, {1, -1}},
       {false, true},
       0,
       0.25,
       {1, 4.0 / 3},
       false,
       false},
      {"swept row of NaN", {{0.5, 0}, {kNaN, -1}}, {false, true}, 0, 0.25, {1, 1}, false, false},
      {"sweeping out is not tested", {{-0.5, 0}, {0, 1}}, {true, false}, 0, 1, {9, 9}, false, true},
      {"check: row", {{1, 0}, {0, 1}}, {false, false}, 2, 1e-12, {1, 1}, true, false},
      {"check: eps", {{1, 0}, {0, 1}}, {false, false}, 0, 0, {1, 1}, true, false},
      {"check: set", {{1, 0}, {0, 1}}, {false}, 0, 1e-12, {1, 1}, true, false},
      {"check: reference", {{1, 0}, {0, 1}}, {false, false}, 0, 1e-12, {1, -1}, true, false},
      {"too few references", {{1, 0}, {0, 1}}, {false, false}, 0, 1e-12, {1}, false, false},
  };
  for (const Row& row : rows) {
    for (bool plain : {false, true}) {
      NQSymMatrix s = ToSym(row.matrix);
      const std::vector<double> before = s.AsVector();
      NQBitSet swept(row.swept);
      if (plain && row.t.size() < 2) continue;  // the pointer forms trust their caller
      const bool result = plain ? s.SweepOrig(row.k, row.eps, row.t.data(), swept, row.check)
                                : s.Sweep(row.k, row.eps, row.t, swept, row.check);
      EXPECT_EQ(result, row.result) << row.name;
      if (result) {
        EXPECT_EQ(swept.IsIn(row.k), !row.swept[static_cast<std::size_t>(row.k)]) << row.name;
      } else {
        EXPECT_TRUE(nqtest::AreSame(s.AsVector(), before)) << row.name;
        EXPECT_TRUE(swept == NQBitSet(row.swept)) << row.name;
      }
    }
  }
}

TEST(NQSymMatrixSweep, DriversRaiseReferencesOnlyWithCheck) {
  // A pivot of 0.25 with eps 0.5: below eps x 1, above eps x its own size.
  std::vector<double> t{0.25};
  NQBitSet swept;
  const auto sweepAll = [&](bool check, std::vector<double>* reference) {
    NQSymMatrix s = ToSym({{0.25}});
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
    NQSymMatrix s = ToSym({{2, 1}, {1, 2}});
    std::vector<double> t{0.5, reference};
    NQBitSet swept(7);
    EXPECT_FALSE(s.SweepOnAll(eps, swept, true, false, true, &t));
    EXPECT_EQ(ToDense(s), (Dense{{-2, -1}, {-1, -2}}));
    EXPECT_TRUE(swept == NQBitSet(2));
    EXPECT_EQ(t[0], 0.5);
    EXPECT_FALSE(s.SweepOnAll(eps, swept, true, true, false, &t));
    EXPECT_EQ(ToDense(s), (Dense{{0, 0}, {0, 0}}));
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
    NQSymMatrix d = ToSym({{2, 0, 0}, {0, 0, 0}, {0, 0, 8}});
    NQBitSet fresh;
    EXPECT_TRUE(d.SweepOnMany(3, 1e-14, pivotBefore, fresh, logDet, true));
    EXPECT_CLOSE(logDet, pivotBefore ? std::log(16) : -std::log(16), 1e-15);
    EXPECT_TRUE(fresh == Bits({true, false, true}));
  }
  NQSymMatrix s = ToSym({{2, 0}, {0, 2}});
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
  EXPECT_EQ(ToDense(s), (Dense{{2, 0}, {0, 2}}));
}

TEST(NQSymMatrixSweep, RedundantRowsEndAsZeroAndGiveAGeneralisedInverse) {
  const NQSymMatrix m =
      ToSym({{4, 2, 6, 1}, {2, 5, 7, 0}, {6, 7, 13, 1}, {1, 0, 1, 3}});  // 2 = 0 + 1
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
    Derived() : NQSymMatrix(ToSym({{4, 0}, {0, 4}})) {}
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
