#pragma once

#include <cstddef>
#include <vector>

#include <nqcommon/export.h>
#include <nqcommon/math/matrix/INQRectMatrix.h>
#include <nqcommon/math/matrix/MatrixStorage.h>
#include <nqcommon/math/matrix/NQBitSet.h>

namespace NQMath_940 {

class INQSymMatrix;
class NQDiagMatrix;
class NQSymMatrix;

// Dense matrix of m rows and n columns, row after row.
//
// Layout    0-based; element (i, j) is at i n + j.
//           2 x 3:  r00 r01 r02 | r10 r11 r12
// Failure   as the interface says. Where memory ends, an operation that changes this matrix's shape
//           leaves m = n = -1 and no entries; every other one fails and changes nothing. Nothing
//           throws.
// Threads   one object, one thread at a time.
//
// Contents  NQRectMatrix.cpp               shape, elements, norms, mechanical operations, display
//           NQRectMatrix_copy.cpp          rows, columns and parts in and out
//           NQRectMatrix_product.cpp       products, traces
//           NQRectMatrix_solve.cpp         linear systems, least squares, projection
//           NQRectMatrix_qr.cpp            QR decomposition
//           NQRectMatrix_estimability.cpp  redundancies, estimable functions, contrast rows
class NQ_API NQRectMatrix : public INQRectMatrix, private MatrixStorage<RectShape> {
 public:
  // ---- Life cycle and shape (NQRectMatrix.cpp) -------------------------------------------------

  // A matrix of shape 0 x 0.
  NQRectMatrix() = default;
  // A matrix of shape max(m, 0) x max(n, 0), of zeros.
  NQRectMatrix(int m, int n, bool zero);
  // A copy that finds no storage is invalid (m = n = -1); a move leaves its source 0 x 0.

  int GetMatrixType() const override { return 0; }
  bool IsValidMatrix() const override { return fNRows >= 0; }
  int GetNRows() const override { return fNRows; }
  int GetNCols() const override { return fNCols; }
  // Old values are kept in storage order, not laid out anew.
  bool Resize(int m, int n) override;
  int AddRow() override;
  int AddRow(const NQSparseVector& v) override;
  // One more column, of zeros, the old entries staying at their (i, j). Returns the new n; -1 when
  // there is no storage for it, the matrix then being invalid.
  int AddColumn();
  // Row i, and column j, taken out. False, nothing changed, where there is none.
  bool DeleteOneRow(int i);
  bool DeleteOneCol(int j);
  // In place: n x m, element (j, i) = old (i, j). False, unchanged, when memory fails.
  bool Transpose();

  // ---- Elements (NQRectMatrix.cpp) -------------------------------------------------------------

  double GetElem(int i, int j) const override;
  bool SetElem(int i, int j, double x) override;
  // The n elements of row i, one after the other; null when there is no row i.
  double* GetRowPtr(int i);
  const double* GetRowPtr(int i) const;
  // Element (0, j); the column goes on in steps of n. Null when there is no such element.
  double* GetColPtr(int j);
  const double* GetColPtr(int j) const;

  // ---- Norms, tests and mechanical operations (NQRectMatrix.cpp) -------------------------------

  void Clear() override;
  double ColNorm(int j) const override;
  double RowNorm(int i) const override;
  bool IsRowZero(int i) const override;
  bool IsColZero(int j) const;
  // r(i,i) += x for i < min(m, n).
  void AddToDiagonal(double x);
  // Column j <- 0.
  bool ZeroOutCol(int j);
  bool ZeroOutRowPart(int i, int first, int count) override;
  // Column j times x.
  bool ColScale(int j, double x);
  // Entries of column j with |r(i,j)| <= eps <- 0. False for a bad j and unless eps >= 0.
  bool ColClean(int j, double eps);
  // Entries within eps of 1 or of -1 become exactly that. Returns how many they are; -1, nothing
  // changed, unless eps >= 0.
  long long CheckForOnes(double eps);

  // ---- Rows, columns and parts (NQRectMatrix_copy.cpp) -----------------------------------------

  bool GetRow(int i, std::vector<double>& out) const override;
  bool SetRow(int i, const NQSparseVector& v) override;
  bool CopyRows(const INQRectMatrix& src, int first, int count) override;
  bool CopyRowToRow(int from, int to, INQRectMatrix& dst) const override;
  // R <- columns first .. first+count-1 of src.
  bool CopyColumns(const INQRectMatrix& src, int first, int count);
  // Column `to` of dst, of m rows, or row `to` of dst, of m columns, <- column `from` of R.
  bool CopyColToCol(int from, int to, NQRectMatrix& dst) const;
  bool CopyColToRow(int from, int to, NQRectMatrix& dst) const;
  bool ShiftColumns(int k, INQRectMatrix& out) const override;
  bool ShiftRows(int k, INQRectMatrix& out) const override;
  bool CreateBlockDiagonal(int k, INQRectMatrix& out) const override;
  // Row (column) k of R goes to the k-th member of the set, in an `out` with as many rows (columns)
  // as the set has places; those of the others are zero. False unless the members are as many as
  // R's rows (columns).
  bool Expand(const NQBitSet& set, bool byRows, NQRectMatrix& out) const;
  // ExpandRectangular spreads rows over one set and columns over the other, ExpandSquare those of a
  // square R over one set.
  bool ExpandRectangular(const NQBitSet& rows, const NQBitSet& columns, NQRectMatrix& out) const;
  bool ExpandSquare(const NQBitSet& set, NQRectMatrix& out) const;

  // ---- Products (NQRectMatrix_product.cpp) -----------------------------------------------------
  // Sums over k run in the order of k from 0. The cost of R B is m n p multiply-adds.

  bool ComputeMatrixProduct(const INQRectMatrix& b, INQRectMatrix& out) const override;
  // out = R B with a symmetric B.
  bool ComputeMatrixProduct(const INQSymMatrix& b, INQRectMatrix& out) const;
  bool ComputeProductMatrixTrans(const INQRectMatrix& b, INQRectMatrix& out) const override;
  bool ComputeRV(const std::vector<double>& v, std::vector<double>& out) const override;
  bool ComputeVR(const std::vector<double>& v, std::vector<double>& out) const override;
  // v' R w.
  double ComputeVRW(const std::vector<double>& v, const std::vector<double>& w) const;
  // v' R w of sparse vectors, over their entries only; they must fit in m rows and n columns.
  double ComputeSpVRSpW(const NQSparseVector& v, const NQSparseVector& w) const;
  // out(i,j) = r(i,j) v[j], R times the diagonal matrix of v.
  bool ComputeRDiagV(const std::vector<double>& v, NQRectMatrix& out) const;
  // out = D R: out(i,j) = d(i) r(i,j).
  bool ComputeDiagR(const NQDiagMatrix& d, NQRectMatrix& out) const;
  // out = diag(S, S, ..., S) R: the products S R_b one below the other, where R_b is rows b n ..
  // b n + n-1 of R, n being the order of S. A structured S costs what it stores. False unless m is
  // a multiple of n.
  bool ComputeBlockDiagSR(const INQSymMatrix& s, NQRectMatrix& out) const;
  // R1' S R2 over blocks, with R1 this matrix: out = the sum over b of R1_b' S R2_b, where the
  // matrices R1_b and R2_b are rows b n .. b n + n-1 of R1 and R2, n being the order of S. False
  // unless R1 and R2 have equally many rows, a multiple of n.
  bool ComputeR1TransSR2(const INQSymMatrix& s, const NQRectMatrix& r2, NQRectMatrix& out) const;
  // Y <- a R + Y. A symmetric Y takes the lower triangle of a square R.
  bool ComputeAXpY(double a, NQRectMatrix& y) const;
  bool ComputeAXpY(double a, NQSymMatrix& y) const;
  // R <- R - a S, R square.
  bool SubtractSymMatrix(const INQSymMatrix& s, double a);
  // trace = tr(R S), R square; and tr(P S) with P the part of R that starts at (row, col) and has
  // the order of S.
  bool TraceOfProductSqS(const INQSymMatrix& s, double& trace) const;
  bool TraceOfProductSubMatSym(int row, int col, const INQSymMatrix& s, double& trace) const;
  double DotProductCol(int j1, int j2) const override;
  // Column j times column k of B.
  double DotProductColCol(int j, const INQRectMatrix& b, int k) const;
  double DotProductRowCol(int i, const INQRectMatrix& b, int j) const override;
  double DotProductRowRow(int i, const INQRectMatrix& b, int k) const override;

  // ---- Solves and orthogonal factors (NQRectMatrix_solve.cpp) ----------------------------------

  // Solves R x = b for a square R by Gaussian elimination with partial pivoting. False, x
  // unchanged, unless eps >= 0, m = n >= 1 and b has m values, and when the estimate of the
  // reciprocal condition number is not above eps.
  bool SolveLinearSquare(const std::vector<double>& b, std::vector<double>& x, double eps) const;
  // Least-squares solution of R x = b. A square R that SolveLinearSquare solves gives 0; otherwise
  // the normal equations R'R x = R'b are solved by Cholesky (NQSymMatrix::LTSolve), where a column
  // that depends on those before it has x[j] = 0. Returns the number of such columns; -1, x
  // unchanged, when m or n is below 1, eps is not positive or b has not m values.
  int EstimateLinearGI(const std::vector<double>& b, std::vector<double>& x, double eps) const;
  // R = Q T by Householder reflections (Golub and Van Loan 1996, 5.2), for m >= n: Q m x n with
  // orthonormal columns, T upper triangular with a diagonal that is not negative, T' being stored
  // as the lower triangle of `s`: s(j,i) = t(i,j), the Cholesky factor of R'R. False for m < n and
  // when the storage could not be had. q may be this matrix. About 4 n^2 (m - n/3) operations, in
  // the matrix products.
  bool QRDecompositionH(NQSymMatrix& s, NQRectMatrix& q) const;
  // R <- R - P R, P the orthogonal projection on the columns of X (of m rows). independent marks
  // the columns of X that do not depend on those before them, as FindRedundancies(eps) does;
  // remaining those columns of R that do not depend on columns of X and columns of R before them:
  // what remains of one is above eps times its norm. Returns the number of columns of R that are
  // not marked; -1, nothing changed, when eps is not positive or rows differ.
  int ResidOfOrthProjection(const NQRectMatrix& x, double eps, NQBitSet& independent,
                            NQBitSet& remaining);

  // ---- Redundancies and estimable functions (NQRectMatrix_estimability.cpp) --------------------
  // With byRows the rows are examined in their order, otherwise the columns. One is redundant when
  // its distance from the space of those before it is not above eps times its norm: the pivots of
  // the cross-products are compared with eps^2 times their diagonal.

  // Returns the number of redundant rows or columns, the others being marked in the set; -1 when
  // eps is negative or the cross-products could not be had.
  int FindRedundancies(double eps, NQBitSet& nonRedundant, bool byRows) const;
  // As FindRedundancies, with the non-redundant ones listed.
  int FindNonRedunIndices(double eps, std::vector<int>& indices, bool byRows) const;
  // out = the non-redundant rows or columns, which are listed too. Returns as FindRedundancies.
  int ExtractFullRank(double eps, NQRectMatrix& out, std::vector<int>& indices, bool byRows) const;
  // Of the columns, the first set.Size() were examined before, the members found non-redundant. The
  // columns added since are examined behind these members, with eps = 1e-6 (defaultepse on the
  // cross-products). newSet has n places: the old members and the new non-redundant ones. Returns
  // the number of redundant added columns; -1 when the set has more than n places.
  int CheckAddColRedundancies(const NQBitSet& set, NQBitSet& newSet) const;
  // With R a design matrix whose non-redundant columns are the members of the set (as
  // FindRedundancies marks them): whether every row l of L, of n columns, is an estimable function,
  // a combination of rows of R. A redundant column j is a combination, sum a(k,j) r(.,k), of the
  // members, and then |l[j] - sum a(k,j) l[k]| must be at most eps times the sum of |l[k]| |r(.,j)|
  // / |r(.,k)| over k = j and the members, which does not depend on the units of the columns. False
  // too for shapes that do not fit, eps < 0 and a set of columns that is itself dependent.
  bool IsEstimable(const NQRectMatrix& l, const NQBitSet& set, double eps) const;
  // Whether row i is a multiple of row k. Entries of at most eps1 in magnitude count as 0; factor
  // is the quotient where row k is largest, and every other entry must agree to eps2, relatively. A
  // zero row is 0 times any row. factor is set where the answer is true.
  bool IsERowMultipleOfAnother(int i, int k, double eps1, double eps2, double& factor) const;
  // The column of the first entry of row i with |r(i,j)| > eps; -1 when there is none.
  int FindFirstNonZeroInRow(int i, double eps) const;
  // Whether row i has exactly one entry that is not 0, and its column.
  bool IsRowZeroButOne(int i, int& column) const;
  // Eliminates column j from the other rows with row i, and row i with it: row k -= r(k,j)/r(i,j)
  // row i for k != i, then row i <- 0. Column j is exactly 0 afterwards. False when r(i,j) is 0.
  bool ZeroOutPivotRow(int i, int j);

  // ---- Diagnostic display (NQRectMatrix.cpp) ---------------------------------------------------

  void Display() const override;

 private:
  std::size_t Rows() const { return fNRows > 0 ? static_cast<std::size_t>(fNRows) : 0; }
  std::size_t Cols() const { return fNCols > 0 ? static_cast<std::size_t>(fNCols) : 0; }
  bool HasRow(int i) const { return i >= 0 && i < fNRows; }
  bool HasCol(int j) const { return j >= 0 && j < fNCols; }
};

}  // namespace NQMath_940
