// The Cholesky factorisation A = R'R over the upper-triangle views of linpack_views.h.
#pragma once

#include <nqcommon/math/matrix/linpack/Blas1.h>
#include <nqcommon/math/matrix/linpack/internal/linpack_condition.h>
#include <nqcommon/math/matrix/linpack/internal/linpack_triangle.h>
#include <nqcommon/math/matrix/linpack/internal/linpack_views.h>

#include <cmath>

namespace NQMath_940::internal {

using Four = double __attribute__((vector_size(4 * sizeof(double))));
inline constexpr int kMostRowsOfFour = 256;  // 8 KiB of stack

// FactorFourColumns is FactorPositive for columns j .. j+3, j a multiple of 4 and below
// kMostRowsOfFour, after those before them; all start in row 0. Row i of the four is one vector, so
// that every sum keeps its order.
template <class View>
int FactorFourColumns(const View& r, int j) {
  Four rows[kMostRowsOfFour];
  for (int i = 0; i < j; ++i) rows[i] = Four{r(i, j), r(i, j + 1), r(i, j + 2), r(i, j + 3)};
  for (int k = 0; k < j; k += 4) {
    const double* columns[] = {r.At(0, k), r.At(0, k + 1), r.At(0, k + 2), r.At(0, k + 3)};
    Four known[4] = {};
    for (int i = 0; i < k; ++i) {
#pragma GCC unroll 4
      for (int c = 0; c < 4; ++c) known[c] += columns[c][i] * rows[i];
    }
#pragma GCC unroll 4
    for (int c = 0; c < 4; ++c) {
      for (int i = k; i < k + c; ++i) known[c] += columns[c][i] * rows[i];
      rows[k + c] = (rows[k + c] - known[c]) / columns[c][k + c];
    }
  }
  Four known[4] = {};  // the four columns times each other
  for (int i = 0; i < j; ++i) {
#pragma GCC unroll 4
    for (int c = 0; c < 4; ++c) known[c] += rows[i][c] * rows[i];
  }
  for (int c = 0; c < 4; ++c) {
    double* column = r.At(0, j + c);
    for (int i = 0; i < j; ++i) column[i] = rows[i][c];
    for (int k = 0; k <= c; ++k) {
      double sum = known[k][c];
      for (int i = j; i < j + k; ++i) sum += r(i, j + k) * column[i];
      const double rest = column[j + k] - sum;
      if (k < c) {
        column[j + k] = rest / r(j + k, j + k);
      } else if (rest <= 0) {
        return j + c + 1;
      } else {
        column[j + k] = std::sqrt(rest);
      }
    }
  }
  return 0;
}

// FactorPositive returns 0, or the order of the first leading minor that is not positive.
template <class View>
int FactorPositive(const View& r) {
  int j = 0;
  for (; j + 4 <= r.n && j < kMostRowsOfFour && r.Top(j + 3) == 0; j += 4) {
    if (const int info = FactorFourColumns(r, j); info != 0) return info;
  }
  for (; j < r.n; ++j) {
    const int top = r.Top(j);
    double* column = r.At(0, j);
    SolveUpperTrans(r, top, j, column);
    const double pivot = column[j] - Blas1::DDot(j - top, column + top, 1, column + top, 1);
    if (pivot <= 0) return j + 1;
    column[j] = std::sqrt(pivot);
  }
  return 0;
}

// ConditionPositive factors and estimates. Where the factorisation stops, rcond stays as it is.
template <class View>
int ConditionPositive(View r, double& rcond, double* work) {
  const double norm = SymmetricNorm(r, work);
  const int info = FactorPositive(r);
  if (info != 0) return info;
  Probe z(work, r.n);
  GrowUpper(r, z);
  ProbeUpper(r, z);
  z.StartScale();
  ProbeUpperTrans(r, z);
  ProbeUpper(r, z);
  rcond = z.ReciprocalCondition(norm);
  return 0;
}

template <class View>
void SolvePositive(const View& r, double* b) {
  SolveUpperTrans(r, b);
  SolveUpper(r, b);
}

template <class View>
void DeterminantPositive(const View& r, double* det) {
  StartDeterminant(det);
  for (int k = 0; k < r.n && det[0] != 0; ++k) MultiplyDeterminant(det, r(k, k) * r(k, k));
}

// The tens digit of job asks for the determinant, its units digit for the inverse, whose upper
// triangle replaces the factor's.
template <class View>
void DeterminantInversePositive(const View& r, double* det, int job) {
  if (job / 10 != 0) DeterminantPositive(r, det);
  if (job % 10 == 0) return;
  for (int k = 0; k < r.n; ++k) InvertUpperStep(r, k);
  for (int j = 0; j < r.n; ++j) {  // A's inverse is inverse(R) inverse(R)'
    for (int k = 0; k < j; ++k) Blas1::Daxpy(k + 1, r(k, j), r.At(0, j), 1, r.At(0, k), 1);
    Blas1::DScal(j + 1, r(j, j), r.At(0, j), 1);
  }
}

}  // namespace NQMath_940::internal
