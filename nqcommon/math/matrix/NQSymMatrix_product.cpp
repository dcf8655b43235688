#include <nqcommon/math/matrix/NQSymMatrix.h>

#include <algorithm>
#include <utility>

#include <nqcommon/common/NQMV.h>
#include <nqcommon/math/matrix/internal/packed_algebra.h>
#include <nqcommon/math/matrix/internal/packed_triangle.h>
#include <nqcommon/math/numeric/NQMathFun.h>

namespace NQMath_940 {

using internal::AddScaled;
using internal::DotProduct;
using internal::RowStart;
using NQCommon_940::NQMV;

namespace {

// out <- A S A' row by row, for a symmetric result: row i of A in `a`, timesS: w = S a, timesA: r =
// A w, of which row i of the result is the start. False when `out` cannot hold the result.
template <class RowOfA, class TimesS, class TimesA>
bool ConjugateByRows(int n, RowOfA rowOfA, TimesS timesS, TimesA timesA, NQSymMatrix* out) {
  if (!out) return false;
  NQSymMatrix result(n, false);
  if (!result.IsValidMatrix()) return false;
  std::vector<double> a, w, r;
  for (int i = 0; i < n; ++i) {
    rowOfA(i, a);
    if (!timesS(a, w) || !timesA(w, r)) return false;
    std::copy_n(r.begin(), i + 1,
                result.AsVector().begin() +
                    static_cast<std::ptrdiff_t>(RowStart(static_cast<std::size_t>(i))));
  }
  *out = std::move(result);
  return true;
}

// Outer S Outer, both symmetric.
bool Sandwich(const INQSymMatrix& outer, const INQSymMatrix& s, NQSymMatrix* out) {
  if (s.GetNRows() != outer.GetNRows() || !s.IsValidMatrix()) return false;
  return ConjugateByRows(
      outer.GetNRows(), [&](int i, std::vector<double>& a) { outer.GetRow(i, a); },
      [&](const std::vector<double>& a, std::vector<double>& w) { return s.ComputeSV(a, w); },
      [&](const std::vector<double>& w, std::vector<double>& r) { return outer.ComputeSV(w, r); },
      out);
}

// Whether every index is one of n rows, and there is a value for each.
bool IsSparseVector(const std::vector<int>& indices, const std::vector<double>& values, int n) {
  return indices.size() == values.size() &&
         std::all_of(indices.begin(), indices.end(), [n](int i) { return i >= 0 && i < n; });
}

std::vector<double> Densify(const std::vector<int>& indices, const std::vector<double>& values,
                            std::size_t n) {
  std::vector<double> v(n);
  for (std::size_t k = 0; k < indices.size(); ++k)
    v[static_cast<std::size_t>(indices[k])] += values[k];
  return v;
}

}  // namespace

// ---- Rows and vectors --------------------------------------------------------------------------

double NQSymMatrix::ComputeDotProduct2Rows(int i, int j) const {
  return ComputeRowDotProductS(i, *this, j);
}

double NQSymMatrix::ComputeRowDotProductS(int i, const INQSymMatrix& other, int j) const {
  double before = 0, after = 0;
  return ComputeRowDotProductS(i, other, j, fNRows, before, after) ? before : NQMV::Missing();
}

double NQSymMatrix::ComputeRowDotProductS(int i, const std::vector<double>& v) const {
  double before = 0, after = 0;
  const bool fits = HasOrder(v.size()) && ComputeRowDotProductS(i, v, 0, fNRows, before, after);
  return fits ? before : NQMV::Missing();
}

bool NQSymMatrix::ComputeRowDotProductS(int i, const INQSymMatrix& other, int j, int split,
                                        double& before, double& after) const {
  std::vector<double> row;
  return other.GetNRows() == fNRows && other.GetRow(j, row) &&
         ComputeRowDotProductS(i, row, 0, split, before, after);
}

bool NQSymMatrix::ComputeRowDotProductS(int i, const std::vector<double>& v, int first, int split,
                                        double& before, double& after) const {
  std::vector<double> row;
  if (first < 0 || first > fNRows || v.size() > Order() - static_cast<std::size_t>(first) ||
      !GetRow(i, row))
    return false;
  const auto start = static_cast<std::size_t>(first);
  const std::size_t nBefore =
      split <= first ? 0 : std::min(static_cast<std::size_t>(split) - start, v.size());
  before = DotProduct(nBefore, row.data() + start, v.data());
  after = DotProduct(v.size() - nBefore, row.data() + start + nBefore, v.data() + nBefore);
  return true;
}

double NQSymMatrix::ComputeRVD(int r, const std::vector<double>& x, int inc) const {
  const std::size_t step =
      inc >= 0 ? static_cast<std::size_t>(inc) : -static_cast<std::size_t>(inc);
  if (Order() > 0 && x.size() < (Order() - 1) * step + 1) return NQMV::Missing();
  return ComputeRVD(r, x.data(), inc);
}

double NQSymMatrix::ComputeRVD(int r, const double* x, int inc) const {
  if (!HasRow(r)) return NQMV::Missing();
  const std::ptrdiff_t first = inc >= 0 ? 0 : (1 - static_cast<std::ptrdiff_t>(fNRows)) * inc;
  double sum = 0;
  internal::ForEachInRow(
      fvData.data(), Order(), static_cast<std::size_t>(r),
      [&](std::size_t j, double s) { sum += s * x[first + static_cast<std::ptrdiff_t>(j) * inc]; });
  return sum;
}

bool NQSymMatrix::ComputeSV(const std::vector<double>& v, std::vector<double>& out) const {
  return ComputeSV(v, fNRows, out);
}

bool NQSymMatrix::ComputeSV(const std::vector<double>& v, int nRows,
                            std::vector<double>& out) const {
  if (!HasOrder(v.size()) || nRows < 0 || nRows > fNRows) return false;
  std::vector<double> product(static_cast<std::size_t>(nRows));
  internal::SymTimesVector(fvData.data(), Order(), v.data(), product.size(), product.data());
  out = std::move(product);
  return true;
}

bool NQSymMatrix::ComputeLV(const std::vector<double>& v, std::vector<double>& out) const {
  if (!HasOrder(v.size())) return false;
  std::vector<double> product(Order());
  internal::LowerTimesVector(fvData.data(), Order(), v.data(), product.data());
  out = std::move(product);
  return true;
}

bool NQSymMatrix::ComputeLV(const std::vector<int>& indices, const std::vector<double>& values,
                            std::vector<double>& out) const {
  return IsSparseVector(indices, values, fNRows) &&
         ComputeLV(Densify(indices, values, Order()), out);
}

bool NQSymMatrix::ComputeLTransV(const std::vector<double>& v, std::vector<double>& out) const {
  if (!HasOrder(v.size())) return false;
  std::vector<double> product(Order());
  internal::LowerTransTimesVector(fvData.data(), Order(), v.data(), product.data());
  out = std::move(product);
  return true;
}

bool NQSymMatrix::ComputeLTransV(const std::vector<int>& indices, const std::vector<double>& values,
                                 std::vector<double>& out) const {
  if (!IsValidMatrix() || !IsSparseVector(indices, values, fNRows)) return false;
  std::vector<double> product(Order());
  for (std::size_t k = 0; k < indices.size(); ++k) {
    const auto i = static_cast<std::size_t>(indices[k]);
    AddScaled(i + 1, values[k], fvData.data() + RowStart(i), product.data());
  }
  out = std::move(product);
  return true;
}

// ---- Quadratic and bilinear forms --------------------------------------------------------------

double NQSymMatrix::ComputeVSV(const std::vector<double>& v) const {
  return HasOrder(v.size()) ? NQMathFun::VSV(fvData, fNRows, v) : NQMV::Missing();
}

double NQSymMatrix::ComputeVSW(const std::vector<double>& v, const std::vector<double>& w) const {
  std::vector<double> product;
  if (!HasOrder(v.size()) || !ComputeSV(w, product)) return NQMV::Missing();
  return DotProduct(Order(), v.data(), product.data());
}

double NQSymMatrix::ComputeVSW(const double* v, int nv, const double* w, int nw) const {
  return ComputeVSWParts(v, nv, 0, w, nw, 0);
}

double NQSymMatrix::ComputeVSW(const std::vector<double>& v, int first, int second) const {
  const auto holds = [&](int start) {
    return start >= 0 && v.size() >= Order() &&
           static_cast<std::size_t>(start) <= v.size() - Order();
  };
  if (!IsValidMatrix() || !holds(first) || !holds(second)) return NQMV::Missing();
  return ComputeVSW(v.data() + first, fNRows, v.data() + second, fNRows);
}

double NQSymMatrix::ComputeVSWParts(const std::vector<double>& v, int row,
                                    const std::vector<double>& w, int col) const {
  if (!IsValidMatrix() || v.size() > Order() || w.size() > Order()) return NQMV::Missing();
  return ComputeVSWParts(v.data(), static_cast<int>(v.size()), row, w.data(),
                         static_cast<int>(w.size()), col);
}

double NQSymMatrix::ComputeVSWParts(const double* v, int nv, int row, const double* w, int nw,
                                    int col) const {
  const auto fits = [this](int first, int count) {
    return first >= 0 && count >= 0 && count <= fNRows - first;
  };
  if (!fits(row, nv) || !fits(col, nw)) return NQMV::Missing();
  double sum = 0;
  std::vector<double> s;
  for (int i = 0; i < nv; ++i) {
    GetRow(row + i, s);
    sum += v[i] * DotProduct(static_cast<std::size_t>(nw), s.data() + col, w);
  }
  return sum;
}

// ---- Products of matrices ----------------------------------------------------------------------
// Row by row, which needs no room for a full square.

bool NQSymMatrix::ComputeGMG(const INQSymMatrix& m, INQSymMatrix& out) const {
  return Sandwich(*this, m, AsDense(out));
}

bool NQSymMatrix::ComputeGSG(const INQSymMatrix& g, INQSymMatrix& out) const {
  return Sandwich(g, *this, AsDense(out));
}

bool NQSymMatrix::ComputeLSLTrans(const INQSymMatrix& l, INQSymMatrix& out) const {
  if (l.GetNRows() != fNRows || !IsValidMatrix()) return false;
  return ConjugateByRows(
      fNRows,
      [&](int i, std::vector<double>& a) {
        l.GetRow(i, a);
        std::fill(a.begin() + i + 1, a.end(), 0.0);
      },
      [this](const std::vector<double>& a, std::vector<double>& w) { return ComputeSV(a, w); },
      [&](const std::vector<double>& w, std::vector<double>& r) { return l.ComputeLV(w, r); },
      AsDense(out));
}

bool NQSymMatrix::ComputeLTransSL(const INQSymMatrix& l, INQSymMatrix& out) const {
  if (l.GetNRows() != fNRows || !IsValidMatrix()) return false;
  return ConjugateByRows(
      fNRows,
      [&](int i, std::vector<double>& a) {
        l.GetRow(i, a);
        std::fill(a.begin(), a.begin() + i, 0.0);
      },
      [this](const std::vector<double>& a, std::vector<double>& w) { return ComputeSV(a, w); },
      [&](const std::vector<double>& w, std::vector<double>& r) { return l.ComputeLTransV(w, r); },
      AsDense(out));
}

double NQSymMatrix::TraceOfProduct(const INQSymMatrix& a) const {
  if (a.GetNRows() != fNRows || !IsValidMatrix()) return NQMV::Missing();
  double sum = 0;
  for (int i = 0; i < fNRows; ++i) sum += ComputeRowDotProductS(i, a, i);
  return sum;
}

double NQSymMatrix::TraceOfProductOfThree(const INQSymMatrix& a, const INQSymMatrix& b) const {
  if (a.GetNRows() != fNRows || b.GetNRows() != fNRows || !IsValidMatrix()) return NQMV::Missing();
  double sum = 0;
  std::vector<double> row, product;
  for (int i = 0; i < fNRows; ++i) {
    GetRow(i, row);
    a.ComputeSV(row, product);
    b.GetRow(i, row);
    sum += DotProduct(Order(), product.data(), row.data());
  }
  return sum;
}

}  // namespace NQMath_940
