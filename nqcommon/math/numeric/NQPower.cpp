#include <nqcommon/math/numeric/NQPower.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include <nqcommon/common/NQMV.h>

namespace NQMath_940 {

using NQCommon_940::NQMV;

namespace {

constexpr double kEpsilon = std::numeric_limits<double>::epsilon();
constexpr double kMaxRoot = 2147483647;

// kRootTol is in epsilons. 1/y misses n by at most one of them for y = 1/n rounded once; callers
// may have rounded twice.
constexpr double kRootTol = 4;

int Give(int code, double value, double& result) {
  result = value;
  return code;
}

int GiveMissing(int code, double& result) { return Give(code, NQMV::Missing(), result); }

// GiveInRange classes a value that is not an exact zero.
int GiveInRange(double value, double& result) {
  if (std::isinf(value) || NQMV::IsMissing(value)) return GiveMissing(NQPower::kOverflow, result);
  if (std::fabs(value) < std::numeric_limits<double>::min())
    return Give(NQPower::kUnderflow, 0, result);
  return Give(NQPower::kOk, value, result);
}

bool IsInteger(double y) { return std::trunc(y) == y; }

bool IsAlmostInteger(double v, double tol) {
  return NQPower::AlmostEqual(v, std::floor(v + 0.5), tol);
}

bool HasRootOrder(double y) { return y != 0 && !(1 / y > kMaxRoot); }

}  // namespace

int NQPower::Exponent(double x, double& result) {
  if (x < gMachineMinExp) return Give(kUnderflow, 0, result);
  if (x > gMachineMaxExp) return GiveMissing(kOverflow, result);
  return Give(kOk, std::exp(x), result);
}

int NQPower::Power(double x, double y, double& result) {
  if (NQMV::IsMissing(x) || NQMV::IsMissing(y)) return GiveMissing(kUndefined, result);
  if (std::isnan(x) || std::isnan(y)) return Give(kOk, x + y, result);
  if (y == 0) return Give(kOk, 1, result);
  if (x == 0) return y > 0 ? Give(kOk, 0, result) : GiveMissing(kOverflow, result);
  if (x > 0 || IsInteger(y)) return GiveInRange(std::pow(x, y), result);
  if (!IsOneOverOddInteger(y, kRootTol)) return GiveMissing(kUndefined, result);
  return GiveInRange(-std::pow(-x, y), result);
}

int NQPower::Multiply(double a, double b, double& result) {
  if (NQMV::IsMissing(a) || NQMV::IsMissing(b)) return GiveMissing(kUndefined, result);
  const double product = a * b;
  if (std::isnan(product) && !std::isnan(a) && !std::isnan(b))
    return GiveMissing(kUndefined, result);
  if (a == 0 || b == 0) return Give(kOk, product, result);
  return GiveInRange(product, result);
}

bool NQPower::AlmostEqual(double a, double b, double tol) {
  if (a == 0 || b == 0) return a == b;
  if ((a < 0) != (b < 0)) return false;
  const double sizeA = std::fabs(a);
  const double sizeB = std::fabs(b);
  return std::fabs(sizeA - sizeB) / std::max(sizeA, sizeB) <= tol * kEpsilon;
}

bool NQPower::IsOneOverOddInteger(double y, double tol) {
  return HasRootOrder(y) && IsAlmostInteger(1 / y / 2 + 0.5, tol);
}

bool NQPower::IsOneOverEvenInteger(double y, double tol) {
  return HasRootOrder(y) && IsAlmostInteger(1 / y / 2, tol);
}

}  // namespace NQMath_940
