// Indefinite solves, and rank-one changes of a Cholesky factor.
#include <gtest/gtest.h>

#include <nqcommon/math/matrix/NQSymMatrix.h>

#include <cmath>

#include "support/compare.h"
#include "support/dense.h"
#include "support/special_values.h"

namespace NQMath_940 {
namespace {

using nqtest::Column;
using nqtest::Dense;
using nqtest::kNaN;
using nqtest::ToDense;
using nqtest::ToSym;
using nqtest::Trans;

TEST(NQSymMatrixIndefinite, Solves) {
  struct Row {
    const char* name;
    Dense matrix;
    std::vector<double> x;  // of the answer; b = S x
    double eps;
    bool solves;
    int leftOut;  // by the generalised inverse
  };
  const Row rows[] = {
      {"order 1", {{-4}}, {3}, 1e-12, true, 0},
      {"zero diagonal", {{0, 2}, {2, 0}}, {3, -1}, 1e-12, true, 0},
      {"both signs", {{1, 2, 3}, {2, 0, -1}, {3, -1, -4}}, {1, -2, 5}, 1e-12, true, 0},
      {"eps 0", {{0, 1}, {1, 5}}, {2, 3}, 0, true, -1},
      {"NaN eps", {{0, 1}, {1, 5}}, {2, 3}, kNaN, false, -1},
      {"negative eps", {{0, 1}, {1, 5}}, {2, 3}, -1, false, -1},
      {"zero row", {{0, 0, 1}, {0, 0, 0}, {1, 0, 0}}, {2, 0, 3}, 1e-9, false, 1},
      {"repeated row", {{0, 1, 1}, {1, 2, 2}, {1, 2, 2}}, {5, 3, 0}, 1e-9, false, 1},
      {"zero", {{0, 0}, {0, 0}}, {0, 0}, 1e-9, false, 2},
      {"NaN", {{kNaN, 0}, {0, 1}}, {0, 0}, 1e-9, false, 1},
      {"order 0", {}, {}, 1e-9, false, -1},
  };
  for (const Row& row : rows) {
    const NQSymMatrix s = ToSym(row.matrix);
    const std::vector<double> b = row.x.empty() ? row.x : Trans(row.matrix * Column(row.x))[0];
    std::vector<double> x{7}, general{7};
    EXPECT_EQ(s.SolveIndefinite(b, row.eps, x), row.solves) << row.name;
    EXPECT_EQ(s.SolveIndefiniteGI(b, row.eps, general), row.leftOut) << row.name;
    for (std::size_t i = 0; i < row.x.size(); ++i) {
      if (row.solves) EXPECT_NEAR(x[i], row.x[i], 1e-13) << row.name << ' ' << i;
      if (row.leftOut >= 0) EXPECT_NEAR(general[i], row.x[i], 1e-12) << row.name << ' ' << i;
    }
    if (!row.solves) EXPECT_EQ(x, std::vector<double>{7}) << row.name;
    if (row.leftOut < 0) EXPECT_EQ(general, std::vector<double>{7}) << row.name;
  }
  // With rows 0 and 2 alone: (1 3; 3 -4) x = (7, 8).
  const NQSymMatrix s = ToSym(rows[2].matrix);
  std::vector<double> x{7, 100, 8};
  ASSERT_TRUE(s.SolveIndefinite(x, 1e-12, NQBitSet(std::vector<bool>{true, false, true}), x));
  EXPECT_NEAR(x[0], 4, 1e-14);
  EXPECT_EQ(x[1], 0);
  EXPECT_NEAR(x[2], 1, 1e-14);
  x = {1, 1, 1};
  EXPECT_FALSE(s.SolveIndefinite(x, 1e-12, NQBitSet(std::vector<bool>{false, false, true}), x) &&
               x[2] != -0.25);
  EXPECT_FALSE(s.SolveIndefinite(x, 0.9, NQBitSet(std::vector<bool>{true, true, false}), x));
  EXPECT_FALSE(s.SolveIndefinite({1, 2}, 0, x) || s.SolveIndefinite({1, 2}, 0, NQBitSet(3), x));
}

TEST(NQSymMatrixIndefinite, RankOneChangesOfAFactor) {
  struct Row {
    const char* name;
    Dense l;
    std::vector<double> v;
  };
  const Dense three{{2, 0, 0}, {1, 3, 0}, {-4, 5, 1}};
  for (const Row& row : {
           Row{"order 0", {}, {}},
           Row{"order 1", {{3}}, {-4}},
           Row{"small", three, {1, 1, 1}},
           Row{"larger than the pivots", three, {-50, 70, -90}},
           Row{"zeros", three, {0, -9, 0}},
           Row{"nothing", three, {0, 0, 0}},
           Row{"zero pivot", {{2, 0, 0}, {1, 0, 0}, {3, 0, 4}}, {6, 3, -5}},
       }) {
    NQSymMatrix l = ToSym(row.l);
    const Dense S = row.l * Trans(row.l), v = Column(row.v), vv = v * Trans(v);
    const auto expectFactorOf = [&](const char* step, double factor) {
      const Dense L = nqtest::Lower(ToDense(l)), product = L * Trans(L);
      for (std::size_t i = 0; i < S.size(); ++i) {
        EXPECT_GE(L[i][i], 0) << row.name << step;
        for (std::size_t j = 0; j < S.size(); ++j) {
          const double wanted = S[i][j] + factor * vv[i][j];
          EXPECT_NEAR(product[i][j], wanted, 1e-11) << row.name << step << i << j;
        }
      }
    };
    ASSERT_TRUE(l.LTCholUpdateR1(row.v)) << row.name;
    expectFactorOf(" updated ", 1);
    ASSERT_TRUE(l.LTCholDowndate(row.v)) << row.name;
    expectFactorOf(" back ", 0);
  }
  // A zero pivot that the update fills.
  NQSymMatrix l = ToSym({{2, 0}, {1, 0}});
  ASSERT_TRUE(l.LTCholUpdateR1({0, -3}));
  EXPECT_EQ(nqtest::Lower(ToDense(l)), (Dense{{2, 0}, {1, 3}}));
  for (const auto& v : {std::vector<double>{2, 1}, {5, 0}, {0, 3.5}, {kNaN, 0}, {1}}) {
    EXPECT_FALSE(l.LTCholDowndate(v)) << "not positive definite, or too short";
    EXPECT_EQ(nqtest::Lower(ToDense(l)), (Dense{{2, 0}, {1, 3}}));
  }
  EXPECT_FALSE(l.LTCholUpdateR1({1, 2, 3}));
}

}  // namespace
}  // namespace NQMath_940
