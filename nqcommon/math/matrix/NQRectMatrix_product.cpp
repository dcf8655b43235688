#include <nqcommon/math/matrix/NQRectMatrix.h>

#include <utility>

#include <nqcommon/common/NQMV.h>
#include <nqcommon/common/memory_guard.h>
#include <nqcommon/math/kernels/packed_algebra.h>
#include <nqcommon/math/matrix/internal/argument_checks.h>
#include <nqcommon/math/matrix/internal/matrix_entries.h>
#include <nqcommon/math/matrix/internal/matrix_results.h>
#include <nqcommon/math/matrix/internal/sparse_products.h>
#include <nqcommon/math/matrix/internal/symmetric_times.h>

namespace NQMath_940 {

using namespace internal;
using NQCommon_940::GuardMemory;
using NQCommon_940::NQMV;

// ---- Matrices ----------------------------------------------------------------------------------

bool NQRectMatrix::ComputeMatrixProduct(const INQRectMatrix& b, INQRectMatrix& out) const {
  if (!IsValidMatrix() || b.GetNRows() != fNCols) return false;
  if (const NQSparseRectMatrix* sparse = AsSparse(b))
    return TimesSparse(*this, *sparse, AsDenseRect(out));
  const Entries B(b);
  return B.AreThere() && MultiplyInto(RowsAt(fvData.data(), Cols()), B.Rows(), Rows(), Cols(),
                                      ColsOf(b), AsDenseRect(out));
}

bool NQRectMatrix::ComputeMatrixProduct(const INQSymMatrix& b, INQRectMatrix& out) const {
  return b.ComputeRS(*this, out);
}

bool NQRectMatrix::ComputeProductMatrixTrans(const INQRectMatrix& b, INQRectMatrix& out) const {
  if (!IsValidMatrix() || b.GetNCols() != fNCols) return false;
  if (const NQSparseRectMatrix* sparse = AsSparse(b))
    return TimesSparseTrans(*this, *sparse, AsDenseRect(out));
  const Entries B(b);
  return B.AreThere() && MultiplyInto(RowsAt(fvData.data(), Cols()), B.Transpose(), Rows(), Cols(),
                                      RowsOf(b), AsDenseRect(out));
}

bool NQRectMatrix::ComputeBlockDiagSR(const INQSymMatrix& s, NQRectMatrix& out) const {
  const int n = s.GetNRows();
  const bool wholeBlocks = n > 0 ? fNRows % n == 0 : n == 0 && fNRows == 0;
  NQRectMatrix result(fNRows, fNCols, false);
  return IsValidMatrix() && wholeBlocks && result.IsValidMatrix() && GuardMemory([&] {
           for (int first = 0; first < fNRows; first += n)
             SymmetricTimes(s, RowsAt(GetRowPtr(first), Cols()), Cols(), result.GetRowPtr(first));
           out = std::move(result);
         });
}

// sr2 has the products S R2_b one below the other, so that R1' sr2 sums over the blocks.
bool NQRectMatrix::ComputeR1TransSR2(const INQSymMatrix& s, const NQRectMatrix& r2,
                                     NQRectMatrix& out) const {
  NQRectMatrix sr2;
  return IsValidMatrix() && r2.fNRows == fNRows && r2.ComputeBlockDiagSR(s, sr2) &&
         MultiplyInto(TransposeOf(fvData.data(), Cols()), RowsAt(sr2.fvData.data(), r2.Cols()),
                      Cols(), Rows(), r2.Cols(), &out);
}

bool NQRectMatrix::ComputeRDiagV(const std::vector<double>& v, NQRectMatrix& out) const {
  return IsValidMatrix() && v.size() == Cols() && ScaleColumns(*this, v, &out);
}

bool NQRectMatrix::ComputeDiagR(const NQDiagMatrix& d, NQRectMatrix& out) const {
  return IsValidMatrix() && d.GetNRows() == fNRows && ScaleRows(d.AsVectorConst(), *this, &out);
}

bool NQRectMatrix::ComputeAXpY(double a, NQRectMatrix& y) const {
  if (!IsValidMatrix() || y.fNRows != fNRows || y.fNCols != fNCols) return false;
  AddScaled(fvData.size(), a, fvData.data(), y.fvData.data());
  return true;
}

bool NQRectMatrix::ComputeAXpY(double a, NQSymMatrix& y) const {
  if (!IsValidMatrix() || fNRows != fNCols || y.GetNRows() != fNRows) return false;
  double* packed = y.AsVector().data();
  for (std::size_t i = 0; i < Rows(); packed += ++i)
    AddScaled(i + 1, a, fvData.data() + i * Cols(), packed);
  return true;
}

bool NQRectMatrix::SubtractSymMatrix(const INQSymMatrix& s, double a) {
  if (!IsValidMatrix() || fNRows != fNCols || s.GetNRows() != fNRows) return false;
  NQRectMatrix result(*this);
  std::vector<double> row;
  for (int i = 0; i < fNRows; ++i) {
    if (!result.IsValidMatrix() || !s.GetRow(i, row)) return false;
    AddScaled(Cols(), -a, row.data(), result.GetRowPtr(i));
  }
  *this = std::move(result);
  return true;
}

bool NQRectMatrix::TraceOfProductSqS(const INQSymMatrix& s, double& trace) const {
  return fNRows == fNCols && s.GetNRows() == fNRows && TraceOfProductSubMatSym(0, 0, s, trace);
}

bool NQRectMatrix::TraceOfProductSubMatSym(int row, int col, const INQSymMatrix& s,
                                           double& trace) const {
  const int n = s.GetNRows();
  if (row < 0 || col < 0 || n < 0 || n > fNRows - row || n > fNCols - col) return false;
  double sum = 0;
  std::vector<double> symRow;
  for (int i = 0; i < n; ++i) {
    if (!s.GetRow(i, symRow)) return false;
    sum += DotProduct(symRow.size(), GetRowPtr(row + i) + col, symRow.data());
  }
  trace = sum;
  return true;
}

// ---- Vectors -----------------------------------------------------------------------------------

bool NQRectMatrix::ComputeRV(const std::vector<double>& v, std::vector<double>& out) const {
  return IsValidMatrix() && v.size() == Cols() &&
         MakeVector(Rows(), out, [&](std::vector<double>& product) {
           Multiply(RowsAt(v.data(), 0), TransposeOf(fvData.data(), Cols()), 1, Cols(), Rows(),
                    product.data());
         });
}

bool NQRectMatrix::ComputeVR(const std::vector<double>& v, std::vector<double>& out) const {
  return IsValidMatrix() && v.size() == Rows() &&
         MakeVector(Cols(), out, [&](std::vector<double>& product) {
           Multiply(RowsAt(v.data(), 0), RowsAt(fvData.data(), Cols()), 1, Rows(), Cols(),
                    product.data());
         });
}

double NQRectMatrix::ComputeVRW(const std::vector<double>& v, const std::vector<double>& w) const {
  std::vector<double> product;
  if (v.size() != Rows() || !ComputeRV(w, product)) return NQMV::Missing();
  return DotProduct(Rows(), v.data(), product.data());
}

double NQRectMatrix::ComputeSpVRSpW(const NQSparseVector& v, const NQSparseVector& w) const {
  if (!IsValidMatrix() || !FitsIn(v, Rows()) || !FitsIn(w, Cols())) return NQMV::Missing();
  double sum = 0;
  RunOf(v).ForEach([&](std::size_t i, double x) {
    sum += x * DotProduct(RunOf(w), fvData.data() + i * Cols());
  });
  return sum;
}

// ---- Dot products of rows and columns ----------------------------------------------------------

double NQRectMatrix::DotProductCol(int j1, int j2) const { return DotProductColCol(j1, *this, j2); }

double NQRectMatrix::DotProductColCol(int j, const INQRectMatrix& b, int k) const {
  std::vector<double> column;
  if (!HasCol(j) || b.GetNRows() != fNRows || !b.GetCol(k, column)) return NQMV::Missing();
  return Dot(fNRows, GetColPtr(j), fNCols, column.data(), 1);
}

double NQRectMatrix::DotProductRowCol(int i, const INQRectMatrix& b, int j) const {
  std::vector<double> column;
  if (!HasRow(i) || b.GetNRows() != fNCols || !b.GetCol(j, column)) return NQMV::Missing();
  return DotProduct(Cols(), GetRowPtr(i), column.data());
}

double NQRectMatrix::DotProductRowRow(int i, const INQRectMatrix& b, int k) const {
  std::vector<double> row;
  if (!HasRow(i) || b.GetNCols() != fNCols || !b.GetRow(k, row)) return NQMV::Missing();
  return DotProduct(Cols(), GetRowPtr(i), row.data());
}

}  // namespace NQMath_940
