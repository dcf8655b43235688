#include <nqcommon/math/matrix/NQSymMatrix.h>

#include <algorithm>
#include <cassert>
#include <cmath>
#include <numeric>

#include <nqcommon/math/matrix/internal/packed_sweep.h>

namespace NQMath_940 {

namespace {

bool AnyNegative(const double* t, std::size_t n) {
  return std::any_of(t, t + n, [](double x) { return x < 0; });
}

// With a reference value below 1 a variable in small units would be refused for its units alone.
// False, nothing raised, when one is negative.
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

}  // namespace

// ---- One row ------------------------------------------------------------------------------------

// Both forms of the single sweep: sweepRow works on n membership flags.
template <class SweepRow>
bool NQSymMatrix::SweepOne(int k, double eps, const double* t, NQBitSet& swept, bool check,
                           SweepRow sweepRow) {
  if (check && (!HasRow(k) || eps <= 0 || swept.Size() < fNRows || AnyNegative(t, Order())))
    return false;
  assert(HasRow(k));
  std::vector<bool> members = MembersOf(swept);
  if (!sweepRow(fvData.data(), Order(), static_cast<std::size_t>(k), eps, t, members)) return false;
  swept.Set(k, members[static_cast<std::size_t>(k)]);
  return true;
}

bool NQSymMatrix::Sweep(int k, double eps, const std::vector<double>& t, NQBitSet& swept,
                        bool check) {
  return t.size() >= Order() && Sweep(k, eps, t.data(), swept, check);
}

bool NQSymMatrix::Sweep(int k, double eps, const double* t, NQBitSet& swept, bool check) {
  return SweepOne(k, eps, t, swept, check,
                  [](auto&&... arguments) { return internal::SweepRow(arguments...); });
}

bool NQSymMatrix::SweepOrig(int k, double eps, const double* t, NQBitSet& swept, bool check) {
  return SweepOne(k, eps, t, swept, check, internal::SweepRowPlain);
}

// ---- Drivers ------------------------------------------------------------------------------------

// The caller's values, or the current diagonal copied into `diagonal`.
std::vector<double>& NQSymMatrix::ReferenceValues(std::vector<double>* t,
                                                  std::vector<double>& diagonal) const {
  if (t) return *t;
  GetDiagonal(diagonal);
  return diagonal;
}

std::vector<bool> NQSymMatrix::MembersOf(const NQBitSet& set) const {
  std::vector<bool> members(Order());
  for (std::size_t i = 0; i < members.size(); ++i) members[i] = set.IsIn(static_cast<int>(i));
  return members;
}

// Sweeps the rows, all inside the matrix, with n reference values.
std::vector<internal::SweepStep> NQSymMatrix::SweepListed(const std::vector<int>& rows, double eps,
                                                          const std::vector<double>& t,
                                                          NQBitSet& swept) {
  std::vector<bool> members = MembersOf(swept);
  std::vector<internal::SweepStep> steps;
  internal::SweepRows(fvData.data(), Order(), rows, eps, t.data(), members, &steps);
  for (int row : rows) swept.Set(row, members[static_cast<std::size_t>(row)]);
  return steps;
}

bool NQSymMatrix::SweepOnAll(double eps, NQBitSet& swept, bool check, bool zeroRedundant,
                             bool changeSign, std::vector<double>* t) {
  if (swept.Size() != fNRows) swept.Resize(fNRows, false);
  swept.Clear();
  std::vector<double> diagonal;
  std::vector<double>& reference = ReferenceValues(t, diagonal);
  bool fits = reference.size() >= Order();
  if (check) fits = fits && !(eps <= 0) && RaiseReferences(reference);
  if (fits) SweepListed(FirstRows(fNRows), eps, reference, swept);
  if (zeroRedundant && swept.InSet() < fNRows) ZeroOutRedundant(swept);
  if (changeSign) ChangeSign();
  return fits;
}

bool NQSymMatrix::SweepOnMany(int m, double eps, bool pivotBefore, NQBitSet& swept, double& logDet,
                              bool check, std::vector<double>* t) {
  if (swept.Size() == 0) swept.Resize(fNRows, false);
  std::vector<double> diagonal;
  std::vector<double>& reference = ReferenceValues(t, diagonal);
  if (m > fNRows || swept.Size() < m || reference.size() < Order()) return false;
  if (check && (m <= 0 || eps <= 0 || !RaiseReferences(reference))) return false;

  logDet = 0;
  swept.SetRange(0, m - 1, false);
  for (const auto& [pivot, done] : SweepListed(FirstRows(m), eps, reference, swept)) {
    const double q = pivotBefore ? pivot : 1.0 / pivot;  // the diagonal is -1 / pivot afterwards
    if (done && q > 0) logDet += std::log(q);
  }
  return true;
}

bool NQSymMatrix::SweepOnSelected(const std::vector<int>& rows, double eps, NQBitSet& swept,
                                  bool check, std::vector<double>* t) {
  if (swept.Size() == 0) swept.Resize(fNRows, false);
  std::vector<double> diagonal;
  std::vector<double>& reference = ReferenceValues(t, diagonal);
  const auto inside = [this](int row) { return HasRow(row); };
  if (!std::all_of(rows.begin(), rows.end(), inside) || reference.size() < Order()) return false;
  if (check && (swept.Size() < fNRows || !RaiseReferences(reference))) return false;
  SweepListed(rows, eps, reference, swept);
  return true;
}

bool NQSymMatrix::ZeroOutRedundant(const NQBitSet& set) {
  if (set.Size() < fNRows) return false;
  for (int i = 0; i < fNRows; ++i) {
    if (!set.IsIn(i)) ZeroOut(i);
  }
  return true;
}

}  // namespace NQMath_940
