#pragma once

#include <nqcommon/export.h>

namespace NQMath_940 {

// Arithmetic on numbers whose squares leave the range of doubles.
class NQ_API NQExtremeNum {
 public:
  // result = sqrt(a^2 + b^2 + c^2 + d^2), to a few ulp; no square overflows or underflows on the
  // way. Returns NQPower's codes: kOk; kOverflow (the root is above the largest double) or
  // kUndefined (an argument is missing), both with the system-missing value. NaN gives NaN and kOk.
  static int SumSqRoot(double a, double b, double c, double d, double& result);
};

}  // namespace NQMath_940
