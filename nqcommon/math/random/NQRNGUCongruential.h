#pragma once

#include <cstdint>

#include <nqcommon/export.h>
#include <nqcommon/math/random/NQRNGenerator.h>

namespace NQMath_940 {

// Uniforms from the multiplicative congruential generator x <- 397204094 x mod (2^31 - 1) (Fishman
// and Moore 1986), of period 2^31 - 2. The state is 1 at first.
class NQ_API NQRNGUCongruential : public NQRNGenerator {
 public:
  // The state becomes floor(|seed|), at least 1 and at most 2147483647; 1 for NaN.
  void SetSeed(double seed) override;

  // x / 2^31 after a step, in (0, 1).
  double GetNext() override;

 private:
  std::uint64_t fState = 1;
};

}  // namespace NQMath_940
