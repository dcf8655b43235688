#pragma once

#include <cstddef>
#include <vector>

#include <nqcommon/export.h>
#include <nqcommon/math/matrix/INQRectMatrix.h>
#include <nqcommon/math/matrix/NQBitSet.h>

namespace NQMath_940 {

class NQRectMatrix;
class NQSparseVector;

namespace internal {
struct SparseRun;
}

// What NQSparseRectMatrix keeps, private to it.
struct NQ_API SparseFields {
  int fNRows = 0;
  int fCapacity = 0;
  int fNCols = 0;
  int fNEntries = 0;
  std::vector<double> fvElems;
  std::vector<int> fvIndices;
  std::vector<double> fvRowElems;  // scratch: a row being assembled
  std::vector<int> fvRowIndices;
};

// Matrix of m rows and n columns whose rows each store k entries, k fixed at construction.
//
// Layout    row i has the places i k .. i k + k-1 of two parallel arrays, values and column
//           indices. Within a row the indices ascend; -1 marks an empty slot, of value 0, so that
//           empty slots come first. n = 5, k = 2:
//
//             indices   0  3 | -1  2 | -1 -1
//             values    x  y |  0  z |  0  0
//
// Valid     0 <= m <= capacity, capacity >= 1, n >= 1 and 1 <= k <= n. A capacity of 0 becomes
//           valid with the first row.
// Products  what is not stored is not multiplied: a NaN or an infinity of the other operand does
//           not meet the zeros. The cost goes with the stored entries.
// Output    a matrix result is dense, as the interface says, but for the operations that name a
//           sparse one. An operation that changes this matrix keeps k.
// Failure   as the interface says; construction with an n or k that no matrix has leaves
//           m = n = -1, and so do a copy, Resize and AddRow where memory ends. Every other
//           operation fails then and changes nothing. Nothing throws.
// Threads   one object, one thread at a time.
//
// Contents  NQSparseRectMatrix.cpp          shape, rows, elements, display
//           NQSparseRectMatrix_copy.cpp     rows, columns and parts out
//           NQSparseRectMatrix_product.cpp  norms and products
class NQ_API NQSparseRectMatrix : public INQRectMatrix, private SparseFields {
 public:
  // ---- Life cycle and shape (NQSparseRectMatrix.cpp) -------------------------------------------

  // No rows, storage for `capacity` of them.
  NQSparseRectMatrix(int capacity, int columns, int k);
  NQSparseRectMatrix(const NQSparseRectMatrix& other) noexcept : NQSparseRectMatrix(0, 0, 0) {
    *this = other;
  }
  NQSparseRectMatrix& operator=(const NQSparseRectMatrix& other) noexcept;
  // The source is left without rows and capacity.
  NQSparseRectMatrix(NQSparseRectMatrix&& other) noexcept {
    *this = static_cast<NQSparseRectMatrix&&>(other);
  }
  NQSparseRectMatrix& operator=(NQSparseRectMatrix&& other) noexcept;

  int GetMatrixType() const override { return 1; }
  bool IsValidMatrix() const override { return fNRows >= 0 && fCapacity >= 1; }
  int GetNRows() const override { return fNRows; }
  int GetNCols() const override { return fNCols; }
  int GetCapacity() const { return fCapacity; }
  // The number k of entries that each row stores.
  int GetNNZRowElements() const { return fNEntries; }
  // The arrays themselves, capacity x k places.
  const std::vector<int>& NZColIndicesAsVector() const { return fvIndices; }
  const std::vector<double>& NZElemsAsVector() const { return fvElems; }

  // Keeps the entries that stay inside; new rows are empty. False, nothing changed, for n < k.
  bool Resize(int m, int n) override;
  // One more row, of empty slots. A full capacity grows: to 10 when it is below 7, otherwise by
  // half.
  int AddRow() override;
  // One more row, v. -1, nothing changed, unless v is valid, has exactly k elements and fits in n
  // columns. v may view the arrays of this matrix.
  int AddRow(const NQSparseVector& v) override;
  // One more row of k consecutive elements of v from place `first` of its lists on, or, when first
  // < 0, from the first index that is not below `start` on. The columns are the indices minus
  // `start`. -1, nothing changed, when start is negative or above v's last index, fewer than k
  // elements remain, the first one taken is below `start` or the last one leaves the n columns.
  int AddRow(const NQSparseVector& v, int start, int first);
  // Row i <- v, of at most k elements; the slots left over are empty.
  bool SetRow(int i, const NQSparseVector& v) override;

  // ---- Elements (NQSparseRectMatrix.cpp) -------------------------------------------------------

  double GetElem(int i, int j) const override;
  // Writes x where (i, j) is stored. Returns true then, and for x = 0 anywhere; entries are never
  // inserted.
  bool SetElem(int i, int j, double x) override;
  // The place of column j among the k of row i; -1 when it is not stored or there is no row i.
  int FindIndex(int i, int j) const;
  // The k indices and values of row i, empty slots included: where they are, until the matrix
  // changes, or copied.
  bool GetRow(int i, const int*& indices, const double*& values) const;
  bool GetRow(int i, std::vector<int>& indices, std::vector<double>& values) const;
  bool GetRow(int i, std::vector<double>& out) const override;
  // Values 0; the slots stay.
  void Clear() override;
  bool ZeroOutRowPart(int i, int first, int count) override;
  bool IsRowZero(int i) const override;
  void Display() const override;

  // ---- Rows, columns and parts (NQSparseRectMatrix_copy.cpp) -----------------------------------

  // False, nothing changed, also when a row of src has more than k entries that are not 0, or src
  // fewer than k columns.
  bool CopyRows(const INQRectMatrix& src, int first, int count) override;
  bool CopyRowToRow(int from, int to, INQRectMatrix& dst) const override;
  // Row `to` of dst, of m columns, <- column `from`.
  bool CopyColToRow(int from, int to, NQRectMatrix& dst) const;
  bool CreateBlockDiagonal(int k, INQRectMatrix& out) const override;
  // out = the last column, m values.
  bool ExtractLastCol(std::vector<double>& out) const;
  // out = rows firstRow .. firstRow+nRows-1, columns firstCol .. firstCol+nCols-1, sparse, with
  // min(k, nCols) entries a row.
  bool ExtractSubSparseRectMat(int firstRow, int nRows, int firstCol, int nCols,
                               NQSparseRectMatrix& out) const;
  bool ShiftColumns(int k, INQRectMatrix& out) const override;
  bool ShiftRows(int k, INQRectMatrix& out) const override;
  // Row and column a of this square matrix go to the a-th member of the set; the rows and columns
  // of the others are zero.
  bool ExpandSquare(const NQBitSet& set, NQRectMatrix& out) const;
  // indices[j] = the rows in which column j is stored, values[j] = its values there.
  bool GetSparseMatrixColumns(std::vector<std::vector<int>>& indices,
                              std::vector<std::vector<double>>& values) const;
  // out = the dense expansion.
  bool CreateFullMatrix(NQRectMatrix& out) const;

  // ---- Norms and products (NQSparseRectMatrix_product.cpp) -------------------------------------

  double ColNorm(int j) const override;
  double RowNorm(int i) const override;
  bool ComputeMatrixProduct(const INQRectMatrix& b, INQRectMatrix& out) const override;
  bool ComputeProductMatrixTrans(const INQRectMatrix& b, INQRectMatrix& out) const override;
  bool ComputeRV(const std::vector<double>& v, std::vector<double>& out) const override;
  bool ComputeVR(const std::vector<double>& v, std::vector<double>& out) const override;
  double DotProductCol(int j1, int j2) const override;
  double DotProductRowCol(int i, const INQRectMatrix& b, int j) const override;
  double DotProductRowRow(int i, const INQRectMatrix& b, int k) const override;

 private:
  static std::size_t At(int i) { return static_cast<std::size_t>(i); }
  std::size_t Entries() const { return At(fNEntries); }
  bool HasRow(int i) const { return i >= 0 && i < fNRows; }
  bool HasCol(int j) const { return j >= 0 && j < fNCols; }
  bool Fail();
  bool Reserve(int capacity);
  // Assemble puts at most k entries, displaced to the left by `start`, in the scratch row, and
  // PutAssembled the scratch row in row i. Store does both.
  void Assemble(const internal::SparseRun& run, int start);
  void PutAssembled(int i);
  void Store(int i, const internal::SparseRun& run, int start);
  template <class Run>
  bool StoreWhatFits(int i, const Run& run);
  int AppendRow(const internal::SparseRun& run, int start);
  template <class Place>
  bool Scatter(long long m, long long n, INQRectMatrix& out, Place place) const;
};

}  // namespace NQMath_940
