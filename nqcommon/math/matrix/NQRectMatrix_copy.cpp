#include <nqcommon/math/matrix/NQRectMatrix.h>

#include <algorithm>
#include <numeric>
#include <utility>

#include <nqcommon/math/matrix/internal/argument_checks.h>
#include <nqcommon/math/matrix/internal/matrix_access.h>
#include <nqcommon/math/matrix/internal/sparse_run.h>

namespace NQMath_940 {

using internal::AllBelow;
using internal::AsDenseRect;
using internal::Displaced;
using internal::IsRun;
using internal::Make;
using internal::MembersOf;

namespace {

std::vector<int> Run(int first, int count) {
  std::vector<int> indices(static_cast<std::size_t>(count));
  std::iota(indices.begin(), indices.end(), first);
  return indices;
}

// to(i, j) <- from(rows[i], columns[j]).
void Gather(const INQRectMatrix& from, const std::vector<int>& rows,
            const std::vector<int>& columns, NQRectMatrix& to) {
  std::vector<double> row;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    from.GetRow(rows[i], row);
    double* target = to.GetRowPtr(static_cast<int>(i));
    for (int j : columns) *target++ = row[static_cast<std::size_t>(j)];
  }
}

// to(rows[i], columns[j]) <- from(i, j).
void Spread(const NQRectMatrix& from, const std::vector<int>& rows, const std::vector<int>& columns,
            NQRectMatrix& to) {
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const double* row = from.GetRowPtr(static_cast<int>(i));
    for (int j : columns) to.SetElem(rows[i], j, *row++);
  }
}

}  // namespace

// ---- One row or column -------------------------------------------------------------------------

bool NQRectMatrix::GetRow(int i, std::vector<double>& out) const {
  if (!HasRow(i)) return false;
  out.assign(GetRowPtr(i), GetRowPtr(i) + fNCols);
  return true;
}

bool NQRectMatrix::GetCol(int j, std::vector<double>& out) const {
  if (!HasCol(j)) return false;
  out.resize(Rows());
  for (int i = 0; i < fNRows; ++i) out[static_cast<std::size_t>(i)] = GetElem(i, j);
  return true;
}

bool NQRectMatrix::SetRow(int i, const NQSparseVector& v) {
  if (!HasRow(i) || !internal::FitsIn(v, Cols())) return false;
  double* row = GetRowPtr(i);
  std::fill_n(row, fNCols, 0.0);
  internal::RunOf(v).ForEach([row](std::size_t j, double x) { row[j] = x; });
  return true;
}

bool NQRectMatrix::CopyColToVec(int j, std::vector<double>& out) const { return GetCol(j, out); }

bool NQRectMatrix::CopyRowToRow(int from, int to, INQRectMatrix& dst) const {
  if (!HasRow(from) || to < 0 || to >= dst.GetNRows() || dst.GetNCols() != fNCols) return false;
  const double* row = GetRowPtr(from);
  if (NQRectMatrix* dense = AsDenseRect(dst)) {
    if (dense != this || to != from) std::copy_n(row, fNCols, dense->GetRowPtr(to));
    return true;
  }
  std::vector<int> indices;
  std::vector<double> values;
  for (int j = 0; j < fNCols; ++j) {
    if (row[j] == 0) continue;
    indices.push_back(j);
    values.push_back(row[j]);
  }
  return indices.empty() ? dst.ZeroOutRowPart(to, 0, fNCols)
                         : dst.SetRow(to, NQSparseVector(indices, values));
}

bool NQRectMatrix::CopyColToCol(int from, int to, NQRectMatrix& dst) const {
  if (!HasCol(from) || !dst.HasCol(to) || dst.fNRows != fNRows) return false;
  for (int i = 0; i < fNRows; ++i) dst.SetElem(i, to, GetElem(i, from));
  return true;
}

bool NQRectMatrix::CopyColToRow(int from, int to, NQRectMatrix& dst) const {
  std::vector<double> column;
  if (!dst.HasRow(to) || dst.fNCols != fNRows || !GetCol(from, column)) return false;
  std::copy(column.begin(), column.end(), dst.GetRowPtr(to));
  return true;
}

// ---- Rows and columns by index -----------------------------------------------------------------

bool NQRectMatrix::CopyRows(const INQRectMatrix& src, int first, int count) {
  return src.IsValidMatrix() && IsRun(src.GetNRows(), first, count) &&
         Make(count, src.GetNCols(), this, [&](NQRectMatrix& result) {
           Gather(src, Run(first, count), Run(0, src.GetNCols()), result);
         });
}

bool NQRectMatrix::CopyColumns(const INQRectMatrix& src, int first, int count) {
  return src.IsValidMatrix() && IsRun(src.GetNCols(), first, count) &&
         Make(src.GetNRows(), count, this, [&](NQRectMatrix& result) {
           Gather(src, Run(0, src.GetNRows()), Run(first, count), result);
         });
}

bool NQRectMatrix::ExtractColumns(const std::vector<int>& indices, INQRectMatrix& out) const {
  return AllBelow(fNCols, indices) && IsValidMatrix() &&
         Make(fNRows, static_cast<long long>(indices.size()), AsDenseRect(out),
              [&](NQRectMatrix& result) { Gather(*this, Run(0, fNRows), indices, result); });
}

bool NQRectMatrix::ExtractRows(const std::vector<int>& indices, INQRectMatrix& out) const {
  return AllBelow(fNRows, indices) && IsValidMatrix() &&
         Make(static_cast<long long>(indices.size()), fNCols, AsDenseRect(out),
              [&](NQRectMatrix& result) { Gather(*this, indices, Run(0, fNCols), result); });
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
    for (int b = 0; b < k; ++b)
      Spread(*this, Run(b * fNRows, fNRows), Run(b * fNCols, fNCols), result);
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
           Spread(*this, MembersOf(rows), MembersOf(columns), result);
         });
}

bool NQRectMatrix::ExpandSquare(const NQBitSet& set, NQRectMatrix& out) const {
  return ExpandRectangular(set, set, out);
}

}  // namespace NQMath_940
