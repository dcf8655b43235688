#include <nqcommon/math/matrix/NQDiagMatrix.h>

#include <nqcommon/math/matrix/internal/factor_rules.h>

namespace NQMath_940 {

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

// ---- Solve -------------------------------------------------------------------------------------

int NQDiagMatrix::LTSolve(const std::vector<double>& b, double eps, std::vector<double>& x) {
  return internal::SolveByFactor(*this, b, eps, x, [this](std::vector<double>& solution) {
    internal::SolveByDiagonal(fvData, solution.data());
  });
}

}  // namespace NQMath_940
