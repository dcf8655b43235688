#pragma once

#include <nqcommon/export.h>

namespace NQMath_940 {

// The level-1 BLAS (Lawson, Hanson, Kincaid and Krogh 1979, ACM Algorithm 539) and LINPACK's
// machine constants, on plain arrays.
//
// Vectors   n elements, incx apart: x[0], x[incx], ... With a negative increment the routines of
//           two vectors walk the same elements from the far end. Those of one vector do nothing
//           (sums are 0) unless incx >= 1. A count below 1 touches no element.
//
// Scalars   by value; those a routine hands back are references.
//
// Order     element by element as the reference routines go; a sum is one accumulator, so results
//           repeat to the bit.
class NQ_API Blas1 {
 public:
  Blas1() = delete;

  // ---- Vectors

  // The sum of |x|.
  static double DASum(int n, const double* x, int incx);
  // y += a x. With a = 0 nothing is read, so NaN and infinities in x do not spread.
  static void Daxpy(int n, double a, const double* x, int incx, double* y, int incy);
  // y <- x
  static void DCopy(int n, const double* x, int incx, double* y, int incy);
  // x'y
  static double DDot(int n, const double* x, int incx, const double* y, int incy);
  // Euclidean norm; no square overflows or underflows on the way.
  static double DNrm2(int n, const double* x, int incx);
  // x *= a, also for a = 0: NaN and infinities in x become NaN.
  static void DScal(int n, double a, double* x, int incx);
  // x <-> y
  static void DSwap(int n, double* x, int incx, double* y, int incy);
  // The 1-based position of the first element of largest magnitude; 0 without elements. NaN is
  // larger than nothing, and nothing is larger than a NaN in first place.
  static int IDAMax(int n, const double* x, int incx);

  // ---- Plane rotations

  // (x, y) <- (c x + s y, c y - s x), element by element.
  static void DRot(int n, double* x, int incx, double* y, int incy, double c, double s);
  // The rotation that takes (a, b) to (r, 0), r with the sign of the larger of a and b:
  //   r = c a + s b,  0 = c b - s a.  Of (0, 0): c = 1, s = 0.
  // On return a is r and b is z, from which both can be rebuilt: s when |a| > |b|, else 1/c, else 1
  // where c is 0. |a| + |b| may overflow.
  static void DRotG(double& a, double& b, double& c, double& s);

  // ---- Scalars

  static bool LSame(char a, char b);  // equal, ASCII letters in either case
  static double D_Abs(double x);
  static double D_Max(double a, double b);
  static int I_Max(int a, int b);
  static int I_Min(int a, int b);
  static double D_Sign(double x);  // -1 when x < 0, otherwise 1

  // ---- Machine constants and errors

  // job 1  eps, the first power of two, halving from 1, for which 1 + eps/2 rounds to 1
  // job 2  small = 100 tiny / eps, tiny being the last of 1, 1/16, 1/256, ... that is not 0
  // job 3  1 / small
  // Found by computing at each call. Any other job is an error of parameter 1.
  static double DMach(int job);

  // Reports an illegal argument on standard output and ends the process with status 1.
  [[noreturn]] static void XErBla(const char* name, int param);
};

}  // namespace NQMath_940
