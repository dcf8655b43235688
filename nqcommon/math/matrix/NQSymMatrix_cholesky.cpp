#include <nqcommon/math/matrix/NQSymMatrix.h>

#include <nqcommon/common/NQMV.h>
#include <nqcommon/math/kernels/packed_cholesky.h>
#include <nqcommon/math/kernels/triangular.h>
#include <nqcommon/math/matrix/internal/factor_rules.h>
#include <nqcommon/math/matrix/internal/matrix_casts.h>
#include <nqcommon/math/numeric/NQMathFun.h>

namespace NQMath_940 {

using NQCommon_940::NQMV;

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

// ---- Determinant and inverses of the matrix -----------------------------------------------------

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

namespace {

// Copies s into `out`, factors it there with `factor`, and inverts.
template <class Factor>
int InvertInto(const NQSymMatrix& s, NQSymMatrix* out, Factor factor) {
  if (!out) return -1;
  *out = s;
  if (!out->IsValidMatrix()) return -1;
  const int aliased = factor(*out);
  if (aliased < 0) return aliased;
  NQDeterminant det;
  out->LTDetInverse(det, 10);
  out->LTLTransL();
  return out->GetNRows() - aliased;
}

}  // namespace

int NQSymMatrix::CholInverse(const std::vector<double>& t, double eps, INQSymMatrix& out) const {
  return InvertInto(*this, internal::AsDenseSym(out),
                    [&](NQSymMatrix& m) { return m.LTChol(t, eps, false); });
}

int NQSymMatrix::CholInverse(const std::vector<double>& t, double eps, INQSymMatrix& out,
                             NQBitSet& nonRedundant) const {
  return InvertInto(*this, internal::AsDenseSym(out),
                    [&](NQSymMatrix& m) { return m.LTChol(t, eps, nonRedundant, false); });
}

int NQSymMatrix::CholInverse(const std::vector<double>& t, double eps, INQSymMatrix& out,
                             double& minPivot) const {
  minPivot = NQMV::Missing();
  return InvertInto(*this, internal::AsDenseSym(out), [&](NQSymMatrix& m) {
    const int aliased = m.LTChol(t, eps, false);
    if (aliased >= 0) minPivot = internal::SmallestPivot(m);
    return aliased;
  });
}

}  // namespace NQMath_940
