// Indefinite solves, and rank-one changes of a Cholesky factor.
#include <nqcommon/math/matrix/NQSymMatrix.h>

#include <tuple>

#include "math/matrix/matrix_support.h"

namespace NQMath_940 {
namespace {

using namespace nqtest;

TEST(NQSymMatrixIndefinite, Solves) {
  const Dense saddle{{0, 1}, {1, 5}};
  for (const auto& [name, matrix, want, eps, solves, leftOut] :
       std::vector<std::tuple<const char*, Dense, Values, double, bool, int>>{
#include "golden/matrix_indefinite_systems.inc"
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
  EXPECT_FALSE(s.SolveIndefinite(x, 0.9, NQBitSet(Bits{true, true, false}), x) ||
               s.SolveIndefinite({1, 2}, 0, x) || s.SolveIndefinite({1, 2}, 0, NQBitSet(3), x) ||
               NQSymMatrix().SolveIndefinite({}, 0, x));
  ASSERT_TRUE(s.SolveIndefinite(x, 1e-12, NQBitSet(Bits{true, false, true}), x));
  EXPECT_LE(Distance({x}, {{4, 0, 1}}), 1e-14);
}

TEST(NQSymMatrixIndefinite, RankOneChangesOfAFactor) {
  const Dense three{{2, 0, 0}, {1, 3, 0}, {-4, 5, 1}}, hole{{2, 0, 0}, {1, 0, 0}, {3, 0, 4}};
  // Small, larger than the pivots, with zeros, nothing, and beside a zero pivot.
  for (const auto& [l, v] : {std::pair<Dense, Values>{{{3}}, {-4}},
                             {three, {1, 1, 1}},
                             {three, {-50, 70, -90}},
                             {three, {0, -9, 0}},
                             {three, {0, 0, 0}},
                             {hole, {6, 3, -5}}}) {
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
  // A zero pivot that the update fills.
  NQSymMatrix l = ToSym({{2, 0}, {1, 0}});
  ASSERT_TRUE(l.LTCholUpdateR1({0, -3}));
  EXPECT_EQ(l.AsVector(), (Values{2, 1, 3}));
  for (const Values& v : {Values{2, 1}, Values{5, 0}, Values{0, 3.5}, Values{kNaN, 0}, Values{1}})
    EXPECT_FALSE(l.LTCholDowndate(v)) << "not positive definite, or too short";
  EXPECT_EQ(l.AsVector(), (Values{2, 1, 3}));
  EXPECT_FALSE(l.LTCholUpdateR1({1, 2, 3}));
}

}  // namespace
}  // namespace NQMath_940
