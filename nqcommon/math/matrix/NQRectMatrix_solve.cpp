#include <nqcommon/math/matrix/NQRectMatrix.h>

#include <utility>

#include <nqcommon/common/memory_guard.h>
#include <nqcommon/math/kernels/packed_algebra.h>
#include <nqcommon/math/matrix/NQSymMatrix.h>
#include <nqcommon/math/matrix/linpack/Blas1.h>
#include <nqcommon/math/matrix/linpack/Linpack.h>

namespace NQMath_940 {

using internal::AddScaled;
using internal::DotProduct;
using NQCommon_940::GuardMemory;

// ---- Linear systems ----------------------------------------------------------------------------

namespace {

enum class Outcome { kSolved, kSingular, kNoMemory };

// LINPACK goes by columns and sees the entries of the square R as R', so its transposed solve is
// that of R x = b. `factor` is R.
Outcome SolveSquare(NQRectMatrix factor, const std::vector<double>& b, std::vector<double>& x,
                    double eps) {
  if (!factor.IsValidMatrix()) return Outcome::kNoMemory;
  return GuardMemory(Outcome::kNoMemory, [&] {
    const int n = factor.GetNRows();
    double* a = factor.GetRowPtr(0);
    std::vector<int> pivots(b.size());
    std::vector<double> scratch(b.size());
    double rcond = 0;
    Linpack::Dgeco(a, n, n, pivots.data(), rcond, scratch.data());
    if (!(rcond > eps)) return Outcome::kSingular;
    x = b;
    Linpack::Dgesl(a, n, n, pivots.data(), x.data(), 1);
    return Outcome::kSolved;
  });
}

}  // namespace

bool NQRectMatrix::SolveLinearSquare(const std::vector<double>& b, std::vector<double>& x,
                                     double eps) const {
  return eps >= 0 && fNRows >= 1 && fNRows == fNCols && b.size() == Rows() &&
         SolveSquare(*this, b, x, eps) == Outcome::kSolved;
}

int NQRectMatrix::EstimateLinearGI(const std::vector<double>& b, std::vector<double>& x,
                                   double eps) const {
  if (fNRows < 1 || fNCols < 1 || !(eps > 0) || b.size() != Rows()) return -1;
  if (fNRows == fNCols) {
    const Outcome outcome = SolveSquare(*this, b, x, eps);
    if (outcome != Outcome::kSingular) return outcome == Outcome::kSolved ? 0 : -1;
  }
  NQSymMatrix s;
  std::vector<double> c;
  return s.ComputeRTransByR(*this) && ComputeVR(b, c) ? s.LTSolve(c, eps, x) : -1;
}

// ---- Orthogonal projection ---------------------------------------------------------------------

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
  if (!residual.IsValidMatrix() || ofX.Size() != x.fNCols || ofR.Size() != fNCols) return -1;
  return GuardMemory(-1, [&] {
    std::vector<double> column(Rows());
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
    *this = std::move(residual);
    independent = std::move(ofX);
    remaining = std::move(ofR);
    return fNCols - remaining.InSet();
  });
}

}  // namespace NQMath_940
