#include <nqcommon/math/matrix/NQSymMatrix.h>

#include <nqcommon/math/matrix/internal/matrix_entries.h>
#include <nqcommon/math/matrix/internal/matrix_results.h>
#include <nqcommon/math/matrix/internal/sparse_products.h>

namespace NQMath_940 {

using namespace internal;

namespace {

// Whether a and b have the order of s, and all storage.
bool SameOrder(const INQSymMatrix& s, const INQSymMatrix& a, const INQSymMatrix& b) {
  return s.IsValidMatrix() && a.GetNRows() == s.GetNRows() && b.GetNRows() == s.GetNRows();
}

Operand RowsIn(const NQRectMatrix& r) { return RowsAt(r.GetRowPtr(0), ColsOf(r)); }

}  // namespace

// ---- Products of symmetric matrices ------------------------------------------------------------

bool NQSymMatrix::ComputeSS(const INQSymMatrix& b, INQRectMatrix& out) const {
  if (!SameOrder(*this, b, b)) return false;
  const Entries B(b);
  return B.AreThere() && MultiplyInto(TriangleAt(fvData.data()), B.Triangle(), Order(), Order(),
                                      Order(), AsDenseRect(out));
}

bool NQSymMatrix::ComputeSTransS(INQSymMatrix& out) const {
  const Operand s = TriangleAt(fvData.data());
  return IsValidMatrix() && MultiplyInto(s, s, Order(), Order(), AsDenseSym(out));
}

bool NQSymMatrix::ComputeMGN(const INQSymMatrix& m, const INQSymMatrix& n,
                             INQRectMatrix& out) const {
  if (!SameOrder(*this, m, n)) return false;
  NQRectMatrix mg;
  const Entries M(m), N(n);
  return M.AreThere() && N.AreThere() &&
         MultiplyInto(M.Triangle(), TriangleAt(fvData.data()), Order(), Order(), Order(), &mg) &&
         MultiplyInto(RowsIn(mg), N.Triangle(), Order(), Order(), Order(), AsDenseRect(out));
}

bool NQSymMatrix::ComputeGMGNG(const INQSymMatrix& m, const INQSymMatrix& n,
                               INQRectMatrix& out) const {
  NQRectMatrix mgn, gmgn;
  const Operand g = TriangleAt(fvData.data());
  return ComputeMGN(m, n, mgn) && MultiplyInto(g, RowsIn(mgn), Order(), Order(), Order(), &gmgn) &&
         MultiplyInto(RowsIn(gmgn), g, Order(), Order(), Order(), AsDenseRect(out));
}

// ---- Products with a rectangular matrix --------------------------------------------------------

bool NQSymMatrix::ComputeRS(const INQRectMatrix& r, INQRectMatrix& out) const {
  if (!IsValidMatrix() || r.GetNCols() != fNRows) return false;
  if (const NQSparseRectMatrix* sparse = AsSparse(r))
    return SparseTimes(*sparse, *this, AsDenseRect(out));
  const Entries R(r);
  return R.AreThere() && MultiplyInto(R.Rows(), TriangleAt(fvData.data()), RowsOf(r), Order(),
                                      Order(), AsDenseRect(out));
}

bool NQSymMatrix::ComputeRTransS(const INQRectMatrix& r, INQRectMatrix& out) const {
  if (!IsValidMatrix() || r.GetNRows() != fNRows) return false;
  if (const NQSparseRectMatrix* sparse = AsSparse(r))
    return SparseTransTimes(*sparse, *this, AsDenseRect(out));
  const Entries R(r);
  return R.AreThere() && MultiplyInto(R.Transpose(), TriangleAt(fvData.data()), ColsOf(r), Order(),
                                      Order(), AsDenseRect(out));
}

bool NQSymMatrix::ComputeRTransByR(const INQRectMatrix& r) {
  if (!r.IsValidMatrix()) return false;
  if (const NQSparseRectMatrix* sparse = AsSparse(r)) {
    return PutFilled(NQSymMatrix(r.GetNCols(), true), this, [&](NQSymMatrix& sum) {
      for (int i = 0; i < r.GetNRows(); ++i)
        AddOuter(StoredIn(*sparse, i), 0, 1.0, sum.fvData.data());
    });
  }
  const Entries R(r);
  return R.AreThere() && MultiplyInto(R.Transpose(), R.Rows(), ColsOf(r), RowsOf(r), this);
}

bool NQSymMatrix::ComputeRByRTrans(const INQRectMatrix& r) {
  if (!r.IsValidMatrix()) return false;
  NQRectMatrix square;
  if (AsSparse(r)) return r.ComputeProductMatrixTrans(r, square) && PutLower(square, *this);
  const Entries R(r);
  return R.AreThere() && MultiplyInto(R.Rows(), R.Transpose(), RowsOf(r), ColsOf(r), this);
}

bool NQSymMatrix::ExpandSymToRect(NQRectMatrix& out) const {
  return IsValidMatrix() && PutRows(fNRows, fNRows, &out, [this](int i, std::vector<double>& row) {
           return GetRow(i, row);
         });
}

}  // namespace NQMath_940
