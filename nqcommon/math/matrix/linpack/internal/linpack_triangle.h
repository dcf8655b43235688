// What LINPACK's families do with a triangle, over the views of linpack_views.h.
#pragma once

#include <nqcommon/math/kernels/scaling.h>
#include <nqcommon/math/matrix/linpack/Blas1.h>
#include <nqcommon/math/matrix/linpack/internal/linpack_dots.h>

#include <algorithm>
#include <cmath>

namespace NQMath_940::internal {

// SolveUpper solves T x = b for an upper triangle T, in place, by columns.
template <class View>
void SolveUpper(const View& t, double* b) {
  for (int k = t.n - 1; k >= 0; --k) {
    const int top = t.Top(k);
    b[k] /= t(k, k);
    Blas1::Daxpy(k - top, -b[k], t.At(top, k), 1, b + top, 1);
  }
}

// SolveUpperTrans solves T'x = b, in place, for the part of an upper triangle T in rows and columns
// first .. end-1.
template <class View>
void SolveUpperTrans(const View& t, int first, int end, double* b) {
  const auto top = [&](int k) { return std::max(first, t.Top(k)); };
  const auto resolve = [&](int k, double known) { b[k] = (b[k] - known) / t(k, k); };
  for (int k = first; k < end;) {
    const int start = top(k);
    if (k + kDots > end || top(k + kDots - 1) != start) {
      resolve(k, Blas1::DDot(k - start, t.At(start, k), 1, b + start, 1));
      ++k;
      continue;
    }
    // Here four columns of T start in the same row.
    auto known = Dots(k - start, b + start,
                      {t.At(start, k), t.At(start, k + 1), t.At(start, k + 2), t.At(start, k + 3)});
    const int rows = k;
    for (double& sum : known) {
      for (int i = rows; i < k; ++i) sum += t(i, k) * b[i];
      resolve(k++, sum);
    }
  }
}

template <class View>
void SolveUpperTrans(const View& t, double* b) {
  SolveUpperTrans(t, 0, t.n, b);
}

// InvertUpperStep is step k of the inversion of an upper triangle; k runs from 0 to n-1.
template <class View>
void InvertUpperStep(const View& t, int k) {
  t(k, k) = 1 / t(k, k);
  Blas1::DScal(k, -t(k, k), t.At(0, k), 1);
  for (int j = k + 1; j < t.n; ++j) {
    const double factor = t(k, j);
    t(k, j) = 0;
    Blas1::Daxpy(k + 1, factor, t.At(0, k), 1, t.At(0, j), 1);
  }
}

// MultiplyDeterminant multiplies det[0] 10^det[1] by the factor.
inline void MultiplyDeterminant(double* det, double factor) {
  MultiplyScaled(det[0], det[1], factor);
}

inline void StartDeterminant(double* det) {
  det[0] = 1;
  det[1] = 0;
}

// SymmetricNorm is the 1-norm of a symmetric matrix given by its upper triangle. The column sums
// are built in `work`, n values.
template <class View>
double SymmetricNorm(const View& t, double* work) {
  for (int j = 0; j < t.n; ++j) {
    const int top = t.Top(j);
    work[j] = Blas1::DASum(j - top + 1, t.At(top, j), 1);
    for (int i = top; i < j; ++i) work[i] += std::fabs(t(i, j));
  }
  double norm = 0;
  for (int j = 0; j < t.n; ++j) norm = Blas1::D_Max(norm, work[j]);
  return norm;
}

}  // namespace NQMath_940::internal
