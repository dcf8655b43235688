#include <nqcommon/math/matrix/NQSymMatrix.h>

#include <algorithm>

#include <nqcommon/common/NQMV.h>
#include <nqcommon/math/kernels/packed_algebra.h>
#include <nqcommon/math/kernels/packed_triangle.h>
#include <nqcommon/math/matrix/NQRectMatrix.h>
#include <nqcommon/math/matrix/internal/matrix_entries.h>
#include <nqcommon/math/matrix/internal/matrix_results.h>
#include <nqcommon/math/numeric/NQMathFun.h>

namespace NQMath_940 {

using namespace internal;
using NQCommon_940::NQMV;

namespace {

// s(i, first) .. s(i, first+count-1) times v.
double PartOfRowTimes(const std::vector<double>& s, int i, std::size_t first, std::size_t count,
                      const double* v) {
  double sum = 0;
  ForEachInRowPart(s.data(), static_cast<std::size_t>(i), first, first + count,
                   [&](std::size_t, double x) { sum += x * *v++; });
  return sum;
}

}  // namespace

// ---- Rows and vectors --------------------------------------------------------------------------

double NQSymMatrix::ComputeRowDotProductS(int i, const INQSymMatrix& other, int j) const {
  double before = 0, after = 0;
  return ComputeRowDotProductS(i, other, j, fNRows, before, after) ? before : NQMV::Missing();
}

bool NQSymMatrix::ComputeRowDotProductS(int i, const INQSymMatrix& other, int j, int split,
                                        double& before, double& after) const {
  std::vector<double> row;
  return other.GetNRows() == fNRows && other.GetRow(j, row) &&
         ComputeRowDotProductS(i, row, 0, split, before, after);
}

bool NQSymMatrix::ComputeRowDotProductS(int i, const std::vector<double>& v, int first, int split,
                                        double& before, double& after) const {
  if (!HasRow(i) || !HoldsRun(Order(), first, v.size())) return false;
  const auto start = static_cast<std::size_t>(first);
  const std::size_t nBefore =
      split <= first ? 0 : std::min(static_cast<std::size_t>(split) - start, v.size());
  before = PartOfRowTimes(fvData, i, start, nBefore, v.data());
  after = PartOfRowTimes(fvData, i, start + nBefore, v.size() - nBefore, v.data() + nBefore);
  return true;
}

double NQSymMatrix::ComputeRVD(int r, const double* x, int inc) const {
  if (!HasRow(r)) return NQMV::Missing();
  const std::ptrdiff_t first = inc >= 0 ? 0 : (1 - static_cast<std::ptrdiff_t>(fNRows)) * inc;
  double sum = 0;
  ForEachInRow(fvData.data(), Order(), static_cast<std::size_t>(r), [&](std::size_t j, double s) {
    sum += s * x[first + static_cast<std::ptrdiff_t>(j) * inc];
  });
  return sum;
}

bool NQSymMatrix::ComputeSV(const std::vector<double>& v, int nRows,
                            std::vector<double>& out) const {
  return HasOrder(v.size()) && nRows >= 0 && nRows <= fNRows &&
         MakeVector(static_cast<std::size_t>(nRows), out, [&](std::vector<double>& product) {
           SymTimesVector(fvData.data(), Order(), v.data(), product.size(), product.data());
         });
}

bool NQSymMatrix::ComputeLV(const std::vector<double>& v, std::vector<double>& out) const {
  return HasOrder(v.size()) && MakeVector(Order(), out, [&](std::vector<double>& product) {
           LowerTimesVector(fvData.data(), Order(), v.data(), product.data());
         });
}

bool NQSymMatrix::ComputeLTransV(const std::vector<double>& v, std::vector<double>& out) const {
  return HasOrder(v.size()) && MakeVector(Order(), out, [&](std::vector<double>& product) {
           LowerTransTimesVector(fvData.data(), Order(), v.data(), product.data());
         });
}

bool NQSymMatrix::ComputeLTransV(const std::vector<int>& indices, const std::vector<double>& values,
                                 std::vector<double>& out) const {
  if (!IsValidMatrix() || indices.size() != values.size() || !AllBelow(fNRows, indices))
    return false;
  return MakeVector(Order(), out, [&](std::vector<double>& product) {
    for (std::size_t k = 0; k < indices.size(); ++k) {
      const auto i = static_cast<std::size_t>(indices[k]);
      AddScaled(i + 1, values[k], fvData.data() + RowStart(i), product.data());
    }
  });
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

double NQSymMatrix::ComputeVSWParts(const double* v, int nv, int row, const double* w, int nw,
                                    int col) const {
  if (!IsRun(fNRows, row, nv) || !IsRun(fNRows, col, nw)) return NQMV::Missing();
  double sum = 0;
  for (int i = 0; i < nv; ++i)
    sum += v[i] * PartOfRowTimes(fvData, row + i, static_cast<std::size_t>(col),
                                 static_cast<std::size_t>(nw), w);
  return sum;
}

// ---- Products of matrices ----------------------------------------------------------------------

bool NQSymMatrix::ComputeGMG(const INQSymMatrix& m, INQSymMatrix& out) const {
  if (m.GetNRows() != fNRows || !IsValidMatrix()) return false;
  const Entries M(m);
  return M.AreThere() && Conjugate(TriangleAt(fvData.data()), M.Triangle(), Order(), out);
}

// A diagonal or block-diagonal G knows better how to multiply.
bool NQSymMatrix::ComputeGSG(const INQSymMatrix& g, INQSymMatrix& out) const {
  return g.ComputeGMG(*this, out);
}

// Row i of S A times row i of B, S A made at once where A is dense and there is room.
double NQSymMatrix::TraceOfProductOfThree(const INQSymMatrix& a, const INQSymMatrix& b) const {
  if (a.GetNRows() != fNRows || b.GetNRows() != fNRows || !IsValidMatrix()) return NQMV::Missing();
  double sum = 0;
  NQRectMatrix sa;
  const NQSymMatrix* dense = AsDenseSym(a);
  const bool isMade =
      dense && MultiplyInto(TriangleAt(fvData.data()), TriangleAt(dense->fvData.data()), Order(),
                            Order(), Order(), &sa);
  std::vector<double> row, product;
  for (int i = 0; i < fNRows; ++i) {
    if (!isMade && !(GetRow(i, row) && a.ComputeSV(row, product))) return NQMV::Missing();
    if (!b.GetRow(i, row)) return NQMV::Missing();
    sum += DotProduct(Order(), isMade ? sa.GetRowPtr(i) : product.data(), row.data());
  }
  return sum;
}

}  // namespace NQMath_940
