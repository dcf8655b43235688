#pragma once

#include <vector>

#include <nqcommon/export.h>

namespace NQMath_940 {

class NQSparseVector;

// Rectangular matrix R of m rows and n columns, whatever its storage: dense or sparse.
//
// Names     R is this matrix, r(i,j) its elements; B another one; v, w vectors; "Trans" transposed.
// Indices   0-based. GetElem and SetElem are not range-checked (they assert in debug builds); the
//           other operations refuse a row or column that does not exist.
// Failure   by return value. Unless stated, false means that an argument did not fit, or that
//           memory ended, and that nothing was changed; an operation that returns a number gives
//           the system-missing value. Nothing throws.
// Output    `out` gets the shape it needs and must be dense (GetMatrixType() 0), or is refused. It
//           may be any of the arguments, or this.
// Threads   one object, one thread at a time.
//
// The virtual operations are declared in a fixed order, the library's binary interface. Those that
// are the same for every storage have a body here (INQRectMatrix.cpp), through the other
// operations.
class NQ_API INQRectMatrix {
 public:
  virtual ~INQRectMatrix();

  // ---- Shape and elements ----------------------------------------------------------------------

  // The type of storage: 0 dense (NQRectMatrix), 1 sparse (NQSparseRectMatrix).
  virtual int GetMatrixType() const = 0;
  // False after an allocation that failed; m and n are then -1.
  virtual bool IsValidMatrix() const = 0;

  // m and n.
  virtual int GetNRows() const = 0;
  virtual int GetNCols() const = 0;

  // r(i, j), not range-checked.
  virtual double GetElem(int i, int j) const = 0;
  // out = row i, n values, or column j, m values.
  virtual bool GetRow(int i, std::vector<double>& out) const = 0;
  virtual bool GetCol(int j, std::vector<double>& out) const;
  // One more row, of zeros. Returns the new m; -1 when there is no storage for it, the matrix then
  // being invalid.
  virtual int AddRow() = 0;
  // One more row, v. -1, nothing changed, when v is not valid or has an index past the last column.
  virtual int AddRow(const NQSparseVector& v) = 0;
  // Makes all entries 0.
  virtual void Clear() = 0;

  // ---- Norms and products ----------------------------------------------------------------------

  // Euclidean norm of column j; no square overflows or underflows on the way.
  virtual double ColNorm(int j) const = 0;
  // out = R B.
  virtual bool ComputeMatrixProduct(const INQRectMatrix& b, INQRectMatrix& out) const = 0;
  // out = R B'.
  virtual bool ComputeProductMatrixTrans(const INQRectMatrix& b, INQRectMatrix& out) const = 0;
  // out = R v, and out = R' v, the row v' R.
  virtual bool ComputeRV(const std::vector<double>& v, std::vector<double>& out) const = 0;
  virtual bool ComputeVR(const std::vector<double>& v, std::vector<double>& out) const = 0;

  // ---- Copies and dot products -----------------------------------------------------------------

  // As GetCol.
  virtual bool CopyColToVec(int j, std::vector<double>& out) const;
  // R <- rows first .. first+count-1 of src.
  virtual bool CopyRows(const INQRectMatrix& src, int first, int count) = 0;
  // Row `to` of dst <- row `from` of R; both have n columns. dst may be sparse too, and must then
  // have slots for all that is not 0 in the row.
  virtual bool CopyRowToRow(int from, int to, INQRectMatrix& dst) const = 0;
  // out = k copies of R along the diagonal, k m x k n.
  virtual bool CreateBlockDiagonal(int k, INQRectMatrix& out) const = 0;
  // Column j1 times column j2, row i1 times row i2.
  virtual double DotProductCol(int j1, int j2) const = 0;
  virtual double DotProductRows(int i1, int i2) const;
  // Row i times column j, or row k, of B.
  virtual double DotProductRowCol(int i, const INQRectMatrix& b, int j) const = 0;
  virtual double DotProductRowRow(int i, const INQRectMatrix& b, int k) const = 0;
  // out(i, a) = r(i, indices[a]), and out(a, j) = r(indices[a], j); indices may repeat.
  virtual bool ExtractColumns(const std::vector<int>& indices, INQRectMatrix& out) const;
  virtual bool ExtractRows(const std::vector<int>& indices, INQRectMatrix& out) const;
  // v += factor x column j over the rows i = first .. first+count-1. With `wholeVector` v has m
  // values and element i is incremented; otherwise v has count values, and it is element i - first.
  virtual bool IncrVecByColumn(int j, std::vector<double>& v, int first, int count, double factor,
                               bool wholeVector) const;
  // Whether row i is all zeros (false for a bad i).
  virtual bool IsRowZero(int i) const = 0;

  // ---- Changes ---------------------------------------------------------------------------------

  // Shape max(m, 0) x max(n, 0). False, with m and n -1, when the storage could not be had.
  virtual bool Resize(int m, int n) = 0;
  // Euclidean norm of row i.
  virtual double RowNorm(int i) const = 0;
  // r(i, j) <- x. False where the structure has no such cell.
  virtual bool SetElem(int i, int j, double x) = 0;
  // As Resize, then all entries 0 when `clear` is set.
  virtual bool SetNRowsCols(int m, int n, bool clear);
  // Row i <- v. False too where a sparse matrix has not as many slots.
  virtual bool SetRow(int i, const NQSparseVector& v) = 0;
  // out has R's shape: out(i, j + k) = r(i, j), and out(i + k, j) = r(i, j), as far as they are
  // inside, and 0 where nothing comes. k may be negative.
  virtual bool ShiftColumns(int k, INQRectMatrix& out) const = 0;
  virtual bool ShiftRows(int k, INQRectMatrix& out) const = 0;
  // r(i, first) .. r(i, first+count-1) <- 0.
  virtual bool ZeroOutRowPart(int i, int first, int count) = 0;

  // ---- Diagnostic display ----------------------------------------------------------------------

  virtual void Display() const = 0;
  // DisplayF displays every element.
  virtual void DisplayF() const;

 protected:
  INQRectMatrix() = default;
  INQRectMatrix(const INQRectMatrix&) = default;
  INQRectMatrix& operator=(const INQRectMatrix&) = default;
};

}  // namespace NQMath_940
