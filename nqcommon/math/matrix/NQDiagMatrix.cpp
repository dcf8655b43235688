#include <nqcommon/math/matrix/NQDiagMatrix.h>

#include <algorithm>
#include <cassert>
#include <exception>
#include <limits>
#include <utility>

#include <nqcommon/common/display.h>
#include <nqcommon/math/kernels/packed_algebra.h>
#include <nqcommon/math/kernels/scaling.h>
#include <nqcommon/math/matrix/internal/display_rows.h>
#include <nqcommon/math/matrix/internal/matrix_access.h>

namespace NQMath_940 {

// ---- Life cycle and shape ----------------------------------------------------------------------

// Storage that is new is zero, so there is nothing to do for `zero`.
NQDiagMatrix::NQDiagMatrix(int n, bool /*zero*/) : fNRows(std::max(n, 0)) { AllocateDiagonal(); }

NQDiagMatrix::NQDiagMatrix(const std::vector<double>& diagonal) {
  const bool counted = diagonal.size() <= static_cast<std::size_t>(std::numeric_limits<int>::max());
  fNRows = counted ? static_cast<int>(diagonal.size()) : -1;
  if (AllocateDiagonal()) std::copy(diagonal.begin(), diagonal.end(), fvDiagonal.begin());
}

NQDiagMatrix::NQDiagMatrix(const NQDiagMatrix& other) : INQSymMatrix() { *this = other; }

NQDiagMatrix& NQDiagMatrix::operator=(const NQDiagMatrix& other) {
  if (this == &other) return *this;
  fNRows = other.fNRows;
  if (AllocateDiagonal())
    std::copy(other.fvDiagonal.begin(), other.fvDiagonal.end(), fvDiagonal.begin());
  return *this;
}

NQDiagMatrix::NQDiagMatrix(NQDiagMatrix&& other) noexcept : INQSymMatrix() {
  *this = std::move(other);
}

NQDiagMatrix& NQDiagMatrix::operator=(NQDiagMatrix&& other) noexcept {
  if (this == &other) return *this;
  fNRows = std::exchange(other.fNRows, 0);
  fvDiagonal = std::exchange(other.fvDiagonal, {});
  return *this;
}

NQDiagMatrix::~NQDiagMatrix() = default;

bool NQDiagMatrix::AllocateDiagonal() {
  try {
    fvDiagonal.resize(Order());
  } catch (const std::exception&) {
    fvDiagonal = {};
    fNRows = -1;
  }
  return fNRows >= 0;
}

bool NQDiagMatrix::Resize(int n) {
  fNRows = std::max(n, 0);
  return AllocateDiagonal();
}

bool NQDiagMatrix::SetNRows(int n, bool clear) {
  const bool resized = Resize(n);
  if (resized && clear) Clear();
  return resized;
}

// ---- Elements and rows -------------------------------------------------------------------------

double NQDiagMatrix::GetElem(int i, int j) const {
  assert(HasRow(i) && HasRow(j));
  return i == j ? fvDiagonal[static_cast<std::size_t>(i)] : 0;
}

double NQDiagMatrix::GetElem(int k) const { return GetElem(k, k); }

bool NQDiagMatrix::SetElem(int i, int j, double x) {
  assert(HasRow(i) && HasRow(j));
  if (i != j) return false;
  fvDiagonal[static_cast<std::size_t>(i)] = x;
  return true;
}

bool NQDiagMatrix::SetElem(int k, double x) { return HasRow(k) && SetElem(k, k, x); }

void NQDiagMatrix::GetDiagonal(std::vector<double>& out) const { out = fvDiagonal; }

bool NQDiagMatrix::ReplaceDiagonal(const std::vector<double>& v) {
  if (!HasOrder(v.size())) return false;
  fvDiagonal = v;
  return true;
}

bool NQDiagMatrix::GetRow(int i, std::vector<double>& out) const {
  if (!HasRow(i)) return false;
  out.assign(Order(), 0.0);
  out[static_cast<std::size_t>(i)] = GetElem(i, i);
  return true;
}

bool NQDiagMatrix::PutRow(int i, const std::vector<double>& v) {
  return HasOrder(v.size()) && HasRow(i) && SetElem(i, i, v[static_cast<std::size_t>(i)]);
}

bool NQDiagMatrix::SetRowColToConst(int i, double x) { return SetElem(i, x); }

bool NQDiagMatrix::ZeroOut(int i) { return SetRowColToConst(i, 0); }

bool NQDiagMatrix::IncrVecByRow(int i, std::vector<double>& v, double factor) const {
  if (!HasRow(i) || v.size() != Order()) return false;
  v[static_cast<std::size_t>(i)] += factor * GetElem(i, i);
  return true;
}

bool NQDiagMatrix::IsZeroRow(int i, const NQBitSet& set) const {
  return HasRow(i) && (GetElem(i, i) == 0 || !set.IsIn(i));
}

// ---- Mechanical operations ---------------------------------------------------------------------

void NQDiagMatrix::Clear() { std::fill(fvDiagonal.begin(), fvDiagonal.end(), 0.0); }

void NQDiagMatrix::AddToDiagonal(double x) {
  for (double& d : fvDiagonal) d += x;
}

void NQDiagMatrix::ChangeSign() {
  for (double& d : fvDiagonal) d = -d;
}

void NQDiagMatrix::MultiplyByNumber(double x) {
  for (double& d : fvDiagonal) d *= x;
}

bool NQDiagMatrix::ComputeAXpY(double a, const INQSymMatrix& x) {
  const NQDiagMatrix* diagonal = internal::AsDiagonal(x);
  if (!diagonal || !IsValidMatrix() || diagonal->fNRows != fNRows) return false;
  internal::AddScaled(Order(), a, diagonal->fvDiagonal.data(), fvDiagonal.data());
  return true;
}

void NQDiagMatrix::GetNCheckDiagonal(std::vector<double>& out, double /*a*/, double /*b*/) const {
  out.assign(Order(), internal::LargestFromZero(fvDiagonal));
}

void NQDiagMatrix::MaxMinDiag(double& max, double& min) const {
  internal::Extremes extremes;
  for (double d : fvDiagonal) extremes.Add(d);
  max = extremes.Max();
  min = extremes.Min();
}

void NQDiagMatrix::MaxMinDiagOffDiag(double& maxDiag, double& minDiag, double& maxOff,
                                     double& minOff) const {
  MaxMinDiag(maxDiag, minDiag);
  maxOff = minOff = 0;
}

double NQDiagMatrix::Trace() const {
  double sum = 0;
  for (double d : fvDiagonal) sum += d;
  return sum;
}

void NQDiagMatrix::ZeroOutNonDiag(double /*eps*/) {}

// ---- Diagnostic display ------------------------------------------------------------------------

void NQDiagMatrix::Display() const {
  NQDisplay_940::DisplayText(1, "NQDiagMatrix display start");
  NQDisplay_940::DisplayI("The number of rows", fNRows);
  NQDisplay_940::DisplayText(1, "Diagonal");
  NQDisplay_940::DisplayDAS(fvDiagonal.data(), fNRows);
  NQDisplay_940::DisplayText(1, "NQDiagMatrix display end");
}

void NQDiagMatrix::DisplayF() const { internal::DisplayAllRows("NQDiagMatrix", *this); }

}  // namespace NQMath_940
