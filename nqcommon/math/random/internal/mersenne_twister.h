// The Mersenne twister MT19937: M. Matsumoto and T. Nishimura, ACM TOMACS 8 (1998) 3-30, with the
// initialisation that the authors published in 2002.
#pragma once

#include <cstdint>

#include <nqcommon/math/random/NQRNGUTwister.h>

namespace NQMath_940::internal {

using TwisterState = NQRNGUTwister::Data;

constexpr unsigned kTwisterWords = 624;

void SeedTwister(TwisterState& state, std::uint32_t seed);
// Both seed the state; a key of length 0 counts as the single key 0.
void SeedTwister(TwisterState& state, const unsigned long* key, unsigned long length);

// Replaces all words by the next 624; seeds a state that never was.
void RegenerateTwister(TwisterState& state);

inline std::uint32_t NextWord(TwisterState& state) {
  // As unsigned numbers, indices that are out of range on either side both start a new block.
  if (static_cast<unsigned>(state.mti) >= kTwisterWords) RegenerateTwister(state);
  std::uint32_t y = state.mt[state.mti++];
  y ^= y >> 11;
  y ^= (y << 7) & 0x9d2c5680u;
  y ^= (y << 15) & 0xefc60000u;
  return y ^ (y >> 18);
}

inline double NextRes53(TwisterState& state) {
  const std::uint32_t upper = NextWord(state) >> 5;
  const std::uint32_t lower = NextWord(state) >> 6;
  return (upper * 0x1p26 + lower) * 0x1p-53;
}

}  // namespace NQMath_940::internal
