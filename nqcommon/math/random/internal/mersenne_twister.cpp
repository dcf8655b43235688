#include <nqcommon/math/random/internal/mersenne_twister.h>

#include <algorithm>

namespace NQMath_940::internal {

namespace {

constexpr unsigned kN = kTwisterWords;
constexpr unsigned kM = 397;
constexpr int kUnseeded = static_cast<int>(kN) + 1;
constexpr std::uint32_t kDefaultSeed = 5489;
constexpr std::uint32_t kArraySeed = 19650218;

constexpr std::uint32_t Mixed(std::uint32_t word) { return word ^ (word >> 30); }

// Word i of the next block. The branch on the lowest bit is a mask, so that the loops vectorise.
constexpr std::uint32_t Twist(std::uint32_t word, std::uint32_t next, std::uint32_t far) {
  const std::uint32_t y = (word & 0x80000000u) | (next & 0x7fffffffu);
  return far ^ (y >> 1) ^ ((0u - (next & 1u)) & 0x9908b0dfu);
}

// The word after i in the rounds over the words 1 .. 623. At the end of a round word 0 takes the
// value of the last word.
unsigned Advance(TwisterState& state, unsigned i) {
  if (i + 1 < kN) return i + 1;
  state.mt[0] = state.mt[kN - 1];
  return 1;
}

}  // namespace

void SeedTwister(TwisterState& state, std::uint32_t seed) {
  state.mt[0] = seed;
  for (std::uint32_t i = 1; i < kN; ++i) state.mt[i] = 1812433253u * Mixed(state.mt[i - 1]) + i;
  state.mti = static_cast<int>(kN);
}

void SeedTwister(TwisterState& state, const unsigned long* key, unsigned long length) {
  constexpr unsigned long kNoKey = 0;
  if (length == 0) {
    key = &kNoKey;
    length = 1;
  }
  SeedTwister(state, kArraySeed);
  std::uint32_t* mt = state.mt;
  unsigned i = 1;
  unsigned long j = 0;
  for (unsigned long step = std::max<unsigned long>(kN, length); step > 0; --step) {
    mt[i] = (mt[i] ^ (Mixed(mt[i - 1]) * 1664525u)) + static_cast<std::uint32_t>(key[j] + j);
    i = Advance(state, i);
    j = j + 1 < length ? j + 1 : 0;
  }
  for (unsigned step = kN - 1; step > 0; --step) {
    mt[i] = (mt[i] ^ (Mixed(mt[i - 1]) * 1566083941u)) - i;
    i = Advance(state, i);
  }
  mt[0] = 0x80000000u;
}

void RegenerateTwister(TwisterState& state) {
  if (state.mti == kUnseeded) SeedTwister(state, kDefaultSeed);
  std::uint32_t* mt = state.mt;
  for (unsigned i = 0; i < kN - kM; ++i) mt[i] = Twist(mt[i], mt[i + 1], mt[i + kM]);
  for (unsigned i = kN - kM; i < kN - 1; ++i) mt[i] = Twist(mt[i], mt[i + 1], mt[i - (kN - kM)]);
  mt[kN - 1] = Twist(mt[kN - 1], mt[0], mt[kM - 1]);
  state.mti = 0;
}

}  // namespace NQMath_940::internal
