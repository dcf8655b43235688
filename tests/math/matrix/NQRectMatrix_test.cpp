// Storage, shape, mechanical operations and copies; the arguments that are refused.
#include <nqcommon/math/matrix/NQRectMatrix.h>

#include <gtest/gtest.h>

#include <nqcommon/common/display.h>
#include <nqcommon/math/matrix/NQDiagMatrix.h>

#include <climits>
#include <sstream>

#include "support/compare.h"
#include "support/rect.h"
#include "support/special_values.h"

namespace NQMath_940 {
namespace {

using nqtest::Dense;
using nqtest::kNaN;
using nqtest::ToDense;
using nqtest::ToRect;
using Bits = std::vector<bool>;

// `after` may leave out the zeros at the end of a row.
#define NQ_CHECK(before, call, result, ...)                                     \
  {                                                                             \
    NQRectMatrix r = ToRect(before);                                            \
    EXPECT_EQ(call, result) << #call << " of " #before;                         \
    Dense after = __VA_ARGS__;                                                  \
    for (auto& row : after) row.resize(static_cast<std::size_t>(r.GetNCols())); \
    EXPECT_EQ(ToDense(r), after) << #call << " of " #before;                    \
  }

TEST(NQRectMatrix, MechanicalOperations) {
  const Dense small{{1, 2}, {3, 4}}, wide{{1, 2, 3}, {4, 5, 6}};
  const Dense nearOne{{1.25, -0.75}, {0.5, 1.5}}, contrasts{{0, 2, 4}, {1, 3, 5}, {7, 0, 1}};
  const NQBitSet gap(Bits{true, false, true}), none(Bits{false, false});
  const NQRectMatrix other = ToRect({{7, 8, 9}, {1, 1, 1}});
  const std::vector<int> twice{1, 0, 1}, backwards{2, 0}, negative{-1};
  NQ_CHECK(small, r.AddRow(), 3, {{1, 2}, {3, 4}, {}});
  NQ_CHECK(small, r.AddColumn(), 3, {{1, 2, 0}, {3, 4, 0}});
  NQ_CHECK(small, r.DeleteOneRow(0), true, {{3, 4}});
  NQ_CHECK(small, r.DeleteOneRow(2), false, small);
  NQ_CHECK(wide, r.DeleteOneCol(1), true, {{1, 3}, {4, 6}});
  NQ_CHECK(wide, r.DeleteOneCol(-1), false, wide);
  NQ_CHECK(wide, r.Transpose(), true, {{1, 4}, {2, 5}, {3, 6}});
  NQ_CHECK(wide, r.Resize(2, 2), true, small);
  NQ_CHECK(wide, r.SetNRowsCols(1, 2, true), true, {{}});
  NQ_CHECK(wide, (r.AddToDiagonal(9), 0), 0, {{10, 2, 3}, {4, 14, 6}});
  NQ_CHECK(small, r.ZeroOutCol(1), true, {{1}, {3}});
  NQ_CHECK(wide, r.ZeroOutRowPart(1, 1, 2), true, {{1, 2, 3}, {4}});
  NQ_CHECK(wide, r.ZeroOutRowPart(1, 2, 2), false, wide);
  NQ_CHECK(small, r.ColScale(0, -2), true, {{-2, 2}, {-6, 4}});
  NQ_CHECK(nearOne, r.ColClean(1, 0.75), true, {{1.25}, {0.5, 1.5}});
  NQ_CHECK(nearOne, r.ColClean(0, kNaN), false, nearOne);
  NQ_CHECK(nearOne, r.CheckForOnes(0.25), 2, {{1, -1}, {0.5, 1.5}});
  NQ_CHECK(nearOne, r.CheckForOnes(-1), -1, nearOne);
  NQ_CHECK(wide, r.ShiftColumns(1, r), true, {{0, 1, 2}, {0, 4, 5}});
  NQ_CHECK(wide, r.ShiftColumns(-2, r), true, {{3}, {6}});
  NQ_CHECK(wide, r.ShiftColumns(INT_MIN, r), true, {{}, {}});
  NQ_CHECK(wide, r.ShiftRows(1, r), true, {{}, {1, 2, 3}});
  NQ_CHECK(wide, r.ShiftRows(-1, r), true, {{4, 5, 6}, {}});
  NQ_CHECK(wide, r.ShiftRows(3, r), true, {{}, {}});
  NQ_CHECK(small, r.CreateBlockDiagonal(2, r), true, {{1, 2}, {3, 4}, {0, 0, 1, 2}, {0, 0, 3, 4}});
  NQ_CHECK(small, r.CreateBlockDiagonal(-1, r), false, small);
  NQ_CHECK(small, r.CreateBlockDiagonal(1 << 30, r), false, small);
  NQ_CHECK(wide, r.ExtractRows(twice, r), true, {{4, 5, 6}, {1, 2, 3}, {4, 5, 6}});
  NQ_CHECK(wide, r.ExtractRows(backwards, r), false, wide);
  NQ_CHECK(wide, r.ExtractColumns(backwards, r), true, {{3, 1}, {6, 4}});
  NQ_CHECK(wide, r.ExtractColumns(negative, r), false, wide);
  NQ_CHECK(small, r.CopyRows(other, 1, 1), true, {{1, 1, 1}});
  NQ_CHECK(small, r.CopyRows(other, 1, 2), false, small);
  NQ_CHECK(wide, r.CopyColumns(r, 1, 2), true, {{2, 3}, {5, 6}});
  NQ_CHECK(wide, other.CopyRowToRow(0, 1, r), true, {{1, 2, 3}, {7, 8, 9}});
  NQ_CHECK(small, other.CopyRowToRow(0, 1, r), false, small);
  NQ_CHECK(wide, other.CopyColToCol(2, 0, r), true, {{9, 2, 3}, {1, 5, 6}});
  NQ_CHECK(small, r.CopyColToRow(1, 0, r), true, {{2, 4}, {3, 4}});
  NQ_CHECK(wide, r.CopyColToRow(1, 0, r), false, wide);
  NQ_CHECK(small, r.Expand(gap, true, r), true, {{1, 2}, {}, {3, 4}});
  NQ_CHECK(small, r.Expand(gap, false, r), true, {{1, 0, 2}, {3, 0, 4}});
  NQ_CHECK(small, r.ExpandSquare(gap, r), true, {{1, 0, 2}, {}, {3, 0, 4}});
  NQ_CHECK(small, r.ExpandRectangular(gap, none, r), false, small);
  NQ_CHECK(contrasts, r.ZeroOutPivotRow(0, 1), true, {{}, {1, 0, -1}, {7, 0, 1}});
  NQ_CHECK(contrasts, r.ZeroOutPivotRow(0, 0), false, contrasts);
}

TEST(NQRectMatrix, Questions) {
  NQRectMatrix r = ToRect({{0, 3e200, 0}, {0, 4e200, 5}, {0, 0, 0}});
  EXPECT_CLOSE(r.ColNorm(1), 5e200, 1e-15);
  EXPECT_EQ(ToRect({{3, 4}}).RowNorm(0), 5);
  EXPECT_TRUE(r.ColNorm(3) == nqtest::kMissing && r.RowNorm(-1) == nqtest::kMissing);
  int column = 7;
  EXPECT_FALSE(r.IsRowZero(1) || r.IsColZero(2) || r.IsRowZero(3) || r.IsColZero(-1) ||
               r.IsRowZeroButOne(1, column) || r.IsRowZeroButOne(2, column) || column != 7);
  EXPECT_TRUE(r.IsRowZero(2) && r.IsColZero(0) && r.IsRowZeroButOne(0, column) && column == 1);
  EXPECT_EQ(r.FindFirstNonZeroInRow(1, 5), 1);
  EXPECT_EQ(r.FindFirstNonZeroInRow(1, 4e200), -1) << "not above eps";
  EXPECT_TRUE(!r.GetRowPtr(3) && !r.GetRowPtr(-1) && !r.GetColPtr(-1) && !r.GetColPtr(3) &&
              !NQRectMatrix(0, 3, true).GetColPtr(1) && r.GetColPtr(2)[3] == 5);
  r.SetElem(2, 1, kNaN);
  EXPECT_FALSE(r.IsRowZero(2)) << "NaN is not 0";
  std::vector<double> v{1, 2, 3}, part{1};
  EXPECT_FALSE(r.GetRow(3, v) || r.GetCol(3, v) || r.IncrVecByColumn(2, v, 0, 2, 1, false) ||
               r.IncrVecByColumn(2, v, 2, 2, 1, true));
  EXPECT_TRUE(r.IncrVecByColumn(2, v, 1, 1, 2, true) && r.IncrVecByColumn(2, part, 1, 1, 2, false));
  EXPECT_EQ((Dense{v, part}), (Dense{{1, 12, 3}, {11}}));
  EXPECT_TRUE(r.CopyColToVec(2, v) && v == (std::vector<double>{0, 5, 0}));
}

// Shapes that no memory holds: nothing is really allocated.
TEST(NQRectMatrix, AllocationFailureLeavesMinusOne) {
#ifndef __SANITIZE_ADDRESS__  // whose allocator ends the process instead
  EXPECT_FALSE(NQRectMatrix(INT_MAX, 1 << 27, false).IsValidMatrix());
#endif
  NQRectMatrix r = ToRect({{1, 2}, {3, 4}}), out;
  NQSymMatrix s;
  NQBitSet set;
  std::vector<double> v;
  EXPECT_FALSE(r.SetNRowsCols(INT_MAX, INT_MAX, true));
  EXPECT_EQ(r.GetNRows() + r.GetNCols(), -2);
  NQRectMatrix copy = r;
  EXPECT_FALSE(copy.IsValidMatrix() || r.Transpose() || r.ComputeMatrixProduct(copy, out) ||
               r.ComputeRV(v, v) || r.ExtractRows({}, out) || out.CopyRows(r, 0, 0) ||
               r.CreateBlockDiagonal(2, out) || r.ShiftRows(1, out) || s.ComputeRTransByR(r) ||
               r.Expand(set, true, out) || r.QRDecompositionH(s, out) ||
               r.SolveLinearSquare(v, v, 0) || r.ComputeDiagR(NQDiagMatrix(-4, true), out));
  EXPECT_EQ(r.AddRow() + r.AddColumn() + NQRectMatrix(0, INT_MAX, true).AddColumn() +
                r.FindRedundancies(0, set, true) + r.EstimateLinearGI(v, v, 1),
            -5);
  r.Clear();
  EXPECT_TRUE(r.Resize(-3, 2) && r.GetNRows() == 0 && r.AddRow() == 1);
  const NQRectMatrix moved = std::move(r);
  EXPECT_EQ(ToDense(moved), (Dense{{0, 0}}));
  EXPECT_EQ(r.GetNCols(), 0);  // NOLINT(bugprone-use-after-move): the source is left empty
}

TEST(NQRectMatrix, DisplaysItsParts) {
  std::ostringstream text;
  std::ostream& before = NQDisplay_940::GetOutStream();
  NQDisplay_940::SetOutStream(text);
  ToRect({{1, nqtest::kMissing}, {3, 4}}).Display();
  ToRect({{1}}).DisplayF();
  const NQDiagMatrix diagonal(std::vector<double>{5, 6});
  diagonal.Display();
  diagonal.DisplayF();
  NQDisplay_940::SetOutStream(before);
  EXPECT_EQ(text.str(),
            "\nNQRectMatrix display start\nThe number of rows = 2\nThe number of columns = 2"
            "\n  1 miss\n  3 4\nNQRectMatrix display end"
            "\nNQRectMatrix full matrix display start\n  1\nNQRectMatrix full matrix display end"
            "\nNQDiagMatrix display start\nThe number of rows = 2\nDiagonal\n  5 6"
            "\nNQDiagMatrix display end\nNQDiagMatrix full matrix display start\n  5 0\n  0 6"
            "\nNQDiagMatrix full matrix display end");
}

}  // namespace
}  // namespace NQMath_940
