#include <nqcommon/math/matrix/INQSymMatrix.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

#include <nqcommon/common/NQMV.h>
#include <nqcommon/math/kernels/scaling.h>
#include <nqcommon/math/matrix/internal/display_rows.h>
#include <nqcommon/math/matrix/internal/factor_rules.h>
#include <nqcommon/math/matrix/internal/matrix_entries.h>
#include <nqcommon/math/matrix/internal/matrix_results.h>
#include <nqcommon/math/matrix/internal/sparse_run.h>

namespace NQMath_940 {

using namespace internal;
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

void INQSymMatrix::GetDiagonal(std::vector<double>& out) const {
  out.clear();
  MakeVector(OrderOf(*this), out, [this](std::vector<double>& diagonal) {
    for (int i = 0; i < GetNRows(); ++i) diagonal[static_cast<std::size_t>(i)] = GetElem(i, i);
  });
}

void INQSymMatrix::AddToDiagonal(double x) {
  for (int i = 0; i < GetNRows(); ++i) SetElem(i, i, GetElem(i, i) + x);
}

bool INQSymMatrix::ZeroOut(int i) { return SetRowColToConst(i, 0.0); }

void INQSymMatrix::GetNCheckDiagonal(std::vector<double>& out, double /*a*/, double /*b*/) const {
  GetDiagonal(out);
  std::fill(out.begin(), out.end(), LargestFromZero(out));
}

void INQSymMatrix::MaxMinDiag(double& max, double& min) const {
  Extremes diagonal;
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
  if (aliased >= 0) minPivot = SmallestPivot(*this);
  return aliased;
}

bool INQSymMatrix::LTInverse() {
  NQDeterminant det;
  LTDetInverse(det, 10);
  return IsValidMatrix();
}

// ---- Cholesky inverse ---------------------------------------------------------------------------

namespace {

// InvertInto inverts a copy of s, which factor(copy) factors. A structured copy goes to `out` at
// the end; a dense one is made there.
template <class Factor>
int InvertInto(const INQSymMatrix& s, INQSymMatrix& out, Factor factor) {
  const auto invert = [&](INQSymMatrix& copy) {
    if (!copy.IsValidMatrix()) return -1;
    const int aliased = factor(copy);
    if (aliased < 0) return aliased;
    copy.LTInverse();
    copy.LTLTransL();
    return copy.GetNRows() - aliased;
  };
  if (const NQDiagMatrix* diagonal = AsDiagonal(s)) {
    NQDiagMatrix copy(*diagonal);
    const int rank = TakesDiagonal(out) ? invert(copy) : -1;
    return rank < 0 || PutDiagonal(std::move(copy), out) ? rank : -1;
  }
  if (const NQSymBlockDiagMatrix* blocks = AsBlockDiag(s)) {
    NQSymBlockDiagMatrix copy(*blocks);
    const int rank = TakesBlocks(out) ? invert(copy) : -1;
    return rank < 0 || PutBlocks(std::move(copy), out) ? rank : -1;
  }
  const NQSymMatrix* from = AsDenseSym(s);
  NQSymMatrix* dense = AsDenseSym(out);
  if (!from || !dense) return -1;
  *dense = *from;
  return invert(*dense);
}

}  // namespace

int INQSymMatrix::CholInverse(const std::vector<double>& t, double eps, INQSymMatrix& out) const {
  return InvertInto(*this, out, [&](INQSymMatrix& s) { return s.LTChol(t, eps, false); });
}

int INQSymMatrix::CholInverse(const std::vector<double>& t, double eps, INQSymMatrix& out,
                              NQBitSet& nonRedundant) const {
  return InvertInto(*this, out,
                    [&](INQSymMatrix& s) { return s.LTChol(t, eps, nonRedundant, false); });
}

int INQSymMatrix::CholInverse(const std::vector<double>& t, double eps, INQSymMatrix& out,
                              double& minPivot) const {
  minPivot = NQMV::Missing();
  return InvertInto(*this, out, [&](INQSymMatrix& s) {
    const int aliased = s.LTChol(t, eps, false);
    if (aliased >= 0) minPivot = SmallestPivot(s);
    return aliased;
  });
}

// ---- Rows and vectors ---------------------------------------------------------------------------

double INQSymMatrix::ComputeRowDotProductS(int i, const std::vector<double>& v) const {
  return IsValidMatrix() && v.size() == OrderOf(*this) ? ComputeRVD(i, v.data(), 1)
                                                       : NQMV::Missing();
}

double INQSymMatrix::ComputeDotProduct2Rows(int i, int j) const {
  return ComputeRowDotProductS(i, *this, j);
}

double INQSymMatrix::ComputeRVD(int r, const std::vector<double>& x, int inc) const {
  const bool fits = IsValidMatrix() && HoldsStrided(x.size(), OrderOf(*this), inc);
  return fits ? ComputeRVD(r, x.data(), inc) : NQMV::Missing();
}

bool INQSymMatrix::ComputeSV(const std::vector<double>& v, std::vector<double>& out) const {
  return ComputeSV(v, GetNRows(), out);
}

bool INQSymMatrix::ComputeLV(const std::vector<int>& indices, const std::vector<double>& values,
                             std::vector<double>& out) const {
  std::vector<double> v;
  return Densify(indices, values, GetNRows(), v) && ComputeLV(v, out);
}

bool INQSymMatrix::ComputeLTransV(const std::vector<int>& indices,
                                  const std::vector<double>& values,
                                  std::vector<double>& out) const {
  std::vector<double> v;
  return Densify(indices, values, GetNRows(), v) && ComputeLTransV(v, out);
}

// ---- Quadratic and bilinear forms ---------------------------------------------------------------

double INQSymMatrix::ComputeVSV(const std::vector<double>& v) const { return ComputeVSW(v, v); }

double INQSymMatrix::ComputeVSV(const INQRectMatrix& r, int i) const {
  const NQSparseRectMatrix* sparse = AsSparse(r);
  if (sparse && i >= 0 && i < r.GetNRows() && r.GetNCols() == GetNRows()) {
    const SparseRun run = StoredIn(*sparse, i);
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

namespace {

// out = F S F', with F the lower triangle of l as factorOf reads it.
bool ConjugateByFactor(const INQSymMatrix& l, Operand (Entries::*factorOf)() const,
                       const INQSymMatrix& s, INQSymMatrix& out) {
  if (l.GetNRows() != s.GetNRows() || !s.IsValidMatrix()) return false;
  if (l.GetType() == 1) return l.ComputeGMG(s, out);
  const Entries L(l), S(s);
  return L.AreThere() && S.AreThere() && Conjugate((L.*factorOf)(), S.Triangle(), OrderOf(s), out);
}

}  // namespace

bool INQSymMatrix::ComputeLSLTrans(const INQSymMatrix& l, INQSymMatrix& out) const {
  return ConjugateByFactor(l, &Entries::Lower, *this, out);
}

bool INQSymMatrix::ComputeLTransSL(const INQSymMatrix& l, INQSymMatrix& out) const {
  return ConjugateByFactor(l, &Entries::Upper, *this, out);
}

bool INQSymMatrix::ComputeRSRTrans(const INQRectMatrix& r, INQSymMatrix& out) const {
  NQRectMatrix rs;
  if (!ComputeRS(r, rs)) return false;
  if (AsSparse(r)) return rs.ComputeProductMatrixTrans(r, rs) && PutLower(rs, out);
  const Entries R(r);
  return R.AreThere() && MultiplyInto(RowsAt(rs.GetRowPtr(0), OrderOf(*this)), R.Transpose(),
                                      RowsOf(r), OrderOf(*this), AsDenseSym(out));
}

bool INQSymMatrix::ComputeRTransSR(const INQRectMatrix& r, INQSymMatrix& out) const {
  NQRectMatrix rs;
  if (!ComputeRTransS(r, rs)) return false;
  if (AsSparse(r)) return rs.ComputeMatrixProduct(r, rs) && PutLower(rs, out);
  const Entries R(r);
  return R.AreThere() && MultiplyInto(RowsAt(rs.GetRowPtr(0), OrderOf(*this)), R.Rows(), ColsOf(r),
                                      OrderOf(*this), AsDenseSym(out));
}

bool INQSymMatrix::ComputeRTransSV(const INQRectMatrix& r, const std::vector<double>& v,
                                   std::vector<double>& out) const {
  std::vector<double> sv;
  return r.GetNRows() == GetNRows() && ComputeSV(v, sv) && r.ComputeVR(sv, out);
}

// ---- Diagnostic display -------------------------------------------------------------------------

void INQSymMatrix::DisplayF() const {
  const char* const name = AsDiagonal(*this)    ? "NQDiagMatrix"
                           : AsBlockDiag(*this) ? "NQSymBlockDiagMatrix"
                                                : "NQSymMatrix";
  DisplayAllRows(name, *this);
}

}  // namespace NQMath_940
