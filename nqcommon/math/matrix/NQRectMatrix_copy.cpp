#include <nqcommon/math/matrix/NQRectMatrix.h>

#include <algorithm>
#include <cstddef>
#include <numeric>

#include <nqcommon/common/memory_guard.h>
#include <nqcommon/math/matrix/internal/argument_checks.h>
#include <nqcommon/math/matrix/internal/matrix_results.h>
#include <nqcommon/math/matrix/internal/sparse_run.h>

namespace NQMath_940 {

using namespace internal;
using NQCommon_940::GuardMemory;

// ---- One row or column -------------------------------------------------------------------------

bool NQRectMatrix::GetRow(int i, std::vector<double>& out) const {
  return HasRow(i) && GuardMemory([&] { out.assign(GetRowPtr(i), GetRowPtr(i) + fNCols); });
}

bool NQRectMatrix::SetRow(int i, const NQSparseVector& v) {
  if (!HasRow(i) || !FitsIn(v, Cols())) return false;
  double* row = GetRowPtr(i);
  std::fill_n(row, fNCols, 0.0);
  RunOf(v).ForEach([row](std::size_t j, double x) { row[j] = x; });
  return true;
}

bool NQRectMatrix::CopyRowToRow(int from, int to, INQRectMatrix& dst) const {
  if (!HasRow(from) || to < 0 || to >= dst.GetNRows() || dst.GetNCols() != fNCols) return false;
  const double* row = GetRowPtr(from);
  if (NQRectMatrix* dense = AsDenseRect(dst)) {
    if (dense != this || to != from) std::copy_n(row, fNCols, dense->GetRowPtr(to));
    return true;
  }
  return GuardMemory(false, [&] {
    std::vector<int> indices;
    std::vector<double> values;
    for (int j = 0; j < fNCols; ++j) {
      if (row[j] == 0) continue;
      indices.push_back(j);
      values.push_back(row[j]);
    }
    return indices.empty() ? dst.ZeroOutRowPart(to, 0, fNCols)
                           : dst.SetRow(to, NQSparseVector(indices, values));
  });
}

bool NQRectMatrix::CopyColToCol(int from, int to, NQRectMatrix& dst) const {
  if (!HasCol(from) || !dst.HasCol(to) || dst.fNRows != fNRows) return false;
  for (int i = 0; i < fNRows; ++i) dst.SetElem(i, to, GetElem(i, from));
  return true;
}

bool NQRectMatrix::CopyColToRow(int from, int to, NQRectMatrix& dst) const {
  if (!HasCol(from) || !dst.HasRow(to) || dst.fNCols != fNRows) return false;
  // In the matrix itself element (to, from) is read and written: written last.
  for (int i = 0; i < fNRows; ++i) {
    if (i != from) dst.SetElem(to, i, GetElem(i, from));
  }
  if (HasRow(from)) dst.SetElem(to, from, GetElem(from, from));
  return true;
}

// ---- Runs of rows and columns ------------------------------------------------------------------

bool NQRectMatrix::CopyRows(const INQRectMatrix& src, int first, int count) {
  return src.IsValidMatrix() && IsRun(src.GetNRows(), first, count) &&
         Make(count, src.GetNCols(), this, [&](NQRectMatrix& result) {
           for (int i = 0; i < count; ++i) src.CopyRowToRow(first + i, i, result);
         });
}

bool NQRectMatrix::CopyColumns(const INQRectMatrix& src, int first, int count) {
  return IsRun(src.GetNCols(), first, count) && GuardMemory(false, [&] {
           std::vector<int> columns(static_cast<std::size_t>(count));
           std::iota(columns.begin(), columns.end(), first);
           return src.ExtractColumns(columns, *this);
         });
}

// ---- Displaced, repeated, spread ---------------------------------------------------------------

bool NQRectMatrix::ShiftColumns(int k, INQRectMatrix& out) const {
  return IsValidMatrix() && Make(fNRows, fNCols, AsDenseRect(out), [&](NQRectMatrix& result) {
           const Displaced run(fNCols, k);
           for (int i = 0; i < fNRows; ++i)
             std::copy_n(GetRowPtr(i) + run.from, run.count, result.GetRowPtr(i) + run.to);
         });
}

bool NQRectMatrix::ShiftRows(int k, INQRectMatrix& out) const {
  return IsValidMatrix() && Make(fNRows, fNCols, AsDenseRect(out), [&](NQRectMatrix& result) {
           const Displaced run(fNRows, k);
           for (int i = 0; i < run.count; ++i)
             std::copy_n(GetRowPtr(run.from + i), fNCols, result.GetRowPtr(run.to + i));
         });
}

bool NQRectMatrix::CreateBlockDiagonal(int k, INQRectMatrix& out) const {
  if (k < 0 || !IsValidMatrix()) return false;
  const auto m = static_cast<long long>(k) * fNRows, n = static_cast<long long>(k) * fNCols;
  return Make(m, n, AsDenseRect(out), [&](NQRectMatrix& result) {
    for (int b = 0; b < k; ++b) {
      for (int i = 0; i < fNRows; ++i)
        std::copy_n(GetRowPtr(i), fNCols,
                    result.GetRowPtr(b * fNRows + i) + std::ptrdiff_t{b} * fNCols);
    }
  });
}

bool NQRectMatrix::Expand(const NQBitSet& set, bool byRows, NQRectMatrix& out) const {
  NQBitSet all(byRows ? fNCols : fNRows);
  all.Negate();
  return byRows ? ExpandRectangular(set, all, out) : ExpandRectangular(all, set, out);
}

bool NQRectMatrix::ExpandRectangular(const NQBitSet& rows, const NQBitSet& columns,
                                     NQRectMatrix& out) const {
  return rows.InSet() == fNRows && columns.InSet() == fNCols &&
         Make(rows.Size(), columns.Size(), &out, [&](NQRectMatrix& result) {
           const double* from = fvData.data();
           const std::vector<int> members = MembersOf(columns);
           for (int i : MembersOf(rows)) {
             for (int j : members) result.SetElem(i, j, *from++);
           }
         });
}

bool NQRectMatrix::ExpandSquare(const NQBitSet& set, NQRectMatrix& out) const {
  return ExpandRectangular(set, set, out);
}

}  // namespace NQMath_940
