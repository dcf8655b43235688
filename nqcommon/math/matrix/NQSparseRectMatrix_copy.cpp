#include <nqcommon/math/matrix/NQSparseRectMatrix.h>

#include <algorithm>
#include <utility>

#include <nqcommon/common/memory_guard.h>
#include <nqcommon/math/matrix/internal/matrix_results.h>
#include <nqcommon/math/matrix/internal/sparse_run.h>

namespace NQMath_940 {

using namespace internal;
using NQCommon_940::GuardMemory;

// ---- Rows and columns --------------------------------------------------------------------------

bool NQSparseRectMatrix::ExtractLastCol(std::vector<double>& out) const {
  return GetCol(fNCols - 1, out);
}

bool NQSparseRectMatrix::CopyColToRow(int from, int to, NQRectMatrix& dst) const {
  double* row = dst.GetRowPtr(to);
  if (!HasCol(from) || !row || dst.GetNCols() != fNRows) return false;
  for (int i = 0; i < fNRows; ++i) row[i] = GetElem(i, from);
  return true;
}

// StoreWhatFits puts the entries in row i, leaving out those that are 0 where there are more than
// k. False when more than k are not 0. The entries may be those of row i itself.
template <class Run>
bool NQSparseRectMatrix::StoreWhatFits(int i, const Run& run) {
  const bool all = run.count <= Entries();
  std::size_t kept = all ? run.count : 0;
  run.ForEach([&](std::size_t, double x) { kept += !all && x != 0; });
  if (kept > Entries()) return false;
  std::size_t at = Entries() - kept;
  Assemble({nullptr, nullptr, 0}, 0);
  run.ForEach([&](std::size_t j, double x) {
    if (!all && x == 0) return;
    fvRowIndices[at] = static_cast<int>(j);
    fvRowElems[at++] = x;
  });
  PutAssembled(i);
  return true;
}

namespace {

// All columns of a dense row as entries.
struct DenseRun {
  const double* values;
  std::size_t count;

  template <class F>
  void ForEach(F f) const {
    for (std::size_t j = 0; j < count; ++j) f(j, values[j]);
  }
};

}  // namespace

bool NQSparseRectMatrix::CopyRows(const INQRectMatrix& src, int first, int count) {
  if (fNRows < 0 || !src.IsValidMatrix() || !IsRun(src.GetNRows(), first, count) ||
      src.GetNCols() < fNEntries)
    return false;
  const NQSparseRectMatrix* sparse = AsSparse(src);
  const NQRectMatrix* dense = AsDenseRect(src);
  const std::size_t n = At(src.GetNCols());
  NQSparseRectMatrix result(std::max(count, 1), src.GetNCols(), fNEntries);
  if (!result.IsValidMatrix()) return false;
  if (sparse && sparse->fNEntries == fNEntries) {
    const auto from = static_cast<std::ptrdiff_t>(At(first) * Entries());
    std::copy_n(sparse->fvElems.begin() + from, At(count) * Entries(), result.fvElems.begin());
    std::copy_n(sparse->fvIndices.begin() + from, At(count) * Entries(), result.fvIndices.begin());
    result.fNRows = count;
  }
  while (result.fNRows < count) {
    const int i = first + result.fNRows, to = result.fNRows++;
    const bool fits = sparse ? result.StoreWhatFits(to, StoredIn(*sparse, i))
                             : result.StoreWhatFits(to, DenseRun{dense->GetRowPtr(i), n});
    if (!fits) return false;
  }
  *this = std::move(result);
  return true;
}

bool NQSparseRectMatrix::CopyRowToRow(int from, int to, INQRectMatrix& dst) const {
  if (!HasRow(from) || to < 0 || to >= dst.GetNRows() || dst.GetNCols() != fNCols) return false;
  const SparseRun run = StoredIn(*this, from);
  if (NQSparseRectMatrix* sparse = AsSparse(dst)) return sparse->StoreWhatFits(to, run);
  double* row = AsDenseRect(dst)->GetRowPtr(to);
  std::fill_n(row, fNCols, 0.0);
  run.ForEach([row](std::size_t j, double x) { row[j] = x; });
  return true;
}

bool NQSparseRectMatrix::GetSparseMatrixColumns(std::vector<std::vector<int>>& indices,
                                                std::vector<std::vector<double>>& values) const {
  return IsValidMatrix() && GuardMemory([&] {
           std::vector<std::vector<int>> rows(At(fNCols));
           std::vector<std::vector<double>> columns(At(fNCols));
           for (int i = 0; i < fNRows; ++i) {
             StoredIn(*this, i).ForEach([&](std::size_t j, double x) {
               rows[j].push_back(i);
               columns[j].push_back(x);
             });
           }
           indices = std::move(rows);
           values = std::move(columns);
         });
}

// ---- Dense copies ------------------------------------------------------------------------------

// Scatter makes `out` m x n zeros, in which place(out, i, j, x) puts every stored entry.
template <class Place>
bool NQSparseRectMatrix::Scatter(long long m, long long n, INQRectMatrix& out, Place place) const {
  return IsValidMatrix() && Make(m, n, AsDenseRect(out), [&](NQRectMatrix& result) {
           for (int i = 0; i < fNRows; ++i) {
             StoredIn(*this, i).ForEach(
                 [&](std::size_t j, double x) { place(result, i, static_cast<int>(j), x); });
           }
         });
}

bool NQSparseRectMatrix::CreateFullMatrix(NQRectMatrix& out) const {
  return Scatter(fNRows, fNCols, out,
                 [](NQRectMatrix& to, int i, int j, double x) { to.SetElem(i, j, x); });
}

bool NQSparseRectMatrix::CreateBlockDiagonal(int k, INQRectMatrix& out) const {
  const auto m = static_cast<long long>(k) * fNRows, n = static_cast<long long>(k) * fNCols;
  return k >= 0 && Scatter(m, n, out, [&](NQRectMatrix& to, int i, int j, double x) {
           for (int b = 0; b < k; ++b) to.SetElem(b * fNRows + i, b * fNCols + j, x);
         });
}

bool NQSparseRectMatrix::ShiftColumns(int k, INQRectMatrix& out) const {
  return Scatter(fNRows, fNCols, out, [&](NQRectMatrix& to, int i, int j, double x) {
    const long long column = static_cast<long long>(j) + k;
    if (column >= 0 && column < fNCols) to.SetElem(i, static_cast<int>(column), x);
  });
}

bool NQSparseRectMatrix::ShiftRows(int k, INQRectMatrix& out) const {
  return Scatter(fNRows, fNCols, out, [&](NQRectMatrix& to, int i, int j, double x) {
    const long long row = static_cast<long long>(i) + k;
    if (row >= 0 && row < fNRows) to.SetElem(static_cast<int>(row), j, x);
  });
}

bool NQSparseRectMatrix::ExpandSquare(const NQBitSet& set, NQRectMatrix& out) const {
  return fNRows == fNCols && set.InSet() == fNRows && GuardMemory(false, [&] {
           const std::vector<int> members = MembersOf(set);
           return Scatter(set.Size(), set.Size(), out,
                          [&](NQRectMatrix& to, int i, int j, double x) {
                            to.SetElem(members[At(i)], members[At(j)], x);
                          });
         });
}

// ---- Sparse parts ------------------------------------------------------------------------------

bool NQSparseRectMatrix::ExtractSubSparseRectMat(int firstRow, int nRows, int firstCol, int nCols,
                                                 NQSparseRectMatrix& out) const {
  if (!IsValidMatrix() || !IsRun(fNRows, firstRow, nRows) || !IsRun(fNCols, firstCol, nCols) ||
      nCols < 1)
    return false;
  NQSparseRectMatrix result(std::max(nRows, 1), nCols, std::min(fNEntries, nCols));
  if (!result.IsValidMatrix()) return false;
  for (int i = firstRow; i < firstRow + nRows; ++i) {
    const SparseRun run = StoredIn(*this, i);
    const int* end = run.indices + run.count;
    const int* from = std::lower_bound(run.indices, end, firstCol);
    const auto count =
        static_cast<std::size_t>(std::lower_bound(from, end, firstCol + nCols) - from);
    result.Store(result.fNRows++, {from, run.values + (from - run.indices), count}, firstCol);
  }
  out = std::move(result);
  return true;
}

}  // namespace NQMath_940
