// Sweeping rows of a packed symmetric matrix.
//
// Sweeping row k in, with p = s(k,k), u_j = s(j,k) |1/p| and v_i = -s(i,k) (+ when -1/p is not
// negative), in this order of operations:
//
//   s(k,k) <- -1/p        s(i,k) <- u_i        s(i,j) <- s(i,j) + u_j v_i,  j <= i
//
// The same step again sweeps it out. After all rows are in, s is minus the inverse.
// Reference: Goodnight, J. H. (1979), A tutorial on the SWEEP operator.
//
// t        one reference value per row, in the units of the diagonal
// Refused  sweeping in, nothing changes when t[k] * eps >= p, or when for a row j swept before
//          (s(j,j) - s(j,k) / p * s(j,k)) * eps * t[j] is not above -1: s(j,j) is minus the
//          inverse's diagonal there, and one as large as 1 / (eps t[j]) says that rows j and k are
//          nearly dependent. Sweeping out is never refused.
#pragma once

#include <nqcommon/math/kernels/cpu_dispatch.h>

#include <cstddef>
#include <span>
#include <vector>

namespace NQMath_940::internal {

// Whether sweeping row k in would be refused; false for a row that is in.
bool RefusesSweep(const double* s, std::size_t n, std::size_t k, double eps, const double* t,
                  const std::vector<bool>& swept);

// One row, in plain loops: the order of operations that every other form keeps to the bit.
// Returns false on a refusal; otherwise membership of k in `swept` is toggled.
bool SweepRowPlain(double* s, std::size_t n, std::size_t k, double eps, const double* t,
                   std::vector<bool>& swept);

// The same, row by row in vectors. No allocation.
bool SweepRow(double* s, std::size_t n, std::size_t k, double eps, const double* t,
              std::vector<bool>& swept, Isa isa = BestIsa());

// What became of one entry of a list of rows.
struct SweepStep {
  double pivot;  // diagonal element before
  bool done;     // then it is -1 / pivot now
};

// Sweeps the rows of the list (each in 0 .. n-1, repeats allowed) one after the other, passing over
// refusals: the result of SweepRow on each, to the bit. steps, when given, gets one entry for each.
// The bulk of the matrix is updated once for a panel of pivots rather than at each of them, which
// takes work memory of 25 n to 100 n doubles; without it the rows are swept one by one.
void SweepRows(double* s, std::size_t n, std::span<const int> rows, double eps, const double* t,
               std::vector<bool>& swept, std::vector<SweepStep>* steps = nullptr,
               Isa isa = BestIsa());

}  // namespace NQMath_940::internal
