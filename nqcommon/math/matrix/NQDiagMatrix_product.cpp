#include <nqcommon/math/matrix/NQDiagMatrix.h>

#include <algorithm>
#include <utility>

#include <nqcommon/common/NQMV.h>
#include <nqcommon/math/kernels/packed_algebra.h>
#include <nqcommon/math/matrix/internal/matrix_access.h>
#include <nqcommon/math/matrix/internal/symmetric_forms.h>

namespace NQMath_940 {

using internal::AsDenseRect;
using internal::AsDenseSym;
using internal::AsDiagonal;
using internal::PutDiagonal;
using internal::PutRows;
using NQCommon_940::NQMV;

namespace {

// x[i] *= d[i].
void ScaleBy(const std::vector<double>& d, std::vector<double>& x) {
  for (std::size_t i = 0; i < x.size(); ++i) x[i] *= d[i];
}

}  // namespace

// ---- Rows and vectors --------------------------------------------------------------------------

double NQDiagMatrix::ComputeDotProduct2Rows(int i, int j) const {
  return ComputeRowDotProductS(i, *this, j);
}

double NQDiagMatrix::ComputeRowDotProductS(int i, const INQSymMatrix& other, int j) const {
  if (other.GetNRows() != fNRows || !HasRow(i) || !HasRow(j)) return NQMV::Missing();
  return GetElem(i) * other.GetElem(j, i);
}

double NQDiagMatrix::ComputeRowDotProductS(int i, const std::vector<double>& v) const {
  if (!HasRow(i) || v.size() != Order()) return NQMV::Missing();
  return GetElem(i) * v[static_cast<std::size_t>(i)];
}

double NQDiagMatrix::ComputeRVD(int r, const std::vector<double>& x, int inc) const {
  return internal::StridedRowProduct(*this, r, x, inc);
}

double NQDiagMatrix::ComputeRVD(int r, const double* x, int inc) const {
  if (!HasRow(r)) return NQMV::Missing();
  const std::ptrdiff_t at = inc >= 0 ? r : r + 1 - static_cast<std::ptrdiff_t>(fNRows);
  return GetElem(r) * x[at * inc];
}

bool NQDiagMatrix::ComputeSV(const std::vector<double>& v, std::vector<double>& out) const {
  return ComputeSV(v, fNRows, out);
}

bool NQDiagMatrix::ComputeSV(const std::vector<double>& v, int nRows,
                             std::vector<double>& out) const {
  if (!HasOrder(v.size()) || nRows < 0 || nRows > fNRows) return false;
  std::vector<double> product(v.begin(), v.begin() + nRows);
  ScaleBy(fvData, product);
  out = std::move(product);
  return true;
}

bool NQDiagMatrix::ComputeLV(const std::vector<double>& v, std::vector<double>& out) const {
  return ComputeSV(v, out);
}

bool NQDiagMatrix::ComputeLV(const std::vector<int>& indices, const std::vector<double>& values,
                             std::vector<double>& out) const {
  if (!IsValidMatrix() || indices.size() != values.size() || !internal::AllBelow(fNRows, indices))
    return false;
  std::vector<double> product(Order());
  for (std::size_t k = 0; k < indices.size(); ++k)
    product[static_cast<std::size_t>(indices[k])] += GetElem(indices[k]) * values[k];
  out = std::move(product);
  return true;
}

bool NQDiagMatrix::ComputeLTransV(const std::vector<double>& v, std::vector<double>& out) const {
  return ComputeSV(v, out);
}

bool NQDiagMatrix::ComputeLTransV(const std::vector<int>& indices,
                                  const std::vector<double>& values,
                                  std::vector<double>& out) const {
  return ComputeLV(indices, values, out);
}

double NQDiagMatrix::ComputeVSV(const std::vector<double>& v) const { return ComputeVSW(v, v); }

double NQDiagMatrix::ComputeVSV(const INQRectMatrix& r, int i) const {
  return internal::FormOfRectRow(*this, r, i);
}

double NQDiagMatrix::ComputeVSW(const std::vector<double>& v, const std::vector<double>& w) const {
  if (!HasOrder(v.size()) || !HasOrder(w.size())) return NQMV::Missing();
  return ComputeVSW(v.data(), fNRows, w.data(), fNRows);
}

double NQDiagMatrix::ComputeVSW(const double* v, int nv, const double* w, int nw) const {
  return ComputeVSWParts(v, nv, 0, w, nw, 0);
}

double NQDiagMatrix::ComputeVSW(const std::vector<double>& v, int first, int second) const {
  return internal::FormInOneVector(*this, v, first, second);
}

double NQDiagMatrix::ComputeVSWParts(const std::vector<double>& v, int row,
                                     const std::vector<double>& w, int col) const {
  return internal::FormOfPart(*this, v, row, w, col);
}

double NQDiagMatrix::ComputeVSWParts(const double* v, int nv, int row, const double* w, int nw,
                                     int col) const {
  if (!internal::IsRun(fNRows, row, nv) || !internal::IsRun(fNRows, col, nw))
    return NQMV::Missing();
  double sum = 0;
  for (int i = std::max(row, col); i < std::min(row + nv, col + nw); ++i)
    sum += v[i - row] * (GetElem(i) * w[i - col]);
  return sum;
}

// ---- Products of symmetric matrices ------------------------------------------------------------

bool NQDiagMatrix::ComputeGMG(const INQSymMatrix& m, INQSymMatrix& out) const {
  if (m.GetType() == 1) return m.ComputeGSG(*this, out);
  if (!IsValidMatrix() || m.GetNRows() != fNRows) return false;
  return PutRows(fNRows, AsDenseSym(out), [&](int i, std::vector<double>& row) {
    m.GetRow(i, row);
    ScaleBy(fvData, row);
    for (double& x : row) x *= GetElem(i);
  });
}

// Row i of the result is G times the scaled row i of G.
bool NQDiagMatrix::ComputeGSG(const INQSymMatrix& g, INQSymMatrix& out) const {
  if (!IsValidMatrix() || g.GetNRows() != fNRows) return false;
  if (const NQDiagMatrix* diagonal = AsDiagonal(g)) {
    std::vector<double> product = diagonal->fvData;
    ScaleBy(product, product);
    ScaleBy(fvData, product);
    return PutDiagonal(product, out);
  }
  return PutRows(fNRows, AsDenseSym(out), [&](int i, std::vector<double>& row) {
    g.GetRow(i, row);
    ScaleBy(fvData, row);
    g.ComputeSV(row, row);
  });
}

bool NQDiagMatrix::ComputeLSLTrans(const INQSymMatrix& l, INQSymMatrix& out) const {
  if (l.GetType() == 1) return ComputeGSG(l, out);
  return internal::ConjugateByLower(*this, l, out);
}

bool NQDiagMatrix::ComputeLTransSL(const INQSymMatrix& l, INQSymMatrix& out) const {
  if (l.GetType() == 1) return ComputeGSG(l, out);
  return internal::ConjugateByUpper(*this, l, out);
}

bool NQDiagMatrix::ComputeMGN(const INQSymMatrix& m, const INQSymMatrix& n,
                              INQRectMatrix& out) const {
  if (!IsValidMatrix() || m.GetNRows() != fNRows || n.GetNRows() != fNRows) return false;
  return PutRows(fNRows, AsDenseRect(out), [&](int i, std::vector<double>& row) {
    m.GetRow(i, row);
    ScaleBy(fvData, row);
    n.ComputeSV(row, row);
  });
}

bool NQDiagMatrix::ComputeGMGNG(const INQSymMatrix& m, const INQSymMatrix& n,
                                INQRectMatrix& out) const {
  NQRectMatrix mgn;
  return ComputeMGN(m, n, mgn) && internal::ScaleRows(fvData, mgn, &mgn) &&
         internal::ScaleColumns(mgn, fvData, AsDenseRect(out));
}

bool NQDiagMatrix::ComputeSS(const INQSymMatrix& b, INQRectMatrix& out) const {
  if (!IsValidMatrix() || b.GetNRows() != fNRows) return false;
  return PutRows(fNRows, AsDenseRect(out), [&](int i, std::vector<double>& row) {
    b.GetRow(i, row);
    for (double& x : row) x *= GetElem(i);
  });
}

bool NQDiagMatrix::ComputeSTransS(INQSymMatrix& out) const {
  if (!IsValidMatrix()) return false;
  std::vector<double> squares = fvData;
  ScaleBy(squares, squares);
  return PutDiagonal(squares, out);
}

double NQDiagMatrix::TraceOfProduct(const INQSymMatrix& a) const {
  if (a.GetNRows() != fNRows || !IsValidMatrix()) return NQMV::Missing();
  double sum = 0;
  for (int i = 0; i < fNRows; ++i) sum += GetElem(i) * a.GetElem(i, i);
  return sum;
}

double NQDiagMatrix::TraceOfProductOfThree(const INQSymMatrix& a, const INQSymMatrix& b) const {
  if (a.GetNRows() != fNRows || b.GetNRows() != fNRows || !IsValidMatrix()) return NQMV::Missing();
  double sum = 0;
  for (int i = 0; i < fNRows; ++i) sum += GetElem(i) * a.ComputeRowDotProductS(i, b, i);
  return sum;
}

// ---- Products with a rectangular matrix --------------------------------------------------------

bool NQDiagMatrix::ComputeRS(const INQRectMatrix& r, INQRectMatrix& out) const {
  return IsValidMatrix() && r.GetNCols() == fNRows &&
         internal::ScaleColumns(r, fvData, AsDenseRect(out));
}

bool NQDiagMatrix::ComputeRTransS(const INQRectMatrix& r, INQRectMatrix& out) const {
  NQRectMatrix product;
  NQRectMatrix* dense = AsDenseRect(out);
  if (!dense || !IsValidMatrix() || r.GetNRows() != fNRows ||
      !internal::ScaleRows(fvData, r, &product) || !product.Transpose())
    return false;
  *dense = std::move(product);
  return true;
}

bool NQDiagMatrix::ComputeRSRTrans(const INQRectMatrix& r, INQSymMatrix& out) const {
  return internal::RSRTrans(*this, r, out);
}

bool NQDiagMatrix::ComputeRTransSR(const INQRectMatrix& r, INQSymMatrix& out) const {
  return internal::RTransSR(*this, r, out);
}

bool NQDiagMatrix::ComputeRTransSV(const INQRectMatrix& r, const std::vector<double>& v,
                                   std::vector<double>& out) const {
  return internal::RTransSV(*this, r, v, out);
}

namespace {

// d' line[first .. first+count-1]; system-missing where it does not fit.
double PartTimesDiagonal(const std::vector<double>& line, int first, int count,
                         const std::vector<double>& d) {
  const bool fits =
      first >= 0 && count >= 0 && static_cast<std::size_t>(count) <= d.size() &&
      static_cast<std::size_t>(first) <= line.size() &&
      static_cast<std::size_t>(count) <= line.size() - static_cast<std::size_t>(first);
  if (!fits) return NQMV::Missing();
  return internal::DotProduct(static_cast<std::size_t>(count), line.data() + first, d.data());
}

}  // namespace

double NQDiagMatrix::ComputeRVD(int i, const INQRectMatrix& r, int first, int count) const {
  std::vector<double> row;
  return r.GetRow(i, row) ? PartTimesDiagonal(row, first, count, fvData) : NQMV::Missing();
}

double NQDiagMatrix::ComputeRTransVD(int j, const INQRectMatrix& r, int first, int count) const {
  std::vector<double> column;
  return r.GetCol(j, column) ? PartTimesDiagonal(column, first, count, fvData) : NQMV::Missing();
}

// ---- Parts -------------------------------------------------------------------------------------

bool NQDiagMatrix::ExtractFirstNRows(INQSymMatrix& out) const {
  const int k = out.GetNRows();
  return k >= 0 && k <= fNRows && PutDiagonal({fvData.begin(), fvData.begin() + k}, out);
}

bool NQDiagMatrix::ExtractSubmatrix(const std::vector<int>& indices, INQSymMatrix& out) const {
  std::vector<bool> taken(Order());
  std::vector<double> part;
  bool repeats = false;
  for (int i : indices) {
    if (!HasRow(i)) return false;
    repeats = repeats || taken[static_cast<std::size_t>(i)];
    taken[static_cast<std::size_t>(i)] = true;
    part.push_back(GetElem(i));
  }
  if (!repeats) return PutDiagonal(part, out);
  const auto at = [&](std::size_t a) { return indices[a]; };
  return internal::FitsInt(static_cast<long long>(indices.size())) &&
         PutRows(static_cast<int>(indices.size()), AsDenseSym(out),
                 [&](int a, std::vector<double>& row) {
                   row.resize(indices.size());
                   for (std::size_t b = 0; b < row.size(); ++b)
                     row[b] = GetElem(at(static_cast<std::size_t>(a)), at(b));
                 });
}

}  // namespace NQMath_940
