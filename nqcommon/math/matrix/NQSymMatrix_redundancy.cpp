#include <nqcommon/math/matrix/NQSymMatrix.h>

#include <algorithm>
#include <cmath>

#include <nqcommon/math/kernels/packed_sweep.h>
#include <nqcommon/math/kernels/packed_triangle.h>
#include <nqcommon/math/kernels/scaling.h>
#include <nqcommon/math/matrix/internal/argument_checks.h>

namespace NQMath_940 {

int NQSymMatrix::CholIndNonRed(double epsz, double eps, std::vector<int>& indices) const {
  if (!(epsz >= 0) || !(eps >= 0) || !IsValidMatrix()) return -1;
  NQSymMatrix factor(*this);
  if (!factor.IsValidMatrix()) return -1;
  std::vector<double> threshold;
  GetDiagonal(threshold);
  for (double& x : threshold) x = std::max(epsz, eps * x);
  NQBitSet nonRedundant;
  const int dependent = factor.LTChol(threshold, 1.0, nonRedundant, false);
  indices = internal::MembersOf(nonRedundant);
  return dependent;
}

bool NQSymMatrix::CheckMDependent(int k, double eps, const std::vector<double>& t,
                                  const NQBitSet& swept, NQBitSet& nonRedundant) const {
  if (!HasRow(k) || t.size() < Order() || swept.Size() < fNRows || nonRedundant.Size() <= k)
    return false;
  const bool dependent =
      internal::RefusesSweep(fvData.data(), Order(), static_cast<std::size_t>(k), eps, t.data(),
                             internal::MemberFlags(swept, Order()));
  nonRedundant.Set(k, !dependent);
  return dependent;
}

int NQSymMatrix::CheckGMG(const INQSymMatrix& m, double eps, NQBitSet& nonRedundant) const {
  NQSymMatrix gmg;
  if (!(eps >= 0) || !ComputeGMG(m, gmg)) return -1;
  std::vector<double> diagonal;
  GetDiagonal(diagonal);
  nonRedundant.Resize(fNRows, false);
  int failed = 0;
  for (int i = 0; i < fNRows; ++i) {
    const double gii = std::fabs(diagonal[static_cast<std::size_t>(i)]);
    bool same = true;
    for (int j = 0; j < fNRows && same; ++j) {
      const double gjj = std::fabs(diagonal[static_cast<std::size_t>(j)]);
      same =
          std::fabs(gmg.GetElem(i, j) - GetElem(i, j)) <= eps * internal::GeometricMean(gii, gjj);
    }
    if (!same) ++failed;
    nonRedundant.Set(i, same && gii != 0);
  }
  return failed;
}

}  // namespace NQMath_940
