#include <nqcommon/math/matrix/NQSymMatrix.h>

#include <algorithm>
#include <cmath>

#include <nqcommon/common/memory_guard.h>
#include <nqcommon/math/kernels/packed_sweep.h>
#include <nqcommon/math/kernels/packed_triangle.h>
#include <nqcommon/math/kernels/scaling.h>
#include <nqcommon/math/matrix/internal/argument_checks.h>

namespace NQMath_940 {

int NQSymMatrix::CholIndNonRed(double epsz, double eps, std::vector<int>& indices) const {
  if (!(epsz >= 0) || !(eps >= 0) || !IsValidMatrix()) return -1;
  return NQCommon_940::GuardMemory(-1, [&] {
    NQSymMatrix factor(*this);
    std::vector<double> threshold(Order());
    for (std::size_t i = 0; i < Order(); ++i)
      threshold[i] = std::max(epsz, eps * fvData[internal::DiagIndex(i)]);
    NQBitSet nonRedundant;
    const int dependent =
        factor.IsValidMatrix() ? factor.LTChol(threshold, 1.0, nonRedundant, false) : -1;
    return dependent >= 0 && nonRedundant.GetMembers(indices) ? dependent : -1;
  });
}

bool NQSymMatrix::CheckMDependent(int k, double eps, const std::vector<double>& t,
                                  const NQBitSet& swept, NQBitSet& nonRedundant) const {
  if (!HasRow(k) || t.size() < Order() || swept.Size() < fNRows || nonRedundant.Size() <= k)
    return false;
  return NQCommon_940::GuardMemory(false, [&] {
    const bool dependent =
        internal::RefusesSweep(fvData.data(), Order(), static_cast<std::size_t>(k), eps, t.data(),
                               internal::MemberFlags(swept, Order()));
    nonRedundant.Set(k, !dependent);
    return dependent;
  });
}

int NQSymMatrix::CheckGMG(const INQSymMatrix& m, double eps, NQBitSet& nonRedundant) const {
  NQSymMatrix gmg;
  if (!(eps >= 0) || !ComputeGMG(m, gmg)) return -1;
  nonRedundant.Resize(fNRows, false);
  if (nonRedundant.Size() < fNRows) return -1;
  int failed = 0;
  for (int i = 0; i < fNRows; ++i) {
    const double gii = std::fabs(GetElem(i, i));
    bool same = true;
    for (int j = 0; j < fNRows && same; ++j) {
      const double bound = eps * internal::GeometricMean(gii, std::fabs(GetElem(j, j)));
      same = std::fabs(gmg.GetElem(i, j) - GetElem(i, j)) <= bound;
    }
    if (!same) ++failed;
    nonRedundant.Set(i, same && gii != 0);
  }
  return failed;
}

}  // namespace NQMath_940
