#include <nqcommon/math/matrix/NQDiagMatrix.h>

#include <utility>

#include <nqcommon/common/NQMV.h>
#include <nqcommon/math/matrix/internal/factor_rules.h>
#include <nqcommon/math/matrix/internal/matrix_results.h>

namespace NQMath_940 {

using NQCommon_940::NQMV;

// ---- Factor ------------------------------------------------------------------------------------

int NQDiagMatrix::LTChol(const std::vector<double>& t, double eps, bool check) {
  if (internal::RefusesFactor(t, eps, Order(), check)) return -1;
  return static_cast<int>(internal::FactorDiagonal(fvData.data(), Order(), t.data(), eps));
}

int NQDiagMatrix::LTChol(const std::vector<double>& t, double eps, NQBitSet& nonRedundant,
                         bool check) {
  if (internal::RefusesFactor(t, eps, Order(), check)) return -1;
  return internal::FactorIntoSet(fNRows, nonRedundant, [&](std::vector<bool>& aliased) {
    return internal::FactorDiagonal(fvData.data(), Order(), t.data(), eps, &aliased);
  });
}

// ---- Determinant and inverses ------------------------------------------------------------------

int NQDiagMatrix::LTDetInverse(NQDeterminant& det, int job) {
  const int zeroes = internal::DeterminantOfFactor(*this, job, det);
  if (job >= 10) {
    for (double& d : fvData) d = d != 0 ? 1 / d : 0;
  }
  return zeroes;
}

void NQDiagMatrix::LTLLTrans() {
  for (double& d : fvData) d *= d;
}

void NQDiagMatrix::LTLTransL() { LTLLTrans(); }

bool NQDiagMatrix::ComputeDeterminant(double /*eps*/, NQDeterminant& det) const {
  if (fNRows < 1) return false;
  det = {1, 0};
  for (double d : fvData) {
    internal::MultiplyScaled(det, {d, 0});
    if (det.first != 0) continue;
    det = {0, 0};
    break;
  }
  return true;
}

// The inverse of a copy that factor(copy) factors, which `out` takes at the end.
template <class Factor>
int NQDiagMatrix::InvertInto(INQSymMatrix& out, Factor factor) const {
  NQDiagMatrix inverse(*this);
  if (!internal::TakesDiagonal(out) || !inverse.IsValidMatrix()) return -1;
  const int aliased = factor(inverse);
  if (aliased < 0) return aliased;
  inverse.LTInverse();
  inverse.LTLTransL();
  const int rank = fNRows - aliased;
  return internal::PutDiagonal(std::move(inverse), out) ? rank : -1;
}

int NQDiagMatrix::CholInverse(const std::vector<double>& t, double eps, INQSymMatrix& out) const {
  return InvertInto(out, [&](NQDiagMatrix& m) { return m.LTChol(t, eps, false); });
}

int NQDiagMatrix::CholInverse(const std::vector<double>& t, double eps, INQSymMatrix& out,
                              NQBitSet& nonRedundant) const {
  return InvertInto(out, [&](NQDiagMatrix& m) { return m.LTChol(t, eps, nonRedundant, false); });
}

int NQDiagMatrix::CholInverse(const std::vector<double>& t, double eps, INQSymMatrix& out,
                              double& minPivot) const {
  minPivot = NQMV::Missing();
  return InvertInto(out, [&](NQDiagMatrix& m) {
    const int aliased = m.LTChol(t, eps, false);
    if (aliased >= 0) minPivot = internal::SmallestPivot(m);
    return aliased;
  });
}

// ---- Solve -------------------------------------------------------------------------------------

int NQDiagMatrix::LTSolve(const std::vector<double>& b, double eps, std::vector<double>& x) {
  return internal::SolveByFactor(*this, b, eps, x, [this](std::vector<double>& solution) {
    internal::SolveByDiagonal(fvData, solution.data());
  });
}

}  // namespace NQMath_940
