// Loops over the stored cells of a column of a block-diagonal matrix.
#pragma once

#include <algorithm>
#include <cstddef>

#include <nqcommon/math/kernels/packed_triangle.h>
#include <nqcommon/math/matrix/NQSymBlockDiagMatrix.h>

namespace NQMath_940::internal {

// ForEachInColumn calls f(i, s(i,j)) for the stored cells of column j, which is there, from row
// `from` of its block on; with `from` = j, the column of L.
template <class F>
void ForEachInColumn(const NQSymBlockDiagMatrix& s, int j, int from, F f) {
  const int b = s.GetBlockIndexForRow(j), start = s.GetBlockStartIndex(b);
  const NQSymMatrix* dense = nullptr;
  if (!s.GetDenseBlock(b, dense)) {
    f(j, *s.FindBlock(j, j));
    return;
  }
  const auto first = static_cast<std::size_t>(std::max(from - start, 0));
  const auto n = static_cast<std::size_t>(dense->GetNRows());
  ForEachInRowPart(dense->AsVectorConst().data(), static_cast<std::size_t>(j - start), first, n,
                   [&](std::size_t i, double x) { f(start + static_cast<int>(i), x); });
}

}  // namespace NQMath_940::internal
