#pragma once

#include <cstddef>
#include <variant>
#include <vector>

#include <nqcommon/export.h>
#include <nqcommon/math/matrix/INQSymMatrix.h>
#include <nqcommon/math/matrix/NQBitSet.h>
#include <nqcommon/math/matrix/NQDiagMatrix.h>
#include <nqcommon/math/matrix/NQSymMatrix.h>

namespace NQMath_940 {

class NQRectMatrix;

// Symmetric matrix of order n that is zero outside square blocks along its diagonal, each of them
// dense or diagonal.
//
// Layout    blocks 0 .. nb-1 of b0, b1, ... rows; block b covers rows and columns start(b) ..
//           start(b+1)-1, with start(0) = 0 and start(nb) = n. sizes (2, 3), block 0 diagonal:
//
//             d00  .   .   .   .        . is 0 and cannot be set
//              .  d11  .   .   .
//              .   .  s22 s32 s42
//              .   .  s32 s33 s43
//              .   .  s42 s43 s44
//
//           A block of no rows is allowed in a structure.
// Rules     block by block, with those of NQSymMatrix for a dense block and of NQDiagMatrix for a
//           diagonal one: the scalar-tolerance factor takes the largest diagonal entry of all, the
//           determinant is the product of the blocks'.
// Writes    an operation that writes to cells outside the blocks passes over them: PutRow and
//           SetRowColToConst set the stored part of the row. SetElem answers false for such a cell.
//           ComputeAXpY takes an X that is diagonal or has the same structure.
// Output    where the result is block-diagonal because the arguments are (of blocks of the same
//           sizes, or diagonal), `out` may be block-diagonal (GetType() 2) or dense, and the work
//           is done block by block; otherwise it must be dense, as the interface says.
// Cost      a product with a vector, a factor, an inverse or a solve costs the sum over blocks; a
//           product with an m x n or n x m matrix m times that.
// Failure   as the interface says; a matrix that loses its storage, or finds none for its new
//           structure, has order -1 and no blocks. Where memory ends in another operation on the
//           matrix in place, it is as it was before.
// Threads   one object, one thread at a time.
//
// Contents  NQSymBlockDiagMatrix.cpp            structure, elements, mechanical operations
//           NQSymBlockDiagMatrix_rows.cpp       rows, parts, display
//           NQSymBlockDiagMatrix_cholesky.cpp   factor, determinant, inverses, solve
//           NQSymBlockDiagMatrix_product.cpp    products
//           NQSymBlockDiagMatrix_companion.cpp  products beside a dense matrix
class NQ_API NQSymBlockDiagMatrix : public INQSymMatrix {
 public:
  // Some overloads of these are bodies of the interface.
  using INQSymMatrix::ComputeLTransV;
  using INQSymMatrix::ComputeLV;
  using INQSymMatrix::ComputeRowDotProductS;
  using INQSymMatrix::ComputeRVD;
  using INQSymMatrix::ComputeSV;
  using INQSymMatrix::ComputeVSWParts;
  using INQSymMatrix::LTChol;

  // ---- Life cycle and structure (NQSymBlockDiagMatrix.cpp) -------------------------------------

  // No blocks.
  NQSymBlockDiagMatrix() = default;
  // As SetStructure; order -1 where that refuses.
  NQSymBlockDiagMatrix(const std::vector<int>& sizes, const NQBitSet& isDiagonal);
  // One block per matrix, added as by AddBlock; a null pointer or a matrix that is refused adds
  // none.
  explicit NQSymBlockDiagMatrix(const std::vector<const INQSymMatrix*>& blocks);
  // A copy that finds no storage has order -1; a move leaves its source without blocks.
  NQSymBlockDiagMatrix(const NQSymBlockDiagMatrix& other) noexcept;
  NQSymBlockDiagMatrix& operator=(const NQSymBlockDiagMatrix& other) noexcept;
  NQSymBlockDiagMatrix(NQSymBlockDiagMatrix&& other) noexcept;
  NQSymBlockDiagMatrix& operator=(NQSymBlockDiagMatrix&& other) noexcept;
  ~NQSymBlockDiagMatrix() override;

  int GetType() const override { return 2; }
  int GetNRows() const override { return fNRows; }
  bool IsValidMatrix() const override { return fNRows >= 0; }

  // As many blocks as the bit set has places, block b of sizes[b] rows and diagonal when b is a
  // member; all values 0. False, nothing changed, when there are fewer sizes than places, one of
  // them is negative or their sum is more than an int counts.
  bool SetStructure(const std::vector<int>& sizes, const NQBitSet& isDiagonal);
  // Appends a diagonal block. Returns the new nb; -1, nothing changed, for an empty list and when
  // the order would be more than an int counts; -1 and order -1 when there is no storage.
  int AddBlock(const std::vector<double>& diagonal);
  // The same with a copy of m: a dense matrix is a dense block, a diagonal one a diagonal block,
  // and of a block-diagonal one every block is appended. -1 for an order below 1.
  int AddBlock(const INQSymMatrix& m);
  // ReplaceBlock replaces block b by one of the same size: a diagonal one by a list or a diagonal
  // matrix, otherwise a dense one. False, nothing changed, where the sizes differ.
  bool ReplaceBlock(int b, const std::vector<double>& diagonal);
  bool ReplaceBlock(int b, const INQSymMatrix& m);

  int GetNBlocks() const { return static_cast<int>(fvBlocks.size()); }
  int GetNDenseBlocks() const { return GetNBlocks() - GetNDiagBlocks(); }
  int GetNDiagBlocks() const;
  // Both lists are empty where memory ends. GetStartingIndices has nb + 1 entries, the last being
  // n.
  std::vector<int> GetBlockSizes() const;
  std::vector<int> GetStartingIndices() const;
  // The block of every row.
  const std::vector<int>& GetBlockIndexForRow() const { return fvBlockOfRow; }
  // -1 when there is no such block or row; GetIsBlockDiagonal answers false.
  int GetBlockSize(int b) const { return HasBlock(b) ? Block(b).GetNRows() : -1; }
  int GetBlockStartIndex(int b) const { return HasBlock(b) ? fvBlocks[At(b)].start : -1; }
  int GetBlockIndexForRow(int i) const { return HasRow(i) ? fvBlockOfRow[At(i)] : -1; }
  bool GetIsBlockDiagonal(int b) const { return HasBlock(b) && Block(b).GetType() == 1; }
  // out = block b itself, or its array of diagonal entries, until the structure changes; the size
  // must stay. False, out unchanged, when b is of the other kind or not there.
  bool GetDenseBlock(int b, NQSymMatrix*& out);
  bool GetDenseBlock(int b, const NQSymMatrix*& out) const;
  bool GetDiagonalBlock(int b, std::vector<double>*& out);
  bool GetDiagonalBlock(int b, const std::vector<double>*& out) const;
  // Same sizes and kinds.
  bool IsSameStructure(const NQSymBlockDiagMatrix& other) const;
  // out <- zeros of this structure.
  bool CopyStructure(NQSymBlockDiagMatrix& out) const;
  // Drops the structure as well: no blocks.
  void ClearAll();
  // An order below n keeps the leading blocks, the last cut; one above n appends a dense block of
  // zeros.
  bool Resize(int n) override;

  // ---- Elements (NQSymBlockDiagMatrix.cpp) -----------------------------------------------------

  double GetElem(int i, int j) const override;
  bool SetElem(int i, int j, double x) override;
  // The cell of element (i, j), rows of the matrix; null outside the blocks and off the diagonal of
  // a diagonal block, where the element is 0.
  double* FindBlock(int i, int j);
  const double* FindBlock(int i, int j) const;
  // Of row i: its block, the block's start, the row in the block, the block's kind. False, nothing
  // set, when there is no row i.
  bool FindAbsBlockRelColIndex(int i, int& block, int& start, int& relative,
                               bool& isDiagonal) const;

  // ---- Mechanical operations (NQSymBlockDiagMatrix.cpp) ----------------------------------------

  void Clear() override;
  void ChangeSign() override;
  void MultiplyByNumber(double x) override;
  bool ComputeAXpY(double a, const INQSymMatrix& x) override;
  // The zeros outside the blocks count.
  void MaxMinDiagOffDiag(double& maxDiag, double& minDiag, double& maxOff,
                         double& minOff) const override;
  void ZeroOutNonDiag(double eps) override;

  // ---- Rows, parts and display (NQSymBlockDiagMatrix_rows.cpp) ---------------------------------

  bool GetRow(int i, std::vector<double>& out) const override;
  bool PutRow(int i, const std::vector<double>& v) override;
  bool SetRowColToConst(int i, double x) override;
  bool IncrVecByRow(int i, std::vector<double>& v, double factor) const override;
  bool IsZeroRow(int i, const NQBitSet& set) const override;
  // A block-diagonal `out` takes the leading blocks, the last cut.
  bool ExtractFirstNRows(INQSymMatrix& out) const override;
  // A block-diagonal `out` takes indices that go from block to block in their order, one block for
  // each: diagonal where it is here and no index repeats, otherwise dense.
  bool ExtractSubmatrix(const std::vector<int>& indices, INQSymMatrix& out) const override;
  // out = the dense expansion.
  bool FillDenseMatrix(NQSymMatrix& out) const;
  void Display() const override;

  // ---- Cholesky (NQSymBlockDiagMatrix_cholesky.cpp) --------------------------------------------

  int LTChol(const std::vector<double>& t, double eps, bool check) override;
  int LTChol(const std::vector<double>& t, double eps, NQBitSet& nonRedundant, bool check) override;
  int LTDetInverse(NQDeterminant& det, int job) override;
  void LTLLTrans() override;
  void LTLTransL() override;
  int LTSolve(const std::vector<double>& b, double eps, std::vector<double>& x) override;
  bool ComputeDeterminant(double eps, NQDeterminant& det) const override;

  // ---- Products (NQSymBlockDiagMatrix_product.cpp) ---------------------------------------------

  bool ComputeGMG(const INQSymMatrix& m, INQSymMatrix& out) const override;
  bool ComputeGMGNG(const INQSymMatrix& m, const INQSymMatrix& n,
                    INQRectMatrix& out) const override;
  bool ComputeMGN(const INQSymMatrix& m, const INQSymMatrix& n, INQRectMatrix& out) const override;
  bool ComputeGSG(const INQSymMatrix& g, INQSymMatrix& out) const override;
  bool ComputeLSLTrans(const INQSymMatrix& l, INQSymMatrix& out) const override;
  bool ComputeLTransSL(const INQSymMatrix& l, INQSymMatrix& out) const override;
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

  // ---- Beside a dense matrix (NQSymBlockDiagMatrix_companion.cpp) ------------------------------
  // S is this matrix, L its lower triangle. A growing run x of a vector v, the way down a column of
  // a packed triangle: x[0] = v[first], and the k-th step, k = 0, 1, ..., goes inc + k further,
  // inc >= 0. Runs and parts have n values from where they start; false or system-missing where
  // they do not fit.

  // out = L Q, with Q of n rows and columns.
  bool ComputeProductLAndSquare(const NQRectMatrix& square, NQRectMatrix& out) const;
  // out = x' L, n values: x row i of a symmetric matrix of order n; the part of v from `first` on;
  // a growing run.
  bool ComputeSymRowByL(const INQSymMatrix& s, int i, std::vector<double>& out) const;
  bool ComputeVecPartByL(const std::vector<double>& v, int first, std::vector<double>& out) const;
  bool ComputeVecIIncrPartByL(const std::vector<double>& v, int first, int inc,
                              std::vector<double>& out) const;
  // Column j of L, and of S, times a growing run.
  double DotProductLColVecIIncrPart(int j, const std::vector<double>& v, int first, int inc) const;
  double DotProductColVecIIncrPart(int j, const std::vector<double>& v, int first, int inc) const;
  // Column j of L times the part of row `row` of r from column `first` on.
  double DotProductLColDenseRowPart(int j, const NQRectMatrix& r, int row, int first) const;
  // The first column of row i that is stored: its block's, or i in a diagonal block. -1 for a bad
  // i.
  int GetIndexFirstInRow(int i) const;
  // r(first + i, col) += factor x s(i, j) for the stored cells of column j of S.
  bool UpdateDenseColumnPart(int j, double factor, NQRectMatrix& r, int first, int col) const;
  // The part s(r, first) .. s(r, first+count-1) of row r times x[0], x[inc], ...; a negative inc
  // walks x backwards from its end.
  double ComputeRVDParts(int r, int first, int count, const std::vector<double>& x, int inc) const;

 private:
  static std::size_t At(int i) { return static_cast<std::size_t>(i); }
  std::size_t Order() const { return fNRows > 0 ? At(fNRows) : 0; }
  bool HasRow(int i) const { return i >= 0 && i < fNRows; }
  bool HasBlock(int b) const { return b >= 0 && b < GetNBlocks(); }
  bool HasOrder(std::size_t n) const { return fNRows >= 0 && n == Order(); }

  // A block and its first row.
  struct PlacedBlock {
    std::variant<NQSymMatrix, NQDiagMatrix> matrix;
    int start;
  };

  INQSymMatrix& Block(int b);
  const INQSymMatrix& Block(int b) const;
  // f(block, its first row), block after block.
  template <class F>
  void ForEachBlock(F f) {
    for (int b = 0; b < GetNBlocks(); ++b) f(Block(b), fvBlocks[At(b)].start);
  }
  template <class F>
  void ForEachBlock(F f) const {
    for (int b = 0; b < GetNBlocks(); ++b) f(Block(b), fvBlocks[At(b)].start);
  }

  void Fail();
  // SetBlockIndicesForRow gives the rows that the table has not got yet to the last block.
  void SetBlockIndicesForRow();
  template <class Matrix>
  int Append(Matrix block);
  std::size_t Factor(const double* t, double eps, std::vector<bool>& aliased);
  const NQSymBlockDiagMatrix* CutAlike(const INQSymMatrix& x, NQSymBlockDiagMatrix& cut) const;
  bool TakeLeadingBlocks(const NQSymBlockDiagMatrix& from, int n);
  template <class F, class Otherwise>
  bool PutEachBlock(const INQSymMatrix& x, INQSymMatrix& out, F f, Otherwise otherwise) const;
  template <class F>
  bool MapVector(const std::vector<double>& v, std::vector<double>& out, F f) const;

  int fNRows = 0;
  std::vector<PlacedBlock> fvBlocks;
  std::vector<int> fvBlockOfRow;
};

}  // namespace NQMath_940
