#include <nqcommon/math/matrix/NQSymMatrix.h>

#include <cmath>
#include <utility>

#include <nqcommon/math/kernels/packed_algebra.h>
#include <nqcommon/math/kernels/packed_triangle.h>
#include <nqcommon/math/matrix/linpack/Blas1.h>
#include <nqcommon/math/matrix/linpack/Linpack.h>

namespace NQMath_940 {

using internal::RowStart;

// ---- Indefinite solves -------------------------------------------------------------------------

// LINPACK packs the upper triangle by columns, which is the lower one by rows: the same array.
bool NQSymMatrix::SolveIndefinite(const std::vector<double>& b, double eps,
                                  std::vector<double>& x) const {
  if (!(eps >= 0) || fNRows < 1 || !HasOrder(b.size())) return false;
  NQSymMatrix factor(*this);
  if (!factor.IsValidMatrix()) return false;
  std::vector<int> pivots(Order());
  std::vector<double> scratch(Order());
  double rcond = 0;
  Linpack::Dspco(factor.fvData.data(), fNRows, pivots.data(), rcond, scratch.data());
  if (!(rcond > eps)) return false;
  x = b;
  Linpack::Dspsl(factor.fvData.data(), fNRows, pivots.data(), x.data());
  return true;
}

namespace {

// Solves with the listed rows and columns; the other unknowns are 0.
bool SolveWithRows(const NQSymMatrix& s, const std::vector<int>& rows, const std::vector<double>& b,
                   double eps, std::vector<double>& x) {
  NQSymMatrix part;
  if (!s.ExtractSubmatrix(rows, part)) return false;
  std::vector<double> values;
  values.reserve(rows.size());
  for (int row : rows) values.push_back(b[static_cast<std::size_t>(row)]);
  if (!rows.empty() && !part.SolveIndefinite(values, eps, values)) return false;
  x.assign(static_cast<std::size_t>(s.GetNRows()), 0.0);
  for (std::size_t k = 0; k < rows.size(); ++k) x[static_cast<std::size_t>(rows[k])] = values[k];
  return true;
}

}  // namespace

bool NQSymMatrix::SolveIndefinite(const std::vector<double>& b, double eps, const NQBitSet& usable,
                                  std::vector<double>& x) const {
  if (!(eps >= 0) || fNRows < 1 || !HasOrder(b.size())) return false;
  std::vector<int> rows;
  for (int i = 0; i < fNRows; ++i) {
    if (usable.IsIn(i)) rows.push_back(i);
  }
  return SolveWithRows(*this, rows, b, eps, x);
}

// Rows that are a basis of the row space of a symmetric matrix make a regular submatrix.
int NQSymMatrix::SolveIndefiniteGI(const std::vector<double>& b, double eps,
                                   std::vector<double>& x) const {
  if (!(eps > 0) || fNRows < 1 || !HasOrder(b.size())) return -1;
  if (SolveIndefinite(b, eps, x)) return 0;
  NQSymMatrix crossProducts;
  std::vector<int> rows;
  if (!ComputeSTransS(crossProducts)) return -1;
  const int dependent = crossProducts.CholIndNonRed(0, eps * eps, rows);
  return dependent >= 0 && SolveWithRows(*this, rows, b, 0, x) ? dependent : -1;
}

// ---- Rank-one changes of a factor --------------------------------------------------------------

bool NQSymMatrix::LTCholUpdateR1(const std::vector<double>& v) {
  if (!HasOrder(v.size())) return false;
  std::vector<double> rest = v;
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

// With L a = v and alpha^2 = 1 - a'a, the rotations that take (a, alpha) to (0, 1), from the last
// element to the first, take the columns of L to those of the new factor.
bool NQSymMatrix::LTCholDowndate(const std::vector<double>& v) {
  if (!HasOrder(v.size())) return false;
  std::vector<double> a = v;
  LTSubstitute(a);
  const double norm = Blas1::DNrm2(fNRows, a.data(), 1);
  if (!(norm < 1)) return false;
  double alpha = std::sqrt((1 - norm) * (1 + norm));
  std::vector<double> removed(Order());
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
