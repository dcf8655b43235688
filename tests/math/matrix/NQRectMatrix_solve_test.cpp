// Linear systems, orthogonal factors and linear dependence: problems built from their answers.
#include <gtest/gtest.h>

#include <nqcommon/math/matrix/NQRectMatrix.h>
#include <nqcommon/math/matrix/NQSymMatrix.h>

#include "support/known_matrices.h"
#include "support/rect.h"
#include "support/special_values.h"

namespace NQMath_940 {
namespace {

using nqtest::Column;
using nqtest::Dense;
using nqtest::Distance;
using nqtest::kNaN;
using nqtest::ToDense;
using nqtest::ToRect;
using nqtest::Trans;
using Bits = std::vector<bool>;
using Vec = std::vector<double>;

TEST(NQRectMatrixSolve, LinearSystems) {
  const Dense regular{{1, 2}, {3, 4}}, groups{{1, 1, 0}, {1, 1, 0}, {1, 0, 1}, {1, 0, 1}};
  const struct {
    const char* name;
    Dense matrix;
    Vec x, rest;  // b = R x + rest
    double eps;
    bool solves;   // SolveLinearSquare
    int estimate;  // EstimateLinearGI
  } rows[] = {
      {"not symmetric", {{0, 2, 1}, {1, 0, 0}, {3, 1, 1}}, {2, -3, 5}, {0, 0, 0}, 1e-12, true, 0},
      {"Pascal", nqtest::Pascal(4).matrix, {1, -2, 3, -4}, {0, 0, 0, 0}, 1e-12, true, 0},
      {"order 1", {{4}}, {-2}, {0}, 1e-12, true, 0},
      {"eps 0", regular, {1, 2}, {0, 0}, 0, true, -1},
      {"negative eps", regular, {1, 2}, {0, 0}, -1, false, -1},
      {"NaN eps", regular, {1, 2}, {0, 0}, kNaN, false, -1},
      {"singular", {{1, 2}, {2, 4}}, {5, 0}, {0, 0}, 1e-12, false, 1},
      {"sum", {{1, 0, 1}, {1, 1, 2}, {0, 2, 2}}, {1, 2, 0}, {0, 0, 0}, 1e-12, false, 1},
      {"zero", {{0, 0}, {0, 0}}, {0, 0}, {0, 0}, 1e-12, false, 2},
      {"ill for this eps", {{1, 1}, {1, 1.0625}}, {2, 0}, {0, 0}, 0.5, false, 1},
      {"least squares", {{1, 0}, {1, 1}, {1, 2}}, {1, 2}, {1, -2, 1}, 1e-12, false, 0},
      {"short of rank", groups, {3, 4, 0}, {1, -1, 2, -2}, 1e-12, false, 1},
      {"wide", {{1, 0, 1}, {0, 1, 1}}, {2, 3, 0}, {0, 0}, 1e-12, false, 1},
  };
  for (const auto& row : rows) {
    const NQRectMatrix r = ToRect(row.matrix);
    Vec b = Trans(row.matrix * Column(row.x))[0], x{7};
    for (std::size_t i = 0; i < b.size(); ++i) b[i] += row.rest[i];
    EXPECT_EQ(r.SolveLinearSquare(b, x, row.eps), row.solves) << row.name;
    EXPECT_LE(Distance({x}, {row.solves ? row.x : Vec{7}}), 1e-11) << row.name;
    x = b;
    EXPECT_EQ(r.EstimateLinearGI(x, x, row.eps), row.estimate) << row.name << ", in place";
    EXPECT_LE(Distance({x}, {row.estimate >= 0 ? row.x : b}), 1e-11) << row.name;
    EXPECT_EQ(ToDense(r), row.matrix) << row.name;
  }
  Vec x;
  EXPECT_FALSE(ToRect(regular).SolveLinearSquare({1}, x, 0) ||
               NQRectMatrix().SolveLinearSquare({}, x, 0));
  EXPECT_EQ(ToRect(regular).EstimateLinearGI({1}, x, 1), -1);
  EXPECT_EQ(NQRectMatrix(2, 0, true).EstimateLinearGI({1, 2}, x, 1), -1);
}

// Columns of a Hadamard matrix are orthogonal and of norm 2.
const Dense kHadamard{{1, 1, 1}, {1, -1, 1}, {1, 1, -1}, {1, -1, -1}};

TEST(NQRectMatrixSolve, HouseholderQR) {
  NQRectMatrix q = ToRect(kHadamard * Dense{{3, -1, 2}, {0, 5, 4}, {0, 0, 7}});
  NQSymMatrix s;
  ASSERT_TRUE(q.QRDecompositionH(s, q)) << "into itself";
  const Dense factor{{6, 0, 0}, {-2, 10, 0}, {4, 8, 14}}, two{{2, 0, 0}, {0, 2, 0}, {0, 0, 2}};
  EXPECT_LE(Distance(nqtest::Lower(ToDense(s)), factor), 1e-14);
  EXPECT_LE(Distance(ToDense(q) * two, kHadamard), 1e-14);
  // A zero and a dependent column: Q stays orthogonal.
  const Dense deficient{{0, 2, 4}, {0, 1, 2}, {0, 5, 10}}, one{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
  ASSERT_TRUE(ToRect(deficient).QRDecompositionH(s, q));
  const Dense Q = ToDense(q), T = Trans(nqtest::Lower(ToDense(s)));
  EXPECT_LE(Distance(Q * T, deficient), 1e-14);
  EXPECT_LE(Distance(Trans(Q) * Q, one), 1e-15);
  EXPECT_TRUE(T[0][0] >= 0 && T[1][1] >= 0 && T[2][2] >= 0);
  EXPECT_FALSE(ToRect({{1, 2}}).QRDecompositionH(s, q));
  EXPECT_EQ(ToDense(q), Q);
}

// Intercept, one of three codes, and a covariate.
const Dense kCodes{{1, 1, 0, 0, 2}, {1, 1, 0, 0, 4}, {1, 0, 1, 0, 1},
                   {1, 0, 1, 0, 7}, {1, 0, 0, 1, 3}, {1, 0, 0, 1, 5}};

TEST(NQRectMatrixEstimability, Redundancies) {
  const struct {
    const char* name;
    Dense matrix;
    double eps;
    std::vector<int> kept;  // columns
    int redundant;
  } rows[] = {
      {"one of three with intercept", kCodes, 1e-6, {0, 1, 2, 4}, 1},
      {"full rank", kHadamard, 1e-6, {0, 1, 2}, 0},
      {"duplicate", {{1, 2, 1}, {3, 5, 3}, {0, 1, 0}}, 1e-6, {0, 1}, 1},
      {"sum", {{1, 2, 3, 1}, {3, 5, 8, 0}, {0, 1, 1, 0}, {2, 2, 4, 7}}, 1e-6, {0, 1, 3}, 1},
      {"zero column first", {{0, 1}, {0, 2}}, 1e-6, {1}, 1},
      {"eps is of lengths, not squares", {{1, 1}, {0, 1e-4}}, 1e-3, {0}, 1},
      {"above eps", {{1, 1}, {0, 1e-2}}, 1e-3, {0, 1}, 0},
      {"scale free", {{1e-150, 0}, {0, 1e150}}, 1e-6, {0, 1}, 0},
      {"eps 0", {{2, 0}, {0, 1}}, 0, {0, 1}, 0},
      {"negative eps", {{2, 0}, {0, 1}}, -1, {9}, -1},
      {"NaN eps", {{2, 0}, {0, 1}}, kNaN, {9}, -1},
  };
  for (const auto& row : rows) {
    for (bool byRows : {false, true}) {
      SCOPED_TRACE(std::string(row.name) + (byRows ? " by rows" : ""));
      const NQRectMatrix r = ToRect(byRows ? Trans(row.matrix) : row.matrix);
      NQRectMatrix out, kept;
      NQBitSet set, wanted(static_cast<int>(row.matrix[0].size()));
      std::vector<int> indices{9}, extracted{9};
      EXPECT_EQ(r.FindRedundancies(row.eps, set, byRows), row.redundant);
      EXPECT_EQ(r.FindNonRedunIndices(row.eps, indices, byRows), row.redundant);
      EXPECT_EQ(r.ExtractFullRank(row.eps, out, extracted, byRows), row.redundant);
      EXPECT_EQ(indices, row.kept);
      EXPECT_EQ(extracted, row.kept);
      if (row.redundant < 0) continue;
      EXPECT_TRUE(wanted.SetSubset(row.kept, true) && set == wanted);
      EXPECT_TRUE(byRows ? r.ExtractRows(row.kept, kept) : r.ExtractColumns(row.kept, kept));
      EXPECT_EQ(ToDense(out), ToDense(kept));
    }
  }
}

// Column 1 was found redundant before. Added behind it: a column of its own, copies of column 1,
// which is no member, and of the first added, a sum of members, and one that is not.
TEST(NQRectMatrixEstimability, AddedColumns) {
  NQRectMatrix r = ToRect(
      {{1, 0, 0, 0, 0, 1, 5}, {1, 3, 1, 3, 1, 2, 1}, {1, 0, 2, 0, 2, 3, 1}, {1, 0, 4, 0, 4, 5, 2}});
  NQBitSet set(Bits{true, false}), newSet;
  EXPECT_EQ(r.CheckAddColRedundancies(set, newSet), 2);
  EXPECT_TRUE(newSet == NQBitSet(Bits{true, false, true, true, false, false, true}));
  EXPECT_EQ(r.CheckAddColRedundancies(newSet, newSet), 0) << "nothing added";
  EXPECT_EQ(r.CheckAddColRedundancies(NQBitSet(8), newSet), -1);
  EXPECT_EQ(newSet.InSet(), 4);
}

TEST(NQRectMatrixEstimability, EstimableFunctions) {
  const NQRectMatrix x = ToRect(kCodes);
  NQBitSet set;
  x.FindRedundancies(1e-6, set, false);
  const struct {
    const char* name;
    Dense l;
    bool estimable;
  } rows[] = {
      {"cell mean", {{1, 1, 0, 0, 0}}, true},
      {"contrast", {{0, 1, 0, -1, 0}}, true},
      {"slope", {{0, 0, 0, 0, 1}}, true},
      {"grand mean", {{3, 1, 1, 1, 9}}, true},
      {"all rows of the design", kCodes, true},
      {"large coefficients", {{0, 1e9, 1, -1e9 - 1, 0}}, true},
      {"intercept", {{1, 0, 0, 0, 0}}, false},
      {"redundant effect", {{0, 0, 0, 1, 0}}, false},
      {"one row of two", {{1, 1, 0, 0, 0}, {1, 1, 1, 0, 0}}, false},
      {"NaN", {{kNaN, 1, 0, 0, 0}}, false},
      {"shape", {{1, 1}}, false},
  };
  for (const auto& row : rows)
    EXPECT_EQ(x.IsEstimable(ToRect(row.l), set, 1e-9), row.estimable) << row.name;
  const NQRectMatrix mean = ToRect(rows[0].l);
  EXPECT_FALSE(x.IsEstimable(mean, set, -1) || x.IsEstimable(mean, NQBitSet(4), 1e-9));
  set.Set(3, true);
  EXPECT_FALSE(x.IsEstimable(mean, set, 1e-9)) << "dependent members";
}

TEST(NQRectMatrixEstimability, MultiplesOfRows) {
  const struct {
    const char* name;
    Dense rows;
    double eps1, eps2;
    bool multiple;
    double factor;
  } rows[] = {
      {"exact", {{2, -4, 0}, {-1, 2, 0}}, 0, 0, true, -2},
      {"not", {{2, -4, 1}, {-1, 2, 0}}, 0, 0, false, 7},
      {"zero but for eps1", {{2, 1e-9, 4}, {1, -1e-9, 2}}, 1e-8, 0, true, 2},
      {"within eps2", {{2, 4.25}, {1, 2}}, 0, 0.0625, true, 2.125},
      {"outside eps2", {{2, 4.25}, {1, 2}}, 0, 0.0312, false, 7},
      {"zero row", {{0, 0}, {1, 2}}, 0, 0, true, 0},
      {"of a zero row", {{1, 2}, {0, 0}}, 0, 0, false, 7},
      {"both zero", {{0, 0}, {0, 0}}, 0, 0, true, 0},
      {"NaN", {{kNaN, 2}, {1, 2}}, 0, 0, false, 7},
      {"negative eps", {{1, 2}, {1, 2}}, -1, 0, false, 7},
      {"no other row", {{1, 2}}, 0, 0, false, 7},
  };
  for (const auto& row : rows) {
    double factor = 7;
    EXPECT_EQ(ToRect(row.rows).IsERowMultipleOfAnother(0, 1, row.eps1, row.eps2, factor),
              row.multiple)
        << row.name;
    EXPECT_EQ(factor, row.factor) << row.name;
  }
}

// On the space of a one-of-three coding, what remains of a column is its deviation from its group's
// mean. Columns: the covariate, one of the codes, the covariate plus a code.
TEST(NQRectMatrixEstimability, ResidualsOfProjection) {
  NQRectMatrix x, r;
  ASSERT_TRUE(ToRect(kCodes).ExtractColumns({0, 1, 2, 3}, x) &&
              ToRect(kCodes).ExtractColumns({4, 2, 4}, r));
  r.SetElem(0, 2, 3), r.SetElem(1, 2, 5);
  NQBitSet independent, remaining;
  EXPECT_EQ(r.ResidOfOrthProjection(x, 1e-9, independent, remaining), 2);
  EXPECT_TRUE(independent == NQBitSet(Bits{true, true, true, false}));
  EXPECT_TRUE(remaining == NQBitSet(Bits{true, false, false}));
  const Dense wanted{{-1, 0, -1}, {1, 0, 1}, {-3, 0, -3}, {3, 0, 3}, {-1, 0, -1}, {1, 0, 1}},
      got = ToDense(r);
  EXPECT_LE(Distance(got, wanted), 1e-14);
  EXPECT_EQ(r.ResidOfOrthProjection(x, 0, independent, remaining), -1);
  EXPECT_EQ(r.ResidOfOrthProjection(ToRect({{1}}), 1e-9, independent, remaining), -1);
  EXPECT_EQ(ToDense(r), got);
  // Nearly dependent columns: the residual is orthogonal to both nevertheless.
  x = ToRect({{1, 1}, {1, 1 + 1e-7}, {1, 1}, {1, 1}});
  r = ToRect({{1}, {2}, {4}, {8}});
  EXPECT_EQ(r.ResidOfOrthProjection(x, 1e-9, independent, remaining), 0);
  EXPECT_LE(Distance(Trans(ToDense(x)) * ToDense(r), {{0}, {0}}), 1e-14);
  EXPECT_EQ(r.ResidOfOrthProjection(r, 1e-9, independent, remaining), 1) << "of itself";
}

}  // namespace
}  // namespace NQMath_940
