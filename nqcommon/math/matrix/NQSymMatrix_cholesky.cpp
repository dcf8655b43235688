#include <nqcommon/math/matrix/NQSymMatrix.h>

#include <algorithm>

#include <nqcommon/common/NQMV.h>
#include <nqcommon/math/kernels/packed_algebra.h>
#include <nqcommon/math/kernels/packed_cholesky.h>
#include <nqcommon/math/kernels/packed_triangle.h>
#include <nqcommon/math/kernels/scaling.h>
#include <nqcommon/math/matrix/internal/matrix_access.h>
#include <nqcommon/math/matrix/internal/symmetric_forms.h>
#include <nqcommon/math/numeric/NQMathFun.h>

namespace NQMath_940 {

using NQCommon_940::NQMV;

// ---- Factor -------------------------------------------------------------------------------------

// Both vector forms; aliasedRows, when asked for, flags the rows without a positive pivot.
int NQSymMatrix::Factor(const std::vector<double>& t, double eps, bool check,
                        std::vector<bool>* aliasedRows) {
  const auto negative = [](double x) { return x < 0; };
  if (check && (eps < 0 || std::any_of(t.begin(), t.end(), negative))) return -1;
  if (fNRows < 1) return 0;
  if (t.size() < Order()) return -1;
  return static_cast<int>(internal::Cholesky(fvData.data(), Order(), t.data(), eps, aliasedRows));
}

int NQSymMatrix::LTChol(const std::vector<double>& t, double eps, bool check) {
  return Factor(t, eps, check, nullptr);
}

int NQSymMatrix::LTChol(const std::vector<double>& t, double eps, NQBitSet& nonRedundant,
                        bool check) {
  std::vector<bool> aliasedRows;
  const int aliased = Factor(t, eps, check, &aliasedRows);
  if (aliased < 0) return aliased;
  if (nonRedundant.Size() < fNRows) {
    nonRedundant.Resize(fNRows, false);
  } else {
    nonRedundant.Clear();
  }
  for (std::size_t i = 0; i < aliasedRows.size(); ++i)
    nonRedundant.Set(static_cast<int>(i), !aliasedRows[i]);
  return aliased;
}

int NQSymMatrix::LTChol(double eps, double& minPivot, bool check) {
  return internal::FactorByOwnReferences(*this, eps, minPivot, check);
}

// ---- Determinant and inverses of a factor -------------------------------------------------------

int NQSymMatrix::LTDetInverse(NQDeterminant& det, int job) {
  std::vector<double> diagonal;
  GetDiagonal(diagonal);
  const auto zeroes = static_cast<int>(std::count(diagonal.begin(), diagonal.end(), 0.0));
  if (job % 10 != 0) {
    det = {zeroes > 0 ? 0.0 : 1.0, 0};
    if (zeroes == 0) {
      for (double x : diagonal) internal::MultiplyScaled(det, x);
    }
  }
  if (job >= 10) internal::InvertLower(fvData.data(), Order());
  return zeroes;
}

bool NQSymMatrix::LTInverse() {
  NQDeterminant det;
  LTDetInverse(det, 10);
  return IsValidMatrix();
}

void NQSymMatrix::LTLLTrans() { internal::LowerTimesTrans(fvData.data(), Order()); }

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
  det.second *= 2;
  internal::MultiplyScaled(det, det.first);
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
