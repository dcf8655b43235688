#pragma once

#include <nqcommon/export.h>
#include <nqcommon/math/random/NQRNGUCongruential.h>
#include <nqcommon/math/random/NQRNGenerator.h>

namespace NQMath_940 {

// Base of the generators of other distributions: where they take their uniforms from.
//
// Uniforms  from the generator set with SetURNGenerator; until then from an NQRNGUCongruential of
//           the object's own, which starts at state 1.
// Copies    and moves continue the object's own generator where it stands, and share one that was
//           set. Nothing is allocated, so nothing fails.
class NQ_API NQRNGVariate : public NQRNGenerator {
 public:
  // The generator is not owned: it must outlive its use, and not draw from this object in turn.
  void SetURNGenerator(NQRNGenerator& uniforms) { fpGiven = &uniforms; }
  // Seeds the generator of the uniforms.
  void SetSeed(double seed) override { GetURNGenerator().SetSeed(seed); }

 protected:
  NQRNGenerator& GetURNGenerator() {
    if (fpGiven != nullptr) return *fpGiven;
    return fOwn;
  }

 private:
  NQRNGenerator* fpGiven = nullptr;
  NQRNGUCongruential fOwn;
};

}  // namespace NQMath_940
