#pragma once

#include <nqcommon/export.h>

namespace NQMath_940 {

// LINPACK in double precision: the routines, names, arguments, job digits and order of operations
// of Dongarra, Bunch, Moler and Stewart 1979, LINPACK Users' Guide.
//
// Matrices   column-major: element (i, j), 0-based, at a[i + j lda], lda >= the number of rows.
//   packed   the upper triangle of a symmetric matrix by columns: (i, j), i <= j, at j(j+1)/2 + i
//            order 3:  a00 | a01 a11 | a02 a12 a22
//   band     diagonals as rows of an array: (i, j) at abd[d + i - j + j lda]. Symmetric matrices
//            with m diagonals above the main one: d = m, lda > m. General ones with ml below and
//            mu above: d = ml + mu, lda > 2 ml + mu; row exchanges fill in the first ml rows.
//            order 4, m = 1:   -- 01 12 23      order 4, ml = mu = 1:   -- -- -- --
//                              00 11 22 33                              -- 01 12 23
//                                                                       00 11 22 33
//                                                                       10 21 32 --
//            Of symmetric matrices the upper triangle only is read and written.
//
// Indices    from 1 in arrays (ipvt, kpvt, jpvt), results and arguments (k and l of Dchex).
//
// Scalars    by value; one that a routine hands back, rcond, is a reference.
//
// info       where the published routine has this output argument, it is the function's result. It
//            is 0 on success (not so for Dchdc) or as stated. Nothing else reports a failure.
//
// Orders     below 1 a routine touches nothing but rcond and det.
//
// Jobs       decimal digits, a the leading one of abcd. An array that is not asked for is not
//            touched and may be null.
//
// det        det[0] 10^det[1], 1 <= |det[0]| < 10 or det[0] = 0.
//
// rcond      estimates 1 / (|A| |A^-1|) in the 1-norm, and is no smaller but for rounding. When
//            1 + rcond == 1, A is singular to working precision and z, n values of scratch, holds
//            an approximate null vector.
//
// Failure    NaN and infinities run through to the results; no input makes a routine run on.
class NQ_API Linpack {
 public:
  Linpack() = delete;

  // ---- General matrix: P L U (LinpackGeneral.cpp)

  // Dgeco does as Dgefa and gives the estimate too.
  static void Dgeco(double* a, int lda, int n, int* ipvt, double& rcond, double* z);
  // Gaussian elimination with partial pivoting. a <- U and, below it, the negated multipliers; at
  // step k rows k and ipvt[k - 1] changed places. Result k when u(k,k) is 0, the last one if there
  // are more: the factors are valid, but a solve would divide by 0.
  static int Dgefa(double* a, int lda, int n, int* ipvt);
  // b <- the solution of A x = b (job 0) or A'x = b, from the factors.
  static void Dgesl(const double* a, int lda, int n, const int* ipvt, double* b, int job);
  // From the factors: det (job 10), a <- the inverse (01) or both (11). work: n values.
  static void Dgedi(double* a, int lda, int n, const int* ipvt, double* det, double* work, int job);

  // ---- General band matrix (LinpackBand.cpp): as above, without the inverse

  static void Dgbco(double* abd, int lda, int n, int ml, int mu, int* ipvt, double& rcond,
                    double* z);
  static int Dgbfa(double* abd, int lda, int n, int ml, int mu, int* ipvt);
  static void Dgbsl(const double* abd, int lda, int n, int ml, int mu, const int* ipvt, double* b,
                    int job);
  static void Dgbdi(const double* abd, int lda, int n, int ml, int mu, const int* ipvt,
                    double* det);

  // ---- Positive definite matrix: R'R (LinpackPositiveDefinite.cpp)

  // Dpoco does as Dpofa and gives the estimate too; rcond is not touched when the result is not 0.
  static int Dpoco(double* a, int lda, int n, double& rcond, double* z);
  // Cholesky's factor, a <- R in the upper triangle. Result k when the leading minor of order k is
  // not positive: columns 1 .. k-1 are factored. A NaN does not stop it.
  static int Dpofa(double* a, int lda, int n);
  // b <- the solution of A x = b, from the factor.
  static void Dposl(const double* a, int lda, int n, double* b);
  // From the factor: det (job 10), a <- the inverse's upper triangle (01) or both (11).
  static void Dpodi(double* a, int lda, int n, double* det, int job);

  // The same for packed storage.
  static int Dppco(double* ap, int n, double& rcond, double* z);
  static int Dppfa(double* ap, int n);
  static void Dppsl(const double* ap, int n, double* b);
  static void Dppdi(double* ap, int n, double* det, int job);

  // The same for band storage (LinpackBand.cpp); Dpbdi has the determinant only.
  static int Dpbco(double* abd, int lda, int n, int m, double& rcond, double* z);
  static int Dpbfa(double* abd, int lda, int n, int m);
  static void Dpbsl(const double* abd, int lda, int n, int m, double* b);
  static void Dpbdi(const double* abd, int lda, int n, int m, double* det);

  // ---- Symmetric indefinite matrix: U D U' (LinpackIndefinite.cpp)

  // Dsico does as Dsifa and gives the estimate too.
  static void Dsico(double* a, int lda, int n, int* kpvt, double& rcond, double* z);
  // Diagonal pivoting (Bunch and Kaufman 1977, Math. Comp. 31): D has blocks of order 1 and 2, U is
  // unit upper triangular with exchanges. a <- D and, above its blocks, the negated multipliers.
  // With kpvt counted from 1:
  //   kpvt(k) > 0   block (k, k); rows k and kpvt(k) changed places
  //   kpvt(k) < 0   block (k-1 .. k, k-1 .. k) and kpvt(k-1) = kpvt(k); rows k-1 and -kpvt(k)
  //                 changed places
  // Result k when block (k, k) is 0, the first one if there are more: a solve may divide by 0.
  static int Dsifa(double* a, int lda, int n, int* kpvt);
  // b <- the solution of A x = b, from the factors.
  static void Dsisl(const double* a, int lda, int n, const int* kpvt, double* b);
  // From the factors, job abc: a the inertia, b the determinant, c the inverse, a <- its upper
  // triangle. inert: the numbers of positive, negative and zero eigenvalues. work: n values.
  static void Dsidi(double* a, int lda, int n, const int* kpvt, double* det, int* inert,
                    double* work, int job);

  // The same for packed storage.
  static void Dspco(double* ap, int n, int* kpvt, double& rcond, double* z);
  static int Dspfa(double* ap, int n, int* kpvt);
  static void Dspsl(const double* ap, int n, const int* kpvt, double* b);
  static void Dspdi(double* ap, int n, const int* kpvt, double* det, int* inert, double* work,
                    int job);

  // ---- Triangular and tridiagonal matrices (LinpackTriangular.cpp)

  // The estimate for the lower (job 0) or upper triangle of t.
  static void Dtrco(const double* t, int ldt, int n, double& rcond, double* z, int job);
  // b <- the solution, job ab: b = 0 lower, 1 upper; a = 0 T x = b, 1 T'x = b. Result k when t(k,k)
  // is the first 0 of the diagonal: b is not touched.
  static int Dtrsl(const double* t, int ldt, int n, double* b, int job);
  // job abc: a the determinant, b the inverse, t <- it, c = 0 lower, 1 upper. Result, for the
  // inverse, k when t(k,k) is the 0 that stopped it.
  static int Dtrdi(double* t, int ldt, int n, double* det, int job);

  // b <- the solution for the general tridiagonal matrix with diagonal d, c[1] .. c[n-1] below and
  // e[0] .. e[n-2] above; c, d and e (n values each) are destroyed. Result k when pivot k is 0.
  static int Dgtsl(int n, double* c, double* d, double* e, double* b);
  // b <- the solution for the positive definite one with diagonal d, which is destroyed, and
  // e[0] .. e[n-2] beside it. Elimination runs from both ends; nothing is checked.
  static void Dptsl(int n, double* d, const double* e, double* b);

  // ---- Cholesky factors and their updating (LinpackCholeskyUpdate.cpp)

  // Cholesky's factor with pivoting (job 1; 0 without): E'A E = R'R, a <- R in the upper triangle.
  // jpvt   in: > 0 rows to be placed first, < 0 last, 0 free; out: jpvt[k - 1] is the row of A that
  //        moved to k. Free ones take the largest pivot left at each step.
  // Result the number of positive pivots, p on success: stops at the first that is not, or is NaN.
  // work: p values.
  static int Dchdc(double* a, int lda, int p, double* work, int* jpvt, int job);

  // Dchud, Dchdd and Dchex work on R, upper triangular of order p, on z, p x nz, the vectors Q'y of
  // nz least squares problems, and on rho, their residual norms. nz may be 0.

  // Row x' with responses y added: R'R + x x' = new R'R. c and s get the p rotations. A negative
  // rho[j] is left alone.
  static void Dchud(double* r, int ldr, int p, const double* x, double* z, int ldz, int nz,
                    const double* y, double* rho, double* c, double* s);
  // Row x' with responses y removed: R'R - x x' = new R'R. Result -1 when that is not positive
  // definite, or x or R has a NaN, nothing but s changed; 1 when a residual norm would become the
  // root of a negative number, and is set to -1.
  static int Dchdd(double* r, int ldr, int p, const double* x, double* z, int ldz, int nz,
                   const double* y, double* rho, double* c, double* s);
  // Columns k .. l (1 <= k < l <= p) of R's matrix moved in a circle, R restored to a triangle:
  //   job 1  to the right:  l, k, k+1, .. , l-1        job 2  to the left:  k+1, .. , l, k
  // z is turned along. c and s: p values each; the l - k rotations are left in c and s.
  static void Dchex(double* r, int ldr, int p, int k, int l, double* z, int ldz, int nz, double* c,
                    double* s, int job);

  // ---- Householder QR (LinpackQR.cpp)

  // X E = Q R for X, n x p. x <- R in the upper triangle and, with qraux, what Q is made of.
  // job    not 0: pivoting by jpvt as for Dchdc, free columns by the longest rest; work: p values.
  //        0: jpvt and work are not touched.
  static void Dqrdc(double* x, int ldx, int n, int p, double* qraux, int* jpvt, double* work,
                    int job);
  // With the first k <= min(n, p) columns of the decomposition, for y of n values, job abcde:
  //   a  qy = Q y      b  qty = Q'y      c  b, the least squares coefficients (k values)
  //   d  rsd = y - X b      e  xb = X b
  // c, d and e need qty too. In any one of these groups the arrays may be one, which ends as the
  // last of them:  y qty b (of n values),  y qty rsd,  y qty xb,  y qy.
  // x is written to and restored. Result j, for b, when r(j,j) is 0.
  static int Dqrsl(double* x, int ldx, int n, int k, const double* qraux, const double* y,
                   double* qy, double* qty, double* b, double* rsd, double* xb, int job);

  // ---- Singular values (LinpackSVD.cpp)

  // X = U S V' for X, n x p, which is destroyed. s: m = min(n + 1, p) values, descending; e: p
  // values, the first m of them 0 on success; work: n values.
  // job ab  a = 0 no U, 1 all n columns of U, > 1 the first min(n, p); b = 0 no V, otherwise V,
  //         p x p. U may be x when a > 1 or n <= p, and V may be x when p <= n.
  // Result  k when a value did not settle in 30 iterations: s[k], s[k+1], .. and their vectors are
  //         right, and U'X V is the bidiagonal matrix with diagonal s and e above it.
  static int Dsvdc(double* x, int ldx, int n, int p, double* s, double* e, double* u, int ldu,
                   double* v, int ldv, double* work, int job);
};

}  // namespace NQMath_940
