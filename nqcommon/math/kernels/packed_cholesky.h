// Cholesky factor of a packed symmetric matrix, S = L L', in place.
//
// Row by row: with l(i,j) for j < i, sums over k < j taken in the order of k from 0,
//
//   l(i,j) = (s(i,j) - sum l(i,k) l(j,k)) / l(j,j),  or 0 when l(j,j) is 0
//   l(i,i) = sqrt(r), r = s(i,i) - sum l(i,k)^2, when r > t[i] * eps; otherwise 0 and row i is
//            aliased: it is a combination of rows above it
//
// A NaN pivot counts as not 0, a NaN r as not above the threshold.
#pragma once

#include <nqcommon/math/kernels/cpu_dispatch.h>

#include <cstddef>
#include <vector>

namespace NQMath_940::internal {

// In plain loops: the order of operations that the fast form keeps to the bit.
// Returns the number of aliased rows; aliased, when given, tells which.
std::size_t CholeskyPlain(double* s, std::size_t n, const double* t, double eps,
                          std::vector<bool>* aliased = nullptr);

// The same in vectors, with 16 n doubles of work memory; without it, in plain loops.
std::size_t Cholesky(double* s, std::size_t n, const double* t, double eps,
                     std::vector<bool>* aliased = nullptr, Isa isa = BestIsa());

}  // namespace NQMath_940::internal
