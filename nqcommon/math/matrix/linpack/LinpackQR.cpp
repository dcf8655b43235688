#include <nqcommon/math/matrix/linpack/Linpack.h>

#include <nqcommon/math/matrix/linpack/Blas1.h>
#include <nqcommon/math/matrix/linpack/internal/linpack_columns.h>
#include <nqcommon/math/matrix/linpack/internal/linpack_reflector.h>
#include <nqcommon/math/matrix/linpack/internal/linpack_views.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace NQMath_940 {

using internal::FreeColumns;
using internal::FullView;

namespace {

// DowndateNorm takes x[0] out of `norm`, that of x of n elements. It downdates the norm while that
// loses few digits against `reference`, the norm when it was last computed from the elements, and
// computes it anew otherwise.
void DowndateNorm(int n, const double* x, double& norm, double& reference) {
  const double removed = std::fabs(x[0]) / norm;
  const double left = Blas1::D_Max(1 - removed * removed, 0);
  const double ratio = norm / reference;
  if (1 + 0.05 * left * (ratio * ratio) != 1) {
    norm *= std::sqrt(left);
  } else {
    norm = reference = Blas1::DNrm2(n - 1, x + 1, 1);
  }
}

}  // namespace

void Linpack::Dqrdc(double* x, int ldx, int n, int p, double* qraux, int* jpvt, double* work,
                    int job) {
  const FullView view{x, ldx, n};
  const auto exchange = [&](int i, int j) { Blas1::DSwap(n, view.At(0, i), 1, view.At(0, j), 1); };
  FreeColumns free;
  if (job != 0) free = internal::ArrangeColumns(p, jpvt, exchange);
  for (int j = free.first; j < free.last; ++j)
    qraux[j] = work[j] = Blas1::DNrm2(n, view.At(0, j), 1);
  for (int l = 0; l < std::min(n, p); ++l) {
    if (free.Contains(l)) {
      int longest = l;
      double norm = 0;
      for (int j = l; j < free.last; ++j) {
        if (qraux[j] <= norm) continue;
        longest = j;
        norm = qraux[j];
      }
      if (longest != l) {
        exchange(l, longest);
        qraux[longest] = qraux[l];
        work[longest] = work[l];
        std::swap(jpvt[longest], jpvt[l]);
      }
    }
    qraux[l] = 0;
    if (l == n - 1) break;
    double* reflector = view.At(l, l);
    const double r = internal::MakeReflector(n - l, reflector);
    if (r == 0) continue;
    internal::ReflectRightOf(reflector, n - l, ldx, p - l - 1);
    for (int j = l + 1; j < p; ++j) {
      if (free.Contains(j) && qraux[j] != 0) DowndateNorm(n - l, view.At(l, j), qraux[j], work[j]);
    }
    qraux[l] = reflector[0];
    reflector[0] = -r;
  }
}

namespace {

// Reflections applies the Q of a decomposition, one reflection at a time. The diagonal elements of
// the reflections lie in qraux, since R's take their places in x.
class Reflections {
 public:
  Reflections(double* x, int ldx, int n, const double* qraux) : fX{x, ldx, n}, fQRAux(qraux) {}

  void Apply(int j, double* y) const {
    if (fQRAux[j] == 0) return;
    const double diagonal = std::exchange(fX(j, j), fQRAux[j]);
    internal::Reflect(fX.n - j, fX.At(j, j), y + j);
    fX(j, j) = diagonal;
  }

 private:
  FullView<double> fX;
  const double* fQRAux;
};

}  // namespace

int Linpack::Dqrsl(double* x, int ldx, int n, int k, const double* qraux, const double* y,
                   double* qy, double* qty, double* b, double* rsd, double* xb, int job) {
  const bool wantQy = job / 10000 != 0;
  const bool wantQty = job % 10000 != 0;
  const bool wantB = job / 100 % 10 != 0;
  const bool wantRsd = job / 10 % 10 != 0;
  const bool wantXb = job % 10 != 0;
  const int count = std::min(k, n - 1);
  const Reflections q(x, ldx, n, qraux);

  if (wantQy) Blas1::DCopy(n, y, 1, qy, 1);
  if (wantQty) Blas1::DCopy(n, y, 1, qty, 1);
  if (wantQy) {
    for (int j = count - 1; j >= 0; --j) q.Apply(j, qy);
  }
  if (wantQty) {
    for (int j = 0; j < count; ++j) q.Apply(j, qty);
  }

  // The first k values of Q'y belong to X b, the others to the residual.
  if (wantB) Blas1::DCopy(k, qty, 1, b, 1);
  if (wantXb) Blas1::DCopy(k, qty, 1, xb, 1);
  if (wantRsd) Blas1::DCopy(n - k, qty + k, 1, rsd + k, 1);
  if (wantXb) std::fill(xb + k, xb + n, 0.0);
  if (wantRsd) std::fill(rsd, rsd + k, 0.0);

  int info = 0;
  const FullView r{x, ldx, n};
  for (int j = wantB ? k - 1 : -1; j >= 0; --j) {
    if (r(j, j) == 0) {
      info = j + 1;
      break;
    }
    b[j] /= r(j, j);
    Blas1::Daxpy(j, -b[j], r.At(0, j), 1, b, 1);
  }
  for (int j = count - 1; j >= 0; --j) {
    if (wantRsd) q.Apply(j, rsd);
    if (wantXb) q.Apply(j, xb);
  }
  return info;
}

}  // namespace NQMath_940
