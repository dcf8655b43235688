#include <nqcommon/math/numeric/NQExtremeNum.h>

#include <algorithm>
#include <array>
#include <cmath>

#include <nqcommon/common/NQMV.h>
#include <nqcommon/math/kernels/strided.h>
#include <nqcommon/math/numeric/NQPower.h>

namespace NQMath_940 {

using NQCommon_940::NQMV;

int NQExtremeNum::SumSqRoot(double a, double b, double c, double d, double& result) {
  const std::array<double, 4> terms = {a, b, c, d};
  result = NQMV::Missing();
  if (std::any_of(terms.begin(), terms.end(), NQMV::IsMissing)) return NQPower::kUndefined;
  const double root = internal::Nrm2(terms.size(), terms.data(), 1);
  if (std::isinf(root)) return NQPower::kOverflow;
  result = root;
  return NQPower::kOk;
}

}  // namespace NQMath_940
