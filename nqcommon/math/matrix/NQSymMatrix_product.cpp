#include <nqcommon/math/matrix/NQSymMatrix.h>

#include <algorithm>
#include <utility>

#include <nqcommon/common/NQMV.h>
#include <nqcommon/math/kernels/packed_algebra.h>
#include <nqcommon/math/kernels/packed_triangle.h>
#include <nqcommon/math/matrix/internal/symmetric_forms.h>
#include <nqcommon/math/numeric/NQMathFun.h>

namespace NQMath_940 {

using internal::AddScaled;
using internal::DotProduct;
using internal::RowStart;
using NQCommon_940::NQMV;

namespace {

// Outer S Outer, both symmetric.
bool Sandwich(const INQSymMatrix& outer, const INQSymMatrix& s, NQSymMatrix* out) {
  if (s.GetNRows() != outer.GetNRows() || !s.IsValidMatrix()) return false;
  return internal::PutRows(outer.GetNRows(), out, [&](int i, std::vector<double>& row) {
    outer.GetRow(i, row);
    s.ComputeSV(row, row);
    outer.ComputeSV(row, row);
  });
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
  return internal::StridedRowProduct(*this, r, x, inc);
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
  std::vector<double> v;
  return internal::Densify(indices, values, fNRows, v) && ComputeLV(v, out);
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
  if (!IsValidMatrix() || indices.size() != values.size() || !internal::AllBelow(fNRows, indices))
    return false;
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
  return internal::FormInOneVector(*this, v, first, second);
}

double NQSymMatrix::ComputeVSWParts(const std::vector<double>& v, int row,
                                    const std::vector<double>& w, int col) const {
  return internal::FormOfPart(*this, v, row, w, col);
}

double NQSymMatrix::ComputeVSWParts(const double* v, int nv, int row, const double* w, int nw,
                                    int col) const {
  if (!internal::IsRun(fNRows, row, nv) || !internal::IsRun(fNRows, col, nw))
    return NQMV::Missing();
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
  return Sandwich(*this, m, internal::AsDenseSym(out));
}

bool NQSymMatrix::ComputeGSG(const INQSymMatrix& g, INQSymMatrix& out) const {
  return Sandwich(g, *this, internal::AsDenseSym(out));
}

bool NQSymMatrix::ComputeLSLTrans(const INQSymMatrix& l, INQSymMatrix& out) const {
  return internal::ConjugateByLower(*this, l, out);
}

bool NQSymMatrix::ComputeLTransSL(const INQSymMatrix& l, INQSymMatrix& out) const {
  return internal::ConjugateByUpper(*this, l, out);
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
