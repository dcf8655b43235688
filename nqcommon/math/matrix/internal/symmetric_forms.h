// Operations of the symmetric-matrix interface that are the same for every storage: each goes
// through other operations of the interface.
#pragma once

#include <nqcommon/common/NQMV.h>
#include <nqcommon/math/matrix/internal/argument_checks.h>
#include <nqcommon/math/matrix/internal/matrix_access.h>
#include <nqcommon/math/matrix/internal/sparse_run.h>

namespace NQMath_940::internal {

// The smallest pivot of a factor, missing without rows.
inline double SmallestPivot(const INQSymMatrix& factor) {
  double max = 0, min = 0;
  factor.MaxMinDiag(max, min);
  return factor.GetNRows() > 0 ? min : NQCommon_940::NQMV::Missing();
}

// LTChol by the matrix's own reference values; the smallest pivot is missing when that fails.
inline int FactorByOwnReferences(INQSymMatrix& s, double eps, double& minPivot, bool check) {
  std::vector<double> t;
  s.GetNCheckDiagonal(t, eps, 1.0);
  const int aliased = s.LTChol(t, eps, check);
  minPivot = aliased >= 0 ? SmallestPivot(s) : NQCommon_940::NQMV::Missing();
  return aliased;
}

// ComputeRVD, ComputeVSV, ComputeVSW and ComputeVSWParts of vectors, by their pointer forms.
inline double StridedRowProduct(const INQSymMatrix& s, int r, const std::vector<double>& x,
                                int inc) {
  const bool fits = s.IsValidMatrix() && HoldsStrided(x.size(), OrderOf(s), inc);
  return fits ? s.ComputeRVD(r, x.data(), inc) : NQCommon_940::NQMV::Missing();
}

inline double FormOfRectRow(const INQSymMatrix& s, const INQRectMatrix& r, int i) {
  const NQSparseRectMatrix* sparse = AsSparse(r);
  if (sparse && i >= 0 && i < r.GetNRows() && r.GetNCols() == s.GetNRows()) {
    const SparseRun run = StoredIn(*sparse, i);
    double sum = 0;
    run.ForEach([&](std::size_t j, double x) {
      run.ForEach([&](std::size_t k, double y) {
        sum += x * s.GetElem(static_cast<int>(j), static_cast<int>(k)) * y;
      });
    });
    return sum;
  }
  std::vector<double> row;
  return r.GetRow(i, row) ? s.ComputeVSV(row) : NQCommon_940::NQMV::Missing();
}

inline double FormInOneVector(const INQSymMatrix& s, const std::vector<double>& v, int first,
                              int second) {
  const auto holds = [&](int start) { return HoldsRun(v.size(), start, OrderOf(s)); };
  if (!s.IsValidMatrix() || !holds(first) || !holds(second)) return NQCommon_940::NQMV::Missing();
  return s.ComputeVSW(v.data() + first, s.GetNRows(), v.data() + second, s.GetNRows());
}

inline double FormOfPart(const INQSymMatrix& s, const std::vector<double>& v, int row,
                         const std::vector<double>& w, int col) {
  if (!s.IsValidMatrix() || v.size() > OrderOf(s) || w.size() > OrderOf(s))
    return NQCommon_940::NQMV::Missing();
  return s.ComputeVSWParts(v.data(), static_cast<int>(v.size()), row, w.data(),
                           static_cast<int>(w.size()), col);
}

// out <- a square matrix that is symmetric but for rounding, its lower triangle.
inline bool PutLower(const NQRectMatrix& square, INQSymMatrix& out) {
  return PutRows(square.GetNRows(), AsDenseSym(out),
                 [&](int i, std::vector<double>& row) { square.GetRow(i, row); });
}

// out = R S R', R' S R and R' S v.
inline bool RSRTrans(const INQSymMatrix& s, const INQRectMatrix& r, INQSymMatrix& out) {
  NQRectMatrix rs;
  if (!s.ComputeRS(r, rs)) return false;
  if (AsSparse(r)) return rs.ComputeProductMatrixTrans(r, rs) && PutLower(rs, out);
  const Entries R(r);
  return R.AreThere() && MultiplyInto(RowsAt(rs.GetRowPtr(0), OrderOf(s)), R.Transpose(), RowsOf(r),
                                      OrderOf(s), AsDenseSym(out));
}

inline bool RTransSR(const INQSymMatrix& s, const INQRectMatrix& r, INQSymMatrix& out) {
  NQRectMatrix rs;
  if (!s.ComputeRTransS(r, rs)) return false;
  if (AsSparse(r)) return rs.ComputeMatrixProduct(r, rs) && PutLower(rs, out);
  const Entries R(r);
  return R.AreThere() && MultiplyInto(RowsAt(rs.GetRowPtr(0), OrderOf(s)), R.Rows(), ColsOf(r),
                                      OrderOf(s), AsDenseSym(out));
}

inline bool RTransSV(const INQSymMatrix& s, const INQRectMatrix& r, const std::vector<double>& v,
                     std::vector<double>& out) {
  std::vector<double> sv;
  return r.GetNRows() == s.GetNRows() && s.ComputeSV(v, sv) && r.ComputeVR(sv, out);
}

// out = L S L' and L' S L with the lower triangle of l, dense: row i of L or L' times S, then times
// the rows up to i of L or L'.
inline bool ConjugateByLower(const INQSymMatrix& s, const INQSymMatrix& l, INQSymMatrix& out) {
  if (l.GetNRows() != s.GetNRows() || !s.IsValidMatrix()) return false;
  return PutRows(s.GetNRows(), AsDenseSym(out), [&](int i, std::vector<double>& row) {
    l.GetRow(i, row);
    std::fill(row.begin() + i + 1, row.end(), 0.0);
    s.ComputeSV(row, row);
    l.ComputeLV(row, row);
  });
}

inline bool ConjugateByUpper(const INQSymMatrix& s, const INQSymMatrix& l, INQSymMatrix& out) {
  if (l.GetNRows() != s.GetNRows() || !s.IsValidMatrix()) return false;
  return PutRows(s.GetNRows(), AsDenseSym(out), [&](int i, std::vector<double>& row) {
    l.GetRow(i, row);
    std::fill(row.begin(), row.begin() + i, 0.0);
    s.ComputeSV(row, row);
    l.ComputeLTransV(row, row);
  });
}

}  // namespace NQMath_940::internal
