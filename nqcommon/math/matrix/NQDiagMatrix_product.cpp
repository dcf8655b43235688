#include <nqcommon/math/matrix/NQDiagMatrix.h>

#include <algorithm>
#include <utility>

#include <nqcommon/common/NQMV.h>
#include <nqcommon/math/kernels/packed_algebra.h>
#include <nqcommon/math/matrix/internal/matrix_results.h>

namespace NQMath_940 {

using namespace internal;
using NQCommon_940::NQMV;

namespace {

// x[i] *= d[i].
void ScaleBy(const std::vector<double>& d, std::vector<double>& x) {
  for (std::size_t i = 0; i < x.size(); ++i) x[i] *= d[i];
}

}  // namespace

// ---- Rows and vectors --------------------------------------------------------------------------

double NQDiagMatrix::ComputeRowDotProductS(int i, const INQSymMatrix& other, int j) const {
  if (other.GetNRows() != fNRows || !HasRow(i) || !HasRow(j)) return NQMV::Missing();
  return GetElem(i) * other.GetElem(j, i);
}

double NQDiagMatrix::ComputeRVD(int r, const double* x, int inc) const {
  if (!HasRow(r)) return NQMV::Missing();
  const std::ptrdiff_t at = inc >= 0 ? r : r + 1 - static_cast<std::ptrdiff_t>(fNRows);
  return GetElem(r) * x[at * inc];
}

bool NQDiagMatrix::ComputeSV(const std::vector<double>& v, int nRows,
                             std::vector<double>& out) const {
  return HasOrder(v.size()) && nRows >= 0 && nRows <= fNRows &&
         MakeVector(static_cast<std::size_t>(nRows), out, [&](std::vector<double>& sv) {
           for (std::size_t i = 0; i < sv.size(); ++i) sv[i] = v[i] * fvData[i];
         });
}

bool NQDiagMatrix::ComputeLV(const std::vector<double>& v, std::vector<double>& out) const {
  return ComputeSV(v, out);
}

bool NQDiagMatrix::ComputeLTransV(const std::vector<double>& v, std::vector<double>& out) const {
  return ComputeSV(v, out);
}

// ---- Bilinear forms -----------------------------------------------------------------------------

double NQDiagMatrix::ComputeVSWParts(const double* v, int nv, int row, const double* w, int nw,
                                     int col) const {
  if (!IsRun(fNRows, row, nv) || !IsRun(fNRows, col, nw)) return NQMV::Missing();
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
    if (!m.GetRow(i, row)) return false;
    ScaleBy(fvData, row);
    for (double& x : row) x *= GetElem(i);
    return true;
  });
}

// Row i of the result is G times the scaled row i of G.
bool NQDiagMatrix::ComputeGSG(const INQSymMatrix& g, INQSymMatrix& out) const {
  if (!IsValidMatrix() || g.GetNRows() != fNRows) return false;
  if (const NQDiagMatrix* diagonal = AsDiagonal(g)) {
    NQDiagMatrix product(*diagonal);
    ScaleBy(product.fvData, product.fvData);
    ScaleBy(fvData, product.fvData);
    return PutDiagonal(std::move(product), out);
  }
  const auto putScaledRow = [&](int i, std::vector<double>& row) {
    if (!g.GetRow(i, row)) return false;
    ScaleBy(fvData, row);
    return true;
  };
  if (const NQSymMatrix* dense = AsDenseSym(g)) {
    NQRectMatrix gd;
    return PutRows(fNRows, fNRows, &gd, putScaledRow) &&
           MultiplyInto(RowsAt(gd.GetRowPtr(0), Order()), TriangleAt(dense->AsVectorConst().data()),
                        Order(), Order(), AsDenseSym(out));
  }
  return PutRows(fNRows, AsDenseSym(out), [&](int i, std::vector<double>& row) {
    return putScaledRow(i, row) && g.ComputeSV(row, row);
  });
}

bool NQDiagMatrix::ComputeMGN(const INQSymMatrix& m, const INQSymMatrix& n,
                              INQRectMatrix& out) const {
  if (!IsValidMatrix() || m.GetNRows() != fNRows || n.GetNRows() != fNRows) return false;
  return PutRows(fNRows, fNRows, AsDenseRect(out), [&](int i, std::vector<double>& row) {
    if (!m.GetRow(i, row)) return false;
    ScaleBy(fvData, row);
    return n.ComputeSV(row, row);
  });
}

bool NQDiagMatrix::ComputeGMGNG(const INQSymMatrix& m, const INQSymMatrix& n,
                                INQRectMatrix& out) const {
  NQRectMatrix mgn;
  return ComputeMGN(m, n, mgn) && ScaleRows(fvData, mgn, &mgn) &&
         ScaleColumns(mgn, fvData, AsDenseRect(out));
}

bool NQDiagMatrix::ComputeSS(const INQSymMatrix& b, INQRectMatrix& out) const {
  if (!IsValidMatrix() || b.GetNRows() != fNRows) return false;
  return PutRows(fNRows, fNRows, AsDenseRect(out), [&](int i, std::vector<double>& row) {
    if (!b.GetRow(i, row)) return false;
    for (double& x : row) x *= GetElem(i);
    return true;
  });
}

bool NQDiagMatrix::ComputeSTransS(INQSymMatrix& out) const {
  if (!IsValidMatrix()) return false;
  NQDiagMatrix squares(*this);
  squares.LTLLTrans();
  return PutDiagonal(std::move(squares), out);
}

double NQDiagMatrix::TraceOfProductOfThree(const INQSymMatrix& a, const INQSymMatrix& b) const {
  if (a.GetNRows() != fNRows || b.GetNRows() != fNRows || !IsValidMatrix()) return NQMV::Missing();
  double sum = 0;
  for (int i = 0; i < fNRows; ++i) {
    const double product = a.ComputeRowDotProductS(i, b, i);
    if (NQMV::IsMissing(product)) return product;
    sum += GetElem(i) * product;
  }
  return sum;
}

// ---- Products with a rectangular matrix --------------------------------------------------------

bool NQDiagMatrix::ComputeRS(const INQRectMatrix& r, INQRectMatrix& out) const {
  return IsValidMatrix() && r.GetNCols() == fNRows && ScaleColumns(r, fvData, AsDenseRect(out));
}

bool NQDiagMatrix::ComputeRTransS(const INQRectMatrix& r, INQRectMatrix& out) const {
  NQRectMatrix product;
  NQRectMatrix* dense = AsDenseRect(out);
  if (!dense || !IsValidMatrix() || r.GetNRows() != fNRows || !ScaleRows(fvData, r, &product) ||
      !product.Transpose())
    return false;
  *dense = std::move(product);
  return true;
}

namespace {

// d' line[first .. first+count-1]; system-missing where it does not fit.
double PartTimesDiagonal(const std::vector<double>& line, int first, int count,
                         const std::vector<double>& d) {
  if (count < 0 || static_cast<std::size_t>(count) > d.size() ||
      !HoldsRun(line.size(), first, static_cast<std::size_t>(count)))
    return NQMV::Missing();
  return DotProduct(static_cast<std::size_t>(count), line.data() + first, d.data());
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
  NQDiagMatrix part(*this);
  return k >= 0 && k <= fNRows && part.IsValidMatrix() && part.Resize(k) &&
         PutDiagonal(std::move(part), out);
}

bool NQDiagMatrix::ExtractSubmatrix(const std::vector<int>& indices, INQSymMatrix& out) const {
  if (!AllBelow(fNRows, indices) || !FitsInt(static_cast<long long>(indices.size()))) return false;
  const auto order = static_cast<int>(indices.size());
  const auto at = [&](int a) { return indices[static_cast<std::size_t>(a)]; };
  if (NQDiagMatrix* diagonal = AsDiagonal(out)) {
    NQBitSet taken(fNRows);
    NQDiagMatrix part(order, false);
    if (taken.Size() < fNRows || !part.IsValidMatrix()) return false;
    for (int a = 0; a < order; ++a) {
      if (taken.IsIn(at(a))) return false;
      taken.Set(at(a), true);
      part.SetElem(a, GetElem(at(a)));
    }
    *diagonal = std::move(part);
    return true;
  }
  return PutRows(order, AsDenseSym(out), [&](int a, std::vector<double>& row) {
    row.resize(indices.size());
    for (int b = 0; b <= a; ++b) row[static_cast<std::size_t>(b)] = GetElem(at(a), at(b));
    return true;
  });
}

}  // namespace NQMath_940
