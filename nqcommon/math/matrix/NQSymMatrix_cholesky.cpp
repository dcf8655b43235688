#include <nqcommon/math/matrix/NQSymMatrix.h>

#include <nqcommon/math/kernels/packed_cholesky.h>
#include <nqcommon/math/kernels/triangular.h>
#include <nqcommon/math/matrix/internal/factor_rules.h>
#include <nqcommon/math/numeric/NQMathFun.h>

namespace NQMath_940 {

// ---- Factor -------------------------------------------------------------------------------------

int NQSymMatrix::LTChol(const std::vector<double>& t, double eps, bool check) {
  if (internal::RefusesFactor(t, eps, Order(), check)) return -1;
  return static_cast<int>(internal::Cholesky(fvData.data(), Order(), t.data(), eps));
}

int NQSymMatrix::LTChol(const std::vector<double>& t, double eps, NQBitSet& nonRedundant,
                        bool check) {
  if (internal::RefusesFactor(t, eps, Order(), check)) return -1;
  return internal::FactorIntoSet(fNRows, nonRedundant, [&](std::vector<bool>& aliased) {
    return internal::Cholesky(fvData.data(), Order(), t.data(), eps, &aliased);
  });
}

// ---- Determinant and inverses of a factor -------------------------------------------------------

int NQSymMatrix::LTDetInverse(NQDeterminant& det, int job) {
  const int zeroes = internal::DeterminantOfFactor(*this, job, det);
  if (job >= 10) internal::InvertTriangle(fvData.data(), Order());
  return zeroes;
}

void NQSymMatrix::LTLLTrans() { internal::TriangleTimesTrans(fvData.data(), Order()); }

void NQSymMatrix::LTLTransL() { NQMathFun::LTGltl(fNRows, fvData); }

// ---- Determinant of the matrix -----------------------------------------------------------------

bool NQSymMatrix::ComputeDeterminant(double eps, NQDeterminant& det) const {
  if (fNRows < 1) return false;
  NQSymMatrix factor(*this);
  double minPivot = 0;
  if (!factor.IsValidMatrix() || factor.LTChol(eps, minPivot, true) < 0) return false;
  det = {0, 0};
  if (minPivot == 0) return true;
  factor.LTDetInverse(det, 1);
  internal::MultiplyScaled(det, NQDeterminant(det));
  return true;
}

}  // namespace NQMath_940
