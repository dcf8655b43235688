#pragma once

#include <cstddef>
#include <utility>
#include <vector>

#include <nqcommon/export.h>
#include <nqcommon/math/matrix/INQSymMatrix.h>
#include <nqcommon/math/matrix/MatrixStorage.h>

namespace NQMath_940 {

// Diagonal matrix of order n, a symmetric matrix that costs O(n).
//
// Layout    d(i) = element (i, i); every other element is 0 and cannot be set.
// Writes    an operation that writes to cells off the diagonal writes those on it and passes over
//           the others: PutRow(i, v) sets d(i) = v[i], SetRowColToConst(i, x) sets d(i) = x.
//           SetElem(i, j, x) answers false for i != j. ComputeAXpY takes a diagonal X only.
// Output    where the result is diagonal because the arguments are, `out` may be diagonal
//           (GetType() 1) or dense; otherwise it must be dense, as the interface says.
// Failure   as the interface says; a matrix that loses its storage has order -1 and no entries.
//           Where memory ends in an operation on the matrix in place, it is as it was before.
// Threads   one object, one thread at a time.
//
// Contents  NQDiagMatrix.cpp           life cycle, elements, mechanical operations, display
//           NQDiagMatrix_cholesky.cpp  factor, determinant, inverses, solve
//           NQDiagMatrix_product.cpp   products, parts
class NQ_API NQDiagMatrix : public INQSymMatrix, private MatrixStorage<DiagonalShape> {
 public:
  // Some overloads of these are bodies of the interface.
  using INQSymMatrix::ComputeLTransV;
  using INQSymMatrix::ComputeLV;
  using INQSymMatrix::ComputeRowDotProductS;
  using INQSymMatrix::ComputeRVD;
  using INQSymMatrix::ComputeSV;
  using INQSymMatrix::ComputeVSWParts;
  using INQSymMatrix::LTChol;

  // ---- Life cycle, shape and elements (NQDiagMatrix.cpp) ---------------------------------------

  // Order 0.
  NQDiagMatrix() = default;
  // Order max(n, 0).
  NQDiagMatrix(int n, bool zero);
  // Of the given entries; order -1 when they are more than an int counts.
  explicit NQDiagMatrix(const std::vector<double>& diagonal);
  // A copy that finds no storage has order -1; a move leaves its source with order 0.

  int GetType() const override { return 1; }
  int GetNRows() const override { return fNRows; }
  bool IsValidMatrix() const override { return fNRows >= 0; }
  bool Resize(int n) override;
  double GetElem(int i, int j) const override;
  bool SetElem(int i, int j, double x) override;
  // The entries <- v, of n values.
  bool ReplaceDiagonal(const std::vector<double>& v);
  // The array of entries itself. Its length is the matrix's: do not resize it.
  std::vector<double>& AsVector() { return fvData; }
  const std::vector<double>& AsVectorConst() const { return fvData; }
  bool GetRow(int i, std::vector<double>& out) const override;
  bool PutRow(int i, const std::vector<double>& v) override;
  bool SetRowColToConst(int i, double x) override;
  bool IncrVecByRow(int i, std::vector<double>& v, double factor) const override;
  bool IsZeroRow(int i, const NQBitSet& set) const override;

  // ---- Mechanical operations (NQDiagMatrix.cpp) ------------------------------------------------

  void Clear() override;
  void ChangeSign() override;
  void MultiplyByNumber(double x) override;
  bool ComputeAXpY(double a, const INQSymMatrix& x) override;
  // The extremes off the diagonal are 0.
  void MaxMinDiagOffDiag(double& maxDiag, double& minDiag, double& maxOff,
                         double& minOff) const override;
  // ZeroOutNonDiag has nothing to do.
  void ZeroOutNonDiag(double eps) override;
  void Display() const override;

  // ---- Cholesky (NQDiagMatrix_cholesky.cpp) ----------------------------------------------------

  // d(i) <- sqrt(d(i)) when it is above t[i] eps, otherwise 0.
  int LTChol(const std::vector<double>& t, double eps, bool check) override;
  int LTChol(const std::vector<double>& t, double eps, NQBitSet& nonRedundant, bool check) override;
  int LTDetInverse(NQDeterminant& det, int job) override;
  // Both square the entries.
  void LTLLTrans() override;
  void LTLTransL() override;
  int LTSolve(const std::vector<double>& b, double eps, std::vector<double>& x) override;
  // The product of the entries, whatever their signs; eps is not used. Entries after the first
  // partial product of exactly 0 are not looked at.
  bool ComputeDeterminant(double eps, NQDeterminant& det) const override;

  // ---- Products (NQDiagMatrix_product.cpp) -----------------------------------------------------

  bool ComputeGMG(const INQSymMatrix& m, INQSymMatrix& out) const override;
  bool ComputeGMGNG(const INQSymMatrix& m, const INQSymMatrix& n,
                    INQRectMatrix& out) const override;
  bool ComputeMGN(const INQSymMatrix& m, const INQSymMatrix& n, INQRectMatrix& out) const override;
  bool ComputeGSG(const INQSymMatrix& g, INQSymMatrix& out) const override;
  bool ComputeLTransV(const std::vector<double>& v, std::vector<double>& out) const override;
  bool ComputeLV(const std::vector<double>& v, std::vector<double>& out) const override;
  double ComputeRowDotProductS(int i, const INQSymMatrix& other, int j) const override;
  bool ComputeRS(const INQRectMatrix& r, INQRectMatrix& out) const override;
  bool ComputeRTransS(const INQRectMatrix& r, INQRectMatrix& out) const override;
  double ComputeRVD(int r, const double* x, int inc) const override;
  bool ComputeSS(const INQSymMatrix& b, INQRectMatrix& out) const override;
  bool ComputeSTransS(INQSymMatrix& out) const override;
  bool ComputeSV(const std::vector<double>& v, int nRows, std::vector<double>& out) const override;
  double ComputeVSWParts(const double* v, int nv, int row, const double* w, int nw,
                         int col) const override;
  double TraceOfProductOfThree(const INQSymMatrix& a, const INQSymMatrix& b) const override;

  // ---- Parts (NQDiagMatrix_product.cpp) --------------------------------------------------------

  bool ExtractFirstNRows(INQSymMatrix& out) const override;
  // A diagonal `out` takes no index twice.
  bool ExtractSubmatrix(const std::vector<int>& indices, INQSymMatrix& out) const override;

  // ---- Virtual operations of this class --------------------------------------------------------

  // d(k), not range-checked.
  virtual double GetElem(int k) const;
  // Part of row i of R, and of column j, times the diagonal: the sum over k = 0 .. count-1 of
  // r(i, first + k) d(k), and of r(first + k, j) d(k). System-missing where they do not fit.
  virtual double ComputeRVD(int i, const INQRectMatrix& r, int first, int count) const;
  virtual double ComputeRTransVD(int j, const INQRectMatrix& r, int first, int count) const;
  // d(k) <- x; false for a k outside 0 .. n-1.
  virtual bool SetElem(int k, double x);

 private:
  std::size_t Order() const { return Count(); }
  bool HasRow(int i) const { return i >= 0 && i < fNRows; }
  bool HasOrder(std::size_t n) const { return fNRows >= 0 && n == Order(); }
};

}  // namespace NQMath_940
