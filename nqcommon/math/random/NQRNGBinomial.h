#pragma once

#include <nqcommon/export.h>
#include <nqcommon/math/random/NQRNGVariate.h>

namespace NQMath_940 {

// Binomial variates: the number of successes in n trials of probability p.
//
// Method    n <= 40: counts uniforms of at most p. A larger n is first split, as often as needed,
//           at a beta variate that stands for the middle one of the n uniforms in order; the half
//           that p does not fall into is then all successes or all failures (Relles 1972; Ahrens
//           and Dieter 1974, algorithm BB). About log2(n / 40) beta variates whatever p is.
// Draws     for each split those of NQRNGBeta, then one uniform for each trial that is left; none
//           once p is 0 or 1.
class NQ_API NQRNGBinomial : public NQRNGVariate {
 public:
  // As SetParameters.
  NQRNGBinomial(double n, double p) { SetParameters(n, p); }

  // Returns false, and sets n = 0 and p = 0, unless n >= 0 is a whole number and 0 <= p <= 1.
  bool SetParameters(double n, double p);

  double GetNext() override { return GetNext(fN, fP); }
  // With these parameters for one draw; 0 for parameters that SetParameters refuses.
  double GetNext(double n, double p);

  // The count of n uniforms that are at most p, 0 < p < 1; n for p == 1; 0 for p == 0 and for
  // parameters that SetParameters refuses. Time grows as n.
  double SimpleMethod(double n, double p);

 private:
  double fN = 0;
  double fP = 0;
};

}  // namespace NQMath_940
