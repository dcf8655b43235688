#pragma once

#include <nqcommon/export.h>
#include <nqcommon/math/random/NQRNGVariate.h>

namespace NQMath_940 {

// Normal deviates by the method of Kinderman and Ramage (1976).
//
// Draws     2.2 uniforms a deviate on average.
class NQ_API NQRNGNormal : public NQRNGVariate {
 public:
  // As SetParameters.
  NQRNGNormal(double mean, double sd) { SetParameters(mean, sd); }

  // Returns false, and sets mean 0 and standard deviation 1, unless sd >= 0.
  bool SetParameters(double mean, double sd);

  double GetNext() override { return GetNext(fMean, fSd); }
  // With these parameters for one draw, or 0 and 1 unless sd >= 0.
  double GetNext(double mean, double sd);

 private:
  double fMean = 0;
  double fSd = 1;
};

}  // namespace NQMath_940
