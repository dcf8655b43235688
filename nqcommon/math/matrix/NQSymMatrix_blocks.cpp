#include <nqcommon/math/matrix/NQSymMatrix.h>

#include <algorithm>
#include <utility>

#include <nqcommon/common/NQMV.h>
#include <nqcommon/math/matrix/internal/matrix_access.h>

namespace NQMath_940 {

using internal::IsRun;
using NQCommon_940::NQMV;

namespace {

int OrderOf(const INQSymMatrix& s) { return s.GetNRows(); }

// out <- the matrix whose row i is f(i), m rows of n values.
template <class F>
bool PutRectRows(int m, int n, NQRectMatrix& out, F f) {
  return internal::Make(m, n, &out, [&](NQRectMatrix& result) {
    std::vector<double> row;
    for (int i = 0; i < m; ++i) {
      f(i, row);
      std::copy(row.begin(), row.end(), result.GetRowPtr(i));
    }
  });
}

}  // namespace

// ---- Parts times L -----------------------------------------------------------------------------

bool NQSymMatrix::SubSymVectBlockL(int row, int col, const NQSymBlockDiagMatrix& l,
                                   std::vector<double>& out) const {
  std::vector<double> full;
  return l.IsValidMatrix() && IsRun(fNRows, col, OrderOf(l)) && GetRow(row, full) &&
         l.ComputeVecPartByL(full, col, out);
}

bool NQSymMatrix::SubSymSBlockL(int first, const NQSymBlockDiagMatrix& l, NQRectMatrix& out) const {
  return SubSymRectTBlockL(first, first, OrderOf(l), l, out);
}

bool NQSymMatrix::SubSymRectTBlockL(int row, int col, int nCols, const NQSymBlockDiagMatrix& l,
                                    NQRectMatrix& out) const {
  return l.IsValidMatrix() && IsRun(fNRows, row, OrderOf(l)) && IsRun(fNRows, col, nCols) &&
         PutRectRows(nCols, OrderOf(l), out, [&](int i, std::vector<double>& product) {
           SubSymVectBlockL(col + i, row, l, product);
         });
}

// The columns of P L times L: column i of P L is row i of its transpose.
bool NQSymMatrix::SubSymBlockLTSBlockL(int first, const NQSymBlockDiagMatrix& l,
                                       NQSymMatrix& out) const {
  NQRectMatrix pl;
  return SubSymSBlockL(first, l, pl) && pl.Transpose() &&
         internal::PutRows(OrderOf(l), &out, [&](int i, std::vector<double>& row) {
           pl.GetRow(i, row);
           l.ComputeLTransV(row, row);
         });
}

bool NQSymMatrix::AugmentUsingBlockDiagL(const NQSymBlockDiagMatrix& l) {
  const int n = OrderOf(l);
  NQSymMatrix corner;
  if (!IsRun(fNRows, 0, n) || !SubSymBlockLTSBlockL(0, l, corner)) return false;
  corner.AddToDiagonal(1.0);
  ReplaceFirstRows(corner, n);
  std::vector<double> row;
  for (int i = n; i < fNRows; ++i) {
    SubSymVectBlockL(i, 0, l, row);
    std::copy(row.begin(), row.end(),
              fvData.begin() +
                  static_cast<std::ptrdiff_t>(internal::RowStart(static_cast<std::size_t>(i))));
  }
  return true;
}

// ---- Quadratic forms ---------------------------------------------------------------------------

bool NQSymMatrix::ComputeSSubBSSub(int row, int nRows, int col, const NQSymBlockDiagMatrix& b,
                                   NQSymMatrix& out) const {
  NQRectMatrix part;
  std::vector<double> full;
  return b.IsValidMatrix() && IsRun(fNRows, row, nRows) && IsRun(fNRows, col, OrderOf(b)) &&
         PutRectRows(nRows, OrderOf(b), part,
                     [&](int i, std::vector<double>& values) {
                       GetRow(row + i, full);
                       values.assign(full.begin() + col, full.begin() + col + OrderOf(b));
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
  if (j < 0 || j >= OrderOf(l) || !HasRow(row) || !IsRun(fNRows, first, OrderOf(l)))
    return NQMV::Missing();
  const int b = l.GetBlockIndexForRow(j);
  const int end = l.GetIsBlockDiagonal(b) ? j + 1 : l.GetBlockStartIndex(b) + l.GetBlockSize(b);
  double sum = 0;
  for (int i = j; i < end; ++i) sum += l.GetElem(i, j) * GetElem(row, first + i);
  return sum;
}

}  // namespace NQMath_940
