#include <nqcommon/math/matrix/linpack/Linpack.h>

#include <nqcommon/math/matrix/linpack/Blas1.h>
#include <nqcommon/math/matrix/linpack/internal/linpack_condition.h>
#include <nqcommon/math/matrix/linpack/internal/linpack_triangle.h>
#include <nqcommon/math/matrix/linpack/internal/linpack_views.h>

#include <cmath>
#include <cstdlib>
#include <utility>

namespace NQMath_940 {

using internal::FullView;
using internal::PackedView;
using internal::Probe;

namespace {

// ---- Factorisation, from the last row to the first

// Pivot is the pivot block that ends at a row: `order` is 0 for a column of zeros, and `row` is to
// take the place of the block's first row.
struct Pivot {
  int order;
  int row;
};

template <class View>
Pivot ChoosePivot(const View& t, int k) {
  // alpha makes the growth of two 1 x 1 steps at most that of one 2 x 2 step.
  const double alpha = (1 + std::sqrt(17.0)) / 8;
  const double diagonal = std::fabs(t(k, k));
  if (k == 0) return {diagonal == 0 ? 0 : 1, 0};
  const int largest = Blas1::IDAMax(k, t.At(0, k), 1) - 1;
  const double columnMax = std::fabs(t(largest, k));
  if (Blas1::D_Max(diagonal, columnMax) == 0) return {0, k};
  if (diagonal >= alpha * columnMax) return {1, k};
  double rowMax = 0;
  for (int j = largest + 1; j <= k; ++j) rowMax = Blas1::D_Max(rowMax, std::fabs(t(largest, j)));
  if (largest > 0) {
    const int above = Blas1::IDAMax(largest, t.At(0, largest), 1) - 1;
    rowMax = Blas1::D_Max(rowMax, std::fabs(t(above, largest)));
  }
  if (std::fabs(t(largest, largest)) >= alpha * rowMax) return {1, largest};
  if (diagonal >= alpha * columnMax * (columnMax / rowMax)) return {1, k};
  return {2, largest};
}

template <class View>
void Eliminate(const View& t, int k) {
  for (int j = k - 1; j >= 0; --j) {
    const double factor = -t(j, k) / t(k, k);
    Blas1::Daxpy(j + 1, factor, t.At(0, k), 1, t.At(0, j), 1);
    t(j, k) = factor;
  }
}

template <class View>
void EliminatePair(const View& t, int k) {
  const double off = t(k - 1, k);
  const double scaledK = t(k, k) / off;
  const double scaledL = t(k - 1, k - 1) / off;
  const double denominator = 1 - scaledK * scaledL;
  for (int j = k - 2; j >= 0; --j) {
    const double bK = t(j, k) / off;
    const double bL = t(j, k - 1) / off;
    const double factorK = (scaledL * bK - bL) / denominator;
    const double factorL = (scaledK * bL - bK) / denominator;
    Blas1::Daxpy(j + 1, factorK, t.At(0, k), 1, t.At(0, j), 1);
    Blas1::Daxpy(j + 1, factorL, t.At(0, k - 1), 1, t.At(0, j), 1);
    t(j, k) = factorK;
    t(j, k - 1) = factorL;
  }
}

template <class View>
int Factor(const View& t, int* kpvt) {
  int info = 0;
  for (int k = t.n - 1; k >= 0;) {
    const Pivot pivot = ChoosePivot(t, k);
    const int first = pivot.order == 2 ? k - 1 : k;
    if (pivot.row != first) {
      internal::ExchangeSymmetric(t, pivot.row, first);
      if (pivot.order == 2) std::swap(t(pivot.row, k), t(first, k));
    }
    kpvt[k] = pivot.row + 1;
    if (pivot.order == 0) {
      info = k + 1;
    } else if (pivot.order == 1) {
      Eliminate(t, k);
    } else {
      EliminatePair(t, k);
      kpvt[k] = kpvt[k - 1] = -kpvt[k];
    }
    k = first - 1;
  }
  return info;
}

// ---- Solves

template <class View>
void SolvePair(const View& t, int k, double* b) {
  const double off = t(k - 1, k);
  const double scaledK = t(k, k) / off;
  const double scaledL = t(k - 1, k - 1) / off;
  const double bK = b[k] / off;
  const double bL = b[k - 1] / off;
  const double denominator = scaledK * scaledL - 1;
  b[k] = (scaledL * bK - bL) / denominator;
  b[k - 1] = (scaledK * bL - bK) / denominator;
}

// SolveUD solves U D x = b. It calls prepare(i) when b[i] is final but for D, and divide(k) to
// divide b[k] by a block of order 1.
template <class View, class Prepare, class Divide>
void SolveUD(const View& t, const int* kpvt, double* b, Prepare prepare, Divide divide) {
  for (int k = t.n - 1; k >= 0;) {
    const int first = kpvt[k] < 0 ? k - 1 : k;
    std::swap(b[first], b[std::abs(kpvt[k]) - 1]);
    for (int i = k; i >= first; --i) {
      prepare(i);
      Blas1::Daxpy(first, b[i], t.At(0, i), 1, b, 1);
    }
    if (first == k)
      divide(k);
    else
      SolvePair(t, k, b);
    k = first - 1;
  }
}

// SolveUTrans solves U'x = b.
template <class View>
void SolveUTrans(const View& t, const int* kpvt, double* b) {
  for (int k = 0; k < t.n;) {
    const int next = kpvt[k] < 0 ? k + 2 : k + 1;
    for (int i = k; i < next; ++i) b[i] += Blas1::DDot(k, t.At(0, i), 1, b, 1);
    std::swap(b[k], b[std::abs(kpvt[k]) - 1]);
    k = next;
  }
}

template <class View>
void Solve(const View& t, const int* kpvt, double* b) {
  SolveUD(
      t, kpvt, b, [](int) {}, [&](int k) { b[k] /= t(k, k); });
  SolveUTrans(t, kpvt, b);
}

template <class View>
double Condition(const View& t, int* kpvt, double* work) {
  const double norm = internal::SymmetricNorm(t, work);
  Factor(t, kpvt);
  Probe z(work, t.n);
  for (int j = 0; j < t.n; ++j) z[j] = 0;
  double e = 1;
  // Each e takes the sign of what it is added to, which makes w grow.
  const auto grow = [&](int i) {
    if (z[i] != 0) e = std::copysign(e, z[i]);
    z[i] += e;
  };
  SolveUD(t, kpvt, work, grow, [&](int k) { e *= z.Divide(k, t(k, k)); });
  z.Normalise();
  SolveUTrans(t, kpvt, work);
  z.Normalise();
  z.StartScale();
  SolveUD(
      t, kpvt, work, [](int) {}, [&](int k) { z.Divide(k, t(k, k)); });
  z.Normalise();
  SolveUTrans(t, kpvt, work);
  z.Normalise();
  return z.ReciprocalCondition(norm);
}

// ---- Determinant, inertia and inverse

template <class View>
void DeterminantInertia(const View& t, const int* kpvt, double* det, int* inert) {
  if (inert != nullptr) inert[0] = inert[1] = inert[2] = 0;
  if (det != nullptr) internal::StartDeterminant(det);
  double pending = 0;
  for (int k = 0; k < t.n; ++k) {
    double d = t(k, k);
    if (kpvt[k] < 0) {
      // A block d s, s c has one eigenvalue of each sign. Its determinant is split into the factors
      // (d/|s|) c - |s| and |s|, neither of which overflows where d c would.
      if (pending == 0) {
        pending = std::fabs(t(k, k + 1));
        d = d / pending * t(k + 1, k + 1) - pending;
      } else {
        d = pending;
        pending = 0;
      }
    }
    if (inert != nullptr) {
      if (d > 0) ++inert[0];
      if (d < 0) ++inert[1];
      if (d == 0) ++inert[2];
    }
    if (det != nullptr) internal::MultiplyDeterminant(det, d);
  }
}

// MultiplyByLeading multiplies rows 0 .. k-1 of column j by the inverse of the leading block of
// order k, which is in place, and returns the product of the column before and after.
template <class View>
double MultiplyByLeading(const View& t, int k, int j, double* work) {
  Blas1::DCopy(k, t.At(0, j), 1, work, 1);
  for (int i = 0; i < k; ++i) {
    t(i, j) = Blas1::DDot(i + 1, t.At(0, i), 1, work, 1);
    Blas1::Daxpy(i, work[i], t.At(0, i), 1, t.At(0, j), 1);
  }
  return Blas1::DDot(k, work, 1, t.At(0, j), 1);
}

template <class View>
void InvertPair(const View& t, int k, double* work) {
  const double off = std::fabs(t(k, k + 1));
  const double scaledK = t(k, k) / off;
  const double scaledL = t(k + 1, k + 1) / off;
  const double scaledOff = t(k, k + 1) / off;
  const double d = off * (scaledK * scaledL - 1);
  t(k, k) = scaledL / d;
  t(k + 1, k + 1) = scaledK / d;
  t(k, k + 1) = -scaledOff / d;
  t(k + 1, k + 1) += MultiplyByLeading(t, k, k + 1, work);
  t(k, k + 1) += Blas1::DDot(k, t.At(0, k), 1, t.At(0, k + 1), 1);
  t(k, k) += MultiplyByLeading(t, k, k, work);
}

template <class View>
void Invert(const View& t, const int* kpvt, double* work) {
  for (int k = 0; k < t.n;) {
    const bool pair = kpvt[k] < 0;
    if (pair) {
      InvertPair(t, k, work);
    } else {
      t(k, k) = 1 / t(k, k);
      t(k, k) += MultiplyByLeading(t, k, k, work);
    }
    const int row = std::abs(kpvt[k]) - 1;
    if (row != k) {
      internal::ExchangeSymmetric(t, row, k);
      if (pair) std::swap(t(row, k + 1), t(k, k + 1));
    }
    k += pair ? 2 : 1;
  }
}

template <class View>
void DeterminantInverse(const View& t, const int* kpvt, double* det, int* inert, double* work,
                        int job) {
  const bool wantInertia = job / 100 % 10 != 0;
  const bool wantDeterminant = job / 10 % 10 != 0;
  DeterminantInertia(t, kpvt, wantDeterminant ? det : nullptr, wantInertia ? inert : nullptr);
  if (job % 10 != 0) Invert(t, kpvt, work);
}

}  // namespace

// ---- Full storage

void Linpack::Dsico(double* a, int lda, int n, int* kpvt, double& rcond, double* z) {
  rcond = Condition(FullView{a, lda, n}, kpvt, z);
}

int Linpack::Dsifa(double* a, int lda, int n, int* kpvt) {
  return Factor(FullView{a, lda, n}, kpvt);
}

void Linpack::Dsisl(const double* a, int lda, int n, const int* kpvt, double* b) {
  Solve(FullView{a, lda, n}, kpvt, b);
}

void Linpack::Dsidi(double* a, int lda, int n, const int* kpvt, double* det, int* inert,
                    double* work, int job) {
  DeterminantInverse(FullView{a, lda, n}, kpvt, det, inert, work, job);
}

// ---- Packed storage

void Linpack::Dspco(double* ap, int n, int* kpvt, double& rcond, double* z) {
  rcond = Condition(PackedView{ap, n}, kpvt, z);
}

int Linpack::Dspfa(double* ap, int n, int* kpvt) { return Factor(PackedView{ap, n}, kpvt); }

void Linpack::Dspsl(const double* ap, int n, const int* kpvt, double* b) {
  Solve(PackedView{ap, n}, kpvt, b);
}

void Linpack::Dspdi(double* ap, int n, const int* kpvt, double* det, int* inert, double* work,
                    int job) {
  DeterminantInverse(PackedView{ap, n}, kpvt, det, inert, work, job);
}

}  // namespace NQMath_940
