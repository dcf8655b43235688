#pragma once

#include <nqcommon/math/random/NQRNGUCongruential.h>
#include <nqcommon/math/random/NQRNGenerator.h>

namespace NQMath_940::internal {

// Where a variate generator takes its uniforms: from a generator given to it, which it does not own
// and its copies share, or else from a congruential one of its own, which its copies copy.
class UniformLink {
 public:
  void Set(NQRNGenerator& given) { fpGiven = &given; }
  NQRNGenerator& Get() {
    if (fpGiven != nullptr) return *fpGiven;
    return fOwn;
  }

 private:
  NQRNGenerator* fpGiven = nullptr;
  NQRNGUCongruential fOwn;
};

}  // namespace NQMath_940::internal
