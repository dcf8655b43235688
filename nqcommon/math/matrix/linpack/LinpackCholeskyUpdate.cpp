#include <nqcommon/math/matrix/linpack/Linpack.h>

#include <nqcommon/math/matrix/linpack/Blas1.h>
#include <nqcommon/math/matrix/linpack/internal/linpack_columns.h>
#include <nqcommon/math/matrix/linpack/internal/linpack_triangle.h>
#include <nqcommon/math/matrix/linpack/internal/linpack_views.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace NQMath_940 {

using internal::FreeColumns;
using internal::FullView;

namespace {

void Rotate(double c, double s, double& x, double& y) {
  const double rotated = c * x + s * y;
  y = c * y - s * x;
  x = rotated;
}

}  // namespace

int Linpack::Dchdc(double* a, int lda, int p, double* work, int* jpvt, int job) {
  const FullView t{a, lda, p};
  const auto exchange = [&](int i, int j) {
    internal::ExchangeSymmetric(t, i, j);
    for (int k = j + 1; k < p; ++k) std::swap(t(i, k), t(j, k));
  };
  FreeColumns free;
  if (job != 0) free = internal::ArrangeColumns(p, jpvt, exchange);
  for (int k = 0; k < p; ++k) {
    int pivot = k;
    if (free.Contains(k)) {
      for (int l = k + 1; l < free.last; ++l) {
        if (!(t(l, l) <= t(pivot, pivot))) pivot = l;
      }
    }
    if (!(t(pivot, pivot) > 0)) return k;
    if (pivot != k) {
      exchange(k, pivot);
      std::swap(jpvt[k], jpvt[pivot]);
    }
    work[k] = std::sqrt(t(k, k));
    t(k, k) = work[k];
    for (int j = k + 1; j < p; ++j) {
      t(k, j) /= work[k];
      work[j] = t(k, j);
      Blas1::Daxpy(j - k, -t(k, j), work + k + 1, 1, t.At(k + 1, j), 1);
    }
  }
  return p;
}

void Linpack::Dchud(double* r, int ldr, int p, const double* x, double* z, int ldz, int nz,
                    const double* y, double* rho, double* c, double* s) {
  const FullView factor{r, ldr, p};
  const FullView responses{z, ldz, p};
  for (int j = 0; j < p; ++j) {
    double rest = x[j];
    for (int i = 0; i < j; ++i) Rotate(c[i], s[i], factor(i, j), rest);
    Blas1::DRotG(factor(j, j), rest, c[j], s[j]);
  }
  for (int j = 0; j < nz; ++j) {
    double rest = y[j];
    for (int i = 0; i < p; ++i) Rotate(c[i], s[i], responses(i, j), rest);
    const double size = std::fabs(rest);
    if (size == 0 || !(rho[j] >= 0)) continue;
    const double scale = size + rho[j];
    const double scaledSize = size / scale;
    const double scaledRho = rho[j] / scale;
    rho[j] = scale * std::sqrt(scaledSize * scaledSize + scaledRho * scaledRho);
  }
}

int Linpack::Dchdd(double* r, int ldr, int p, const double* x, double* z, int ldz, int nz,
                   const double* y, double* rho, double* c, double* s) {
  const FullView factor{r, ldr, p};
  const FullView responses{z, ldz, p};
  // s solves R's = x. A row x whose s has the length 1 or more was no part of the data.
  Blas1::DCopy(p, x, 1, s, 1);
  internal::SolveUpperTrans(factor, s);
  const double norm = Blas1::DNrm2(p, s, 1);
  if (!(norm < 1)) return -1;
  double alpha = std::sqrt(1 - norm * norm);
  for (int i = p - 1; i >= 0; --i) {
    const double scale = alpha + std::fabs(s[i]);
    const double a = alpha / scale;
    const double b = s[i] / scale;
    const double length = std::sqrt(a * a + b * b);
    c[i] = a / length;
    s[i] = b / length;
    alpha = scale * length;
  }
  for (int j = 0; j < p; ++j) {
    double rest = 0;
    for (int i = j; i >= 0; --i) Rotate(c[i], s[i], rest, factor(i, j));
  }
  int info = 0;
  for (int j = 0; j < nz; ++j) {
    double rest = y[j];
    for (int i = 0; i < p; ++i) {
      responses(i, j) = (responses(i, j) - s[i] * rest) / c[i];
      rest = c[i] * rest - s[i] * responses(i, j);
    }
    const double size = std::fabs(rest);
    if (!(size <= rho[j])) {
      info = 1;
      rho[j] = -1;
    } else if (size != 0) {
      const double ratio = size / rho[j];
      rho[j] *= std::sqrt(1 - ratio * ratio);
    }
  }
  return info;
}

namespace {

// ShiftRight moves column l to k, and k .. l-1 one place to the right. The moved column is all that
// sticks out below the diagonal; it is rotated away from its foot upward, rotation i turning rows
// l-2-i and l-1-i, 0-based.
void ShiftRight(const FullView<double>& r, int k, int l, const FullView<double>& z, int nz,
                double* c, double* s) {
  const int count = l - 1 - k;
  for (int i = 0; i < l; ++i) s[i] = r(l - 1 - i, l - 1);
  for (int j = l - 2; j >= k; --j) {
    Blas1::DCopy(j + 1, r.At(0, j), 1, r.At(0, j + 1), 1);
    r(j + 1, j + 1) = 0;
  }
  for (int i = 0; i < k; ++i) r(i, k) = s[l - 1 - i];
  double rest = s[0];
  for (int i = 0; i < count; ++i) {
    Blas1::DRotG(s[i + 1], rest, c[i], s[i]);
    rest = s[i + 1];
  }
  r(k, k) = rest;
  for (int j = k + 1; j < r.n; ++j) {
    for (int i = std::max(0, l - 1 - j); i < count; ++i)
      Rotate(c[i], s[i], r(l - 2 - i, j), r(l - 1 - i, j));
  }
  for (int j = 0; j < nz; ++j) {
    for (int i = 0; i < count; ++i) Rotate(c[i], s[i], z(l - 2 - i, j), z(l - 1 - i, j));
  }
}

// ShiftLeft moves column k to l, and k+1 .. l one place to the left. Each of those has its old
// diagonal element below the new one, kept in s until a rotation removes it; rotation i turns rows
// k+i and k+i+1, 0-based.
void ShiftLeft(const FullView<double>& r, int k, int l, const FullView<double>& z, int nz,
               double* c, double* s) {
  const int count = l - 1 - k;
  double* moved = s + count;
  Blas1::DCopy(k + 1, r.At(0, k), 1, moved, 1);
  for (int j = k; j < l - 1; ++j) {
    Blas1::DCopy(j + 1, r.At(0, j + 1), 1, r.At(0, j), 1);
    s[j - k] = r(j + 1, j + 1);
  }
  Blas1::DCopy(k + 1, moved, 1, r.At(0, l - 1), 1);
  std::fill(r.At(k + 1, l - 1), r.At(l, l - 1), 0.0);
  for (int j = k; j < r.n; ++j) {
    for (int i = 0; i < std::min(j - k, count); ++i)
      Rotate(c[i], s[i], r(k + i, j), r(k + i + 1, j));
    if (j >= l - 1) continue;
    double below = s[j - k];
    Blas1::DRotG(r(j, j), below, c[j - k], s[j - k]);
  }
  for (int j = 0; j < nz; ++j) {
    for (int i = 0; i < count; ++i) Rotate(c[i], s[i], z(k + i, j), z(k + i + 1, j));
  }
}

}  // namespace

void Linpack::Dchex(double* r, int ldr, int p, int k, int l, double* z, int ldz, int nz, double* c,
                    double* s, int job) {
  const auto shift = job == 2 ? ShiftLeft : ShiftRight;
  shift(FullView{r, ldr, p}, k - 1, l, FullView{z, ldz, p}, nz, c, s);
}

}  // namespace NQMath_940
