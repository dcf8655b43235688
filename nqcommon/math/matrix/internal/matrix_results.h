// Results handed to an output matrix. Each is made in a matrix of its own, so that it may be
// computed from what the output holds; where it cannot be made (`out` null or of a type that does
// not take it, no memory) the answer is false and the output is left as it was.
#pragma once

#include <algorithm>
#include <cstddef>
#include <type_traits>
#include <utility>
#include <vector>

#include <nqcommon/common/memory_guard.h>
#include <nqcommon/math/kernels/dense_kernels.h>
#include <nqcommon/math/matrix/internal/argument_checks.h>
#include <nqcommon/math/matrix/internal/matrix_casts.h>

namespace NQMath_940::internal {

// out <- result, once fill(result) has come to its end and has not answered false.
template <class Matrix, class Fill>
bool PutFilled(Matrix result, Matrix* out, Fill fill) {
  const auto work = [&] {
    if constexpr (std::is_void_v<decltype(fill(result))>) {
      fill(result);
      return true;
    } else {
      return fill(result);
    }
  };
  if (!out || !result.IsValidMatrix() || !NQCommon_940::GuardMemory(false, work)) return false;
  *out = std::move(result);
  return true;
}

// out <- the m x n matrix that `fill` makes of zeros.
template <class Fill>
bool Make(long long m, long long n, NQRectMatrix* out, Fill fill) {
  return FitsInt(m) && FitsInt(n) &&
         PutFilled(NQRectMatrix(static_cast<int>(m), static_cast<int>(n), true), out, fill);
}

// out <- the matrix of order n whose row i makeRow(i, row) puts in `row`, at least as far as the
// diagonal, and whole for a rectangular one. makeRow answers false where it fails.
template <class MakeRow>
bool PutRows(int n, NQSymMatrix* out, MakeRow makeRow) {
  return PutFilled(NQSymMatrix(n, false), out, [&](NQSymMatrix& result) {
    auto to = result.AsVector().begin();
    std::vector<double> row;
    for (int i = 0; i < n; ++i) {
      if (!makeRow(i, row)) return false;
      to = std::copy_n(row.begin(), i + 1, to);
    }
    return true;
  });
}

template <class MakeRow>
bool PutRows(int m, int n, NQRectMatrix* out, MakeRow makeRow) {
  return Make(m, n, out, [&](NQRectMatrix& result) {
    std::vector<double> row;
    for (int i = 0; i < m; ++i) {
      if (!makeRow(i, row)) return false;
      std::copy(row.begin(), row.end(), result.GetRowPtr(i));
    }
    return true;
  });
}

// out <- A B, m x n, and symmetric of order n.
inline bool MultiplyInto(const Operand& a, const Operand& b, std::size_t m, std::size_t inner,
                         std::size_t n, NQRectMatrix* out) {
  return Make(static_cast<long long>(m), static_cast<long long>(n), out,
              [&](NQRectMatrix& result) { Multiply(a, b, m, inner, n, result.GetRowPtr(0)); });
}
inline bool MultiplyInto(const Operand& a, const Operand& b, std::size_t n, std::size_t inner,
                         NQSymMatrix* out) {
  return PutFilled(NQSymMatrix(static_cast<int>(n), false), out, [&](NQSymMatrix& result) {
    MultiplyLower(a, b, n, inner, result.AsVector().data());
  });
}

// out <- A S A', A square and S symmetric of order n.
inline bool Conjugate(const Operand& a, const Operand& s, std::size_t n, INQSymMatrix& out) {
  NQRectMatrix as;
  return AsDenseSym(out) && MultiplyInto(a, s, n, n, n, &as) &&
         MultiplyInto(RowsAt(as.GetRowPtr(0), n), TransposeOf(a), n, n, AsDenseSym(out));
}

// out <- diag(d) R, and out <- R diag(v).
inline bool ScaleRows(const std::vector<double>& d, const INQRectMatrix& r, NQRectMatrix* out) {
  return PutFilled(NQRectMatrix(), out, [&](NQRectMatrix& result) {
    if (!result.CopyRows(r, 0, r.GetNRows())) return false;
    double* element = result.GetRowPtr(0);
    for (double x : d) {
      for (std::size_t j = 0; j < ColsOf(r); ++j) *element++ *= x;
    }
    return true;
  });
}
inline bool ScaleColumns(const INQRectMatrix& r, const std::vector<double>& v, NQRectMatrix* out) {
  return PutFilled(NQRectMatrix(), out, [&](NQRectMatrix& result) {
    if (!result.CopyRows(r, 0, r.GetNRows())) return false;
    double* element = result.GetRowPtr(0);
    for (std::size_t i = 0; i < RowsOf(r); ++i) {
      for (double x : v) *element++ *= x;
    }
    return true;
  });
}

// out <- a square matrix that is symmetric but for rounding, its lower triangle.
inline bool PutLower(const NQRectMatrix& square, INQSymMatrix& out) {
  return PutRows(square.GetNRows(), AsDenseSym(out),
                 [&](int i, std::vector<double>& row) { return square.GetRow(i, row); });
}

inline bool TakesDiagonal(const INQSymMatrix& out) { return out.GetType() <= 1; }

// out <- the diagonal matrix, diagonal or dense.
inline bool PutDiagonal(NQDiagMatrix result, INQSymMatrix& out) {
  if (!result.IsValidMatrix()) return false;
  if (NQDiagMatrix* diagonal = AsDiagonal(out)) {
    *diagonal = std::move(result);
    return true;
  }
  return PutRows(result.GetNRows(), AsDenseSym(out),
                 [&](int i, std::vector<double>& row) { return result.GetRow(i, row); });
}

inline bool TakesBlocks(const INQSymMatrix& out) { return out.GetType() != 1; }

// out <- the block-diagonal matrix, block-diagonal or dense.
inline bool PutBlocks(NQSymBlockDiagMatrix result, INQSymMatrix& out) {
  if (!result.IsValidMatrix()) return false;
  if (NQSymBlockDiagMatrix* blocks = AsBlockDiag(out)) {
    *blocks = std::move(result);
    return true;
  }
  NQSymMatrix* dense = AsDenseSym(out);
  return dense && result.FillDenseMatrix(*dense);
}

}  // namespace NQMath_940::internal
