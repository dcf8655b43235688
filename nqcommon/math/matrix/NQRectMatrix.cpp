#include <nqcommon/math/matrix/NQRectMatrix.h>

#include <algorithm>
#include <cassert>
#include <cmath>
#include <limits>
#include <utility>

#include <nqcommon/common/NQMV.h>
#include <nqcommon/common/display.h>
#include <nqcommon/common/memory_guard.h>
#include <nqcommon/math/kernels/strided.h>
#include <nqcommon/math/matrix/internal/argument_checks.h>
#include <nqcommon/math/matrix/internal/sparse_run.h>

namespace NQMath_940 {

using internal::Index;
using NQCommon_940::NQMV;

// ---- Life cycle and shape ----------------------------------------------------------------------

// New storage is zero, so the constructor has nothing to do for `zero`.
NQRectMatrix::NQRectMatrix(int m, int n, bool /*zero*/) { NQRectMatrix::Resize(m, n); }

bool NQRectMatrix::Resize(int m, int n) {
  fNRows = std::max(m, 0);
  fNCols = std::max(n, 0);
  return Allocate();
}

namespace {

constexpr int kMostLines = std::numeric_limits<int>::max();

}  // namespace

int NQRectMatrix::AddRow() {
  if (!IsValidMatrix() || fNRows == kMostLines) return -1;
  ++fNRows;
  Allocate();
  return fNRows;
}

int NQRectMatrix::AddRow(const NQSparseVector& v) {
  if (!IsValidMatrix() || !internal::FitsIn(v, Cols()) || AddRow() < 0) return -1;
  SetRow(fNRows - 1, v);
  return fNRows;
}

// AddColumn moves rows from the last one up, so that no entry is overwritten before it has moved.
int NQRectMatrix::AddColumn() {
  if (!IsValidMatrix() || fNCols == kMostLines) return -1;
  const std::size_t old = Cols();
  ++fNCols;
  if (!Allocate()) return -1;
  for (std::size_t i = Rows(); i-- > 0;) {
    double* row = fvData.data() + i * Cols();
    const double* from = fvData.data() + i * old;
    if (i > 0) std::copy_backward(from, from + old, row + old);
    row[old] = 0;
  }
  return fNCols;
}

bool NQRectMatrix::DeleteOneRow(int i) {
  if (!HasRow(i)) return false;
  double* row = GetRowPtr(i);
  std::copy(row + Cols(), fvData.data() + fvData.size(), row);
  return Resize(fNRows - 1, fNCols);
}

bool NQRectMatrix::DeleteOneCol(int j) {
  if (!HasCol(j)) return false;
  double* to = fvData.data();
  for (int i = 0; i < fNRows; ++i) {
    const double* row = GetRowPtr(i);
    to = std::copy(row, row + j, to);
    to = std::copy(row + j + 1, row + fNCols, to);
  }
  return Resize(fNRows, fNCols - 1);
}

bool NQRectMatrix::Transpose() {
  NQRectMatrix transpose(fNCols, fNRows, false);
  if (!IsValidMatrix() || !transpose.IsValidMatrix()) return false;
  double* to = transpose.fvData.data();
  for (int j = 0; j < fNCols; ++j) {
    for (std::size_t i = 0; i < Rows(); ++i)
      *to++ = fvData[i * Cols() + static_cast<std::size_t>(j)];
  }
  *this = std::move(transpose);
  return true;
}

// ---- Elements ----------------------------------------------------------------------------------

double NQRectMatrix::GetElem(int i, int j) const {
  assert(HasRow(i) && HasCol(j));
  return fvData[static_cast<std::size_t>(i) * Cols() + static_cast<std::size_t>(j)];
}

bool NQRectMatrix::SetElem(int i, int j, double x) {
  assert(HasRow(i) && HasCol(j));
  fvData[static_cast<std::size_t>(i) * Cols() + static_cast<std::size_t>(j)] = x;
  return true;
}

double* NQRectMatrix::GetRowPtr(int i) {
  return HasRow(i) ? fvData.data() + static_cast<std::size_t>(i) * Cols() : nullptr;
}

const double* NQRectMatrix::GetRowPtr(int i) const {
  return HasRow(i) ? fvData.data() + static_cast<std::size_t>(i) * Cols() : nullptr;
}

double* NQRectMatrix::GetColPtr(int j) {
  return HasCol(j) && fNRows > 0 ? fvData.data() + j : nullptr;
}

const double* NQRectMatrix::GetColPtr(int j) const {
  return HasCol(j) && fNRows > 0 ? fvData.data() + j : nullptr;
}

// ---- Norms, tests and mechanical operations ----------------------------------------------------

void NQRectMatrix::Clear() { std::fill(fvData.begin(), fvData.end(), 0.0); }

double NQRectMatrix::ColNorm(int j) const {
  return HasCol(j) ? internal::Nrm2(fNRows, GetColPtr(j), fNCols) : NQMV::Missing();
}

double NQRectMatrix::RowNorm(int i) const {
  return HasRow(i) ? internal::Nrm2(fNCols, GetRowPtr(i), 1) : NQMV::Missing();
}

namespace {

bool AreZero(Index n, const double* x, Index inc) {
  bool zero = true;
  internal::Visit(n, x, inc, [&zero](double xk) { zero = zero && xk == 0; });
  return zero;
}

}  // namespace

bool NQRectMatrix::IsRowZero(int i) const { return HasRow(i) && AreZero(fNCols, GetRowPtr(i), 1); }

bool NQRectMatrix::IsColZero(int j) const {
  return HasCol(j) && AreZero(fNRows, GetColPtr(j), fNCols);
}

void NQRectMatrix::AddToDiagonal(double x) {
  for (int i = 0; i < std::min(fNRows, fNCols); ++i) SetElem(i, i, GetElem(i, i) + x);
}

bool NQRectMatrix::ZeroOutCol(int j) {
  if (!HasCol(j)) return false;
  internal::Fill(fNRows, 0.0, GetColPtr(j), fNCols);
  return true;
}

bool NQRectMatrix::ZeroOutRowPart(int i, int first, int count) {
  if (!HasRow(i) || !internal::IsRun(fNCols, first, count)) return false;
  std::fill_n(GetRowPtr(i) + first, count, 0.0);
  return true;
}

bool NQRectMatrix::ColScale(int j, double x) {
  if (!HasCol(j)) return false;
  internal::Visit(Index{fNRows}, GetColPtr(j), Index{fNCols}, [x](double& r) { r *= x; });
  return true;
}

bool NQRectMatrix::ColClean(int j, double eps) {
  if (!HasCol(j) || !(eps >= 0)) return false;
  internal::Visit(Index{fNRows}, GetColPtr(j), Index{fNCols}, [eps](double& r) {
    if (std::fabs(r) <= eps) r = 0;
  });
  return true;
}

long long NQRectMatrix::CheckForOnes(double eps) {
  if (!(eps >= 0)) return -1;
  long long ones = 0;
  for (double& r : fvData) {
    if (!(std::fabs(std::fabs(r) - 1) <= eps)) continue;
    r = std::copysign(1.0, r);
    ++ones;
  }
  return ones;
}

// ---- Diagnostic display ------------------------------------------------------------------------

void NQRectMatrix::Display() const {
  NQCommon_940::GuardMemory([&] {
    NQDisplay_940::DisplayText(1, "NQRectMatrix display start");
    NQDisplay_940::DisplayI("The number of rows", fNRows);
    NQDisplay_940::DisplayI("The number of columns", fNCols);
    for (int i = 0; i < fNRows; ++i) NQDisplay_940::DisplayDAS(GetRowPtr(i), fNCols);
    NQDisplay_940::DisplayText(1, "NQRectMatrix display end");
  });
}

}  // namespace NQMath_940
