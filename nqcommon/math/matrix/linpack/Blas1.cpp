#include <nqcommon/math/matrix/linpack/Blas1.h>

#include <nqcommon/math/kernels/strided.h>

#include <cmath>
#include <cstdlib>
#include <iostream>
#include <string>
#include <utility>

namespace NQMath_940 {

using internal::Index;
using internal::Visit;
using internal::VisitPairs;

// ---- Vectors

double Blas1::DASum(int n, const double* x, int incx) {
  return incx < 1 ? 0.0 : internal::ASum(n, x, incx);
}

void Blas1::Daxpy(int n, double a, const double* x, int incx, double* y, int incy) {
  internal::Axpy(n, a, x, incx, y, incy);
}

void Blas1::DCopy(int n, const double* x, int incx, double* y, int incy) {
  VisitPairs(n, x, incx, y, incy, [](const double& xk, double& yk) { yk = xk; });
}

// The reference routine unrolls unit increments by five, which saves tests and regroups nothing:
// its terms join one sum from left to right, as these do.
double Blas1::DDot(int n, const double* x, int incx, const double* y, int incy) {
  return internal::Dot(n, x, incx, y, incy);
}

double Blas1::DNrm2(int n, const double* x, int incx) {
  return incx < 1 ? 0.0 : internal::Nrm2(n, x, incx);
}

void Blas1::DScal(int n, double a, double* x, int incx) {
  if (incx < 1) return;
  Visit(n, x, incx, [a](double& xk) { xk *= a; });
}

void Blas1::DSwap(int n, double* x, int incx, double* y, int incy) {
  VisitPairs(n, x, incx, y, incy, [](double& xk, double& yk) { std::swap(xk, yk); });
}

int Blas1::IDAMax(int n, const double* x, int incx) {
  if (n < 1 || incx < 1) return 0;
  int largest = 0;
  double size = std::fabs(x[0]);
  for (int k = 1; k < n; ++k) {
    const double sizeK = std::fabs(x[k * Index{incx}]);
    if (sizeK > size) {
      largest = k;
      size = sizeK;
    }
  }
  return largest + 1;
}

// ---- Plane rotations

void Blas1::DRot(int n, double* x, int incx, double* y, int incy, double c, double s) {
  VisitPairs(n, x, incx, y, incy, [c, s](double& xk, double& yk) {
    const double rotated = c * xk + s * yk;
    yk = c * yk - s * xk;
    xk = rotated;
  });
}

void Blas1::DRotG(double& a, double& b, double& c, double& s) {
  const double sizeA = std::fabs(a);
  const double sizeB = std::fabs(b);
  const double scale = sizeA + sizeB;
  if (scale == 0) {
    c = 1;
    s = a = b = 0;
    return;
  }
  const double scaledA = a / scale;
  const double scaledB = b / scale;
  const double sign = D_Sign(sizeA > sizeB ? a : b);
  const double r = sign * (scale * std::sqrt(scaledA * scaledA + scaledB * scaledB));
  c = a / r;
  s = b / r;
  double z = 1;
  if (sizeA > sizeB)
    z = s;
  else if (c != 0)
    z = 1 / c;
  a = r;
  b = z;
}

// ---- Scalars

bool Blas1::LSame(char a, char b) {
  const auto lower = [](char x) { return x >= 'A' && x <= 'Z' ? x - 'A' + 'a' : int{x}; };
  return lower(a) == lower(b);
}

double Blas1::D_Abs(double x) { return std::fabs(x); }
double Blas1::D_Max(double a, double b) { return a >= b ? a : b; }
int Blas1::I_Max(int a, int b) { return a >= b ? a : b; }
int Blas1::I_Min(int a, int b) { return a <= b ? a : b; }

double Blas1::D_Sign(double x) {
  static constexpr double kSigns[] = {1.0, -1.0};
  return kSigns[x < 0];
}

// ---- Machine constants and errors

double Blas1::DMach(int job) {
  // The variables are volatile so that each value is rounded to a double at run time.
  volatile double eps = 1;
  volatile double sum = 1 + eps / 2;
  while (sum > 1) {
    eps = eps / 2;
    sum = 1 + eps / 2;
  }
  volatile double tiny = 1;
  volatile double next = tiny / 16;
  while (next > 0) {
    tiny = next;
    next = tiny / 16;
  }
  const double small = tiny / eps * 100;
  switch (job) {
    case 1:
      return eps;
    case 2:
      return small;
    case 3:
      return 1 / small;
    default:
      XErBla("DMACH", 1);
  }
}

void Blas1::XErBla(const char* name, int param) {
  // std::to_string keeps a locale from grouping the digits.
  std::cout << "\nXERBLA - Fatal error!\n  On entry to routine " << name
            << "\n  input parameter number " << std::to_string(param) << " had an illegal value.\n"
            << std::flush;
  std::exit(1);
}

}  // namespace NQMath_940
