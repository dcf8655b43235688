// Gaussian elimination with partial pivoting over the general views of linpack_views.h.
//
// P L U with the unit lower factor kept as the multipliers that were added, so negated, below the
// diagonal, and the exchanges in ipvt, 1-based: at step k rows k and ipvt[k] changed places.
#pragma once

#include <nqcommon/math/matrix/linpack/Blas1.h>
#include <nqcommon/math/matrix/linpack/internal/linpack_condition.h>
#include <nqcommon/math/matrix/linpack/internal/linpack_triangle.h>
#include <nqcommon/math/matrix/linpack/internal/linpack_views.h>

#include <utility>

namespace NQMath_940::internal {

// FactorGeneral returns 0, or the 1-based position of the last zero pivot.
template <class View>
int FactorGeneral(View g, int* ipvt) {
  if (g.n < 1) return 0;
  int info = 0;
  for (int k = 0; k < g.n - 1; ++k) {
    const int below = g.Below(k);
    const int pivot = k + Blas1::IDAMax(below + 1, g.At(k, k), 1) - 1;
    ipvt[k] = pivot + 1;
    if (g(pivot, k) == 0) {
      info = k + 1;
      continue;
    }
    std::swap(g(pivot, k), g(k, k));
    Blas1::DScal(below, -1 / g(k, k), g.At(k + 1, k), 1);
    const int end = g.RowEnd(k);
    for (int j = k + 1; j < end; ++j) {
      std::swap(g(pivot, j), g(k, j));
      Blas1::Daxpy(below, g(k, j), g.At(k + 1, k), 1, g.At(k + 1, j), 1);
    }
  }
  ipvt[g.n - 1] = g.n;
  return g(g.n - 1, g.n - 1) == 0 ? g.n : info;
}

// EstimateGeneral gives rcond of a factored matrix whose 1-norm was `norm`.
template <class View>
double EstimateGeneral(View g, const int* ipvt, double norm, double* work) {
  Probe z(work, g.n);
  GrowUpper(g, z);
  for (int k = g.n - 1; k >= 0; --k) {  // L'y = w
    z[k] += Blas1::DDot(g.Below(k), g.At(k + 1, k), 1, z.At(k + 1), 1);
    z.Limit(z[k], 1);
    std::swap(z[ipvt[k] - 1], z[k]);
  }
  z.Normalise();
  z.StartScale();
  for (int k = 0; k < g.n; ++k) {  // L v = y
    std::swap(z[ipvt[k] - 1], z[k]);
    Blas1::Daxpy(g.Below(k), z[k], g.At(k + 1, k), 1, z.At(k + 1), 1);
    z.Limit(z[k], 1);
  }
  z.Normalise();
  ProbeUpper(g, z);
  return z.ReciprocalCondition(norm);
}

// SolveGeneral solves A x = b for job 0 and A'x = b for any other job, in place.
template <class View>
void SolveGeneral(const View& g, const int* ipvt, double* b, int job) {
  if (job == 0) {
    for (int k = 0; k < g.n - 1; ++k) {
      std::swap(b[ipvt[k] - 1], b[k]);
      Blas1::Daxpy(g.Below(k), b[k], g.At(k + 1, k), 1, b + k + 1, 1);
    }
    SolveUpper(g, b);
    return;
  }
  SolveUpperTrans(g, b);
  for (int k = g.n - 2; k >= 0; --k) {
    b[k] += Blas1::DDot(g.Below(k), g.At(k + 1, k), 1, b + k + 1, 1);
    std::swap(b[ipvt[k] - 1], b[k]);
  }
}

template <class View>
void DeterminantGeneral(const View& g, const int* ipvt, double* det) {
  StartDeterminant(det);
  for (int k = 0; k < g.n && det[0] != 0; ++k)
    MultiplyDeterminant(det, ipvt[k] == k + 1 ? g(k, k) : -g(k, k));
}

}  // namespace NQMath_940::internal
