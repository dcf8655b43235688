#pragma once

#include <utility>
#include <vector>

#include <nqcommon/export.h>
#include <nqcommon/math/matrix/NQRectMatrix.h>
#include <nqcommon/math/matrix/NQSymMatrix.h>

namespace NQMath_940 {

// What NQEigenValues keeps, private to it.
struct NQ_API EigenFields {
  int fNRows = 0;
  double fTolerance = defaultepse;
  int fMaxIter = 30;
  bool fComputeVectors = false;
  NQSymMatrix fmH;
  NQSymMatrix fmE;
  std::vector<double> fvEDiag;
  NQSymMatrix fmCholE;
  NQSymMatrix fmInvCholE;  // V
  NQSymMatrix fmVHV;       // V H V'
  NQSymMatrix fmOrthInfo;  // the matrix being reduced, then its reflections; empty without vectors
  NQSymMatrix fmScratch;
  int fRankE = 0;
  bool fIsValidE = false;
  std::vector<double> fvDiag3;
  std::vector<double> fvSubdiag3;  // element i couples rows i - 1 and i
  std::vector<double> fvEigenVal;
  int fNEigenVal = 0;
  NQRectMatrix fmEigenVectors;
  std::vector<std::pair<double, int>> fvEigPairs;  // value, index in fvEigenVal; as sorted last
};

// Eigenvalues and eigenvectors of a symmetric matrix H of order n, or of the generalised problem
// H x = lambda E x with a symmetric positive semi-definite E.
//
// Method    Householder reduction of the packed triangle (Martin, Reinsch and Wilkinson 1968), then
//           the implicit QL algorithm (Dubrulle, Martin and Wilkinson 1968).
// With E    E = L L' by Cholesky, V a generalised inverse of L with zero rows and columns for the
//           dropped pivots. The eigenvalues and eigenvectors y are those of the n x n matrix V H
//           V': x = V' y solves the generalised problem on the range of E. The dropped rows add n -
//           rank eigenvalues of 0, whose y may be any vector that V' takes to 0.
// Shapes    n values; eigenvectors n x n, row i the eigenvector of value i, of length 1.
// Order     as the iteration finds them; those of a diagonal H in the order of the diagonal.
//           GetSorted sorts copies.
// Accuracy  errors of values and residuals of vectors are relative to the largest |lambda|: a few
//           n eps, and at most about `tolerance` where that is more. Vectors are orthonormal to a
//           few n eps, those of clustered values too. The same bits on every processor, and the
//           same values with vectors as without.
// Tolerance an off-diagonal element of the tridiagonal matrix counts as 0 when it is at most
//           tolerance x the sum of the magnitudes of its two diagonal neighbours; a pivot of E is
//           dropped when it is at most tolerance x its diagonal element.
// Counts    Compute and GetSorted return the number of eigenvalues computed: n; fewer, the others
//           being 0, when one took more than the maximum number of iterations; -2 when there is no
//           matrix of order 1 or more or no storage for the work. `values` and `vectors` are left
//           alone unless the count is at least 1.
//           A spectrum that decays smoothly to far below eps x its largest value can take more than
//           30 at its small end: the test is relative to the small elements.
// NaN       in H, for n > 1, ends as a short count, and so do eigenvalues outside the range of
//           doubles.
// Failure   memory that ends is a count of -2, false or, for SetHMatrix, -1. Nothing throws.
// Threads   one object, one thread at a time.
//
// Results are kept until the next computation, SetHMatrix or SetEMatrix; a new tolerance or maximum
// number of iterations is for later computations, and the tolerance for a later SetEMatrix.
class NQ_API NQEigenValues : private EigenFields {
 public:
  // Tolerance 1e-12, at most 30 iterations for an eigenvalue, order 0.
  NQEigenValues() = default;
  // The defaults replace a tolerance that is not above 0 and a maxIter below 1. IsValidEMatrix
  // tells whether E was accepted.
  NQEigenValues(double tolerance, int maxIter);
  NQEigenValues(const NQSymMatrix& h, double tolerance, int maxIter);
  NQEigenValues(const NQSymMatrix& h, const NQSymMatrix& e, double tolerance, int maxIter);

  // A copy for which there is no memory is of order -1.
  NQEigenValues(const NQEigenValues& other) noexcept : NQEigenValues() { *this = other; }
  NQEigenValues& operator=(const NQEigenValues& other) noexcept;
  NQEigenValues(NQEigenValues&&) noexcept = default;
  NQEigenValues& operator=(NQEigenValues&&) noexcept = default;
  ~NQEigenValues() = default;

  // ---- Problem ---------------------------------------------------------------------------------

  // Copies H and drops all results. An E of the same order stays in force, one of another order is
  // emptied. Returns the order; -1, with E emptied, when the storage could not be had.
  int SetHMatrix(const NQSymMatrix& h);
  // Copies E, factors it and forms V H V'. False, with E emptied and the rank 0, when the order is
  // not that of H, no pivot of E is positive or the storage could not be had. Drops all results.
  bool SetEMatrix(const NQSymMatrix& e);
  // Whether an E is in force.
  bool IsValidEMatrix() const { return fIsValidE; }

  // False, nothing changed, unless x > 0.
  bool SetTolerance(double x);

  double GetTolerance() const { return fTolerance; }

  // False, nothing changed, unless k >= 1. A round that finds an eigenvalue converged counts as an
  // iteration: with k = 1 only those that need no work are found.
  bool SetMaxIter(int k);

  int GetMaxIter() const { return fMaxIter; }

  // ---- Eigenvalues and eigenvectors ------------------------------------------------------------

  // About 4/3 n^3 operations.
  int Compute(std::vector<double>& values);
  // About 9 n^3 operations. After a short count the rows of `vectors` from the count on complete
  // the others to an orthonormal basis.
  int Compute(std::vector<double>& values, NQRectMatrix& vectors);
  // The values in descending or ascending order, equal ones in the order in which they were found,
  // and NaN last; after a short count the zeros stay behind. Results that are stored are used,
  // others are computed first.
  int GetSorted(std::vector<double>& values, bool descending);
  int GetSorted(std::vector<double>& values, NQRectMatrix& vectors, bool descending);

  // ---- Positive definiteness -------------------------------------------------------------------

  // These take eps <= 0 for 1e-6, compute anew, and with an E in force are about V H V'. They
  // return false unless all n eigenvalues were computed and are numbers.

  // isPD tells whether no eigenvalue computed is below eps.
  bool IsPDHMatrix(double eps, bool& isPD);
  // out = H when no eigenvalue is below eps; otherwise `changed`, and out = sum of max(lambda, eps)
  // v v' over the eigenvectors. False when `out` cannot be given the order n; after another failure
  // `out` is 0.
  bool GetPDHMatrix(double eps, NQSymMatrix& out, bool& changed);
  bool GetPDHMatrix(double eps, NQSymMatrix& out);

  // ---- Diagnostic display ----------------------------------------------------------------------

  void Display() const;

 private:
  void DropResults();
  void DropE();
  bool FactorE(const NQSymMatrix& e);
  bool TransformH();
  int Run(bool withVectors);
  void TriDiag();
  int EigenValuesTQLI();
  void BackTransVectors();
  int Sort(std::vector<double>& values, NQRectMatrix* vectors, bool descending);
  void MakeEigPairs(bool descending);
};

}  // namespace NQMath_940
