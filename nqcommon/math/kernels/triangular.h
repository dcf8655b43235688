// A triangle L packed by rows (packed_triangle.h), of order n, n = 0 included, is inverted or
// multiplied by its transpose in place: in tiles of vectors, with work memory of n (n + 1) / 2
// doubles for the products and of 64 n for the inverse; without that, and for the smallest
// triangles, in the plain loops whose bits the fast forms keep.
#pragma once

#include <cstddef>

#include <nqcommon/math/kernels/cpu_dispatch.h>

namespace NQMath_940::internal {

// L <- L^-1, in the order of InvertLower (packed_algebra.h), which is its plain form.
void InvertTriangle(double* l, std::size_t n, Isa isa = BestIsa());

// L <- the lower triangle of L' L, element (i, j) the sum over k >= i of l(k,i) l(k,j) in the order
// of k.
void TransTimesTriangle(double* l, std::size_t n, Isa isa = BestIsa());
void TransTimesTrianglePlain(double* l, std::size_t n);

// L <- the lower triangle of L L', in the order of LowerTimesTrans (packed_algebra.h), which is its
// plain form.
void TriangleTimesTrans(double* l, std::size_t n, Isa isa = BestIsa());

}  // namespace NQMath_940::internal
