#include <nqcommon/math/matrix/NQRectMatrix.h>

#include <exception>
#include <utility>

#include <nqcommon/math/kernels/packed_algebra.h>
#include <nqcommon/math/matrix/NQSymMatrix.h>
#include <nqcommon/math/matrix/linpack/Blas1.h>
#include <nqcommon/math/matrix/linpack/Linpack.h>

namespace NQMath_940 {

using internal::AddScaled;
using internal::DotProduct;

// ---- Linear systems ----------------------------------------------------------------------------

// LINPACK goes by columns and sees the entries as R', so its transposed solve is that of R x = b.
bool NQRectMatrix::SolveLinearSquare(const std::vector<double>& b, std::vector<double>& x,
                                     double eps) const {
  if (!(eps >= 0) || fNRows < 1 || fNRows != fNCols || b.size() != Rows()) return false;
  NQRectMatrix factor(*this);
  if (!factor.IsValidMatrix()) return false;
  std::vector<int> pivots(Rows());
  std::vector<double> scratch(Rows());
  double rcond = 0;
  Linpack::Dgeco(factor.fvData.data(), fNRows, fNRows, pivots.data(), rcond, scratch.data());
  if (!(rcond > eps)) return false;
  x = b;
  Linpack::Dgesl(factor.fvData.data(), fNRows, fNRows, pivots.data(), x.data(), 1);
  return true;
}

int NQRectMatrix::EstimateLinearGI(const std::vector<double>& b, std::vector<double>& x,
                                   double eps) const {
  if (fNRows < 1 || fNCols < 1 || !(eps > 0) || b.size() != Rows()) return -1;
  if (fNRows == fNCols && SolveLinearSquare(b, x, eps)) return 0;
  NQSymMatrix s;
  std::vector<double> c;
  return s.ComputeRTransByR(*this) && ComputeVR(b, c) ? s.LTSolve(c, eps, x) : -1;
}

// ---- Orthogonal factors ------------------------------------------------------------------------

// LINPACK goes by columns: the rows of the transpose are the columns of R.
bool NQRectMatrix::QRDecompositionH(NQSymMatrix& s, NQRectMatrix& q) const {
  NQRectMatrix columns(*this), result(fNCols, fNRows, true);
  NQSymMatrix triangle(fNCols, true);
  if (!IsValidMatrix() || fNRows < fNCols || !columns.Transpose() || !result.IsValidMatrix() ||
      !triangle.IsValidMatrix())
    return false;
  std::vector<double> diagonalOfQ(Cols());
  double* x = columns.fvData.data();
  Linpack::Dqrdc(x, fNRows, fNRows, fNCols, diagonalOfQ.data(), nullptr, nullptr, 0);
  for (int j = 0; j < fNCols; ++j) {
    double* column = result.GetRowPtr(j);
    column[j] = 1;
    Linpack::Dqrsl(x, fNRows, fNRows, fNCols, diagonalOfQ.data(), column, column, nullptr, nullptr,
                   nullptr, nullptr, 10000);
    const bool negative = columns.GetElem(j, j) < 0;
    for (int i = j; i < fNCols; ++i)
      triangle.SetElem(i, j, negative ? -columns.GetElem(i, j) : columns.GetElem(i, j));
    if (negative) Blas1::DScal(fNRows, -1, column, 1);
  }
  if (!result.Transpose()) return false;
  s = std::move(triangle);
  q = std::move(result);
  return true;
}

namespace {

// Basis is an orthonormal basis of vectors of length n. Remove does Gram-Schmidt twice, which
// leaves what remains orthogonal to working precision (Daniel, Gragg, Kaufman and Stewart 1976).
class Basis {
 public:
  explicit Basis(std::size_t n) : fN(n) {}

  void Remove(double* x) const {
    for (int pass = 0; pass < 2; ++pass) {
      for (std::size_t at = 0; at < fvVectors.size(); at += fN)
        AddScaled(fN, -DotProduct(fN, &fvVectors[at], x), &fvVectors[at], x);
    }
  }

  // Adds the direction of what remains of x, when its norm is above the threshold.
  bool Add(std::vector<double> x, double threshold) {
    Remove(x.data());
    const double norm = Norm(x.data());
    if (!(norm > threshold)) return false;
    for (double& xk : x) xk /= norm;
    fvVectors.insert(fvVectors.end(), x.begin(), x.end());
    return true;
  }

  double Norm(const double* x) const { return Blas1::DNrm2(static_cast<int>(fN), x, 1); }

 private:
  std::size_t fN;
  std::vector<double> fvVectors;
};

}  // namespace

int NQRectMatrix::ResidOfOrthProjection(const NQRectMatrix& x, double eps, NQBitSet& independent,
                                        NQBitSet& remaining) {
  if (!(eps > 0) || !IsValidMatrix() || x.fNRows != fNRows) return -1;
  NQRectMatrix residual(*this);
  NQBitSet ofX(x.fNCols), ofR(fNCols);
  try {
    std::vector<double> column;
    Basis space(Rows());
    for (int j = 0; j < x.fNCols; ++j) {
      x.GetCol(j, column);
      ofX.Set(j, space.Add(column, eps * space.Norm(column.data())));
    }
    Basis both(space);
    for (int j = 0; j < fNCols; ++j) {
      GetCol(j, column);
      const double norm = space.Norm(column.data());
      space.Remove(column.data());
      for (int i = 0; i < fNRows; ++i) residual.SetElem(i, j, column[static_cast<std::size_t>(i)]);
      ofR.Set(j, both.Add(column, eps * norm));
    }
  } catch (const std::exception&) {
    return -1;
  }
  if (!residual.IsValidMatrix()) return -1;
  *this = std::move(residual);
  independent = ofX;
  remaining = ofR;
  return fNCols - ofR.InSet();
}

}  // namespace NQMath_940
