// From the matrix interfaces to the arrays behind them: casts by type code, and the entries of any
// matrix as an operand of the dense kernels.
#pragma once

#include <algorithm>
#include <cstddef>
#include <exception>
#include <type_traits>
#include <utility>
#include <vector>

#include <nqcommon/math/kernels/dense_kernels.h>
#include <nqcommon/math/kernels/packed_triangle.h>
#include <nqcommon/math/matrix/INQRectMatrix.h>
#include <nqcommon/math/matrix/NQDiagMatrix.h>
#include <nqcommon/math/matrix/NQRectMatrix.h>
#include <nqcommon/math/matrix/NQSparseRectMatrix.h>
#include <nqcommon/math/matrix/NQSymBlockDiagMatrix.h>
#include <nqcommon/math/matrix/NQSymMatrix.h>
#include <nqcommon/math/matrix/internal/argument_checks.h>

namespace NQMath_940::internal {

// Null when the matrix is of another type. M is the interface, const or not.
template <class M>
auto* AsDenseSym(M& m) {
  using To = std::conditional_t<std::is_const_v<M>, const NQSymMatrix, NQSymMatrix>;
  return m.GetType() == 0 ? static_cast<To*>(&m) : nullptr;
}
template <class M>
auto* AsDiagonal(M& m) {
  using To = std::conditional_t<std::is_const_v<M>, const NQDiagMatrix, NQDiagMatrix>;
  return m.GetType() == 1 ? static_cast<To*>(&m) : nullptr;
}
template <class M>
auto* AsBlockDiag(M& m) {
  using To =
      std::conditional_t<std::is_const_v<M>, const NQSymBlockDiagMatrix, NQSymBlockDiagMatrix>;
  return m.GetType() == 2 ? static_cast<To*>(&m) : nullptr;
}
template <class M>
auto* AsSparse(M& m) {
  using To = std::conditional_t<std::is_const_v<M>, const NQSparseRectMatrix, NQSparseRectMatrix>;
  return m.GetMatrixType() == 1 ? static_cast<To*>(&m) : nullptr;
}
template <class M>
auto* AsDenseRect(M& m) {
  using To = std::conditional_t<std::is_const_v<M>, const NQRectMatrix, NQRectMatrix>;
  return m.GetMatrixType() == 0 ? static_cast<To*>(&m) : nullptr;
}

inline std::size_t RowsOf(const INQRectMatrix& r) { return static_cast<std::size_t>(r.GetNRows()); }
inline std::size_t ColsOf(const INQRectMatrix& r) { return static_cast<std::size_t>(r.GetNCols()); }
inline std::size_t OrderOf(const INQSymMatrix& s) { return static_cast<std::size_t>(s.GetNRows()); }

// The entries of a valid matrix: those of a dense one where they are, a copy of any other.
class Entries {
 public:
  explicit Entries(const INQRectMatrix& r) : fStep(ColsOf(r)) {
    if (const NQRectMatrix* dense = AsDenseRect(r)) {
      fpData = dense->GetRowPtr(0);
      return;
    }
    CopyRows(r.GetNRows(), RowsOf(r) * fStep, [&](int i, std::vector<double>& row) {
      r.GetRow(i, row);
      return row.size();
    });
  }

  explicit Entries(const INQSymMatrix& s) : fStep(0) {
    if (const NQSymMatrix* dense = AsDenseSym(s)) {
      fpData = dense->AsVectorConst().data();
      return;
    }
    CopyRows(s.GetNRows(), RowStart(OrderOf(s)), [&](int i, std::vector<double>& row) {
      s.GetRow(i, row);
      return static_cast<std::size_t>(i) + 1;
    });
  }

  // False when there was no memory for the copy.
  bool AreThere() const { return !fFailed; }

  Operand Rows() const { return RowsAt(fpData, fStep); }
  Operand Transpose() const { return TransposeOf(fpData, fStep); }
  Operand Triangle() const { return TriangleAt(fpData); }

 private:
  template <class ReadRow>
  void CopyRows(int nRows, std::size_t size, ReadRow readRow) {
    try {
      fvCopy.reserve(size);
    } catch (const std::exception&) {
      fFailed = true;
      return;
    }
    std::vector<double> row;
    for (int i = 0; i < nRows; ++i) {
      const auto count = static_cast<std::ptrdiff_t>(readRow(i, row));
      fvCopy.insert(fvCopy.end(), row.begin(), row.begin() + count);
    }
    fpData = fvCopy.data();
  }

  std::size_t fStep;
  const double* fpData = nullptr;
  std::vector<double> fvCopy;
  bool fFailed = false;
};

// out <- A B, m x n, through a result of its own: A and B may be read from out.
inline bool MultiplyInto(const Operand& a, const Operand& b, std::size_t m, std::size_t inner,
                         std::size_t n, NQRectMatrix* out) {
  if (!out) return false;
  NQRectMatrix result(static_cast<int>(m), static_cast<int>(n), false);
  if (!result.IsValidMatrix()) return false;
  Multiply(a, b, m, inner, n, result.GetRowPtr(0));
  *out = std::move(result);
  return true;
}

// out <- A B, symmetric of order n.
inline bool MultiplyInto(const Operand& a, const Operand& b, std::size_t n, std::size_t inner,
                         NQSymMatrix* out) {
  if (!out) return false;
  NQSymMatrix result(static_cast<int>(n), false);
  if (!result.IsValidMatrix()) return false;
  MultiplyLower(a, b, n, inner, result.AsVector().data());
  *out = std::move(result);
  return true;
}

inline bool TakesDiagonal(const INQSymMatrix& out) { return out.GetType() <= 1; }

// out <- diag(d), diagonal or dense.
inline bool PutDiagonal(const std::vector<double>& d, INQSymMatrix& out) {
  NQDiagMatrix result(d);
  if (!TakesDiagonal(out) || !result.IsValidMatrix()) return false;
  if (NQDiagMatrix* diagonal = AsDiagonal(out)) {
    *diagonal = std::move(result);
    return true;
  }
  NQSymMatrix dense(result.GetNRows(), true);
  if (!dense.IsValidMatrix()) return false;
  for (int i = 0; i < dense.GetNRows(); ++i) dense.SetElem(i, i, result.GetElem(i));
  *AsDenseSym(out) = std::move(dense);
  return true;
}

// out <- the matrix of order n whose row i makeRow(i, row) puts in `row`, at least as far as the
// diagonal. makeRow may read from out.
template <class F>
bool PutRows(int n, NQSymMatrix* out, F makeRow) {
  NQSymMatrix result(n, false);
  if (!out || !result.IsValidMatrix()) return false;
  auto to = result.AsVector().begin();
  std::vector<double> row;
  for (int i = 0; i < n; ++i) {
    makeRow(i, row);
    to = std::copy_n(row.begin(), i + 1, to);
  }
  *out = std::move(result);
  return true;
}

// The same, square, with whole rows.
template <class F>
bool PutRows(int n, NQRectMatrix* out, F makeRow) {
  NQRectMatrix result(n, n, false);
  if (!out || !result.IsValidMatrix()) return false;
  std::vector<double> row;
  for (int i = 0; i < n; ++i) {
    makeRow(i, row);
    std::copy(row.begin(), row.end(), result.GetRowPtr(i));
  }
  *out = std::move(result);
  return true;
}

// out <- the m x n matrix that `fill` makes of zeros, through a result of its own: `fill` may read
// from out.
template <class F>
bool Make(long long m, long long n, NQRectMatrix* out, F fill) {
  if (!out || !FitsInt(m) || !FitsInt(n)) return false;
  NQRectMatrix result(static_cast<int>(m), static_cast<int>(n), true);
  if (!result.IsValidMatrix()) return false;
  fill(result);
  *out = std::move(result);
  return true;
}

// out <- diag(d) R, and out <- R diag(v).
inline bool ScaleRows(const std::vector<double>& d, const INQRectMatrix& r, NQRectMatrix* out) {
  NQRectMatrix result;
  if (!out || !result.CopyRows(r, 0, r.GetNRows())) return false;
  double* element = result.GetRowPtr(0);
  for (double x : d) {
    for (std::size_t j = 0; j < ColsOf(r); ++j) *element++ *= x;
  }
  *out = std::move(result);
  return true;
}

inline bool ScaleColumns(const INQRectMatrix& r, const std::vector<double>& v, NQRectMatrix* out) {
  NQRectMatrix result;
  if (!out || !result.CopyRows(r, 0, r.GetNRows())) return false;
  double* element = result.GetRowPtr(0);
  for (std::size_t i = 0; i < RowsOf(r); ++i) {
    for (double x : v) *element++ *= x;
  }
  *out = std::move(result);
  return true;
}

}  // namespace NQMath_940::internal
