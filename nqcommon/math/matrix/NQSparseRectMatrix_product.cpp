#include <nqcommon/math/matrix/NQSparseRectMatrix.h>

#include <nqcommon/common/NQMV.h>
#include <nqcommon/math/kernels/strided.h>
#include <nqcommon/math/matrix/internal/matrix_results.h>
#include <nqcommon/math/matrix/internal/sparse_run.h>

namespace NQMath_940 {

using namespace internal;
using NQCommon_940::NQMV;

// ---- Norms -------------------------------------------------------------------------------------

double NQSparseRectMatrix::ColNorm(int j) const {
  std::vector<double> column;
  return GetCol(j, column) ? Nrm2(fNRows, column.data(), 1) : NQMV::Missing();
}

double NQSparseRectMatrix::RowNorm(int i) const {
  if (!HasRow(i)) return NQMV::Missing();
  return Nrm2(fNEntries, fvElems.data() + At(i) * Entries(), 1);
}

// ---- Matrices ----------------------------------------------------------------------------------

// Row i of the product is the sum of x times row j of B over the entries (j, x) of row i.
bool NQSparseRectMatrix::ComputeMatrixProduct(const INQRectMatrix& b, INQRectMatrix& out) const {
  if (!IsValidMatrix() || !b.IsValidMatrix() || b.GetNRows() != fNCols) return false;
  const NQSparseRectMatrix* sparse = AsSparse(b);
  const NQRectMatrix* dense = AsDenseRect(b);
  return Make(fNRows, b.GetNCols(), AsDenseRect(out), [&](NQRectMatrix& result) {
    for (int i = 0; i < fNRows; ++i) {
      double* row = result.GetRowPtr(i);
      StoredIn(*this, i).ForEach([&](std::size_t j, double x) {
        if (sparse) {
          AddScaled(StoredIn(*sparse, static_cast<int>(j)), x, row);
        } else {
          AddScaled(ColsOf(b), x, dense->GetRowPtr(static_cast<int>(j)), row);
        }
      });
    }
  });
}

bool NQSparseRectMatrix::ComputeProductMatrixTrans(const INQRectMatrix& b,
                                                   INQRectMatrix& out) const {
  if (!IsValidMatrix() || !b.IsValidMatrix() || b.GetNCols() != fNCols) return false;
  return Make(fNRows, b.GetNRows(), AsDenseRect(out), [&](NQRectMatrix& result) {
    for (int i = 0; i < fNRows; ++i) {
      for (int k = 0; k < b.GetNRows(); ++k) result.SetElem(i, k, DotProductRowRow(i, b, k));
    }
  });
}

bool NQSparseRectMatrix::ComputeRV(const std::vector<double>& v, std::vector<double>& out) const {
  return IsValidMatrix() && v.size() == At(fNCols) &&
         MakeVector(At(fNRows), out, [&](std::vector<double>& product) {
           for (int i = 0; i < fNRows; ++i)
             product[At(i)] = DotProduct(StoredIn(*this, i), v.data());
         });
}

bool NQSparseRectMatrix::ComputeVR(const std::vector<double>& v, std::vector<double>& out) const {
  return IsValidMatrix() && v.size() == At(fNRows) &&
         MakeVector(At(fNCols), out, [&](std::vector<double>& product) {
           for (int i = 0; i < fNRows; ++i) AddScaled(StoredIn(*this, i), v[At(i)], product.data());
         });
}

// ---- Dot products of rows and columns ----------------------------------------------------------

double NQSparseRectMatrix::DotProductCol(int j1, int j2) const {
  if (!HasCol(j1) || !HasCol(j2)) return NQMV::Missing();
  double sum = 0;
  for (int i = 0; i < fNRows; ++i) sum += GetElem(i, j1) * GetElem(i, j2);
  return sum;
}

double NQSparseRectMatrix::DotProductRowCol(int i, const INQRectMatrix& b, int j) const {
  if (!HasRow(i) || b.GetNRows() != fNCols || j < 0 || j >= b.GetNCols()) return NQMV::Missing();
  double sum = 0;
  StoredIn(*this, i).ForEach(
      [&](std::size_t k, double x) { sum += x * b.GetElem(static_cast<int>(k), j); });
  return sum;
}

double NQSparseRectMatrix::DotProductRowRow(int i, const INQRectMatrix& b, int k) const {
  if (!HasRow(i) || b.GetNCols() != fNCols || k < 0 || k >= b.GetNRows()) return NQMV::Missing();
  if (const NQSparseRectMatrix* sparse = AsSparse(b))
    return DotProduct(StoredIn(*this, i), StoredIn(*sparse, k));
  return DotProduct(StoredIn(*this, i), AsDenseRect(b)->GetRowPtr(k));
}

}  // namespace NQMath_940
