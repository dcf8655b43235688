#pragma once

#include <cstddef>
#include <vector>

#include <nqcommon/export.h>
#include <nqcommon/math/matrix/INQSymMatrix.h>
#include <nqcommon/math/matrix/MatrixStorage.h>

namespace NQMath_940 {

class NQRectMatrix;
class NQSparseVector;
class NQSymBlockDiagMatrix;

// Dense symmetric matrix of order n, the lower triangle packed by rows.
//
// Layout    0-based; element (i, j), i >= j, is at i(i+1)/2 + j; (j, i) is the same cell.
//           order 3:  s00 | s10 s11 | s20 s21 s22
//           May be viewed as nb x nb square blocks of order bs, n = nb bs: stored no differently.
// Failure   as the interface says; a matrix that loses its storage has order -1 and no entries.
//           Where memory ends in an operation on S in place, S is as it was before.
// Threads   one object, one thread at a time.
//
// Contents  the sections below, each in the source that its title names.
class NQ_API NQSymMatrix : public INQSymMatrix, private MatrixStorage<TriangleShape> {
 public:
  // Some overloads of these are bodies of the interface.
  using INQSymMatrix::ComputeLV;
  using INQSymMatrix::ComputeRowDotProductS;
  using INQSymMatrix::ComputeRVD;
  using INQSymMatrix::ComputeSV;
  using INQSymMatrix::ComputeVSV;
  using INQSymMatrix::ComputeVSW;
  using INQSymMatrix::ComputeVSWParts;
  using INQSymMatrix::LTChol;

  // ---- Life cycle and shape (NQSymMatrix.cpp) --------------------------------------------------

  NQSymMatrix() = default;        // order 0
  NQSymMatrix(int n, bool zero);  // order max(n, 0), one block
  // nBlocks x nBlocks blocks of order blockSize; order 0 when either is below 1.
  NQSymMatrix(int nBlocks, int blockSize, bool zero);
  // A copy that finds no storage has order -1; a move leaves its source with order 0.

  int GetType() const override { return 0; }
  int GetNRows() const override { return fNRows; }
  int GetNBlocks() const { return fNBlocks; }
  int GetBlockSize() const { return fBlockSize; }
  bool IsValidMatrix() const override { return fNRows >= 0; }
  bool Resize(int n) override;
  bool SetNRows(int n, bool clear) override;
  bool SetNBlocks(int nb);  // false unless nb >= 1 divides an order of at least 1

  // ---- Elements and rows (NQSymMatrix.cpp) -----------------------------------------------------

  double GetElem(int i, int j) const override;
  bool SetElem(int i, int j, double x) override;
  double GetElem(int bi, int bj, int k, int l) const;  // (bi bs + k, bj bs + l), not range-checked
  bool SetElem(std::ptrdiff_t k, double x);            // packed position; refused outside the array
  // The packed array itself. Its length is the matrix's: do not resize it.
  std::vector<double>& AsVector() { return fvData; }
  const std::vector<double>& AsVectorConst() const { return fvData; }
  bool GetRow(int i, std::vector<double>& out) const override;
  bool PutRow(int i, const std::vector<double>& v) override;
  bool SetRowColToConst(int i, double x) override;
  bool IncrVecByRow(int i, std::vector<double>& v, double factor) const override;
  bool IsZeroRow(int i, const NQBitSet& set) const override;

  // ---- Mechanical operations (NQSymMatrix.cpp) -------------------------------------------------

  void Clear() override;
  void ChangeSign() override;
  void MultiplyByNumber(double x) override;
  bool ComputeAXpY(double a, const INQSymMatrix& x) override;
  bool AddToDiagonalPart(int first, int count, double x);  // rows first .. first+count-1
  void MaxMinDiagOffDiag(double& maxDiag, double& minDiag, double& maxOff,
                         double& minOff) const override;
  // GetNCheckDiagonalOld is the earlier rule: out = the diagonal, with b in place of every entry
  // that is not above a x the largest.
  void GetNCheckDiagonalOld(std::vector<double>& out, double a, double b) const;
  void ZeroOutNonDiag(double eps) override;
  // With eps > 0: entries below eps x the largest |sii| in magnitude <- 0, the diagonal's too.
  void ZeroOutAllSmall(double eps);
  // With eps > 0: ZeroOut(i) where |sii| / m < eps or m is 0, m being the largest |sjj| of the rows
  // j <= i as they are when visited: the running maximum, not the overall one.
  void ZeroOutRowsForSmallDiag(double eps);
  // Diagonal entries that are <= 0, or <= x times the largest, <- the largest. False when x < 0 or
  // no entry is positive.
  bool ReplaceDiagZeroes(double x);
  // Off-diagonal entries >= 1 <- 1 - x and those <= -1 <- -(1 - x): impossible correlations are
  // pulled back inside the unit interval. False unless 0 <= x < 1.
  virtual bool AdjustOffDiagCorr(double x);
  // `before` is the sum of products of row i with row j of another matrix, or with v placed at
  // column `first`, over the columns before `split`; `after` the sum over the columns from it on.
  // False where they do not fit.
  virtual bool ComputeRowDotProductS(int i, const INQSymMatrix& other, int j, int split,
                                     double& before, double& after) const;
  virtual bool ComputeRowDotProductS(int i, const std::vector<double>& v, int first, int split,
                                     double& before, double& after) const;
  virtual double GetElem(int k) const;  // packed position, not range-checked

  // ---- Sweep (NQSymMatrix_sweep.cpp) -----------------------------------------------------------

  // Sweeps row k in, or out when it is in `swept` already, which undoes it: p = s(k,k), d = -1/p,
  //   s(k,k) <- d,  s(i,k) <- s(i,k) |d|,  s(i,j) <- s(i,j) - s(i,k) s(j,k)/p
  // t        one value per row, in the units of the diagonal. Sweeping in is refused when p <= t[k]
  //          eps (signed: negative pivots too), or when a row j swept before would be left with
  //          (s(j,j) - s(j,k)^2/p) eps t[j] <= -1: nearly dependent on the rows swept.
  // check    refuses eps <= 0, a set of fewer than n places, a t[i] < 0 and a k outside 0 .. n-1,
  //          which is the caller's duty without it.
  // Returns  false, matrix and set unchanged, on a refusal and where memory ends.
  // Cost     n(n+1)/2 multiply-adds.
  bool Sweep(int k, double eps, const std::vector<double>& t, NQBitSet& swept, bool check);
  bool Sweep(int k, double eps, const double* t, NQBitSet& swept, bool check);
  // SweepOrig gives the same results in plain loops: faster forms are held to it.
  bool SweepOrig(int k, double eps, const double* t, NQBitSet& swept, bool check);

  // The drivers pass over rows refused, which stay out of the set. Without t the reference is the
  // current diagonal. With `check` they return false, nothing swept, on a bad argument, otherwise
  // raise every reference value below 1 to 1, in the caller's t when there is one. Arguments that
  // would be read outside their bounds are refused with or without `check`. Where memory ends the
  // drivers return false and S is unchanged.

  // SweepOnAll clears the set, resized to n, and sweeps rows 0 .. n-1. Then, also after a failed
  // check, zeroRedundant zeroes the rows left out and changeSign turns the swept -S^-1 into S^-1, a
  // generalised inverse when rows were left out.
  bool SweepOnAll(double eps, NQBitSet& swept, bool check, bool zeroRedundant, bool changeSign,
                  std::vector<double>* t = nullptr);
  // SweepOnMany takes rows 0 .. m-1 out of the set and sweeps them. logDet sums ln q over the rows
  // swept with q > 0: q is the pivot before the sweep, or with pivotBefore false minus the diagonal
  // after it.
  bool SweepOnMany(int m, double eps, bool pivotBefore, NQBitSet& swept, double& logDet, bool check,
                   std::vector<double>* t = nullptr);
  // SweepOnSelected sweeps the listed rows in list order; one listed again is swept out again. To
  // sweep out with `check`, pass t: the diagonal of a swept row is negative, and `check` refuses
  // negative references.
  bool SweepOnSelected(const std::vector<int>& rows, double eps, NQBitSet& swept, bool check,
                       std::vector<double>* t = nullptr);
  // ZeroOut of every row that is not a member; false when the set is smaller than n.
  bool ZeroOutRedundant(const NQBitSet& set);

  // ---- Cholesky (NQSymMatrix_cholesky.cpp) -----------------------------------------------------

  int LTChol(const std::vector<double>& t, double eps, bool check) override;
  int LTChol(const std::vector<double>& t, double eps, NQBitSet& nonRedundant, bool check) override;
  int LTDetInverse(NQDeterminant& det, int job) override;
  void LTLLTrans() override;
  void LTLTransL() override;
  bool ComputeDeterminant(double eps, NQDeterminant& det) const override;

  // ---- Solves (NQSymMatrix_solve.cpp) ----------------------------------------------------------

  int LTSolve(const std::vector<double>& b, double eps, std::vector<double>& x) override;
  // On a factor L, in place: forward substitution L y = x and back substitution L' y = x. A zero
  // diagonal entry gives y[i] = 0. False unless x has n values.
  bool LTSubstitute(std::vector<double>& x) const;
  bool TSolveSubst(std::vector<double>& x) const;
  // A ridge search finds the smallest shift c for which S + c I factors (LTChol with the largest
  // diagonal entry of S as reference, and eps), by steps upward, then bisection to the relative
  // width 2 eps (absolute for c < 1). An S that does not factor becomes (S + shift I) / d, shift
  // being c plus 1% of the largest diagonal entry of S + c I, and d the largest of S + shift I, so
  // that the largest ends as 1. Returns the number of factorisations; -1 for n < 2, -2 for eps <=
  // 0, -3 when entries are not finite, the search leaves the range of doubles or memory ends. S is
  // unchanged for all three.
  int TransformToPositiveDefinite(double eps, bool& changed, double& shift);

  // ---- Indefinite solves, rank-one changes (NQSymMatrix_indefinite.cpp) ------------------------

  // Solves S x = b, S not necessarily definite, by symmetric pivoting (Bunch and Kaufman 1977).
  // False, x unchanged, unless eps >= 0, n >= 1 and b has n values, and when the estimate of the
  // reciprocal condition number is not above eps. The second form solves with the rows and columns
  // that are members of `usable`; the others have x[i] = 0.
  bool SolveIndefinite(const std::vector<double>& b, double eps, std::vector<double>& x) const;
  bool SolveIndefinite(const std::vector<double>& b, double eps, const NQBitSet& usable,
                       std::vector<double>& x) const;
  // Where S is too nearly singular for that, solves with the rows whose distance from the space of
  // those taken before them is above eps times their norm (and above rounding errors), which solves
  // a consistent singular system. Returns the number of rows left out; -1, x unchanged, for
  // arguments that SolveIndefinite refuses, eps = 0 and a system that resists still. n^2 doubles of
  // scratch.
  int SolveIndefiniteGI(const std::vector<double>& b, double eps, std::vector<double>& x) const;
  // On a factor L, in place: the factors of L L' + v v' and L L' - v v', by plane rotations, no
  // diagonal entry negative (LINPACK's dchud and dchdd). v has n values. The downdate is refused, L
  // unchanged, when the result would not be positive definite, or not semidefinite where L has a
  // zero pivot already, which stays zero.
  bool LTCholUpdateR1(const std::vector<double>& v);
  bool LTCholDowndate(const std::vector<double>& v);

  // ---- Linear dependence of rows (NQSymMatrix_redundancy.cpp) ----------------------------------

  // CholIndNonRed factors a copy: indices lists the rows whose pivot is above both epsz and eps
  // sii, the others depend on rows before them. Returns the number of dependent rows; -1 when epsz
  // or eps is negative or memory ends.
  int CholIndNonRed(double epsz, double eps, std::vector<int>& indices) const;
  // CheckMDependent tells whether Sweep would refuse row k, which then depends on the members of
  // `swept`, the rows swept in. Nothing is swept; nonRedundant(k) becomes the opposite of the
  // answer. False, nothing recorded, for a k or a set that does not fit and where memory ends.
  bool CheckMDependent(int k, double eps, const std::vector<double>& t, const NQBitSet& swept,
                       NQBitSet& nonRedundant) const;
  // CheckGMG tests row by row whether this matrix G, a generalised inverse of M, has G M G = G:
  //   |(G M G)(i,j) - g(i,j)| <= eps sqrt(|g(i,i)| |g(j,j)|) for every j.
  // nonRedundant (resized to n) marks the rows with a non-zero g(i,i) that pass. Returns the number
  // of rows that fail, -1 when the orders differ, eps is negative or memory ends.
  int CheckGMG(const INQSymMatrix& m, double eps, NQBitSet& nonRedundant) const;

  // ---- Products (NQSymMatrix_product.cpp) ------------------------------------------------------

  bool ComputeGMG(const INQSymMatrix& m, INQSymMatrix& out) const override;
  bool ComputeGSG(const INQSymMatrix& g, INQSymMatrix& out) const override;
  bool ComputeLTransV(const std::vector<double>& v, std::vector<double>& out) const override;
  bool ComputeLTransV(const std::vector<int>& indices, const std::vector<double>& values,
                      std::vector<double>& out) const override;
  bool ComputeLV(const std::vector<double>& v, std::vector<double>& out) const override;
  double ComputeRowDotProductS(int i, const INQSymMatrix& other, int j) const override;
  double ComputeRVD(int r, const double* x, int inc) const override;
  bool ComputeSTransS(INQSymMatrix& out) const override;
  bool ComputeSV(const std::vector<double>& v, int nRows, std::vector<double>& out) const override;
  double ComputeVSV(const std::vector<double>& v) const override;
  double ComputeVSW(const std::vector<double>& v, const std::vector<double>& w) const override;
  double ComputeVSWParts(const double* v, int nv, int row, const double* w, int nw,
                         int col) const override;
  double TraceOfProductOfThree(const INQSymMatrix& a, const INQSymMatrix& b) const override;

  // ---- Products with rectangular matrices (NQSymMatrix_rect.cpp) -------------------------------

  bool ComputeGMGNG(const INQSymMatrix& m, const INQSymMatrix& n,
                    INQRectMatrix& out) const override;
  bool ComputeMGN(const INQSymMatrix& m, const INQSymMatrix& n, INQRectMatrix& out) const override;
  bool ComputeRS(const INQRectMatrix& r, INQRectMatrix& out) const override;
  bool ComputeRTransS(const INQRectMatrix& r, INQRectMatrix& out) const override;
  bool ComputeSS(const INQSymMatrix& b, INQRectMatrix& out) const override;
  // S <- R'R and S <- R R', of the order needed and one block.
  bool ComputeRTransByR(const INQRectMatrix& r);
  bool ComputeRByRTrans(const INQRectMatrix& r);
  bool ExpandSymToRect(NQRectMatrix& out) const;  // the full square

  // ---- Beside a block-diagonal matrix (NQSymMatrix_blocks.cpp) ---------------------------------
  // L is the lower triangle of a block-diagonal matrix of order p, p <= n, read as a factor. Each
  // row costs the sum over the blocks of L. False where a part does not fit.

  // S <- D' S D + E, D = diag(L, I), E adding 1 to the first p diagonal entries: the cross-products
  // of (Z, X) become those of (Z L, X), augmented, of mixed model equations (Wolfinger et al. 1994,
  // Computing Gaussian likelihoods and their derivatives for general linear mixed models).
  bool AugmentUsingBlockDiagL(const NQSymBlockDiagMatrix& l);
  // out = v' L with v = s(row, col) .. s(row, col+p-1).
  bool SubSymVectBlockL(int row, int col, const NQSymBlockDiagMatrix& l,
                        std::vector<double>& out) const;
  // P is the diagonal part of order p from row `first` on: out = P L and out = L' P L.
  bool SubSymSBlockL(int first, const NQSymBlockDiagMatrix& l, NQRectMatrix& out) const;
  bool SubSymBlockLTSBlockL(int first, const NQSymBlockDiagMatrix& l, NQSymMatrix& out) const;
  // out = P' L, nCols x p, with P the p x nCols part that starts at (row, col).
  bool SubSymRectTBlockL(int row, int col, int nCols, const NQSymBlockDiagMatrix& l,
                         NQRectMatrix& out) const;
  // out = P B P', with P the nRows x p part that starts at (row, col).
  bool ComputeSSubBSSub(int row, int nRows, int col, const NQSymBlockDiagMatrix& b,
                        NQSymMatrix& out) const;
  // v' B w; system-missing where lengths do not fit.
  static double ComputeVBW(const std::vector<double>& v, const NQSymBlockDiagMatrix& b,
                           const std::vector<double>& w);
  // S <- R' B R, and with any symmetric matrix S <- R' A R; of the order needed and one block.
  bool ComputeRTransBlockDiagR(const INQRectMatrix& r, const NQSymBlockDiagMatrix& b);
  bool ComputeRTransSymR(const INQRectMatrix& r, const INQSymMatrix& a);
  // Column j of L times s(row, first) .. s(row, first+p-1); system-missing where they do not fit.
  double DotProductLBlockDiagColRow(const NQSymBlockDiagMatrix& l, int j, int row, int first) const;

  // ---- Accumulation (NQSymMatrix_update.cpp) ---------------------------------------------------

  // S += w x x' for one case x of n values: s(i,j) += x[j] (x[i] w), rows with x[i] = 0 skipped (a
  // NaN is not 0). UpdateXX takes w > 0 only.
  bool UpdateXX(const std::vector<double>& x, double w);
  bool UpdateXXPosNegW(const std::vector<double>& x, double w);
  // UpdateXX from the entries of a sparse x alone, which fits in n rows.
  bool UpdateXXSparse(const NQSparseVector& x, double w);
  // UpdateXXNonRedun updates the rows and columns that are members of the set only.
  bool UpdateXXNonRedun(const std::vector<double>& x, const NQBitSet& set, double w);
  // UpdateXXMat2 is UpdateXXPosNegW of this matrix with w and of `second` with w2.
  bool UpdateXXMat2(const std::vector<double>& x, double w, NQSymMatrix& second, double w2);
  // S += w z z' in the diagonal block of z's length that starts at row `first`.
  bool UpdateZZ(const std::vector<double>& z, int first, double w);
  // The corner of the case (z, x) below the diagonal: s(row + i, col + j) += w x[i] z[j]. False
  // unless w > 0, both fit and the corner ends before column `row`.
  bool UpdateXXCornerBlock(const std::vector<double>& x, int row, const std::vector<double>& z,
                           int col, double w);
  bool UpdateXXCornerSparse(const std::vector<double>& x, int row, const NQSparseVector& z, int col,
                            double w);
  bool IncrementByVV(const std::vector<double>& v, double a);  // S += a v v', nothing skipped
  // S <- v w' + w v' (no halving) and S <- v v', of v's order and one block.
  bool SetToVW(const std::vector<double>& v, const std::vector<double>& w);
  bool SetToVV(const std::vector<double>& v);
  // Off-diagonal entries of the rows and columns of the members <- 0; their diagonals stay.
  bool SetCovarZeros(const NQBitSet& set);

  // ---- Parts (NQSymMatrix_extract.cpp) ---------------------------------------------------------

  bool ExtractFirstNRows(INQSymMatrix& out) const override;
  bool ExtractSubmatrix(const std::vector<int>& indices, INQSymMatrix& out) const override;
  bool ExtractDiagBlock(int b, NQSymMatrix& out) const;  // of the block view
  // ExtractBlockAndLastRow borders block b by the last row: out(bs, k) = s(n-1, b bs + k), out(bs,
  // bs) = s(n-1, n-1).
  bool ExtractBlockAndLastRow(int b, NQSymMatrix& out) const;
  // The lower triangle of block (bi, bj): out(k, l) = s(bi bs + k, bj bs + l), k >= l.
  bool ExtractBlockInLowTriangular(int bi, int bj, NQSymMatrix& out) const;
  // out = s(n-1, first) .. s(n-1, first+count-1).
  bool ExtractPartOfLastRow(int first, int count, std::vector<double>& out) const;
  bool ReplaceFirstRows(const NQSymMatrix& src, int k);  // leading block of order k <- that of src
  bool SetData(const std::vector<double>& src);          // all n(n+1)/2 packed entries
  // out has the order of the set: row k goes to the k-th member, the rows and columns of the others
  // are zero. False unless the set has n members.
  bool Expand(const NQBitSet& set, NQSymMatrix& out) const;
  // The same with the places listed: out(indices[a], indices[b]) = s(a, b) in an `out` of order
  // `size`. False unless there are n different places.
  bool ExpandSym(const std::vector<int>& indices, int size, NQSymMatrix& out) const;
  bool DeleteOneRow(int i);  // and column i; one block
  // With the last row the target and the predictor rows in `set` swept in: out[j] = s(n-1, j), the
  // coefficient, for j in the set, and 0 for the other rows before the last.
  bool GetRegCoeffs(std::vector<double>& out, const NQBitSet& set) const;
  // The same regression with its intercept, S being made of products about the means: `means` are
  // those of the predictors and, last, the target, of cases whose weights sum to sumOfWeights.
  // coefficients = (intercept, out of GetRegCoeffs); the residual variance times `inverse`, of
  // order n, is their covariance matrix: the inverse of (1, X)'W(1, X). Without means, S being made
  // of raw products, there is no intercept: its coefficient and its row of the inverse are 0, as
  // those of rows that are not in the set. False unless means has n values or none.
  bool GetRegression(const NQBitSet& set, const std::vector<double>& means, double sumOfWeights,
                     std::vector<double>& coefficients, NQSymMatrix& inverse) const;

  // ---- Diagnostic display (NQSymMatrix.cpp) ----------------------------------------------------

  void Display() const override;

 private:
  std::size_t Order() const { return fNRows > 0 ? static_cast<std::size_t>(fNRows) : 0; }
  bool HasRow(int i) const { return i >= 0 && i < fNRows; }
  bool HasOrder(std::size_t n) const { return fNRows >= 0 && n == Order(); }
};

}  // namespace NQMath_940
