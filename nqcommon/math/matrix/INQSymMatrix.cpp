#include <nqcommon/math/matrix/INQSymMatrix.h>

#include <algorithm>
#include <cmath>
#include <numbers>

#include <nqcommon/common/NQMV.h>
#include <nqcommon/math/kernels/scaling.h>
#include <nqcommon/math/matrix/internal/factor_rules.h>
#include <nqcommon/math/matrix/internal/matrix_entries.h>
#include <nqcommon/math/matrix/internal/matrix_results.h>
#include <nqcommon/math/matrix/internal/sparse_run.h>

namespace NQMath_940 {

using internal::AsDenseSym;
using internal::AsSparse;
using internal::ColsOf;
using internal::Entries;
using internal::HoldsRun;
using internal::OrderOf;
using internal::RowsAt;
using internal::RowsOf;
using NQCommon_940::NQMV;

double LogDeterminant(const NQDeterminant& det) {
  return std::log(std::fabs(det.first)) + det.second * std::numbers::ln10;
}

INQSymMatrix::~INQSymMatrix() = default;

// ---- Mechanical operations ----------------------------------------------------------------------

bool INQSymMatrix::SetNRows(int n, bool clear) {
  const bool resized = Resize(n);
  if (resized && clear) Clear();
  return resized;
}

bool INQSymMatrix::ZeroOut(int i) { return SetRowColToConst(i, 0.0); }

void INQSymMatrix::GetNCheckDiagonal(std::vector<double>& out, double /*a*/, double /*b*/) const {
  GetDiagonal(out);
  std::fill(out.begin(), out.end(), internal::LargestFromZero(out));
}

void INQSymMatrix::MaxMinDiag(double& max, double& min) const {
  internal::Extremes diagonal;
  for (int i = 0; i < GetNRows(); ++i) diagonal.Add(GetElem(i, i));
  max = diagonal.Max();
  min = diagonal.Min();
}

double INQSymMatrix::Trace() const {
  double sum = 0;
  for (int i = 0; i < GetNRows(); ++i) sum += GetElem(i, i);
  return sum;
}

// ---- Factor -------------------------------------------------------------------------------------

int INQSymMatrix::LTChol(double eps, double& minPivot, bool check) {
  minPivot = NQMV::Missing();
  std::vector<double> t;
  GetNCheckDiagonal(t, eps, 1.0);
  const int aliased = LTChol(t, eps, check);
  if (aliased >= 0) minPivot = internal::SmallestPivot(*this);
  return aliased;
}

bool INQSymMatrix::LTInverse() {
  NQDeterminant det;
  LTDetInverse(det, 10);
  return IsValidMatrix();
}

// ---- Rows and vectors ---------------------------------------------------------------------------

double INQSymMatrix::ComputeDotProduct2Rows(int i, int j) const {
  return ComputeRowDotProductS(i, *this, j);
}

double INQSymMatrix::ComputeRVD(int r, const std::vector<double>& x, int inc) const {
  const bool fits = IsValidMatrix() && internal::HoldsStrided(x.size(), OrderOf(*this), inc);
  return fits ? ComputeRVD(r, x.data(), inc) : NQMV::Missing();
}

bool INQSymMatrix::ComputeSV(const std::vector<double>& v, std::vector<double>& out) const {
  return ComputeSV(v, GetNRows(), out);
}

bool INQSymMatrix::ComputeLV(const std::vector<int>& indices, const std::vector<double>& values,
                             std::vector<double>& out) const {
  std::vector<double> v;
  return internal::Densify(indices, values, GetNRows(), v) && ComputeLV(v, out);
}

bool INQSymMatrix::ComputeLTransV(const std::vector<int>& indices,
                                  const std::vector<double>& values,
                                  std::vector<double>& out) const {
  std::vector<double> v;
  return internal::Densify(indices, values, GetNRows(), v) && ComputeLTransV(v, out);
}

// ---- Quadratic and bilinear forms ---------------------------------------------------------------

double INQSymMatrix::ComputeVSV(const std::vector<double>& v) const { return ComputeVSW(v, v); }

double INQSymMatrix::ComputeVSV(const INQRectMatrix& r, int i) const {
  const NQSparseRectMatrix* sparse = AsSparse(r);
  if (sparse && i >= 0 && i < r.GetNRows() && r.GetNCols() == GetNRows()) {
    const internal::SparseRun run = internal::StoredIn(*sparse, i);
    double sum = 0;
    run.ForEach([&](std::size_t j, double x) {
      run.ForEach([&](std::size_t k, double y) {
        sum += x * GetElem(static_cast<int>(j), static_cast<int>(k)) * y;
      });
    });
    return sum;
  }
  std::vector<double> row;
  return r.GetRow(i, row) ? ComputeVSV(row) : NQMV::Missing();
}

double INQSymMatrix::ComputeVSW(const std::vector<double>& v, const std::vector<double>& w) const {
  if (!IsValidMatrix() || v.size() != OrderOf(*this) || w.size() != OrderOf(*this))
    return NQMV::Missing();
  return ComputeVSW(v.data(), GetNRows(), w.data(), GetNRows());
}

double INQSymMatrix::ComputeVSW(const double* v, int nv, const double* w, int nw) const {
  return ComputeVSWParts(v, nv, 0, w, nw, 0);
}

double INQSymMatrix::ComputeVSW(const std::vector<double>& v, int first, int second) const {
  const std::size_t n = OrderOf(*this);
  if (!IsValidMatrix() || !HoldsRun(v.size(), first, n) || !HoldsRun(v.size(), second, n))
    return NQMV::Missing();
  return ComputeVSW(v.data() + first, GetNRows(), v.data() + second, GetNRows());
}

double INQSymMatrix::ComputeVSWParts(const std::vector<double>& v, int row,
                                     const std::vector<double>& w, int col) const {
  if (!IsValidMatrix() || v.size() > OrderOf(*this) || w.size() > OrderOf(*this))
    return NQMV::Missing();
  return ComputeVSWParts(v.data(), static_cast<int>(v.size()), row, w.data(),
                         static_cast<int>(w.size()), col);
}

double INQSymMatrix::TraceOfProduct(const INQSymMatrix& a) const {
  if (a.GetNRows() != GetNRows() || !IsValidMatrix()) return NQMV::Missing();
  double sum = 0;
  for (int i = 0; i < GetNRows(); ++i) {
    const double term = ComputeRowDotProductS(i, a, i);
    if (NQMV::IsMissing(term)) return term;
    sum += term;
  }
  return sum;
}

// ---- Products with matrices ---------------------------------------------------------------------

bool INQSymMatrix::ComputeLSLTrans(const INQSymMatrix& l, INQSymMatrix& out) const {
  if (l.GetNRows() != GetNRows() || !IsValidMatrix()) return false;
  if (l.GetType() == 1) return l.ComputeGMG(*this, out);
  const Entries L(l), S(*this);
  return L.AreThere() && S.AreThere() &&
         internal::Conjugate(L.Lower(), S.Triangle(), OrderOf(*this), out);
}

bool INQSymMatrix::ComputeLTransSL(const INQSymMatrix& l, INQSymMatrix& out) const {
  if (l.GetNRows() != GetNRows() || !IsValidMatrix()) return false;
  if (l.GetType() == 1) return l.ComputeGMG(*this, out);
  const Entries L(l), S(*this);
  return L.AreThere() && S.AreThere() &&
         internal::Conjugate(L.Upper(), S.Triangle(), OrderOf(*this), out);
}

bool INQSymMatrix::ComputeRSRTrans(const INQRectMatrix& r, INQSymMatrix& out) const {
  NQRectMatrix rs;
  if (!ComputeRS(r, rs)) return false;
  if (AsSparse(r)) return rs.ComputeProductMatrixTrans(r, rs) && internal::PutLower(rs, out);
  const Entries R(r);
  return R.AreThere() &&
         internal::MultiplyInto(RowsAt(rs.GetRowPtr(0), OrderOf(*this)), R.Transpose(), RowsOf(r),
                                OrderOf(*this), AsDenseSym(out));
}

bool INQSymMatrix::ComputeRTransSR(const INQRectMatrix& r, INQSymMatrix& out) const {
  NQRectMatrix rs;
  if (!ComputeRTransS(r, rs)) return false;
  if (AsSparse(r)) return rs.ComputeMatrixProduct(r, rs) && internal::PutLower(rs, out);
  const Entries R(r);
  return R.AreThere() && internal::MultiplyInto(RowsAt(rs.GetRowPtr(0), OrderOf(*this)), R.Rows(),
                                                ColsOf(r), OrderOf(*this), AsDenseSym(out));
}

bool INQSymMatrix::ComputeRTransSV(const INQRectMatrix& r, const std::vector<double>& v,
                                   std::vector<double>& out) const {
  std::vector<double> sv;
  return r.GetNRows() == GetNRows() && ComputeSV(v, sv) && r.ComputeVR(sv, out);
}

}  // namespace NQMath_940
