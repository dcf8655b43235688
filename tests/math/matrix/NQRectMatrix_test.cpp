// Storage, shape, mechanical operations and copies; linear systems, orthogonal factors and linear
// dependence: problems built from their answers.
#include <nqcommon/math/matrix/NQRectMatrix.h>

#include <array>
#include <bit>
#include <climits>
#include <tuple>

#include "math/matrix/matrix_support.h"
#include "support/known_matrices.h"

namespace NQMath_940 {
namespace {

using namespace nqtest;

#define NQ_OP(...) NQ_OPERATION(NQRectMatrix, __VA_ARGS__)

TEST(NQRectMatrix, MechanicalOperations) {
  static const Dense small{{1, 2}, {3, 4}}, wide{{1, 2, 3}, {4, 5, 6}};
  static const Dense nearOne{{1.25, -0.75}, {0.5, 1.5}}, contrasts{{0, 2, 4}, {1, 3, 2}, {7, 0, 1}};
  static const NQBitSet gap(Bits{true, false, true}), none(Bits{false, false});
  static const NQRectMatrix other = ToRect({{7, 8, 9}, {1, 1, 1}});
  static const Indices twice{1, 0, 1}, backwards{2, 0}, negative{-1};
  const struct {
    Dense before;
    const char* name;
    bool (*operation)(NQRectMatrix&);
    Dense after;
  } rows[] = {
      {small, NQ_OP(r.AddRow() == 3), {{1, 2}, {3, 4}, {}}},
      {small, NQ_OP(r.AddColumn() == 3), {{1, 2, 0}, {3, 4, 0}}},
      {small, NQ_OP(r.DeleteOneRow(0)), {{3, 4}}},
      {wide, NQ_OP(r.DeleteOneCol(1)), {{1, 3}, {4, 6}}},
      {wide, NQ_OP(r.Transpose()), {{1, 4}, {2, 5}, {3, 6}}},
      {wide, NQ_OP(r.Resize(2, 2)), small},
      {wide, NQ_OP(r.SetNRowsCols(1, 2, true)), {{}}},
      {wide, NQ_OP((r.AddToDiagonal(9), true)), {{10, 2, 3}, {4, 14, 6}}},
      {small, NQ_OP(r.ZeroOutCol(1)), {{1}, {3}}},
      {wide, NQ_OP(r.ZeroOutRowPart(1, 1, 2)), {{1, 2, 3}, {4}}},
      {small, NQ_OP(r.ColScale(0, -2)), {{-2, 2}, {-6, 4}}},
      {nearOne, NQ_OP(r.ColClean(1, 0.75)), {{1.25}, {0.5, 1.5}}},
      {nearOne, NQ_OP(r.CheckForOnes(0.25) == 2), {{1, -1}, {0.5, 1.5}}},
      {small, NQ_OP(r.CheckForOnes(0) == 1 && r.ColClean(1, 0)), small},
      {wide, NQ_OP(r.ShiftColumns(1, r)), {{0, 1, 2}, {0, 4, 5}}},
      {wide, NQ_OP(r.ShiftColumns(-2, r)), {{3}, {6}}},
      {wide, NQ_OP(r.ShiftColumns(INT_MIN, r)), {{}, {}}},
      {wide, NQ_OP(r.ShiftRows(1, r)), {{}, {1, 2, 3}}},
      {wide, NQ_OP(r.ShiftRows(-1, r)), {{4, 5, 6}, {}}},
      {wide, NQ_OP(r.ShiftRows(3, r)), {{}, {}}},
      {small, NQ_OP(r.CreateBlockDiagonal(2, r)), {{1, 2}, {3, 4}, {0, 0, 1, 2}, {0, 0, 3, 4}}},
      {wide, NQ_OP(r.ExtractRows(twice, r)), {{4, 5, 6}, {1, 2, 3}, {4, 5, 6}}},
      {wide, NQ_OP(r.ExtractColumns(backwards, r)), {{3, 1}, {6, 4}}},
      {small, NQ_OP(r.CopyRows(other, 1, 1)), {{1, 1, 1}}},
      {wide, NQ_OP(r.CopyColumns(r, 1, 2)), {{2, 3}, {5, 6}}},
      {wide, NQ_OP(other.CopyRowToRow(0, 1, r)), {{1, 2, 3}, {7, 8, 9}}},
      {wide, NQ_OP(other.CopyColToCol(2, 0, r)), {{9, 2, 3}, {1, 5, 6}}},
      {small, NQ_OP(r.CopyColToRow(1, 0, r)), {{2, 4}, {3, 4}}},
      {small, NQ_OP(r.Expand(gap, true, r)), {{1, 2}, {}, {3, 4}}},
      {small, NQ_OP(r.Expand(gap, false, r)), {{1, 0, 2}, {3, 0, 4}}},
      {small, NQ_OP(r.ExpandSquare(gap, r)), {{1, 0, 2}, {}, {3, 0, 4}}},
      {contrasts, NQ_OP(r.ZeroOutPivotRow(1, 2)), {{-2, -4, 0}, {}, {6.5, -1.5, 0}}},
  };
  for (auto [before, name, operation, after] : rows) {
    NQRectMatrix r = ToRect(before);
    EXPECT_TRUE(operation(r)) << name;
    for (auto& row : after) row.resize(static_cast<std::size_t>(r.GetNCols()));
    EXPECT_EQ(ToDense(r), after) << name;
  }
  NQRectMatrix r = ToRect(wide), square = ToRect(contrasts);
  EXPECT_EACH(false, r.DeleteOneRow(2), r.DeleteOneCol(-1), r.CreateBlockDiagonal(-1, r),
              r.CreateBlockDiagonal(1 << 30, r), r.CopyRows(other, 1, 2), r.CopyRows(other, -1, 1),
              other.CopyRowToRow(0, 2, r), r.ExpandRectangular(gap, none, r),
              r.ZeroOutRowPart(1, 2, 2), r.ExtractRows(backwards, r), r.ExtractColumns(negative, r),
              r.CopyColToRow(1, 0, r), r.CopyColToCol(0, 3, r), r.ColClean(0, kNaN),
              r.CheckForOnes(-1) != -1, square.ZeroOutPivotRow(0, 0));
  EXPECT_EQ(ToDense(r), wide);
  EXPECT_EQ(ToDense(square), contrasts);
}

TEST(NQRectMatrix, Questions) {
  NQRectMatrix r = ToRect({{0, 3e200, 0}, {0, 4e200, 5}, {0, 0, 0}});
  EXPECT_CLOSE(r.ColNorm(1), 5e200, 1e-15);
  EXPECT_EQ(ToRect({{3, 4}}).RowNorm(0), 5);
  EXPECT_EQ((Values{r.ColNorm(3), r.RowNorm(-1)}), Values(2, kMissing));
  int column = 7;
  EXPECT_EACH(false, r.IsRowZero(1), r.IsColZero(2), r.IsRowZero(3), r.IsColZero(-1),
              r.IsRowZeroButOne(1, column), r.IsRowZeroButOne(2, column),
              ToRect({{3, 4}}).IsRowZeroButOne(0, column), column != 7);
  EXPECT_EACH(true, r.IsRowZero(2), r.IsColZero(0), r.IsRowZeroButOne(0, column), column == 1,
              ToRect({{3, 0}}).IsRowZeroButOne(0, column), column == 0);
  EXPECT_EQ(r.FindFirstNonZeroInRow(1, 5), 1);
  EXPECT_EQ(ToRect({{3, 4}}).FindFirstNonZeroInRow(0, 2), 0);
  EXPECT_EQ(r.FindFirstNonZeroInRow(1, 4e200), -1) << "not above eps";
  const NQRectMatrix flat(0, 3, true);
  EXPECT_EACH(false, r.GetRowPtr(3) != nullptr, r.GetRowPtr(-1) != nullptr,
              r.GetColPtr(-1) != nullptr, r.GetColPtr(3) != nullptr,
              NQRectMatrix(flat).GetColPtr(1) != nullptr, flat.GetColPtr(1) != nullptr);
  EXPECT_EQ(r.GetColPtr(2)[3], 5);
  r.SetElem(2, 1, kNaN);
  EXPECT_FALSE(r.IsRowZero(2)) << "NaN is not 0";
  Values v{1, 2, 3}, part{1};
  EXPECT_EACH(false, r.GetRow(3, v), r.GetCol(3, v), r.IncrVecByColumn(2, v, 0, 2, 1, false),
              r.IncrVecByColumn(2, v, 2, 2, 1, true));
  EXPECT_EACH(true, r.IncrVecByColumn(2, v, 1, 1, 2, true),
              r.IncrVecByColumn(2, part, 1, 1, 2, false),
              r.IncrVecByColumn(0, part, 0, 1, 9, false));
  EXPECT_EQ((Dense{v, part}), (Dense{{1, 12, 3}, {11}}));
  EXPECT_TRUE(r.CopyColToVec(2, v));
  EXPECT_EQ(v, (Values{0, 5, 0}));
}

// Shapes that no memory holds: nothing is really allocated.
TEST(NQRectMatrix, AllocationFailureLeavesMinusOne) {
  NQRectMatrix r = ToRect({{1, 2}, {3, 4}}), out;
  NQSymMatrix s;
  NQBitSet set;
  Values v;
  EXPECT_FALSE(r.SetNRowsCols(INT_MAX, INT_MAX, true));
  EXPECT_EQ((Indices{r.GetNRows(), r.GetNCols()}), (Indices{-1, -1}));
  NQRectMatrix copy = r;
  EXPECT_EACH(false, copy.IsValidMatrix(), r.Transpose(), r.ComputeMatrixProduct(copy, out),
              r.ComputeRV(v, v), r.ExtractRows({}, out), out.CopyRows(r, 0, 0),
              r.CreateBlockDiagonal(2, out), r.ShiftRows(1, out), s.ComputeRTransByR(r),
              r.Expand(set, true, out), r.QRDecompositionH(s, out), r.SolveLinearSquare(v, v, 0),
              r.ComputeDiagR(NQDiagMatrix(-4, true), out));
  EXPECT_EQ((Indices{r.AddRow(), r.AddColumn(), NQRectMatrix(0, INT_MAX, true).AddColumn(),
                     r.FindRedundancies(0, set, true), r.EstimateLinearGI(v, v, 1)}),
            Indices(5, -1));
  r.Clear();
  EXPECT_EACH(true, r.Resize(-3, 2), r.GetNRows() == 0, r.AddRow() == 1);
  const NQRectMatrix moved = std::move(r);
  EXPECT_EQ(ToDense(moved), (Dense{{0, 0}}));
  EXPECT_EQ(r.GetNCols(), 0);  // NOLINT(bugprone-use-after-move): the source is left empty
}

// ---- Systems and dependence

TEST(NQRectMatrixSolve, LinearSystems) {
  const Dense regular{{1, 2}, {3, 4}}, groups{{1, 1, 0}, {1, 1, 0}, {1, 0, 1}, {1, 0, 1}};
  for (const auto& [name, matrix, want, rest, eps, solves, estimate] :
       std::vector<std::tuple<const char*, Dense, Values, Values, double, bool, int>>{
#include "math/matrix/linear_systems_cases.inc"
       }) {
    const NQRectMatrix r = ToRect(matrix);
    Values b = Trans(matrix * Column(want))[0], x{7};
    for (std::size_t i = 0; i < b.size(); ++i) b[i] += rest[i];
    EXPECT_EQ(r.SolveLinearSquare(b, x, eps), solves) << name;
    EXPECT_LE(Distance({x}, {solves ? want : Values{7}}), 1e-11) << name;
    x = b;
    EXPECT_EQ(r.EstimateLinearGI(x, x, eps), estimate) << name << ", in place";
    EXPECT_LE(Distance({x}, {estimate >= 0 ? want : b}), 1e-11) << name;
    EXPECT_EQ(ToDense(r), matrix) << name;
  }
  Values x;
  EXPECT_EACH(false, ToRect(regular).SolveLinearSquare({1}, x, 0),
              NQRectMatrix().SolveLinearSquare({}, x, 0));
  EXPECT_EQ(ToRect(regular).EstimateLinearGI({1}, x, 1), -1);
  EXPECT_EQ(NQRectMatrix(2, 0, true).EstimateLinearGI({1, 2}, x, 1), -1);
}

// Columns of Sylvester's Hadamard matrix, negative: orthogonal and of norm sqrt(m).
Dense Hadamard(std::size_t m, std::size_t n) {
  Dense h(m, Values(n));
  for (std::size_t i = 0; i < m; ++i) {
    for (std::size_t j = 0; j < n; ++j) h[i][j] = std::popcount(i & j) % 2 == 0 ? -1 : 1;
  }
  return h;
}

const Dense kHadamard = Hadamard(4, 3);

// One panel of columns and several, elements below 1 too.
TEST(NQRectMatrixSolve, HouseholderQR) {
  NQRectMatrix q;
  NQSymMatrix s;
  for (const auto& [m, n] : {std::pair<std::size_t, std::size_t>{4, 3}, {64, 33}, {256, 100}}) {
    const double root = std::sqrt(static_cast<double>(m));
    Dense upper(n, Values(n)), scaled = upper;
    for (std::size_t j = 0; j < n; ++j) {
      scaled[j][j] = root;
      for (std::size_t i = 0; i <= j; ++i)
        upper[i][j] = static_cast<double>(i == j ? n : (7 * i + 3 * j) % 5) * 0x1p-7 / root;
    }
    q = ToRect(Hadamard(m, n) * upper);
    ASSERT_TRUE(q.QRDecompositionH(s, q)) << "into itself";
    EXPECT_LE(Distance(Lower(ToDense(s)), Trans(scaled * upper)), 1e-13) << m;
    EXPECT_LE(Distance(ToDense(q) * scaled, Hadamard(m, n)), 1e-13) << m;
  }
  // A zero and a dependent column: Q stays orthogonal.
  const Dense deficient{{0, 2, 4}, {0, 1, 2}, {0, 5, 10}}, one{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
  ASSERT_TRUE(ToRect(deficient).QRDecompositionH(s, q));
  const Dense Q = ToDense(q), T = Trans(Lower(ToDense(s)));
  EXPECT_LE(Distance(Q * T, deficient), 1e-14);
  EXPECT_LE(Distance(Trans(Q) * Q, one), 1e-15);
  EXPECT_EACH(true, T[0][0] >= 0, T[1][1] >= 0, T[2][2] >= 0);
  EXPECT_FALSE(ToRect({{1, 2}}).QRDecompositionH(s, q));
  EXPECT_EQ(ToDense(q), Q);
}

// Intercept, one of three codes, and a covariate.
const Dense kCodes{{1, 1, 0, 0, 2}, {1, 1, 0, 0, 4}, {1, 0, 1, 0, 1},
                   {1, 0, 1, 0, 7}, {1, 0, 0, 1, 3}, {1, 0, 0, 1, 5}};

TEST(NQRectMatrixEstimability, Redundancies) {
  for (const auto& [name, matrix, eps, kept, redundant] :
       std::vector<std::tuple<const char*, Dense, double, Indices, int>>{
#include "math/matrix/redundancies_cases.inc"
       }) {
    for (bool byRows : {false, true}) {
      SCOPED_TRACE(std::string(name) + (byRows ? " by rows" : ""));
      const NQRectMatrix r = ToRect(byRows ? Trans(matrix) : matrix);
      NQRectMatrix out, part;
      NQBitSet set, wanted(static_cast<int>(matrix[0].size()));
      Indices indices{9}, extracted{9};
      EXPECT_EQ((Indices{r.FindRedundancies(eps, set, byRows),
                         r.FindNonRedunIndices(eps, indices, byRows),
                         r.ExtractFullRank(eps, out, extracted, byRows)}),
                Indices(3, redundant));
      EXPECT_EQ(indices, kept);
      EXPECT_EQ(extracted, kept);
      if (redundant < 0) continue;
      EXPECT_EACH(true, wanted.SetSubset(kept, true), set == wanted,
                  byRows ? r.ExtractRows(kept, part) : r.ExtractColumns(kept, part));
      EXPECT_EQ(ToDense(out), ToDense(part));
    }
  }
}

// Column 0 was found redundant before. Added behind it: a column of its own, copies of column 0,
// which is no member, and of the first added, a sum of members, and one that is not.
TEST(NQRectMatrixEstimability, AddedColumns) {
  NQRectMatrix r = ToRect(
      {{0, 1, 0, 0, 0, 1, 5}, {3, 1, 1, 3, 1, 2, 1}, {0, 1, 2, 0, 2, 3, 1}, {0, 1, 4, 0, 4, 5, 2}});
  NQBitSet set(Bits{false, true}), newSet;
  EXPECT_EQ(NQRectMatrix(2, 2, true).CheckAddColRedundancies(NQBitSet(Bits{true}), newSet), 1);
  EXPECT_TRUE(newSet == NQBitSet(Bits{true, false})) << "members stay";
  EXPECT_EQ(ToRect(kHadamard).CheckAddColRedundancies(NQBitSet(Bits{true}), newSet), 0);
  EXPECT_EQ(r.CheckAddColRedundancies(set, newSet), 2);
  EXPECT_TRUE(newSet == NQBitSet(Bits{false, true, true, true, false, false, true}));
  EXPECT_EQ(r.CheckAddColRedundancies(newSet, newSet), 0) << "nothing added";
  EXPECT_EQ(r.CheckAddColRedundancies(NQBitSet(8), newSet), -1);
  EXPECT_EQ(newSet.InSet(), 4);
}

TEST(NQRectMatrixEstimability, EstimableFunctions) {
  NQRectMatrix x = ToRect(kCodes);
  NQBitSet set;
  x.FindRedundancies(1e-6, set, false);
  const NQBitSet otherBasis(Bits{false, true, true, true, true});
  for (const double unit : {1.0, 0x1p-30}) {  // of all columns
    for (const auto& [name, l, estimable] : std::vector<std::tuple<const char*, Dense, bool>>{
#include "math/matrix/estimable_functions_cases.inc"
         }) {
      NQRectMatrix functions = ToRect(l);
      for (int j = 0; j < functions.GetNCols(); ++j) functions.ColScale(j, unit);
      for (const NQBitSet& basis : {set, otherBasis})
        EXPECT_EQ(x.IsEstimable(functions, basis, 1e-9), estimable) << name << unit;
    }
    for (int j = 0; j < x.GetNCols(); ++j) x.ColScale(j, 0x1p-30);
  }
  x = ToRect(kCodes);
  const NQRectMatrix mean = ToRect({{1, 1, 0, 0, 0}});
  const NQRectMatrix copies = ToRect(Dense(4, {1, 1}));
  EXPECT_TRUE(copies.IsEstimable(ToRect({{3, 3}}), NQBitSet(Bits{true, false}), 0)) << "exactly";
  EXPECT_EACH(false, x.IsEstimable(mean, set, -1), x.IsEstimable(mean, NQBitSet(4), 1e-9));
  set.Set(3, true);
  EXPECT_FALSE(x.IsEstimable(mean, set, 1e-9)) << "dependent members";
}

TEST(NQRectMatrixEstimability, MultiplesOfRows) {
  for (const auto& [name, pair, eps1, eps2, multiple, want] :
       std::vector<std::tuple<const char*, Dense, double, double, bool, double>>{
#include "math/matrix/multiples_of_rows_cases.inc"
       }) {
    double factor = 7;
    EXPECT_EQ(ToRect(pair).IsERowMultipleOfAnother(0, 1, eps1, eps2, factor), multiple) << name;
    EXPECT_EQ(factor, want) << name;
  }
}

// On the space of a one-of-three coding, what remains of a column is its deviation from its group's
// mean. Columns: the covariate, one of the codes, the covariate plus a code.
TEST(NQRectMatrixEstimability, ResidualsOfProjection) {
  NQRectMatrix x, r;
  ASSERT_TRUE(ToRect(kCodes).ExtractColumns({0, 1, 2, 3}, x) &&
              ToRect(kCodes).ExtractColumns({4, 2, 4}, r));
  ASSERT_TRUE(r.SetElem(0, 2, 3) && r.SetElem(1, 2, 5) && x.AddColumn() == 5);
  NQBitSet independent, remaining;
  EXPECT_EQ(r.ResidOfOrthProjection(x, 1e-9, independent, remaining), 2);
  EXPECT_EACH(true, independent == NQBitSet(Bits{true, true, true, false, false}),
              remaining == NQBitSet(Bits{true, false, false}));
  const Dense wanted{{-1, 0, -1}, {1, 0, 1}, {-3, 0, -3}, {3, 0, 3}, {-1, 0, -1}, {1, 0, 1}},
      got = ToDense(r);
  EXPECT_LE(Distance(got, wanted), 1e-14);
  EXPECT_EQ(r.ResidOfOrthProjection(x, 0, independent, remaining), -1);
  EXPECT_EQ(r.ResidOfOrthProjection(ToRect({{1}}), 1e-9, independent, remaining), -1);
  EXPECT_EQ(ToDense(r), got);
  // Nearly dependent columns: the residual is orthogonal to both nevertheless.
  x = ToRect({{1, 1e-3}, {1, 1e-3 * (1 + 1e-7)}, {1, 1e-3}, {1, 1e-3}});
  r = ToRect({{1e-6}, {2e-6}, {4e-6}, {8e-6}});
  EXPECT_EQ(r.ResidOfOrthProjection(x, 1e-9, independent, remaining), 0);
  EXPECT_LE(Distance(Trans(ToDense(x)) * ToDense(r), {{0}, {0}}), 1e-14);
  EXPECT_EQ(r.ResidOfOrthProjection(r, 1e-9, independent, remaining), 1) << "of itself";
}

// The second column, which has a NaN, counts as redundant: the others are independent.
TEST(NQRectMatrixEstimability, NaNInOneRow) {
  NQRectMatrix r = ToRect({{1, 1, 0}, {1, kNaN, 2}, {1, 5, 4}}), out, q;
  NQSymMatrix s;
  NQBitSet set, rest;
  Indices kept;
  Values x{7};
  EXPECT_FALSE(r.SolveLinearSquare({1, 2, 3}, x, 0));
  EXPECT_EQ((Indices{r.FindRedundancies(1e-9, set, false), r.FindNonRedunIndices(1e-9, kept, false),
                     r.ExtractFullRank(1e-9, out, kept, false)}),
            Indices(3, 1));
  EXPECT_EACH(true, set == NQBitSet(Bits{true, false, true}), kept == (Indices{0, 2}),
              out.GetElem(2, 1) == 4, r.EstimateLinearGI({1, 2, 3}, x, 1e-12) == 1);
  EXPECT_LE(Distance({x}, {{1, 0, 0.5}}), 1e-14);
  EXPECT_EACH(true, r.QRDecompositionH(s, q), std::isnan(s.GetElem(1, 1)),
              out.ResidOfOrthProjection(r, 1e-9, set, rest) == 2);
  EXPECT_EACH(false, set.IsIn(1), r.IsEstimable(r, set, 1e-9), rest.InSet() > 0);
}

}  // namespace
}  // namespace NQMath_940
