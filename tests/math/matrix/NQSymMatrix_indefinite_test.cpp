// Indefinite solves, and rank-one changes of a Cholesky factor.
#include <gtest/gtest.h>

#include <nqcommon/math/matrix/NQSymMatrix.h>

#include "support/rect.h"
#include "support/special_values.h"

namespace NQMath_940 {
namespace {

using nqtest::Column;
using nqtest::Dense;
using nqtest::Distance;
using nqtest::kNaN;
using nqtest::ToDense;
using nqtest::ToSym;
using nqtest::Trans;
using Bits = std::vector<bool>;
using Vec = std::vector<double>;

TEST(NQSymMatrixIndefinite, Solves) {
  const Dense saddle{{0, 1}, {1, 5}};
  const struct {
    const char* name;
    Dense matrix;
    Vec x;  // of the answer; b = S x
    double eps;
    bool solves;
    int leftOut;  // by the generalised inverse
  } rows[] = {
      {"order 1", {{-4}}, {3}, 1e-12, true, 0},
      {"zero diagonal", {{0, 2}, {2, 0}}, {3, -1}, 1e-12, true, 0},
      {"both signs", {{1, 2, 3}, {2, 0, -1}, {3, -1, -4}}, {1, -2, 5}, 1e-12, true, 0},
      {"eps 0", saddle, {2, 3}, 0, true, -1},
      {"NaN eps", saddle, {2, 3}, kNaN, false, -1},
      {"negative eps", saddle, {2, 3}, -1, false, -1},
      {"eps is of lengths", {{1, 1}, {1, 1.3}}, {1, 2}, 0.1, false, 0},
      {"zero row", {{0, 0, 1}, {0, 0, 0}, {1, 0, 0}}, {2, 0, 3}, 1e-9, false, 1},
      {"repeated row", {{0, 1, 1}, {1, 2, 2}, {1, 2, 2}}, {5, 3, 0}, 1e-9, false, 1},
      {"zero", {{0, 0}, {0, 0}}, {0, 0}, 1e-9, false, 2},
      {"NaN", {{kNaN, 0}, {0, 1}}, {0, 0}, 1e-9, false, 1},
  };
  for (const auto& row : rows) {
    const NQSymMatrix s = ToSym(row.matrix);
    const Vec b = Trans(row.matrix * Column(row.x))[0];
    Vec x{7}, general{7};
    EXPECT_EQ(s.SolveIndefinite(b, row.eps, x), row.solves) << row.name;
    EXPECT_EQ(s.SolveIndefiniteGI(b, row.eps, general), row.leftOut) << row.name;
    EXPECT_LE(Distance({x}, {row.solves ? row.x : Vec{7}}), 1e-13) << row.name;
    EXPECT_LE(Distance({general}, {row.leftOut >= 0 ? row.x : Vec{7}}), 1e-12) << row.name;
  }
  // With rows 0 and 2 alone: (1 3; 3 -4) x = (7, 8).
  const NQSymMatrix s = ToSym(rows[2].matrix);
  Vec x{7, 100, 8};
  EXPECT_FALSE(s.SolveIndefinite(x, 0.9, NQBitSet(Bits{true, true, false}), x) ||
               s.SolveIndefinite({1, 2}, 0, x) || s.SolveIndefinite({1, 2}, 0, NQBitSet(3), x) ||
               NQSymMatrix().SolveIndefinite({}, 0, x));
  ASSERT_TRUE(s.SolveIndefinite(x, 1e-12, NQBitSet(Bits{true, false, true}), x));
  EXPECT_LE(Distance({x}, {{4, 0, 1}}), 1e-14);
}

TEST(NQSymMatrixIndefinite, RankOneChangesOfAFactor) {
  const Dense three{{2, 0, 0}, {1, 3, 0}, {-4, 5, 1}}, hole{{2, 0, 0}, {1, 0, 0}, {3, 0, 4}};
  const struct {
    const char* name;
    Dense l;
    Vec v;
  } rows[] = {{"order 1", {{3}}, {-4}},
              {"small", three, {1, 1, 1}},
              {"larger than the pivots", three, {-50, 70, -90}},
              {"zeros", three, {0, -9, 0}},
              {"nothing", three, {0, 0, 0}},
              {"zero pivot", hole, {6, 3, -5}}};
  for (const auto& row : rows) {
    NQSymMatrix factor = ToSym(row.l);
    const auto expectProduct = [&](Dense wanted, double added) {
      const Dense L = nqtest::Lower(ToDense(factor));
      for (std::size_t i = 0; i < L.size(); ++i) {
        EXPECT_GE(L[i][i], 0) << row.name;
        for (std::size_t j = 0; j < L.size(); ++j) wanted[i][j] += added * row.v[i] * row.v[j];
      }
      EXPECT_LE(Distance(L * Trans(L), wanted), 1e-11) << row.name << " added " << added;
    };
    ASSERT_TRUE(factor.LTCholUpdateR1(row.v)) << row.name;
    expectProduct(row.l * Trans(row.l), 1);
    ASSERT_TRUE(factor.LTCholDowndate(row.v)) << row.name;
    expectProduct(row.l * Trans(row.l), 0);
  }
  // A zero pivot that the update fills.
  NQSymMatrix l = ToSym({{2, 0}, {1, 0}});
  ASSERT_TRUE(l.LTCholUpdateR1({0, -3}));
  EXPECT_EQ(l.AsVector(), (Vec{2, 1, 3}));
  for (const Vec& v : {Vec{2, 1}, Vec{5, 0}, Vec{0, 3.5}, Vec{kNaN, 0}, Vec{1}})
    EXPECT_FALSE(l.LTCholDowndate(v)) << "not positive definite, or too short";
  EXPECT_EQ(l.AsVector(), (Vec{2, 1, 3}));
  EXPECT_FALSE(l.LTCholUpdateR1({1, 2, 3}));
}

}  // namespace
}  // namespace NQMath_940
