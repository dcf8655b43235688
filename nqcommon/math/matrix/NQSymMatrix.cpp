#include <nqcommon/math/matrix/NQSymMatrix.h>

#include <algorithm>
#include <cassert>
#include <cmath>

#include <nqcommon/common/display.h>
#include <nqcommon/common/memory_guard.h>
#include <nqcommon/math/kernels/packed_triangle.h>
#include <nqcommon/math/kernels/scaling.h>
#include <nqcommon/math/kernels/strided.h>
#include <nqcommon/math/matrix/internal/argument_checks.h>
#include <nqcommon/math/matrix/internal/matrix_casts.h>

namespace NQMath_940 {

using namespace internal;
using NQCommon_940::GuardMemory;

// ---- Life cycle and shape -----------------------------------------------------------------------

// Storage that is new is zero, so the constructors have nothing to do for `zero`.
NQSymMatrix::NQSymMatrix(int n, bool /*zero*/) { NQSymMatrix::Resize(n); }

NQSymMatrix::NQSymMatrix(int nBlocks, int blockSize, bool /*zero*/) {
  const bool some = nBlocks >= 1 && blockSize >= 1;
  fNBlocks = some ? nBlocks : 0;
  fBlockSize = some ? blockSize : 0;
  const long long n = static_cast<long long>(fNBlocks) * fBlockSize;
  fNRows = FitsInt(n) ? static_cast<int>(n) : -1;
  Allocate();
}

bool NQSymMatrix::Resize(int n) {
  fNRows = std::max(n, 0);
  fNBlocks = 1;
  fBlockSize = fNRows;
  return Allocate();
}

bool NQSymMatrix::SetNRows(int n, bool clear) {
  const bool resized = Resize(n);
  if (n < 0) fNBlocks = 0;
  if (resized && clear) Clear();
  return resized;
}

bool NQSymMatrix::SetNBlocks(int nb) {
  if (nb < 1 || fNRows < 1 || fNRows % nb != 0) return false;
  fNBlocks = nb;
  fBlockSize = fNRows / nb;
  return true;
}

// ---- Elements and rows --------------------------------------------------------------------------

namespace {

std::size_t PositionOf(int i, int j) {
  assert(i >= 0 && j >= 0);
  return SymIndex(static_cast<std::size_t>(i), static_cast<std::size_t>(j));
}

}  // namespace

double NQSymMatrix::GetElem(int i, int j) const {
  assert(HasRow(i) && HasRow(j));
  return fvData[PositionOf(i, j)];
}

bool NQSymMatrix::SetElem(int i, int j, double x) {
  assert(HasRow(i) && HasRow(j));
  fvData[PositionOf(i, j)] = x;
  return true;
}

double NQSymMatrix::GetElem(int bi, int bj, int k, int l) const {
  return GetElem(bi * fBlockSize + k, bj * fBlockSize + l);
}

double NQSymMatrix::GetElem(int k) const {
  assert(k >= 0 && static_cast<std::size_t>(k) < fvData.size());
  return fvData[static_cast<std::size_t>(k)];
}

bool NQSymMatrix::SetElem(std::ptrdiff_t k, double x) {
  if (k < 0 || static_cast<std::size_t>(k) >= fvData.size()) return false;
  fvData[static_cast<std::size_t>(k)] = x;
  return true;
}

bool NQSymMatrix::GetRow(int i, std::vector<double>& out) const {
  if (!HasRow(i) || !GuardMemory([&] { out.resize(Order()); })) return false;
  ForEachInRow(fvData.data(), Order(), static_cast<std::size_t>(i),
               [&](std::size_t j, double s) { out[j] = s; });
  return true;
}

bool NQSymMatrix::PutRow(int i, const std::vector<double>& v) {
  if (!HasRow(i) || v.size() != Order()) return false;
  ForEachInRow(fvData.data(), Order(), static_cast<std::size_t>(i),
               [&](std::size_t j, double& s) { s = v[j]; });
  return true;
}

bool NQSymMatrix::SetRowColToConst(int i, double x) {
  if (!HasRow(i)) return false;
  ForEachInRow(fvData.data(), Order(), static_cast<std::size_t>(i),
               [x](std::size_t, double& s) { s = x; });
  return true;
}

bool NQSymMatrix::IncrVecByRow(int i, std::vector<double>& v, double factor) const {
  if (!HasRow(i) || v.size() != Order()) return false;
  ForEachInRow(fvData.data(), Order(), static_cast<std::size_t>(i),
               [&](std::size_t j, double s) { v[j] += factor * s; });
  return true;
}

bool NQSymMatrix::IsZeroRow(int i, const NQBitSet& set) const {
  if (!HasRow(i)) return false;
  bool zero = true;
  ForEachInRow(fvData.data(), Order(), static_cast<std::size_t>(i), [&](std::size_t j, double s) {
    if (s != 0 && set.IsIn(static_cast<int>(j))) zero = false;
  });
  return zero;
}

// ---- Mechanical operations ----------------------------------------------------------------------

namespace {

// Calls f(i, j, element) for every element below the diagonal.
template <class Packed, class F>
void ForEachOffDiag(Packed* s, std::size_t n, F f) {
  for (std::size_t i = 1; i < n; ++i) {
    Packed* row = s + RowStart(i);
    for (std::size_t j = 0; j < i; ++j) f(i, j, row[j]);
  }
}

}  // namespace

void NQSymMatrix::Clear() { std::fill(fvData.begin(), fvData.end(), 0.0); }

void NQSymMatrix::ChangeSign() {
  for (double& s : fvData) s = 0 - s;  // a zero stays 0, where -s would make it -0
}

void NQSymMatrix::MultiplyByNumber(double x) {
  for (double& s : fvData) s *= x;
}

bool NQSymMatrix::ComputeAXpY(double a, const INQSymMatrix& x) {
  if (x.GetNRows() != fNRows || !IsValidMatrix()) return false;
  if (const NQSymMatrix* dense = AsDenseSym(x)) {
    AddScaled(fvData.size(), a, dense->fvData.data(), fvData.data());
    return true;
  }
  for (int i = 0; i < fNRows; ++i) {
    for (int j = 0; j <= i; ++j) fvData[PositionOf(i, j)] += a * x.GetElem(i, j);
  }
  return true;
}

bool NQSymMatrix::AddToDiagonalPart(int first, int count, double x) {
  if (!IsRun(fNRows, first, count)) return false;
  for (int i = first; i < first + count; ++i) fvData[PositionOf(i, i)] += x;
  return true;
}

void NQSymMatrix::MaxMinDiagOffDiag(double& maxDiag, double& minDiag, double& maxOff,
                                    double& minOff) const {
  MaxMinDiag(maxDiag, minDiag);
  Extremes off;
  ForEachOffDiag(fvData.data(), Order(), [&](std::size_t, std::size_t, double s) { off.Add(s); });
  maxOff = off.Max();
  minOff = off.Min();
}

void NQSymMatrix::GetNCheckDiagonalOld(std::vector<double>& out, double a, double b) const {
  GetDiagonal(out);
  const double threshold = a * LargestFromZero(out);
  for (double& x : out) {
    if (!(x > threshold)) x = b;
  }
}

void NQSymMatrix::ZeroOutNonDiag(double eps) {
  if (!(eps > 0)) return;
  const auto sizeOf = [this](std::size_t i) { return std::fabs(fvData[DiagIndex(i)]); };
  ForEachOffDiag(fvData.data(), Order(), [&](std::size_t i, std::size_t j, double& s) {
    if (std::fabs(s) <= eps * GeometricMean(sizeOf(i), sizeOf(j))) s = 0;
  });
}

void NQSymMatrix::ZeroOutAllSmall(double eps) {
  double largest = 0;
  for (std::size_t i = 0; i < Order(); ++i)
    largest = std::max(largest, std::fabs(fvData[DiagIndex(i)]));
  for (double& s : fvData) {
    if (std::fabs(s) < eps * largest) s = 0;
  }
}

void NQSymMatrix::ZeroOutRowsForSmallDiag(double eps) {
  if (!(eps > 0)) return;
  double running = 0;
  for (int i = 0; i < fNRows; ++i) {
    const double size = std::fabs(GetElem(i, i));
    running = std::max(running, size);
    if (running == 0 || size / running < eps) ZeroOut(i);
  }
}

bool NQSymMatrix::ReplaceDiagZeroes(double x) {
  if (x < 0) return false;
  double max = 0, min = 0;
  MaxMinDiag(max, min);
  if (max <= 0) return false;
  for (std::size_t i = 0; i < Order(); ++i) {
    double& s = fvData[DiagIndex(i)];
    if (s <= 0 || s / max <= x) s = max;
  }
  return true;
}

bool NQSymMatrix::AdjustOffDiagCorr(double x) {
  if (!(x >= 0 && x < 1)) return false;
  ForEachOffDiag(fvData.data(), Order(), [x](std::size_t, std::size_t, double& s) {
    if (s >= 1) {
      s = 1 - x;
    } else if (s <= -1) {
      s = -(1 - x);
    }
  });
  return true;
}

// ---- Diagnostic display -------------------------------------------------------------------------

void NQSymMatrix::Display() const {
  GuardMemory([this] {
    NQDisplay_940::DisplayText(1, "NQSymMatrix display start");
    NQDisplay_940::DisplayI("The number of rows", fNRows);
    NQDisplay_940::DisplayI("The number of blocks", fNBlocks);
    NQDisplay_940::DisplayI("The block size", fBlockSize);
    NQDisplay_940::DisplayText(1, "Lower triangular");
    const double* row = fvData.data();
    for (int i = 0; i < fNRows; row += ++i) NQDisplay_940::DisplayDAS(row, i + 1);
    NQDisplay_940::DisplayText(1, "NQSymMatrix display end");
  });
}

}  // namespace NQMath_940
