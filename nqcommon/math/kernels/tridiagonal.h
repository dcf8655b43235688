// The symmetric eigenvalue problem on a lower triangle packed by rows (packed_triangle.h), in three
// steps: reduction to a tridiagonal matrix T, eigenvalues of T, eigenvectors of T taken back to
// those of the matrix. Orders of 0 are allowed.
//
// Accuracy  absolute, relative to the norm of the matrix: backward stable, as orthogonal
//           transformations are. The same bits on every processor.
// Range     a matrix whose largest element is near the ends of the range of doubles is scaled by a
//           power of two on the way, so that nothing overflows or loses digits there.
#pragma once

#include <nqcommon/math/kernels/cpu_dispatch.h>

#include <cstddef>

namespace NQMath_940::internal {

class RotationBatch;

// T = Q' S Q by Householder reflections from the last row up (Martin, Reinsch and Wilkinson 1968,
// "Householder's tridiagonalization of a symmetric matrix"; the packed walk as in EISPACK's TRED3).
// d[0 .. n-1] gets the diagonal of T, e[1 .. n-1] its sub-diagonal, e[0] = 0. S becomes the
// reflections, stored as PackedReflectors. A row that has nothing to the left of the sub-diagonal
// is not reflected: a tridiagonal S is taken as it is.
// Cost: 4/3 n^3 operations, one pass over the remaining triangle per row.
void ReduceToTridiagonal(double* s, std::size_t n, double* d, double* e, Isa isa = BestIsa());

// Eigenvalues of T by the implicit QL algorithm with Wilkinson's shift (Dubrulle, Martin and
// Wilkinson 1968, "The implicit QL algorithm"); d and e as above. d gets the eigenvalues, in no
// order.
//
// tolerance  the element that couples rows m and m + 1 counts as zero when it is at most
//            tolerance x (|d[m]| + |d[m+1]|), or hundreds of digits below the norm.
// maxIter    bounds the rounds for one eigenvalue: each is a search for such an element and, unless
//            the eigenvalue stands alone, a QL step.
// rotations  when given, takes the rotations; applied to the identity they give the eigenvectors of
//            T as rows. Apply() is left to the caller.
// Returns    how many eigenvalues were found before one exceeded maxIter: d[0 .. result-1]. NaN
//            never converges; an order of 1 has nothing to converge.
std::size_t QlEigenvalues(double* d, const double* e, std::size_t n, double tolerance, int maxIter,
                          RotationBatch* rotations);

// Each row of the n x n matrix at z, an eigenvector of T, becomes that of the matrix that
// ReduceToTridiagonal left in s (EISPACK's TRBAK3). 2 n^3 operations.
void BackTransform(const double* s, std::size_t n, double* z, Isa isa = BestIsa());

}  // namespace NQMath_940::internal
