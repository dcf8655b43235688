// Block-diagonal results, and the stored cells of a column.
#pragma once

#include <utility>

#include <nqcommon/math/matrix/internal/matrix_access.h>

namespace NQMath_940 {

namespace internal {

// out <- the result, block-diagonal or dense.
inline bool PutBlocks(NQSymBlockDiagMatrix result, INQSymMatrix& out) {
  if (!result.IsValidMatrix()) return false;
  if (NQSymBlockDiagMatrix* blocks = AsBlockDiag(out)) {
    *blocks = std::move(result);
    return true;
  }
  NQSymMatrix* dense = AsDenseSym(out);
  return dense && result.FillDenseMatrix(*dense);
}

}  // namespace internal

template <class F>
void NQSymBlockDiagMatrix::ForEachInColumn(int j, int from, F f) const {
  const int b = fvBlockOfRow[At(j)], start = fvStart[At(b)], end = fvStart[At(b + 1)];
  if (GetIsBlockDiagonal(b)) {
    f(j, *FindBlock(j, j));
    return;
  }
  const double* packed = fvDense[At(fvBlockIndices[At(b)])].AsVectorConst().data();
  for (int i = std::max(from, start); i < end; ++i)
    f(i, packed[internal::SymIndex(At(i - start), At(j - start))]);
}

}  // namespace NQMath_940
