// From the matrix interfaces to the classes behind them, by type code.
#pragma once

#include <algorithm>
#include <cstddef>
#include <type_traits>

#include <nqcommon/math/matrix/NQDiagMatrix.h>
#include <nqcommon/math/matrix/NQRectMatrix.h>
#include <nqcommon/math/matrix/NQSparseRectMatrix.h>
#include <nqcommon/math/matrix/NQSymBlockDiagMatrix.h>
#include <nqcommon/math/matrix/NQSymMatrix.h>

namespace NQMath_940::internal {

// Each cast gives null when the matrix is of another type. M is the interface, const or not.
template <class To, class M>
auto* CastIf(bool isTo, M& m) {
  using Target = std::conditional_t<std::is_const_v<M>, const To, To>;
  return isTo ? static_cast<Target*>(&m) : nullptr;
}
template <class M>
auto* AsDenseSym(M& m) {
  return CastIf<NQSymMatrix>(m.GetType() == 0, m);
}
template <class M>
auto* AsDiagonal(M& m) {
  return CastIf<NQDiagMatrix>(m.GetType() == 1, m);
}
template <class M>
auto* AsBlockDiag(M& m) {
  return CastIf<NQSymBlockDiagMatrix>(m.GetType() == 2, m);
}
template <class M>
auto* AsDenseRect(M& m) {
  return CastIf<NQRectMatrix>(m.GetMatrixType() == 0, m);
}
template <class M>
auto* AsSparse(M& m) {
  return CastIf<NQSparseRectMatrix>(m.GetMatrixType() == 1, m);
}

// The dimensions for loops and sizes; 0 for an invalid matrix.
inline std::size_t RowsOf(const INQRectMatrix& r) {
  return static_cast<std::size_t>(std::max(r.GetNRows(), 0));
}
inline std::size_t ColsOf(const INQRectMatrix& r) {
  return static_cast<std::size_t>(std::max(r.GetNCols(), 0));
}
inline std::size_t OrderOf(const INQSymMatrix& s) {
  return static_cast<std::size_t>(std::max(s.GetNRows(), 0));
}

}  // namespace NQMath_940::internal
