// LINPACK's Householder reflections, I - v v'/v0.
#pragma once

#include <nqcommon/math/matrix/linpack/Blas1.h>
#include <nqcommon/math/matrix/linpack/internal/linpack_dots.h>

#include <cmath>
#include <cstddef>

namespace NQMath_940::internal {

// MakeReflector makes of x the v, 1 <= v0 <= 2, whose reflection takes x to (-r, 0, .., 0), and
// returns r, the norm of x with the sign of x0. A zero x stays as it is, and r is 0.
inline double MakeReflector(int n, double* x) {
  const double norm = Blas1::DNrm2(n, x, 1);
  if (norm == 0) return 0;
  const double r = x[0] != 0 ? std::copysign(norm, x[0]) : norm;
  Blas1::DScal(n, 1 / r, x, 1);
  x[0] += 1;
  return r;
}

inline void Reflect(int n, const double* v, double* y) {
  const double factor = -Blas1::DDot(n, v, 1, y, 1) / v[0];
  Blas1::Daxpy(n, factor, v, 1, y, 1);
}

// ReflectRightOf reflects the `count` columns to the right of v, each ld behind the one before.
inline void ReflectRightOf(double* v, int n, int ld, int count) {
  const auto column = [&](int j) { return v + std::ptrdiff_t{j} * ld; };
  int j = 1;
  while (j + kDots - 1 <= count) {
    const auto products = Dots(n, v, {column(j), column(j + 1), column(j + 2), column(j + 3)});
    for (double product : products) Blas1::Daxpy(n, -product / v[0], v, 1, column(j++), 1);
  }
  for (; j <= count; ++j) Reflect(n, v, column(j));
}

}  // namespace NQMath_940::internal
