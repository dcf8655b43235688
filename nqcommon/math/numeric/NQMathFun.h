#pragma once

#include <cstddef>
#include <vector>

#include <nqcommon/export.h>

namespace NQMath_940 {

// Special functions, searches and level-1 vector kernels.
//
//   special functions, small numbers, searches    NQMathFun.cpp
//   strided kernels, the packed triangle, vectors NQMathFun_vector.cpp
class NQ_API NQMathFun {
 public:
  // A position, a count or a stride: 64 bits, since a packed triangle leaves 32 from order 65536
  // on.
  using Index = std::ptrdiff_t;

  // ---- Special functions (Abramowitz and Stegun 1964, 6.3 and 6.4) -----------------------------
  // The argument is moved up by 10 and the asymptotic series taken there. A non-positive argument,
  // or one up to 1e-16, gives the system-missing value; NaN gives NaN.

  // psi(x) = d/dx ln Gamma(x). psi(+infinity) = +infinity.
  // Accuracy, the largest error measured against 50-digit values:
  //   relative  3e-16 outside the bands below; 2e-15 in 0.1 .. 1
  //   absolute  2e-15 in 1 .. 1000, near the zero at 1.4616321449683622 too
  //   below 1e-5, where -1/x - gamma stands alone, the relative error grows as 1.64 x^2, to 1.6e-10
  static double Digamma(double x);

  // psi'(x). psi'(+infinity) = 0.
  // Accuracy, the largest relative error measured against 50-digit values: 7e-16, but below 1e-4,
  // where 1/x^2 stands alone, it grows as 1.64 x^2, to 1.6e-8.
  static double Trigamma(double x);

  // ---- Small and valid numbers -----------------------------------------------------------------

  // Whether x is finite. The system-missing value is.
  static bool IsValidDouble(double x);

  // Whether x is negligible beside y: y > 0 and |x| < y * 2.220446049250313e-16.
  static bool QLReps(double x, double y);

  // x, or y when |x| < y: keeps a divisor away from zero, as the continued fractions of
  // Thompson and Barnett (1986) need. A y that is not positive replaces nothing.
  static double ReplaceIfSmall(double x, double y);

  // ---- Searches --------------------------------------------------------------------------------

  // The bin of x among the bins lo .. hi with ascending bounds v: bin i is (v[i-1], v[i]], or
  // [v[i-1], v[i]) with `flag` set. Nothing bounds bin 0 from below.
  // Returns  the bin, lo .. hi;
  //          -1 when x lies outside the bins, or is NaN;
  //          -2 when lo > hi, lo < 0 or hi is past the end of v.
  // Bounds met twice or more make empty bins; x on such a bound gives the bin that ends (with
  // `flag`, begins) at the copy that halving meets first.
  static Index BinSearch(const std::vector<double>& v, Index lo, Index hi, double x, bool flag);
  static Index BinSearch(const std::vector<int>& v, Index lo, Index hi, int x, bool flag);

  // The largest and the second largest entry (equal when the largest occurs twice), each the
  // system-missing value when there is none. NaN entries are passed over; the second form passes
  // over missing ones too.
  static void FindTwoLargest(const std::vector<double>& v, double& first, double& second);
  static void FindTwoLargestNonMiss(const std::vector<double>& v, double& first, double& second);

  // The largest |a_i - b_i| / (|b_i| + t) over the common length, 0 for an empty one. t < 0 is used
  // as |t|, t = 0 as 1e-6. A NaN among the quotients gives NaN, so that it never passes for
  // convergence.
  static double VMaxRelDiff(const std::vector<double>& a, const std::vector<double>& b, double t);

  // ---- Strided kernels -------------------------------------------------------------------------
  // The k-th of n entries is x[start + k inc]; a negative stride visits the entries of its absolute
  // value from the far end, x[start + (1 - n + k) inc with inc < 0], as the reference BLAS does.
  // Sums add in order of k into one accumulator. A count below 1 does nothing or returns 0. The
  // runs lie inside their vectors (the caller's duty, asserted in debug builds); they may overlap.

  // y += a x; a = 0 returns at once.
  static void Daxpy(Index n, double a, const std::vector<double>& x, Index startx, Index incx,
                    std::vector<double>& y, Index starty, Index incy);
  // The sum of the products, from left to right.
  static double DDot(Index n, const std::vector<double>& x, Index startx, Index incx,
                     const std::vector<double>& y, Index starty, Index incy);
  // x *= a; a = 0 stores exact zeros, over NaN too.
  static void DScal(Index n, double a, std::vector<double>& x, Index start, Index inc);
  // x = a
  static void DLoad(Index n, double a, std::vector<double>& x, Index start, Index inc);
  // The sum of n entries from x[0] on; n x[0] for stride 0.
  static double DSum(Index n, const std::vector<double>& x, Index inc);
  // The sum of absolute values.
  static double DASum(Index n, const std::vector<double>& x, Index start, Index inc);
  // The Euclidean norm; no square overflows or underflows on the way.
  static double DNrm2(Index n, const std::vector<double>& x, Index start, Index inc);
  // n entries from `start` become 0.
  static void LRZero(std::vector<double>& x, Index start, Index n);

  // ---- The same along an increasing increment --------------------------------------------------
  // The k-th step (k = 0, 1, ...) advances by the stride plus k: from (i, j) of a lower triangle
  // packed by rows, stride i + 1 walks down column j.

  static void IIAxpy(Index n, double a, const std::vector<double>& x, Index sx, Index ix,
                     std::vector<double>& y, Index sy, Index iy);
  static double IIDot(Index n, const std::vector<double>& x, Index sx, Index ix,
                      const std::vector<double>& y, Index sy, Index iy);
  static void IIInit(Index n, double a, std::vector<double>& x, Index s, Index i);
  static void IIScal(Index n, double a, std::vector<double>& x, Index s, Index i);

  // ---- Lower triangles of order n packed by rows, (i, j) at i(i+1)/2 + j ------------------------

  // The lower triangle L becomes the lower triangle of L'L: (i, j) the sum over k >= i of
  // L(k, i) L(k, j). In place, n^3/6 multiply-adds. Nothing happens when L is shorter than
  // n(n+1)/2.
  static void LTGltl(int n, std::vector<double>& L);

  // Row r of the symmetric S of order n times the strided x (from x[0], or from the far end).
  // The system-missing value unless 0 <= r < n and both vectors are long enough.
  static double RVD(const std::vector<double>& S, int n, int r, const std::vector<double>& x,
                    Index inc);

  // v'Sv, n^2/2 multiply-adds; 0 for n = 0. The system-missing value for n < 0, for v shorter than
  // n and for S shorter than n(n+1)/2.
  static double VSV(const std::vector<double>& S, int n, const std::vector<double>& v);
};

}  // namespace NQMath_940
