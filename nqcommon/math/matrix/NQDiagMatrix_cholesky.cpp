#include <nqcommon/math/matrix/NQDiagMatrix.h>

#include <algorithm>
#include <cmath>

#include <nqcommon/common/NQMV.h>
#include <nqcommon/math/kernels/scaling.h>
#include <nqcommon/math/matrix/internal/matrix_access.h>
#include <nqcommon/math/matrix/internal/symmetric_forms.h>

namespace NQMath_940 {

using NQCommon_940::NQMV;

// ---- Factor ------------------------------------------------------------------------------------

int NQDiagMatrix::LTChol(const std::vector<double>& t, double eps, bool check) {
  NQBitSet nonRedundant;
  return LTChol(t, eps, nonRedundant, check);
}

int NQDiagMatrix::LTChol(const std::vector<double>& t, double eps, NQBitSet& nonRedundant,
                         bool check) {
  const auto negative = [](double x) { return x < 0; };
  if (check && (eps < 0 || std::any_of(t.begin(), t.end(), negative))) return -1;
  if (t.size() < Order()) return -1;
  if (nonRedundant.Size() < fNRows) {
    nonRedundant.Resize(fNRows, false);
  } else {
    nonRedundant.Clear();
  }
  int aliased = 0;
  for (int i = 0; i < fNRows; ++i) {
    double& d = fvData[static_cast<std::size_t>(i)];
    const bool pivots = d > t[static_cast<std::size_t>(i)] * eps;
    d = pivots ? std::sqrt(d) : 0;
    nonRedundant.Set(i, pivots);
    aliased += !pivots;
  }
  return aliased;
}

int NQDiagMatrix::LTChol(double eps, double& minPivot, bool check) {
  return internal::FactorByOwnReferences(*this, eps, minPivot, check);
}

// ---- Determinant and inverses ------------------------------------------------------------------

int NQDiagMatrix::LTDetInverse(NQDeterminant& det, int job) {
  const auto zeroes = static_cast<int>(std::count(fvData.begin(), fvData.end(), 0.0));
  if (job % 10 != 0) {
    det = {zeroes > 0 ? 0.0 : 1.0, 0};
    if (zeroes == 0) {
      for (double d : fvData) internal::MultiplyScaled(det, d);
    }
  }
  if (job >= 10) {
    for (double& d : fvData) d = d != 0 ? 1 / d : 0;
  }
  return zeroes;
}

bool NQDiagMatrix::LTInverse() {
  NQDeterminant det;
  LTDetInverse(det, 10);
  return IsValidMatrix();
}

void NQDiagMatrix::LTLLTrans() {
  for (double& d : fvData) d *= d;
}

void NQDiagMatrix::LTLTransL() { LTLLTrans(); }

bool NQDiagMatrix::ComputeDeterminant(double /*eps*/, NQDeterminant& det) const {
  if (fNRows < 1) return false;
  det = {1, 0};
  for (double d : fvData) {
    internal::MultiplyScaled(det, d);
    if (det.first != 0) continue;
    det = {0, 0};
    break;
  }
  return true;
}

int NQDiagMatrix::CholInverse(const std::vector<double>& t, double eps, INQSymMatrix& out) const {
  double minPivot = 0;
  return CholInverse(t, eps, out, minPivot);
}

int NQDiagMatrix::CholInverse(const std::vector<double>& t, double eps, INQSymMatrix& out,
                              NQBitSet& nonRedundant) const {
  double minPivot = 0;
  NQDiagMatrix factor(*this);
  if (!internal::TakesDiagonal(out) || !factor.IsValidMatrix()) return -1;
  const int aliased = factor.LTChol(t, eps, nonRedundant, false);
  return aliased < 0 ? aliased : CholInverse(t, eps, out, minPivot);
}

int NQDiagMatrix::CholInverse(const std::vector<double>& t, double eps, INQSymMatrix& out,
                              double& minPivot) const {
  minPivot = NQMV::Missing();
  NQDiagMatrix inverse(*this);
  if (!internal::TakesDiagonal(out) || !inverse.IsValidMatrix()) return -1;
  const int aliased = inverse.LTChol(t, eps, false);
  if (aliased < 0) return aliased;
  minPivot = internal::SmallestPivot(inverse);
  inverse.LTInverse();
  inverse.LTLTransL();
  const int rank = fNRows - aliased;
  return internal::PutDiagonal(inverse.fvData, out) ? rank : -1;
}

// ---- Solve -------------------------------------------------------------------------------------

int NQDiagMatrix::LTSolve(const std::vector<double>& b, double eps, std::vector<double>& x) {
  if (!HasOrder(b.size()) || !(eps >= 0)) return -1;
  std::vector<double> t = fvData;
  for (double& reference : t) reference = std::max(reference, 0.0);
  const int aliased = LTChol(t, eps, false);
  x = b;
  for (std::size_t i = 0; i < Order(); ++i) {
    const double l = fvData[i];
    x[i] = l != 0 ? x[i] / l / l : 0;
  }
  return aliased;
}

}  // namespace NQMath_940
