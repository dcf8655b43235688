#pragma once

#include <memory>

#include <nqcommon/export.h>
#include <nqcommon/math/random/NQRNGenerator.h>

namespace NQMath_940 {

// Normal deviates by the method of Kinderman and Ramage (1976).
//
// Uniforms  from the generator set with SetURNGenerator; until then from an NQRNGUCongruential of
//           the object's own, which starts at state 1.
// Draws     2.2 uniforms a deviate on average.
// Copies    continue the object's own generator where it stands, and share one that was set.
class NQ_API NQRNGNormal : public NQRNGenerator {
 public:
  // As SetParameters.
  NQRNGNormal(double mean, double sd);
  NQRNGNormal(const NQRNGNormal& other);
  NQRNGNormal& operator=(const NQRNGNormal& other);
  ~NQRNGNormal() override;

  // The generator is not owned: it must outlive its use, and not draw from this object in turn.
  void SetURNGenerator(NQRNGenerator& uniforms);
  // Seeds the generator of the uniforms.
  void SetSeed(double seed) override;

  // Returns false, and sets mean 0 and standard deviation 1, unless sd >= 0.
  bool SetParameters(double mean, double sd);

  double GetNext() override;
  // With these parameters for one draw, or 0 and 1 unless sd >= 0.
  double GetNext(double mean, double sd);

 private:
  struct Impl;
  std::unique_ptr<Impl> fpImpl;
};

}  // namespace NQMath_940
