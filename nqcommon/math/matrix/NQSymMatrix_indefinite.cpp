#include <nqcommon/math/matrix/NQSymMatrix.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <new>
#include <utility>

#include <nqcommon/common/memory_guard.h>
#include <nqcommon/math/kernels/packed_algebra.h>
#include <nqcommon/math/kernels/packed_triangle.h>
#include <nqcommon/math/matrix/internal/argument_checks.h>
#include <nqcommon/math/matrix/linpack/Blas1.h>
#include <nqcommon/math/matrix/linpack/Linpack.h>

namespace NQMath_940 {

using internal::RowStart;
using NQCommon_940::GuardMemory;

// ---- Indefinite solves -------------------------------------------------------------------------

// LINPACK packs the upper triangle by columns, which is the lower one by rows: the same array.
bool NQSymMatrix::SolveIndefinite(const std::vector<double>& b, double eps,
                                  std::vector<double>& x) const {
  if (!(eps >= 0) || fNRows < 1 || !HasOrder(b.size())) return false;
  return GuardMemory(false, [&] {
    NQSymMatrix factor(*this);
    std::vector<int> pivots(Order());
    std::vector<double> scratch(Order()), solution = b;
    if (!factor.IsValidMatrix()) return false;
    double rcond = 0;
    Linpack::Dspco(factor.fvData.data(), fNRows, pivots.data(), rcond, scratch.data());
    if (!(rcond > eps)) return false;
    Linpack::Dspsl(factor.fvData.data(), fNRows, pivots.data(), solution.data());
    x = std::move(solution);
    return true;
  });
}

namespace {

// Solves with the listed rows and columns; the other unknowns are 0.
bool SolveWithRows(const NQSymMatrix& s, const std::vector<int>& rows, const std::vector<double>& b,
                   double eps, std::vector<double>& x) {
  NQSymMatrix part;
  if (!s.ExtractSubmatrix(rows, part)) return false;
  std::vector<double> values, solution(b.size());
  for (int row : rows) values.push_back(b[static_cast<std::size_t>(row)]);
  if (!rows.empty() && !part.SolveIndefinite(values, eps, values)) return false;
  for (std::size_t k = 0; k < rows.size(); ++k)
    solution[static_cast<std::size_t>(rows[k])] = values[k];
  x = std::move(solution);
  return true;
}

// IndependentRows takes the rows whose distance from the space of those taken before them is above
// eps times their norm. Gram-Schmidt, each row against the others twice, leaves a few rounding
// errors of the norm as the distance of a dependent row, so that `least` is not below them.
std::vector<int> IndependentRows(const NQSymMatrix& s, double eps) {
  const auto n = static_cast<std::size_t>(s.GetNRows());
  const double least =
      std::max(eps, 8 * static_cast<double>(n) * std::numeric_limits<double>::epsilon());
  std::vector<int> rows;
  std::vector<double> row, basis;  // of orthonormal vectors, one after the other
  for (int i = 0; i < s.GetNRows(); ++i) {
    if (!s.GetRow(i, row)) throw std::bad_alloc();
    const double norm = internal::Nrm2(s.GetNRows(), row.data(), 1);
    if (!(norm > 0)) continue;
    for (double& x : row) x /= norm;
    for (std::size_t q = 0; q < 2 * basis.size(); q += n) {
      const double* unit = basis.data() + q % basis.size();
      internal::AddScaled(n, -internal::DotProduct(n, unit, row.data()), unit, row.data());
    }
    const double distance = internal::Nrm2(s.GetNRows(), row.data(), 1);
    if (!(distance > least)) continue;
    for (double& x : row) x /= distance;
    basis.insert(basis.end(), row.begin(), row.end());
    rows.push_back(i);
  }
  return rows;
}

}  // namespace

bool NQSymMatrix::SolveIndefinite(const std::vector<double>& b, double eps, const NQBitSet& usable,
                                  std::vector<double>& x) const {
  if (!(eps >= 0) || fNRows < 1 || !HasOrder(b.size())) return false;
  return GuardMemory(false, [&] {
    std::vector<int> rows = internal::MembersOf(usable);
    rows.erase(std::lower_bound(rows.begin(), rows.end(), fNRows), rows.end());
    return SolveWithRows(*this, rows, b, eps, x);
  });
}

// Rows that are a basis of the row space of a symmetric matrix make a regular submatrix.
int NQSymMatrix::SolveIndefiniteGI(const std::vector<double>& b, double eps,
                                   std::vector<double>& x) const {
  if (!(eps > 0) || fNRows < 1 || !HasOrder(b.size())) return -1;
  if (SolveIndefinite(b, eps, x)) return 0;
  return GuardMemory(-1, [&] {
    const std::vector<int> rows = IndependentRows(*this, eps);
    return SolveWithRows(*this, rows, b, 0, x) ? fNRows - static_cast<int>(rows.size()) : -1;
  });
}

// ---- Rank-one changes of a factor --------------------------------------------------------------

bool NQSymMatrix::LTCholUpdateR1(const std::vector<double>& v) {
  std::vector<double> rest;
  if (!HasOrder(v.size()) || !GuardMemory([&] { rest = v; })) return false;
  for (std::size_t k = 0; k < Order(); ++k) {
    double pivot = fvData[internal::DiagIndex(k)];
    double c = 0, s = 0;
    Blas1::DRotG(pivot, rest[k], c, s);
    // The column whose pivot would be negative changes its sign.
    const double sign = pivot < 0 ? -1 : 1;
    fvData[internal::DiagIndex(k)] = sign * pivot;
    for (std::size_t i = k + 1; i < Order(); ++i) {
      double& l = fvData[RowStart(i) + k];
      const double old = l;
      l = sign * (c * old + s * rest[i]);
      rest[i] = c * rest[i] - s * old;
    }
  }
  return true;
}

namespace {

// x <- the solution of L a = x; false when there is none, L having a zero pivot in a row where x is
// not what the rows before it make of it, up to their rounding errors.
bool SolvesInRange(const double* l, std::vector<double>& x) {
  for (std::size_t i = 0; i < x.size(); ++i) {
    const double* row = l + RowStart(i);
    double sum = 0, size = std::fabs(x[i]);
    for (std::size_t k = 0; k < i; ++k) {
      sum += row[k] * x[k];
      size += std::fabs(row[k] * x[k]);
    }
    const double rest = x[i] - sum;
    const double rounding = static_cast<double>(i + 1) * std::numeric_limits<double>::epsilon();
    if (row[i] == 0 && !(std::fabs(rest) <= rounding * size)) return false;
    x[i] = row[i] != 0 ? rest / row[i] : 0;
  }
  return true;
}

}  // namespace

// With L a = v and alpha^2 = 1 - a'a, the rotations that take (a, alpha) to (0, 1), from the last
// element to the first, take the columns of L to those of the new factor.
bool NQSymMatrix::LTCholDowndate(const std::vector<double>& v) {
  std::vector<double> a, removed;
  const auto copy = [&] {
    a = v;
    removed.resize(Order());
  };
  if (!HasOrder(v.size()) || !GuardMemory(copy) || !SolvesInRange(fvData.data(), a)) return false;
  const double norm = Blas1::DNrm2(fNRows, a.data(), 1);
  if (!(norm < 1)) return false;
  double alpha = std::sqrt((1 - norm) * (1 + norm));
  for (std::size_t k = Order(); k-- > 0;) {
    double c = 0, s = 0;
    Blas1::DRotG(alpha, a[k], c, s);
    const double sign = c < 0 ? -1 : 1;
    for (std::size_t i = k; i < Order(); ++i) {
      double& l = fvData[RowStart(i) + k];
      const double old = l;
      l = sign * (c * old - s * removed[i]);
      removed[i] = c * removed[i] + s * old;
    }
  }
  return true;
}

}  // namespace NQMath_940
