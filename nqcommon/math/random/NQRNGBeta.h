#pragma once

#include <nqcommon/export.h>
#include <nqcommon/math/random/NQRNGVariate.h>

namespace NQMath_940 {

// Beta variates, density x^(a-1) (1-x)^(b-1) / B(a, b) on [0, 1]. Tiny shapes give 0 and 1 where
// the variate rounds to them; shapes above 1e300 count as 1e300.
//
// Method    a, b > 1, a + b >= 3 and the mode of 0.067 .. 0.933: rejection from a normal with the
//           same mode (Ahrens and Dieter 1974, algorithm BN), at least 0.47 accepted. Other shapes:
//           the inverse of the distribution function, NQDistFun::IdfBeta.
// Draws     a trial takes a normal deviate as NQRNGNormal draws it, and one uniform unless the
//           deviate falls outside (0, 1); the inverse takes one uniform.
class NQ_API NQRNGBeta : public NQRNGVariate {
 public:
  // As SetParameters.
  NQRNGBeta(double a, double b) { SetParameters(a, b); }

  // Unless both are above 0, both become 1. Returns whether a <= 0, which is not whether the
  // parameters were refused: callers have come to rely on it.
  bool SetParameters(double a, double b);

  double GetNext() override { return GetNext(fA, fB); }
  // With these parameters for one draw, or 1 and 1 unless both are above 0.
  double GetNext(double a, double b);

 private:
  double DrawByNormal(double a, double b);

  double fA = 1;
  double fB = 1;
};

}  // namespace NQMath_940
