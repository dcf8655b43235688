// Products of a dense or symmetric matrix with a sparse one, over the stored entries alone. Shapes
// fit; `out` is null where it is not dense, and may be an operand.
#pragma once

#include <nqcommon/math/kernels/strided.h>
#include <nqcommon/math/matrix/internal/matrix_results.h>
#include <nqcommon/math/matrix/internal/sparse_run.h>

namespace NQMath_940::internal {

// out = A R.
inline bool TimesSparse(const NQRectMatrix& a, const NQSparseRectMatrix& r, NQRectMatrix* out) {
  return Make(a.GetNRows(), r.GetNCols(), out, [&](NQRectMatrix& product) {
    for (int k = 0; k < r.GetNRows(); ++k) {
      const SparseRun run = StoredIn(r, k);
      for (int i = 0; i < a.GetNRows(); ++i) AddScaled(run, a.GetElem(i, k), product.GetRowPtr(i));
    }
  });
}

// out = A R'.
inline bool TimesSparseTrans(const NQRectMatrix& a, const NQSparseRectMatrix& r,
                             NQRectMatrix* out) {
  return Make(a.GetNRows(), r.GetNRows(), out, [&](NQRectMatrix& product) {
    for (int k = 0; k < r.GetNRows(); ++k) {
      const SparseRun run = StoredIn(r, k);
      for (int i = 0; i < a.GetNRows(); ++i) product.SetElem(i, k, DotProduct(run, a.GetRowPtr(i)));
    }
  });
}

// out = R S: a row is the sum of the rows of S that the entries name, as many times.
inline bool SparseTimes(const NQSparseRectMatrix& r, const INQSymMatrix& s, NQRectMatrix* out) {
  return Make(r.GetNRows(), s.GetNRows(), out, [&](NQRectMatrix& product) {
    std::vector<double> row;
    for (int i = 0; i < r.GetNRows(); ++i) {
      row.assign(OrderOf(s), 0.0);
      StoredIn(r, i).ForEach(
          [&](std::size_t j, double x) { s.IncrVecByRow(static_cast<int>(j), row, x); });
      std::copy(row.begin(), row.end(), product.GetRowPtr(i));
    }
  });
}

// out = R' S.
inline bool SparseTransTimes(const NQSparseRectMatrix& r, const INQSymMatrix& s,
                             NQRectMatrix* out) {
  return Make(r.GetNCols(), s.GetNRows(), out, [&](NQRectMatrix& product) {
    std::vector<double> row;
    for (int i = 0; i < r.GetNRows(); ++i) {
      if (!s.GetRow(i, row)) return false;
      StoredIn(r, i).ForEach([&](std::size_t j, double x) {
        AddScaled(row.size(), x, row.data(), product.GetRowPtr(static_cast<int>(j)));
      });
    }
    return true;
  });
}

}  // namespace NQMath_940::internal
