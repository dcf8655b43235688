// The rules of factors that are the same for every storage.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>
#include <vector>

#include <nqcommon/common/NQMV.h>
#include <nqcommon/common/memory_guard.h>
#include <nqcommon/math/kernels/scaling.h>
#include <nqcommon/math/matrix/INQSymMatrix.h>

namespace NQMath_940::internal {

inline bool AnyNegative(const double* t, std::size_t n) {
  return std::any_of(t, t + n, [](double x) { return x < 0; });
}

// Whether LTChol refuses its arguments, for a matrix of order n.
inline bool RefusesFactor(const std::vector<double>& t, double eps, std::size_t n, bool check) {
  return t.size() < n || (check && (eps < 0 || AnyNegative(t.data(), t.size())));
}

// FactorDiagonal has the diagonal rule: d[i] <- sqrt(d[i]) where it is above t[i] eps, otherwise 0
// and aliased. Returns the number of aliased rows; `aliased`, when given, tells which.
inline std::size_t FactorDiagonal(double* d, std::size_t n, const double* t, double eps,
                                  std::vector<bool>* aliased = nullptr) {
  if (aliased) aliased->assign(n, false);
  std::size_t count = 0;
  for (std::size_t i = 0; i < n; ++i) {
    const bool pivots = d[i] > t[i] * eps;
    d[i] = pivots ? std::sqrt(d[i]) : 0;
    if (pivots) continue;
    ++count;
    if (aliased) (*aliased)[i] = true;
  }
  return count;
}

// SolveByDiagonal does x <- the solution of L L' y = x for a diagonal factor; 0 where it is 0.
inline void SolveByDiagonal(const std::vector<double>& l, double* x) {
  for (std::size_t i = 0; i < l.size(); ++i) x[i] = l[i] != 0 ? x[i] / l[i] / l[i] : 0;
}

// set <- at least n places, none a member. False when there is no memory for them.
inline bool ClearSet(int n, NQBitSet& set) {
  if (set.Size() < n) set.Resize(n, false);
  set.Clear();
  return set.Size() >= n;
}

// a *= b, both with 1 <= |mantissa| < 10 or 0.
inline void MultiplyScaled(NQDeterminant& a, const NQDeterminant& b) {
  MultiplyScaled(a.first, a.second, b.first);
  a.second += b.second;
}

// DeterminantOfFactor is the determinant half of LTDetInverse: it gives the number of zeros on the
// factor's diagonal and, where job asks for it, the product of the diagonal.
inline int DeterminantOfFactor(const INQSymMatrix& factor, int job, NQDeterminant& det) {
  NQDeterminant product{1, 0};
  int zeroes = 0;
  for (int i = 0; i < factor.GetNRows(); ++i) {
    const double l = factor.GetElem(i, i);
    if (l == 0) ++zeroes;
    if (job % 10 != 0) MultiplyScaled(product, {l, 0});
  }
  if (job % 10 != 0) det = zeroes > 0 ? NQDeterminant{0, 0} : product;
  return zeroes;
}

// FactorIntoSet is the set form of LTChol: nonRedundant <- the rows that factor(aliased), which
// factors and answers how many rows are aliased, does not flag. -1, nothing factored, where memory
// ends.
template <class Factor>
int FactorIntoSet(int n, NQBitSet& nonRedundant, Factor factor) {
  return NQCommon_940::GuardMemory(-1, [&] {
    std::vector<bool> aliased(static_cast<std::size_t>(std::max(n, 0)));
    if (!ClearSet(n, nonRedundant)) return -1;
    const auto count = static_cast<int>(factor(aliased));
    for (int i = 0; i < n; ++i) nonRedundant.Set(i, !aliased[static_cast<std::size_t>(i)]);
    return count;
  });
}

// SmallestPivot gives the smallest pivot of a factor, missing without rows.
inline double SmallestPivot(const INQSymMatrix& factor) {
  double max = 0, min = 0;
  factor.MaxMinDiag(max, min);
  return factor.GetNRows() > 0 ? min : NQCommon_940::NQMV::Missing();
}

// SolveByFactor is LTSolve: it factors s with its diagonal, negative entries as 0, for reference
// values; then substitute(x) solves with the factor in place. All memory is taken before s is
// touched.
template <class Substitute>
int SolveByFactor(INQSymMatrix& s, const std::vector<double>& b, double eps, std::vector<double>& x,
                  Substitute substitute) {
  if (s.GetNRows() < 0 || b.size() != static_cast<std::size_t>(s.GetNRows()) || !(eps >= 0))
    return -1;
  return NQCommon_940::GuardMemory(-1, [&] {
    std::vector<double> references, solution = b;
    s.GetDiagonal(references);
    for (double& t : references) t = std::max(t, 0.0);
    const int aliased = s.LTChol(references, eps, false);
    if (aliased < 0) return aliased;
    substitute(solution);
    x = std::move(solution);
    return aliased;
  });
}

}  // namespace NQMath_940::internal
