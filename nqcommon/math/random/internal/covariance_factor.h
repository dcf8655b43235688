#pragma once

#include <nqcommon/math/matrix/NQSymMatrix.h>

namespace NQMath_940::internal {

// l = a lower triangle with L L' = S for a positive semi-definite S of order 1 or more. A pivot of
// at most `tolerance` x its diagonal element (or n rounding errors, where that is more) counts as 0
// and leaves its column 0.
// Returns false when memory ends, and when S is not positive semi-definite: an element (i, j) that
// L L' misses by more than sqrt(tolerance s(i,i) s(j,j)) is more than dropped pivots explain.
// Throws    std::bad_alloc.
// Cost      n^3/3 multiply-adds.
bool FactorCovariance(const NQSymMatrix& s, double tolerance, NQSymMatrix& l);

}  // namespace NQMath_940::internal
