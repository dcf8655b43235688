#include <nqcommon/math/matrix/NQRectMatrix.h>

#include <algorithm>
#include <cmath>
#include <utility>

#include <nqcommon/common/memory_guard.h>
#include <nqcommon/math/kernels/packed_algebra.h>
#include <nqcommon/math/matrix/NQSymMatrix.h>

namespace NQMath_940 {

using NQCommon_940::GuardMemory;

// ---- Redundancies ------------------------------------------------------------------------------

namespace {

// CrossProducts makes S = R R' or R'R, whose pivots are the squared distances of rows or columns,
// and t its diagonal.
bool CrossProducts(const NQRectMatrix& r, bool byRows, NQSymMatrix& s, std::vector<double>& t) {
  if (!(byRows ? s.ComputeRByRTrans(r) : s.ComputeRTransByR(r))) return false;
  s.GetDiagonal(t);
  return t.size() == static_cast<std::size_t>(s.GetNRows());
}

}  // namespace

int NQRectMatrix::FindRedundancies(double eps, NQBitSet& nonRedundant, bool byRows) const {
  NQSymMatrix s;
  std::vector<double> t;
  if (!(eps >= 0) || !CrossProducts(*this, byRows, s, t)) return -1;
  return s.LTChol(t, eps * eps, nonRedundant, false);
}

int NQRectMatrix::FindNonRedunIndices(double eps, std::vector<int>& indices, bool byRows) const {
  NQBitSet nonRedundant;
  const int redundant = FindRedundancies(eps, nonRedundant, byRows);
  return redundant >= 0 && nonRedundant.GetMembers(indices) ? redundant : -1;
}

int NQRectMatrix::ExtractFullRank(double eps, NQRectMatrix& out, std::vector<int>& indices,
                                  bool byRows) const {
  std::vector<int> found;
  const int redundant = FindNonRedunIndices(eps, found, byRows);
  if (redundant < 0 || !(byRows ? ExtractRows(found, out) : ExtractColumns(found, out))) return -1;
  indices = std::move(found);
  return redundant;
}

int NQRectMatrix::CheckAddColRedundancies(const NQBitSet& set, NQBitSet& newSet) const {
  NQSymMatrix s;
  std::vector<double> t;
  if (set.Size() > fNCols || !CrossProducts(*this, false, s, t)) return -1;
  // ZeroOut takes a column that was found redundant out of S, where it then has no pivot.
  for (int j = 0; j < set.Size(); ++j) {
    if (!set.IsIn(j)) s.ZeroOut(j);
  }
  NQBitSet found;
  if (s.LTChol(t, defaultepse, found, false) < 0) return -1;
  const int old = set.Size(), added = fNCols - old;
  for (int j = 0; j < old; ++j) found.Set(j, set.IsIn(j));
  newSet = std::move(found);
  return added - newSet.InRangeS(old, added);
}

// ---- Estimable functions -----------------------------------------------------------------------

bool NQRectMatrix::IsEstimable(const NQRectMatrix& l, const NQBitSet& set, double eps) const {
  if (!(eps >= 0) || set.Size() < fNCols || l.fNCols != fNCols) return false;
  return GuardMemory(false, [&] {
    NQSymMatrix s, factor;
    std::vector<double> norms, t;
    std::vector<int> members;
    for (int j = 0; j < fNCols; ++j) {
      if (set.IsIn(j)) members.push_back(j);
    }
    if (!CrossProducts(*this, false, s, norms) || !s.ExtractSubmatrix(members, factor))
      return false;
    for (double& norm : norms) norm = std::sqrt(norm);
    factor.GetDiagonal(t);
    if (t.size() != members.size() || factor.LTChol(t, defaultepse, false) != 0) return false;

    std::vector<double> a(members.size());
    for (int j = 0; j < fNCols; ++j) {
      if (set.IsIn(j)) continue;
      for (std::size_t k = 0; k < a.size(); ++k) a[k] = s.GetElem(members[k], j);
      factor.LTSubstitute(a);
      factor.TSolveSubst(a);
      for (int i = 0; i < l.fNRows; ++i) {
        double difference = l.GetElem(i, j), size = std::fabs(difference);
        for (std::size_t k = 0; k < a.size(); ++k) {
          const double lk = l.GetElem(i, members[k]);
          difference -= a[k] * lk;
          size += std::fabs(lk) * norms[static_cast<std::size_t>(j)] /
                  norms[static_cast<std::size_t>(members[k])];
        }
        if (!(std::fabs(difference) <= eps * size)) return false;
      }
    }
    return true;
  });
}

// ---- Rows of contrasts -------------------------------------------------------------------------

bool NQRectMatrix::IsERowMultipleOfAnother(int i, int k, double eps1, double eps2,
                                           double& factor) const {
  if (!HasRow(i) || !HasRow(k) || !(eps1 >= 0) || !(eps2 >= 0)) return false;
  const auto entry = [&](int row, int j) {
    const double r = GetElem(row, j);
    return std::fabs(r) <= eps1 ? 0 : r;
  };
  int largest = 0;
  for (int j = 1; j < fNCols; ++j) {
    if (std::fabs(entry(k, j)) > std::fabs(entry(k, largest))) largest = j;
  }
  const bool zero = fNCols == 0 || entry(k, largest) == 0;
  const double quotient = zero ? 0 : entry(i, largest) / entry(k, largest);
  for (int j = 0; j < fNCols; ++j) {
    const double got = entry(i, j), wanted = zero ? 0 : quotient * entry(k, j);
    if (!(std::fabs(got - wanted) <= eps2 * std::max(std::fabs(got), std::fabs(wanted))))
      return false;
  }
  factor = quotient;
  return true;
}

int NQRectMatrix::FindFirstNonZeroInRow(int i, double eps) const {
  if (!HasRow(i)) return -1;
  for (int j = 0; j < fNCols; ++j) {
    if (std::fabs(GetElem(i, j)) > eps) return j;
  }
  return -1;
}

bool NQRectMatrix::IsRowZeroButOne(int i, int& column) const {
  if (!HasRow(i)) return false;
  int found = -1;
  for (int j = 0; j < fNCols; ++j) {
    if (GetElem(i, j) == 0) continue;
    if (found >= 0) return false;
    found = j;
  }
  if (found >= 0) column = found;
  return found >= 0;
}

bool NQRectMatrix::ZeroOutPivotRow(int i, int j) {
  if (!HasRow(i) || !HasCol(j) || GetElem(i, j) == 0) return false;
  const double* pivotRow = GetRowPtr(i);
  for (int k = 0; k < fNRows; ++k) {
    double* row = GetRowPtr(k);
    if (k == i || row[j] == 0) continue;
    internal::AddScaled(Cols(), -row[j] / pivotRow[j], pivotRow, row);
    row[j] = 0;
  }
  return ZeroOutRowPart(i, 0, fNCols);
}

}  // namespace NQMath_940
