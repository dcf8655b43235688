#pragma once

#include <memory>

#include <nqcommon/export.h>
#include <nqcommon/math/random/NQRNGenerator.h>

namespace NQMath_940 {

// Beta variates, density x^(a-1) (1-x)^(b-1) / B(a, b) on [0, 1]. Tiny shapes give 0 and 1 where
// the variate rounds to them; shapes above 1e300 count as 1e300.
//
// Method    a, b > 1, a + b >= 3 and the mode of 0.067 .. 0.933: rejection from a normal with the
//           same mode (Ahrens and Dieter 1974, algorithm BN), at least 0.47 accepted. Other shapes:
//           the inverse of the distribution function, NQDistFun::IdfBeta.
// Uniforms  from the generator set with SetURNGenerator; until then from an NQRNGUCongruential of
//           the object's own, which starts at state 1.
// Draws     a trial takes a normal deviate as NQRNGNormal draws it, and one uniform unless the
//           deviate falls outside (0, 1); the inverse takes one uniform.
// Copies    continue the object's own generator where it stands, and share one that was set.
class NQ_API NQRNGBeta : public NQRNGenerator {
 public:
  // As SetParameters.
  NQRNGBeta(double a, double b);
  NQRNGBeta(const NQRNGBeta& other);
  NQRNGBeta& operator=(const NQRNGBeta& other);
  ~NQRNGBeta() override;

  // The generator is not owned: it must outlive its use, and not draw from this object in turn.
  void SetURNGenerator(NQRNGenerator& uniforms);
  // Seeds the generator of the uniforms.
  void SetSeed(double seed) override;

  // Unless both are above 0, both become 1. Returns whether a <= 0, which is not whether the
  // parameters were refused: callers have come to rely on it.
  bool SetParameters(double a, double b);

  double GetNext() override;
  // With these parameters for one draw, or 1 and 1 unless both are above 0.
  double GetNext(double a, double b);

 private:
  struct Impl;
  std::unique_ptr<Impl> fpImpl;
};

}  // namespace NQMath_940
