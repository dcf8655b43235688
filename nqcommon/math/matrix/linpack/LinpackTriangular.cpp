#include <nqcommon/math/matrix/linpack/Linpack.h>

#include <nqcommon/math/matrix/linpack/Blas1.h>
#include <nqcommon/math/matrix/linpack/internal/linpack_condition.h>
#include <nqcommon/math/matrix/linpack/internal/linpack_triangle.h>
#include <nqcommon/math/matrix/linpack/internal/linpack_views.h>

#include <cmath>
#include <utility>

namespace NQMath_940 {

using internal::FullView;
using internal::Probe;

namespace {

using Triangle = FullView<const double>;

double TriangleNorm(const Triangle& t, bool lower) {
  double norm = 0;
  for (int j = 0; j < t.n; ++j) {
    const double sum =
        lower ? Blas1::DASum(t.n - j, t.At(j, j), 1) : Blas1::DASum(j + 1, t.At(0, j), 1);
    norm = Blas1::D_Max(norm, sum);
  }
  return norm;
}

// ProbeLower solves T'w = e and then T z = w for a lower triangle T.
void ProbeLower(const Triangle& t, Probe& z) {
  for (int j = 0; j < t.n; ++j) z[j] = 0;
  internal::Growth growth(z);
  for (int k = t.n - 1; k >= 0; --k) growth.Step(t, k, 0, k);
  z.Normalise();
  z.StartScale();
  for (int k = 0; k < t.n; ++k) {
    z.Divide(k, t(k, k));
    Blas1::Daxpy(t.Below(k), -z[k], t.At(k + 1, k), 1, z.At(k + 1), 1);
  }
  z.Normalise();
}

// FirstZero gives the 1-based position of the first zero on the diagonal, or 0.
int FirstZero(const Triangle& t) {
  for (int k = 0; k < t.n; ++k) {
    if (t(k, k) == 0) return k + 1;
  }
  return 0;
}

void SolveLower(const Triangle& t, double* b) {
  for (int k = 0; k < t.n; ++k) {
    b[k] /= t(k, k);
    Blas1::Daxpy(t.Below(k), -b[k], t.At(k + 1, k), 1, b + k + 1, 1);
  }
}

void SolveLowerTrans(const Triangle& t, double* b) {
  for (int k = t.n - 1; k >= 0; --k)
    b[k] = (b[k] - Blas1::DDot(t.Below(k), t.At(k + 1, k), 1, b + k + 1, 1)) / t(k, k);
}

void InvertLowerStep(const FullView<double>& t, int k) {
  t(k, k) = 1 / t(k, k);
  Blas1::DScal(t.Below(k), -t(k, k), t.At(k + 1, k), 1);
  for (int j = 0; j < k; ++j) {
    const double factor = t(k, j);
    t(k, j) = 0;
    Blas1::Daxpy(t.n - k, factor, t.At(k, k), 1, t.At(k, j), 1);
  }
}

}  // namespace

// ---- Triangular

void Linpack::Dtrco(const double* t, int ldt, int n, double& rcond, double* z, int job) {
  const Triangle view{t, ldt, n};
  Probe probe(z, n);
  if (job == 0) {
    ProbeLower(view, probe);
  } else {
    internal::GrowUpper(view, probe);
    probe.StartScale();
    internal::ProbeUpper(view, probe);
  }
  rcond = probe.ReciprocalCondition(TriangleNorm(view, job == 0));
}

int Linpack::Dtrsl(const double* t, int ldt, int n, double* b, int job) {
  const Triangle view{t, ldt, n};
  if (const int info = FirstZero(view); info != 0) return info;
  const bool upper = job % 10 != 0;
  const bool transposed = job / 10 % 10 != 0;
  if (upper && transposed)
    internal::SolveUpperTrans(view, b);
  else if (upper)
    internal::SolveUpper(view, b);
  else if (transposed)
    SolveLowerTrans(view, b);
  else
    SolveLower(view, b);
  return 0;
}

int Linpack::Dtrdi(double* t, int ldt, int n, double* det, int job) {
  const FullView view{t, ldt, n};
  if (job / 100 != 0) {
    internal::StartDeterminant(det);
    for (int k = 0; k < n && det[0] != 0; ++k) internal::MultiplyDeterminant(det, view(k, k));
  }
  if (job / 10 % 10 == 0) return 0;
  const bool upper = job % 10 != 0;
  for (int step = 0; step < n; ++step) {
    const int k = upper ? step : n - 1 - step;
    if (view(k, k) == 0) return k + 1;
    if (upper)
      internal::InvertUpperStep(view, k);
    else
      InvertLowerStep(view, k);
  }
  return 0;
}

// ---- Tridiagonal

int Linpack::Dgtsl(int n, double* c, double* d, double* e, double* b) {
  if (n < 1) return 0;
  // c[k], d[k] and e[k] become row k of the factor: its diagonal element and the two to the right
  // of it. An exchange fills in e[k].
  c[0] = d[0];
  if (n > 1) {
    d[0] = e[0];
    e[0] = 0;
    e[n - 1] = 0;
  }
  for (int k = 0; k < n - 1; ++k) {
    if (std::fabs(c[k + 1]) >= std::fabs(c[k])) {
      std::swap(c[k + 1], c[k]);
      std::swap(d[k + 1], d[k]);
      std::swap(e[k + 1], e[k]);
      std::swap(b[k + 1], b[k]);
    }
    if (c[k] == 0) return k + 1;
    const double factor = -c[k + 1] / c[k];
    c[k + 1] = d[k + 1] + factor * d[k];
    d[k + 1] = e[k + 1] + factor * e[k];
    e[k + 1] = 0;
    b[k + 1] += factor * b[k];
  }
  if (c[n - 1] == 0) return n;
  b[n - 1] /= c[n - 1];
  if (n > 1) b[n - 2] = (b[n - 2] - d[n - 2] * b[n - 1]) / c[n - 2];
  for (int k = n - 3; k >= 0; --k) b[k] = (b[k] - d[k] * b[k + 1] - e[k] * b[k + 2]) / c[k];
  return 0;
}

void Linpack::Dptsl(int n, double* d, const double* e, double* b) {
  if (n < 1) return;
  const int half = (n - 1) / 2;
  for (int k = 0; k < half; ++k) {
    const double factor = e[k] / d[k];
    d[k + 1] -= factor * e[k];
    b[k + 1] -= factor * b[k];
    const int last = n - 1 - k;
    const double lastFactor = e[last - 1] / d[last];
    d[last - 1] -= lastFactor * e[last - 1];
    b[last - 1] -= lastFactor * b[last];
  }
  // Where n is even, a 2 x 2 block is left in the middle.
  int middle = half;
  if (n % 2 == 0) {
    const double factor = e[middle] / d[middle];
    d[middle + 1] -= factor * e[middle];
    b[middle + 1] -= factor * b[middle];
    ++middle;
  }
  b[middle] /= d[middle];
  for (int k = 1; k <= half; ++k) {
    const int up = middle - k;
    const int down = middle + k;
    b[up] = (b[up] - e[up] * b[up + 1]) / d[up];
    b[down] = (b[down] - e[down - 1] * b[down - 1]) / d[down];
  }
  if (n % 2 == 0) b[0] = (b[0] - e[0] * b[1]) / d[0];
}

}  // namespace NQMath_940
