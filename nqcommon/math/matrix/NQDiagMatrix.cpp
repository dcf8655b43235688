#include <nqcommon/math/matrix/NQDiagMatrix.h>

#include <algorithm>
#include <cassert>

#include <nqcommon/common/display.h>
#include <nqcommon/common/memory_guard.h>
#include <nqcommon/math/kernels/strided.h>
#include <nqcommon/math/matrix/internal/argument_checks.h>
#include <nqcommon/math/matrix/internal/matrix_casts.h>

namespace NQMath_940 {

using NQCommon_940::GuardMemory;

// ---- Life cycle and shape ----------------------------------------------------------------------

// Storage that is new is zero, so there is nothing to do for `zero`.
NQDiagMatrix::NQDiagMatrix(int n, bool /*zero*/) { NQDiagMatrix::Resize(n); }

NQDiagMatrix::NQDiagMatrix(const std::vector<double>& diagonal) {
  const auto n = static_cast<long long>(diagonal.size());
  fNRows = internal::FitsInt(n) ? static_cast<int>(n) : -1;
  if (Allocate()) std::copy(diagonal.begin(), diagonal.end(), fvData.begin());
}

bool NQDiagMatrix::Resize(int n) {
  fNRows = std::max(n, 0);
  return Allocate();
}

// ---- Elements and rows -------------------------------------------------------------------------

double NQDiagMatrix::GetElem(int i, int j) const {
  assert(HasRow(i) && HasRow(j));
  return i == j ? fvData[static_cast<std::size_t>(i)] : 0;
}

double NQDiagMatrix::GetElem(int k) const { return GetElem(k, k); }

bool NQDiagMatrix::SetElem(int i, int j, double x) {
  assert(HasRow(i) && HasRow(j));
  if (i != j) return false;
  fvData[static_cast<std::size_t>(i)] = x;
  return true;
}

bool NQDiagMatrix::SetElem(int k, double x) { return HasRow(k) && SetElem(k, k, x); }

bool NQDiagMatrix::ReplaceDiagonal(const std::vector<double>& v) {
  if (!HasOrder(v.size())) return false;
  std::copy(v.begin(), v.end(), fvData.begin());
  return true;
}

bool NQDiagMatrix::GetRow(int i, std::vector<double>& out) const {
  if (!HasRow(i) || !GuardMemory([&] { out.assign(Order(), 0.0); })) return false;
  out[static_cast<std::size_t>(i)] = GetElem(i, i);
  return true;
}

bool NQDiagMatrix::PutRow(int i, const std::vector<double>& v) {
  return HasOrder(v.size()) && HasRow(i) && SetElem(i, i, v[static_cast<std::size_t>(i)]);
}

bool NQDiagMatrix::SetRowColToConst(int i, double x) { return SetElem(i, x); }

bool NQDiagMatrix::IncrVecByRow(int i, std::vector<double>& v, double factor) const {
  if (!HasRow(i) || v.size() != Order()) return false;
  v[static_cast<std::size_t>(i)] += factor * GetElem(i, i);
  return true;
}

bool NQDiagMatrix::IsZeroRow(int i, const NQBitSet& set) const {
  return HasRow(i) && (GetElem(i, i) == 0 || !set.IsIn(i));
}

// ---- Mechanical operations ---------------------------------------------------------------------

void NQDiagMatrix::Clear() { std::fill(fvData.begin(), fvData.end(), 0.0); }

void NQDiagMatrix::ChangeSign() {
  for (double& d : fvData) d = 0 - d;  // a zero stays 0, where -d would make it -0
}

void NQDiagMatrix::MultiplyByNumber(double x) {
  for (double& d : fvData) d *= x;
}

bool NQDiagMatrix::ComputeAXpY(double a, const INQSymMatrix& x) {
  const NQDiagMatrix* diagonal = internal::AsDiagonal(x);
  if (!diagonal || !IsValidMatrix() || diagonal->fNRows != fNRows) return false;
  internal::AddScaled(Order(), a, diagonal->fvData.data(), fvData.data());
  return true;
}

void NQDiagMatrix::MaxMinDiagOffDiag(double& maxDiag, double& minDiag, double& maxOff,
                                     double& minOff) const {
  MaxMinDiag(maxDiag, minDiag);
  maxOff = minOff = 0;
}

void NQDiagMatrix::ZeroOutNonDiag(double /*eps*/) {}

// ---- Diagnostic display ------------------------------------------------------------------------

void NQDiagMatrix::Display() const {
  GuardMemory([this] {
    NQDisplay_940::DisplayText(1, "NQDiagMatrix display start");
    NQDisplay_940::DisplayI("The number of rows", fNRows);
    NQDisplay_940::DisplayText(1, "Diagonal");
    NQDisplay_940::DisplayDAS(fvData.data(), fNRows);
    NQDisplay_940::DisplayText(1, "NQDiagMatrix display end");
  });
}

}  // namespace NQMath_940
