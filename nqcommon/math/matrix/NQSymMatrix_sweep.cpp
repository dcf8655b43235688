#include <nqcommon/math/matrix/NQSymMatrix.h>

#include <algorithm>
#include <cassert>
#include <cmath>
#include <numeric>
#include <utility>

#include <nqcommon/common/memory_guard.h>
#include <nqcommon/math/kernels/packed_sweep.h>
#include <nqcommon/math/matrix/internal/argument_checks.h>
#include <nqcommon/math/matrix/internal/factor_rules.h>
#include <nqcommon/math/matrix/internal/matrix_casts.h>

namespace NQMath_940 {

using internal::AnyNegative;
using internal::OrderOf;
using NQCommon_940::GuardMemory;

namespace {

// RaiseReferences raises values below 1 to 1: with less, a variable in small units would be refused
// for its units alone. False, nothing raised, when one is negative.
bool RaiseReferences(std::vector<double>& t) {
  if (AnyNegative(t.data(), t.size())) return false;
  for (double& x : t) {
    if (x < 1) x = 1;
  }
  return true;
}

std::vector<int> FirstRows(int count) {
  std::vector<int> rows(static_cast<std::size_t>(std::max(count, 0)));
  std::iota(rows.begin(), rows.end(), 0);
  return rows;
}

// SweepOne is the frame of both forms of the single sweep; sweepRow works on n membership flags.
template <class SweepRow>
bool SweepOne(NQSymMatrix& s, int k, double eps, const double* t, NQBitSet& swept, bool check,
              SweepRow sweepRow) {
  const bool hasRow = k >= 0 && k < s.GetNRows();
  if (check && (!hasRow || eps <= 0 || swept.Size() < s.GetNRows() || AnyNegative(t, OrderOf(s))))
    return false;
  assert(hasRow);
  return GuardMemory(false, [&] {
    const auto row = static_cast<std::size_t>(k);
    std::vector<bool> members = internal::MemberFlags(swept, OrderOf(s));
    if (!sweepRow(s.AsVector().data(), OrderOf(s), row, eps, t, members)) return false;
    swept.Set(k, members[row]);
    return true;
  });
}

// ReferenceValues gives the caller's values, or the current diagonal, copied into `diagonal`.
std::vector<double>& ReferenceValues(const NQSymMatrix& s, std::vector<double>* t,
                                     std::vector<double>& diagonal) {
  if (t) return *t;
  s.GetDiagonal(diagonal);
  return diagonal;
}

// SweepListed sweeps the rows, all inside the matrix, with n reference values; `members` are the
// flags of `swept` to start from. Memory that ends is met before anything is changed.
std::vector<internal::SweepStep> SweepListed(NQSymMatrix& s, const std::vector<int>& rows,
                                             double eps, const std::vector<double>& t,
                                             std::vector<bool> members, NQBitSet& swept) {
  std::vector<internal::SweepStep> steps;
  internal::SweepRows(s.AsVector().data(), OrderOf(s), rows, eps, t.data(), members, &steps);
  for (int row : rows) swept.Set(row, members[static_cast<std::size_t>(row)]);
  return steps;
}

}  // namespace

// ---- One row ------------------------------------------------------------------------------------

bool NQSymMatrix::Sweep(int k, double eps, const std::vector<double>& t, NQBitSet& swept,
                        bool check) {
  return t.size() >= Order() && Sweep(k, eps, t.data(), swept, check);
}

bool NQSymMatrix::Sweep(int k, double eps, const double* t, NQBitSet& swept, bool check) {
  return SweepOne(*this, k, eps, t, swept, check,
                  [](auto&&... arguments) { return internal::SweepRow(arguments...); });
}

bool NQSymMatrix::SweepOrig(int k, double eps, const double* t, NQBitSet& swept, bool check) {
  return SweepOne(*this, k, eps, t, swept, check, internal::SweepRowPlain);
}

// ---- Drivers ------------------------------------------------------------------------------------

bool NQSymMatrix::SweepOnAll(double eps, NQBitSet& swept, bool check, bool zeroRedundant,
                             bool changeSign, std::vector<double>* t) {
  return GuardMemory(false, [&] {
    swept.Resize(fNRows, false);
    std::vector<double> diagonal;
    std::vector<double>& reference = ReferenceValues(*this, t, diagonal);
    if (swept.Size() < fNRows || (!t && diagonal.size() < Order())) return false;
    bool fits = reference.size() >= Order();
    if (check) fits = fits && !(eps <= 0) && RaiseReferences(reference);
    if (fits)
      SweepListed(*this, FirstRows(fNRows), eps, reference, std::vector<bool>(Order()), swept);
    if (zeroRedundant) ZeroOutRedundant(swept);
    if (changeSign) ChangeSign();
    return fits;
  });
}

bool NQSymMatrix::SweepOnMany(int m, double eps, bool pivotBefore, NQBitSet& swept, double& logDet,
                              bool check, std::vector<double>* t) {
  return GuardMemory(false, [&] {
    if (swept.Size() == 0) swept.Resize(fNRows, false);
    std::vector<double> diagonal;
    std::vector<double>& reference = ReferenceValues(*this, t, diagonal);
    if (m > fNRows || swept.Size() < m || reference.size() < Order()) return false;
    if (check && (m <= 0 || eps <= 0 || !RaiseReferences(reference))) return false;

    std::vector<bool> members = internal::MemberFlags(swept, Order());
    std::fill_n(members.begin(), std::max(m, 0), false);
    const std::vector<internal::SweepStep> steps =
        SweepListed(*this, FirstRows(m), eps, reference, std::move(members), swept);
    logDet = 0;
    for (const auto& [pivot, done] : steps) {
      const double q = pivotBefore ? pivot : 1.0 / pivot;  // the diagonal is -1 / pivot afterwards
      if (done && q > 0) logDet += std::log(q);
    }
    return true;
  });
}

bool NQSymMatrix::SweepOnSelected(const std::vector<int>& rows, double eps, NQBitSet& swept,
                                  bool check, std::vector<double>* t) {
  return GuardMemory(false, [&] {
    if (swept.Size() == 0) swept.Resize(fNRows, false);
    std::vector<double> diagonal;
    std::vector<double>& reference = ReferenceValues(*this, t, diagonal);
    if (!internal::AllBelow(fNRows, rows) || reference.size() < Order()) return false;
    if (check && (swept.Size() < fNRows || !RaiseReferences(reference))) return false;
    SweepListed(*this, rows, eps, reference, internal::MemberFlags(swept, Order()), swept);
    return true;
  });
}

bool NQSymMatrix::ZeroOutRedundant(const NQBitSet& set) {
  if (set.Size() < fNRows) return false;
  for (int i = 0; i < fNRows; ++i) {
    if (!set.IsIn(i)) ZeroOut(i);
  }
  return true;
}

}  // namespace NQMath_940
