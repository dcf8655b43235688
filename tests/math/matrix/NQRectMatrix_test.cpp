// Storage, shape, mechanical operations and copies; the arguments that are refused.
#include <nqcommon/math/matrix/NQRectMatrix.h>

#include <climits>

#include "math/matrix/matrix_support.h"

namespace NQMath_940 {
namespace {

using namespace nqtest;

#define NQ_OP(...) NQ_OPERATION(NQRectMatrix, __VA_ARGS__)

TEST(NQRectMatrix, MechanicalOperations) {
  static const Dense small{{1, 2}, {3, 4}}, wide{{1, 2, 3}, {4, 5, 6}};
  static const Dense nearOne{{1.25, -0.75}, {0.5, 1.5}}, contrasts{{0, 2, 4}, {1, 3, 5}, {7, 0, 1}};
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
      {contrasts, NQ_OP(r.ZeroOutPivotRow(0, 1)), {{}, {1, 0, -1}, {7, 0, 1}}},
      {small,
       NQ_OP(!r.DeleteOneRow(2) && !r.CreateBlockDiagonal(-1, r) &&
             !r.CreateBlockDiagonal(1 << 30, r) && !r.CopyRows(other, 1, 2) &&
             !other.CopyRowToRow(0, 1, r) && !r.ExpandRectangular(gap, none, r)),
       small},
      {wide,
       NQ_OP(!r.DeleteOneCol(-1) && !r.ZeroOutRowPart(1, 2, 2) && !r.ExtractRows(backwards, r) &&
             !r.ExtractColumns(negative, r) && !r.CopyColToRow(1, 0, r)),
       wide},
      {nearOne, NQ_OP(!r.ColClean(0, kNaN) && r.CheckForOnes(-1) == -1), nearOne},
      {contrasts, NQ_OP(!r.ZeroOutPivotRow(0, 0)), contrasts},
  };
  for (auto [before, name, operation, after] : rows) {
    NQRectMatrix r = ToRect(before);
    EXPECT_TRUE(operation(r)) << name;
    for (auto& row : after) row.resize(static_cast<std::size_t>(r.GetNCols()));
    EXPECT_EQ(ToDense(r), after) << name;
  }
}

TEST(NQRectMatrix, Questions) {
  NQRectMatrix r = ToRect({{0, 3e200, 0}, {0, 4e200, 5}, {0, 0, 0}});
  EXPECT_CLOSE(r.ColNorm(1), 5e200, 1e-15);
  EXPECT_EQ(ToRect({{3, 4}}).RowNorm(0), 5);
  EXPECT_TRUE(r.ColNorm(3) == kMissing && r.RowNorm(-1) == kMissing);
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
  Values v{1, 2, 3}, part{1};
  EXPECT_FALSE(r.GetRow(3, v) || r.GetCol(3, v) || r.IncrVecByColumn(2, v, 0, 2, 1, false) ||
               r.IncrVecByColumn(2, v, 2, 2, 1, true));
  EXPECT_TRUE(r.IncrVecByColumn(2, v, 1, 1, 2, true) && r.IncrVecByColumn(2, part, 1, 1, 2, false));
  EXPECT_EQ((Dense{v, part}), (Dense{{1, 12, 3}, {11}}));
  EXPECT_TRUE(r.CopyColToVec(2, v) && v == (Values{0, 5, 0}));
}

// Shapes that no memory holds: nothing is really allocated.
TEST(NQRectMatrix, AllocationFailureLeavesMinusOne) {
#ifndef __SANITIZE_ADDRESS__  // whose allocator ends the process instead
  EXPECT_FALSE(NQRectMatrix(INT_MAX, 1 << 27, false).IsValidMatrix());
#endif
  NQRectMatrix r = ToRect({{1, 2}, {3, 4}}), out;
  NQSymMatrix s;
  NQBitSet set;
  Values v;
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

}  // namespace
}  // namespace NQMath_940
