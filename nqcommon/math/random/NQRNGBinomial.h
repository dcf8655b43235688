#pragma once

#include <memory>

#include <nqcommon/export.h>
#include <nqcommon/math/random/NQRNGenerator.h>

namespace NQMath_940 {

// Binomial variates: the number of successes in n trials of probability p.
//
// Method    n <= 40: counts uniforms of at most p. A larger n is first split, as often as needed,
//           at a beta variate that stands for the middle one of the n uniforms in order; the half
//           that p does not fall into is then all successes or all failures (Relles 1972; Ahrens
//           and Dieter 1974, algorithm BB). About log2(n / 40) beta variates whatever p is.
// Uniforms  from the generator set with SetURNGenerator; until then from an NQRNGUCongruential of
//           the object's own, which starts at state 1.
// Draws     for each split those of NQRNGBeta, then one uniform for each trial that is left; none
//           once p is 0 or 1.
// Copies    continue the object's own generator where it stands, and share one that was set.
class NQ_API NQRNGBinomial : public NQRNGenerator {
 public:
  // As SetParameters.
  NQRNGBinomial(double n, double p);
  NQRNGBinomial(const NQRNGBinomial& other);
  NQRNGBinomial& operator=(const NQRNGBinomial& other);
  ~NQRNGBinomial() override;

  // The generator is not owned: it must outlive its use, and not draw from this object in turn.
  void SetURNGenerator(NQRNGenerator& uniforms);
  // Seeds the generator of the uniforms.
  void SetSeed(double seed) override;

  // Returns false, and sets n = 0 and p = 0, unless n >= 0 is a whole number and 0 <= p <= 1.
  bool SetParameters(double n, double p);

  double GetNext() override;
  // With these parameters for one draw; 0 for parameters that SetParameters refuses.
  double GetNext(double n, double p);

  // The count of n uniforms that are at most p, 0 < p < 1; n for p == 1; 0 for p == 0 and for
  // parameters that SetParameters refuses. Time grows as n.
  double SimpleMethod(double n, double p);

 private:
  struct Impl;
  std::unique_ptr<Impl> fpImpl;
};

}  // namespace NQMath_940
