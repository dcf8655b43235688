#pragma once

#include <utility>
#include <vector>

#include <nqcommon/export.h>
#include <nqcommon/math/matrix/NQBitSet.h>
#include <nqcommon/math/numeric/tolerances.h>

namespace NQMath_940 {

class INQRectMatrix;

// A determinant as mantissa x 10^power, with 1 <= |mantissa| < 10, or (0, 0) for a determinant of
// 0.
using NQDeterminant = std::pair<double, int>;

// ln |det|, minus infinity for a determinant of 0.
NQ_API double LogDeterminant(const NQDeterminant& det);

// Symmetric matrix S of order n, whatever its storage: dense, diagonal or block-diagonal.
//
// Names     S is this matrix; L its lower triangle read as a triangular factor; v, w vectors;
//           R a rectangular matrix; "Trans" a transpose. In the products named with G, this matrix
//           is G.
// Indices   0-based. GetElem and SetElem of an element (i, j) are not range-checked (they assert in
//           debug builds); an operation on row i refuses an i outside 0 .. n-1.
// Failure   by return value. Unless stated, false means that an argument did not fit (a row outside
//           the matrix, a length other than n) or that memory ended, and that nothing was changed;
//           a number is then the system-missing value or negative, as stated, and GetDiagonal and
//           GetNCheckDiagonal leave an empty vector. A matrix that loses its own storage, in a copy
//           or where it is resized, has order -1. Nothing throws.
// Output    `out` gets the order it needs. A result that may be dense needs a dense `out`
//           (GetType() 0) and is refused otherwise; a rectangular one is dense (GetMatrixType() 0).
//           `out` may be any of the arguments, or this.
// Tolerance a pivot of row i is compared with t[i] eps: eps is relative, t the reference values in
//           the units of the diagonal. Every t has at least n values.
// Threads   one object, one thread at a time.
//
// The virtual operations are declared in a fixed order, the library's binary interface. Those that
// are the same for every storage have a body made of the others (INQSymMatrix.cpp), which a class
// overrides where its storage knows better.
class NQ_API INQSymMatrix {
 public:
  virtual ~INQSymMatrix();

  // ---- Shape and elements ----------------------------------------------------------------------

  // 0 dense (NQSymMatrix), 1 diagonal, 2 block-diagonal.
  virtual int GetType() const = 0;
  // n.
  virtual int GetNRows() const = 0;
  // False after an allocation that failed; the order is then -1.
  virtual bool IsValidMatrix() const = 0;
  // s(i, j), not range-checked.
  virtual double GetElem(int i, int j) const = 0;
  // out = (s00, s11, ...).
  virtual void GetDiagonal(std::vector<double>& out) const;
  // out = row i of the full matrix, n values.
  virtual bool GetRow(int i, std::vector<double>& out) const = 0;
  // sii += x for every i.
  virtual void AddToDiagonal(double x);
  // S <- -S.
  virtual void ChangeSign() = 0;

  // ---- Cholesky inverse ------------------------------------------------------------------------

  // out = the generalised inverse of S by Cholesky: the rows that LTChol(t, eps) drops are zero in
  // it, the others hold the inverse of their submatrix. Returns the rank, or a negative value when
  // `out` is of another type, t is too short or memory ends; a dense `out` may then hold S.
  virtual int CholInverse(const std::vector<double>& t, double eps, INQSymMatrix& out) const;
  // nonRedundant marks the rows with positive pivots.
  virtual int CholInverse(const std::vector<double>& t, double eps, INQSymMatrix& out,
                          NQBitSet& nonRedundant) const;
  // minPivot is the smallest diagonal entry of the factor; system-missing when there is no factor.
  virtual int CholInverse(const std::vector<double>& t, double eps, INQSymMatrix& out,
                          double& minPivot) const;

  // ---- Products, part one ----------------------------------------------------------------------

  // All stored entries 0.
  virtual void Clear() = 0;
  // S <- a X + S.
  virtual bool ComputeAXpY(double a, const INQSymMatrix& x) = 0;
  // det S from the factor of scalar-tolerance LTChol: (0, 0) when a pivot was dropped, for a matrix
  // that is not positive definite too. False when n < 1 or eps < 0.
  virtual bool ComputeDeterminant(double eps, NQDeterminant& det) const = 0;
  // Row i times row j; the system-missing value when a row is outside the matrix.
  virtual double ComputeDotProduct2Rows(int i, int j) const;
  // out = G M G.
  virtual bool ComputeGMG(const INQSymMatrix& m, INQSymMatrix& out) const = 0;
  // out = G M G N G and out = M G N, n x n, not symmetric in general.
  virtual bool ComputeGMGNG(const INQSymMatrix& m, const INQSymMatrix& n,
                            INQRectMatrix& out) const = 0;
  virtual bool ComputeMGN(const INQSymMatrix& m, const INQSymMatrix& n,
                          INQRectMatrix& out) const = 0;
  // out = G S G, with S this matrix.
  virtual bool ComputeGSG(const INQSymMatrix& g, INQSymMatrix& out) const = 0;
  // out = L S L', with L the lower triangle of l.
  virtual bool ComputeLSLTrans(const INQSymMatrix& l, INQSymMatrix& out) const;
  // out = L' S L.
  virtual bool ComputeLTransSL(const INQSymMatrix& l, INQSymMatrix& out) const;
  // out = L' v. The index form takes the non-zero entries of v: v[indices[k]] = values[k].
  virtual bool ComputeLTransV(const std::vector<double>& v, std::vector<double>& out) const = 0;
  virtual bool ComputeLTransV(const std::vector<int>& indices, const std::vector<double>& values,
                              std::vector<double>& out) const;
  // out = L v.
  virtual bool ComputeLV(const std::vector<double>& v, std::vector<double>& out) const = 0;
  virtual bool ComputeLV(const std::vector<int>& indices, const std::vector<double>& values,
                         std::vector<double>& out) const;
  // Row i times row j of another matrix, or times v; system-missing where they do not fit.
  virtual double ComputeRowDotProductS(int i, const INQSymMatrix& other, int j) const = 0;
  virtual double ComputeRowDotProductS(int i, const std::vector<double>& v) const;
  // out = R S, out = R S R' and, with R of n rows, out = R' S, out = R' S R and out = R' S v.
  virtual bool ComputeRS(const INQRectMatrix& r, INQRectMatrix& out) const = 0;
  virtual bool ComputeRSRTrans(const INQRectMatrix& r, INQSymMatrix& out) const;
  virtual bool ComputeRTransS(const INQRectMatrix& r, INQRectMatrix& out) const = 0;
  virtual bool ComputeRTransSR(const INQRectMatrix& r, INQSymMatrix& out) const;
  virtual bool ComputeRTransSV(const INQRectMatrix& r, const std::vector<double>& v,
                               std::vector<double>& out) const;
  // Row r times the strided vector x[0], x[inc], ...; system-missing where they do not fit. The
  // pointer form trusts its caller with the length. A negative inc walks x backwards from its end,
  // as in the BLAS.
  virtual double ComputeRVD(int r, const std::vector<double>& x, int inc) const;
  virtual double ComputeRVD(int r, const double* x, int inc) const = 0;
  // out = S B, n x n, with B symmetric.
  virtual bool ComputeSS(const INQSymMatrix& b, INQRectMatrix& out) const = 0;
  // out = S' S.
  virtual bool ComputeSTransS(INQSymMatrix& out) const = 0;
  // out = S v, or its first nRows rows.
  virtual bool ComputeSV(const std::vector<double>& v, std::vector<double>& out) const;
  virtual bool ComputeSV(const std::vector<double>& v, int nRows,
                         std::vector<double>& out) const = 0;
  // v' S v; system-missing where lengths do not fit, as for the forms below. The second form takes
  // row i of R for v.
  virtual double ComputeVSV(const std::vector<double>& v) const;
  virtual double ComputeVSV(const INQRectMatrix& r, int i) const;
  // v' S w. The pointer form takes the leading nv x nw part of S. The index form finds v and w in
  // one vector, n values each, at positions first and second.
  virtual double ComputeVSW(const std::vector<double>& v, const std::vector<double>& w) const;
  virtual double ComputeVSW(const double* v, int nv, const double* w, int nw) const;
  virtual double ComputeVSW(const std::vector<double>& v, int first, int second) const;
  // v' P w with the part P of S that starts at (row, col) and has v's and w's lengths.
  virtual double ComputeVSWParts(const std::vector<double>& v, int row,
                                 const std::vector<double>& w, int col) const;
  virtual double ComputeVSWParts(const double* v, int nv, int row, const double* w, int nw,
                                 int col) const = 0;

  // ---- Parts and tests -------------------------------------------------------------------------

  // out = the leading block of out's order; false when that order is above n or below 0.
  virtual bool ExtractFirstNRows(INQSymMatrix& out) const = 0;
  // out(a, b) = s(indices[a], indices[b]); indices may repeat.
  virtual bool ExtractSubmatrix(const std::vector<int>& indices, INQSymMatrix& out) const = 0;
  // The reference values of scalar-tolerance Cholesky: n times the largest of 0 and the diagonal.
  // a and b are not used, so that the threshold is eps x the largest diagonal entry for every row.
  virtual void GetNCheckDiagonal(std::vector<double>& out, double a, double b) const;
  // v += factor x row i.
  virtual bool IncrVecByRow(int i, std::vector<double>& v, double factor) const = 0;
  // Whether row i is zero in the columns that are members of the set (false for a bad i).
  virtual bool IsZeroRow(int i, const NQBitSet& set) const = 0;

  // ---- Cholesky in place -----------------------------------------------------------------------

  // S = L L', L overwriting the lower triangle. A row whose pivot is not above t[i] eps is aliased:
  // its pivot and the column below it are 0. Returns the number of aliased rows; -1 when t is too
  // short or, with `check`, when eps or a t[i] is negative.
  virtual int LTChol(const std::vector<double>& t, double eps, bool check) = 0;
  // nonRedundant gets at least n members and marks the rows with positive pivots.
  virtual int LTChol(const std::vector<double>& t, double eps, NQBitSet& nonRedundant,
                     bool check) = 0;
  // t from GetNCheckDiagonal. minPivot is the smallest diagonal entry of the factor, or
  // system-missing after a failure and for n < 1.
  virtual int LTChol(double eps, double& minPivot, bool check);
  // On a factor L: when job mod 10 != 0, det = det L; when job >= 10, L <- its generalised inverse
  // (a zero diagonal entry leaves its row and column zero). Returns the number of zero diagonal
  // entries; det is (0, 0) when there are any.
  virtual int LTDetInverse(NQDeterminant& det, int job) = 0;
  // L <- L^-1, as LTDetInverse with job 10.
  virtual bool LTInverse();
  // S <- L L' and S <- L' L.
  virtual void LTLLTrans() = 0;
  virtual void LTLTransL() = 0;
  // Factors S with its diagonal for reference values and solves S x = b; aliased rows have x[i] =
  // 0, which solves a consistent singular system. The argument order is (right-hand side,
  // tolerance, solution) for every class. S holds the factor afterwards. Returns the number of
  // aliased rows; -1, S and x unchanged, when b has not n values or eps is negative.
  virtual int LTSolve(const std::vector<double>& b, double eps, std::vector<double>& x) = 0;

  // ---- Mechanical operations -------------------------------------------------------------------

  // Extremes of the diagonal and, in the second form, of the entries off it. A NaN is passed over.
  // Extremes of nothing are 0.
  virtual void MaxMinDiag(double& max, double& min) const;
  virtual void MaxMinDiagOffDiag(double& maxDiag, double& minDiag, double& maxOff,
                                 double& minOff) const = 0;
  // Every stored entry times x.
  virtual void MultiplyByNumber(double x) = 0;
  // Row (and column) i <- v.
  virtual bool PutRow(int i, const std::vector<double>& v) = 0;
  // Order max(n, 0); the stored entries are kept as far as they go, in storage order. False, with
  // order -1, when the storage could not be had.
  virtual bool Resize(int n) = 0;
  // False where the structure has no such cell.
  virtual bool SetElem(int i, int j, double x) = 0;
  // As Resize, then all entries 0 when `clear` is set.
  virtual bool SetNRows(int n, bool clear);
  // Row and column i <- x, where there are cells.
  virtual bool SetRowColToConst(int i, double x) = 0;
  // The sum of the diagonal.
  virtual double Trace() const;
  // tr(S A) and tr(S A B); system-missing where orders differ.
  virtual double TraceOfProduct(const INQSymMatrix& a) const;
  virtual double TraceOfProductOfThree(const INQSymMatrix& a, const INQSymMatrix& b) const = 0;
  // Row and column i <- 0.
  virtual bool ZeroOut(int i);
  // With eps > 0: sij <- 0 where |sij| <= eps sqrt(|sii| |sjj|), i != j.
  virtual void ZeroOutNonDiag(double eps) = 0;

  // ---- Diagnostic display ----------------------------------------------------------------------

  virtual void Display() const = 0;
  // The full square.
  virtual void DisplayF() const;

 protected:
  INQSymMatrix() = default;
  INQSymMatrix(const INQSymMatrix&) = default;
  INQSymMatrix& operator=(const INQSymMatrix&) = default;
};

}  // namespace NQMath_940
