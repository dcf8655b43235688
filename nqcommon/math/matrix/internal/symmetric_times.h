// S X for a symmetric S of any storage and a dense X: the product below those of the structured
// matrices with rectangular ones.
#pragma once

#include <cstddef>

#include <nqcommon/math/kernels/dense_kernels.h>
#include <nqcommon/math/matrix/INQSymMatrix.h>

namespace NQMath_940::internal {

// out = S X, row after row, with X of n rows and p columns, which lies by rows or by columns and
// not in `out`. Of a block-diagonal S each block takes its own rows of X.
void SymmetricTimes(const INQSymMatrix& s, const Operand& x, std::size_t p, double* out);

}  // namespace NQMath_940::internal
