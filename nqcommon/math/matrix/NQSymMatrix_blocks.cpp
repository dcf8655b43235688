#include <nqcommon/math/matrix/NQSymMatrix.h>

#include <algorithm>

#include <nqcommon/common/NQMV.h>
#include <nqcommon/math/kernels/packed_triangle.h>
#include <nqcommon/math/matrix/internal/matrix_results.h>

namespace NQMath_940 {

using internal::IsRun;
using internal::PutRows;
using NQCommon_940::NQMV;

// ---- Parts times L -----------------------------------------------------------------------------

bool NQSymMatrix::SubSymVectBlockL(int row, int col, const NQSymBlockDiagMatrix& l,
                                   std::vector<double>& out) const {
  std::vector<double> full;
  return l.IsValidMatrix() && IsRun(fNRows, col, l.GetNRows()) && GetRow(row, full) &&
         l.ComputeVecPartByL(full, col, out);
}

bool NQSymMatrix::SubSymSBlockL(int first, const NQSymBlockDiagMatrix& l, NQRectMatrix& out) const {
  return SubSymRectTBlockL(first, first, l.GetNRows(), l, out);
}

bool NQSymMatrix::SubSymRectTBlockL(int row, int col, int nCols, const NQSymBlockDiagMatrix& l,
                                    NQRectMatrix& out) const {
  return l.IsValidMatrix() && IsRun(fNRows, row, l.GetNRows()) && IsRun(fNRows, col, nCols) &&
         PutRows(nCols, l.GetNRows(), &out, [&](int i, std::vector<double>& product) {
           return SubSymVectBlockL(col + i, row, l, product);
         });
}

// Row i of L' P L is column i of P L times L, and column i of P L is row i of its transpose.
bool NQSymMatrix::SubSymBlockLTSBlockL(int first, const NQSymBlockDiagMatrix& l,
                                       NQSymMatrix& out) const {
  NQRectMatrix pl;
  return SubSymSBlockL(first, l, pl) && pl.Transpose() &&
         internal::PutRows(l.GetNRows(), &out, [&](int i, std::vector<double>& row) {
           return pl.GetRow(i, row) && l.ComputeLTransV(row, row);
         });
}

bool NQSymMatrix::AugmentUsingBlockDiagL(const NQSymBlockDiagMatrix& l) {
  const int n = l.GetNRows();
  NQSymMatrix corner;
  if (!IsRun(fNRows, 0, n) || !SubSymBlockLTSBlockL(0, l, corner)) return false;
  NQRectMatrix border;  // the rows below the corner
  if (!SubSymRectTBlockL(0, n, fNRows - n, l, border)) return false;
  corner.AddToDiagonal(1.0);
  ReplaceFirstRows(corner, n);
  for (int i = n; i < fNRows; ++i)
    std::copy_n(border.GetRowPtr(i - n), n,
                fvData.begin() +
                    static_cast<std::ptrdiff_t>(internal::RowStart(static_cast<std::size_t>(i))));
  return true;
}

// ---- Quadratic forms ---------------------------------------------------------------------------

bool NQSymMatrix::ComputeSSubBSSub(int row, int nRows, int col, const NQSymBlockDiagMatrix& b,
                                   NQSymMatrix& out) const {
  NQRectMatrix part;
  std::vector<double> full;
  return b.IsValidMatrix() && IsRun(fNRows, row, nRows) && IsRun(fNRows, col, b.GetNRows()) &&
         PutRows(nRows, b.GetNRows(), &part,
                 [&](int i, std::vector<double>& values) {
                   if (!GetRow(row + i, full)) return false;
                   values.assign(full.begin() + col, full.begin() + col + b.GetNRows());
                   return true;
                 }) &&
         b.ComputeRSRTrans(part, out);
}

double NQSymMatrix::ComputeVBW(const std::vector<double>& v, const NQSymBlockDiagMatrix& b,
                               const std::vector<double>& w) {
  return b.ComputeVSW(v, w);
}

bool NQSymMatrix::ComputeRTransBlockDiagR(const INQRectMatrix& r, const NQSymBlockDiagMatrix& b) {
  return b.ComputeRTransSR(r, *this);
}

bool NQSymMatrix::ComputeRTransSymR(const INQRectMatrix& r, const INQSymMatrix& s) {
  return s.ComputeRTransSR(r, *this);
}

double NQSymMatrix::DotProductLBlockDiagColRow(const NQSymBlockDiagMatrix& l, int j, int row,
                                               int first) const {
  if (j < 0 || j >= l.GetNRows() || !HasRow(row) || !IsRun(fNRows, first, l.GetNRows()))
    return NQMV::Missing();
  const int b = l.GetBlockIndexForRow(j);
  const int end = l.GetIsBlockDiagonal(b) ? j + 1 : l.GetBlockStartIndex(b) + l.GetBlockSize(b);
  double sum = 0;
  for (int i = j; i < end; ++i) sum += l.GetElem(i, j) * GetElem(row, first + i);
  return sum;
}

}  // namespace NQMath_940
