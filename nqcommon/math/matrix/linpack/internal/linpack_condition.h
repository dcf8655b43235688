// LINPACK's condition estimate (Cline, Moler, Stewart and Wilkinson 1979, SIAM J. Numer. Anal. 16):
// A'y = e is solved with the signs of e chosen to make y grow, then A z = y. The ratio |z| / |y| in
// the 1-norm estimates |A^-1| from below, so that the reciprocal condition comes out no smaller
// than it is, but for rounding. Vectors are shrunk before they could overflow.
#pragma once

#include <nqcommon/math/matrix/linpack/Blas1.h>

#include <cmath>
#include <utility>

namespace NQMath_940::internal {

// Probe is the vector z that is driven through the factors.
class Probe {
 public:
  Probe(double* z, int n) : fZ(z), fN(n) {}

  double& operator[](int k) { return fZ[k]; }
  double* At(int k) { return fZ + k; }

  void Shrink(double factor) {
    Blas1::DScal(fN, factor, fZ, 1);
    fScale *= factor;
  }

  // Limit shrinks the vector so far that `value`, shrunk alike, is within the bound, and returns
  // the factor.
  double Limit(double value, double bound) {
    if (!(std::fabs(value) > bound)) return 1;
    const double factor = bound / std::fabs(value);
    Shrink(factor);
    return factor;
  }

  // Divide limits element k to the pivot's size, divides it by the pivot and returns the factor of
  // the limit. A pivot of 0 makes the element 1, since any value solves 0 x = 0.
  double Divide(int k, double pivot) {
    const double factor = Limit(fZ[k], std::fabs(pivot));
    if (pivot != 0)
      fZ[k] /= pivot;
    else
      fZ[k] = 1;
    return factor;
  }

  // Normalise shrinks the vector to the 1-norm 1.
  void Normalise() { Shrink(1 / Blas1::DASum(fN, fZ, 1)); }

  // StartScale starts the count of the factors. |y| is 1 then, and the reciprocal of their product
  // will be |z|.
  void StartScale() { fScale = 1; }

  // The estimate of 1 / (|A| |A^-1|); `norm` is |A|.
  double ReciprocalCondition(double norm) const { return norm != 0 ? fScale / norm : 0; }

 private:
  double* fZ;
  int fN;
  double fScale = 1;
};

// Growth solves T'w = e: Step is called for each row of T, in the order in which the unknowns
// resolve.
class Growth {
 public:
  explicit Growth(Probe& z) : fZ(z) {}

  // Step resolves unknown k, which the elements (k, first .. end-1) of T couple to later ones.
  template <class View>
  void Step(const View& t, int k, int first, int end) {
    const double pivot = t(k, k);
    if (fZ[k] != 0) fE = std::copysign(fE, -fZ[k]);
    fE *= fZ.Limit(fE - fZ[k], std::fabs(pivot));
    double plus = fE - fZ[k];
    double minus = -fE - fZ[k];
    double sizePlus = std::fabs(plus);
    double sizeMinus = std::fabs(minus);
    if (pivot != 0) {
      plus /= pivot;
      minus /= pivot;
    } else {
      plus = minus = 1;
    }
    for (int j = first; j < end; ++j) {
      sizeMinus += std::fabs(fZ[j] + minus * t(k, j));
      fZ[j] += plus * t(k, j);
      sizePlus += std::fabs(fZ[j]);
    }
    if (sizePlus < sizeMinus) {
      const double change = minus - plus;
      for (int j = first; j < end; ++j) fZ[j] += change * t(k, j);
      plus = minus;
    }
    fZ[k] = plus;
  }

 private:
  Probe& fZ;
  double fE = 1;
};

// GrowUpper solves T'w = e for an upper triangle T.
template <class View>
void GrowUpper(View& t, Probe& z) {
  for (int j = 0; j < t.n; ++j) z[j] = 0;
  Growth growth(z);
  for (int k = 0; k < t.n; ++k) growth.Step(t, k, k + 1, t.RowEnd(k));
  z.Normalise();
}

// ProbeUpper solves T z = v for an upper triangle T.
template <class View>
void ProbeUpper(const View& t, Probe& z) {
  for (int k = t.n - 1; k >= 0; --k) {
    const int top = t.Top(k);
    z.Divide(k, t(k, k));
    Blas1::Daxpy(k - top, -z[k], t.At(top, k), 1, z.At(top), 1);
  }
  z.Normalise();
}

// ProbeUpperTrans solves T'v = y for an upper triangle T.
template <class View>
void ProbeUpperTrans(const View& t, Probe& z) {
  for (int k = 0; k < t.n; ++k) {
    const int top = t.Top(k);
    z[k] -= Blas1::DDot(k - top, t.At(top, k), 1, z.At(top), 1);
    z.Divide(k, t(k, k));
  }
  z.Normalise();
}

}  // namespace NQMath_940::internal
