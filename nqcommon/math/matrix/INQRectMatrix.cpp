// What is the same for every storage of a rectangular matrix.
#include <nqcommon/math/matrix/INQRectMatrix.h>

#include <cstddef>

#include <nqcommon/common/memory_guard.h>
#include <nqcommon/math/matrix/internal/argument_checks.h>
#include <nqcommon/math/matrix/internal/display_rows.h>
#include <nqcommon/math/matrix/internal/matrix_results.h>

namespace NQMath_940 {

using namespace internal;

INQRectMatrix::~INQRectMatrix() = default;

bool INQRectMatrix::SetNRowsCols(int m, int n, bool clear) {
  const bool resized = Resize(m, n);
  if (resized && clear) Clear();
  return resized;
}

bool INQRectMatrix::GetCol(int j, std::vector<double>& out) const {
  if (j < 0 || j >= GetNCols() || !NQCommon_940::GuardMemory([&] { out.resize(RowsOf(*this)); }))
    return false;
  for (int i = 0; i < GetNRows(); ++i) out[static_cast<std::size_t>(i)] = GetElem(i, j);
  return true;
}

bool INQRectMatrix::CopyColToVec(int j, std::vector<double>& out) const { return GetCol(j, out); }

bool INQRectMatrix::ExtractRows(const std::vector<int>& indices, INQRectMatrix& out) const {
  return IsValidMatrix() && AllBelow(GetNRows(), indices) &&
         Make(static_cast<long long>(indices.size()), GetNCols(), AsDenseRect(out),
              [&](NQRectMatrix& result) {
                int to = 0;
                for (int i : indices) CopyRowToRow(i, to++, result);
              });
}

bool INQRectMatrix::ExtractColumns(const std::vector<int>& indices, INQRectMatrix& out) const {
  NQRectMatrix row(1, GetNCols(), false);
  return IsValidMatrix() && AllBelow(GetNCols(), indices) && row.IsValidMatrix() &&
         Make(GetNRows(), static_cast<long long>(indices.size()), AsDenseRect(out),
              [&](NQRectMatrix& result) {
                for (int i = 0; i < GetNRows(); ++i) {
                  CopyRowToRow(i, 0, row);
                  const double* from = row.GetRowPtr(0);
                  double* to = result.GetRowPtr(i);
                  for (int j : indices) *to++ = from[j];
                }
              });
}

double INQRectMatrix::DotProductRows(int i1, int i2) const {
  return DotProductRowRow(i1, *this, i2);
}

bool INQRectMatrix::IncrVecByColumn(int j, std::vector<double>& v, int first, int count,
                                    double factor, bool wholeVector) const {
  if (j < 0 || j >= GetNCols() || !IsRun(GetNRows(), first, count)) return false;
  if (v.size() != static_cast<std::size_t>(wholeVector ? GetNRows() : count)) return false;
  double* target = v.data() + (wholeVector ? first : 0);
  for (int i = first; i < first + count; ++i) *target++ += factor * GetElem(i, j);
  return true;
}

void INQRectMatrix::DisplayF() const {
  DisplayAllRows(GetMatrixType() == 0 ? "NQRectMatrix" : "NQSparseRectMatrix", *this);
}

}  // namespace NQMath_940
