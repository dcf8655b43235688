// Loops over the packed lower triangle (packed_triangle.h) of order n, n = 0 included: matrix times
// vector, triangular solves and inverses. Each walks the packed rows with unit stride. Outputs and
// inputs are different arrays.
#pragma once

#include <cstddef>

#include <nqcommon/math/kernels/strided.h>

namespace NQMath_940::internal {

// Sum of a[k] b[k] in the order of k.
inline double DotProduct(std::size_t n, const double* a, const double* b) {
  return Dot(static_cast<Index>(n), a, 1, b, 1);
}

// out[0 .. nRows-1] = the first rows of S v, S symmetric of order n.
void SymTimesVector(const double* s, std::size_t n, const double* v, std::size_t nRows,
                    double* out);

// out = L v and out = L' v.
void LowerTimesVector(const double* l, std::size_t n, const double* v, double* out);
void LowerTransTimesVector(const double* l, std::size_t n, const double* v, double* out);

// x <- L^-1 x and x <- L'^-1 x. A row of L with a zero on its diagonal takes no part, whatever it
// holds: the solution is 0 there.
void LowerSolve(const double* l, std::size_t n, double* x);
void LowerTransSolve(const double* l, std::size_t n, double* x);

// L <- L^-1. A row with a zero on its diagonal, and the column, become 0, whatever they hold: with
// the factor of a rank-deficient matrix, a generalised inverse.
void InvertLower(double* l, std::size_t n);

// L <- the lower triangle of L L'.
void LowerTimesTrans(double* l, std::size_t n);

}  // namespace NQMath_940::internal
