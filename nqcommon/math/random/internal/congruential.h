// The multiplicative congruential generator x <- 397204094 x mod (2^31 - 1): G. S. Fishman and
// L. R. Moore, SIAM J. Sci. Stat. Comput. 7 (1986) 24-45.
#pragma once

#include <cstdint>

namespace NQMath_940::internal {

constexpr std::int64_t kCongruentialModulus = 2147483647;

// Advances the state, any bits, to one of 1 .. 2^31 - 2. Large states wrap around in the product,
// which may turn negative: its remainder is brought into range as well.
inline void CongruentialStep(std::uint64_t& state) {
  std::int64_t next = static_cast<std::int64_t>(state * 397204094u) % kCongruentialModulus;
  if (next < 0) next += kCongruentialModulus;
  state = next == 0 ? 1 : static_cast<std::uint64_t>(next);
}

// The uniform of (0, 1) that belongs to a state after a step.
inline double CongruentialUniform(std::uint64_t state) {
  return static_cast<double>(state) * 0x1p-31;
}

}  // namespace NQMath_940::internal
