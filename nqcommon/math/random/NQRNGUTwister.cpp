#include <nqcommon/math/random/NQRNGUTwister.h>

#include <cmath>
#include <limits>

#include <nqcommon/math/random/internal/mersenne_twister.h>

namespace NQMath_940 {

namespace {

constexpr double kLargestWholeSeed = 2147483647.0;

// |seed| = fraction 2^exponent, 1/2 <= fraction < 1. Infinity continues the finite numbers as
// 2^1024, and NaN is told from it by its fraction.
double Split(double seed, int& exponent) {
  if (std::isfinite(seed)) return std::frexp(std::fabs(seed), &exponent);
  exponent = std::numeric_limits<double>::max_exponent + 1;
  return std::isnan(seed) ? 0.0 : 0.5;
}

}  // namespace

void NQRNGUTwister::SetSeed(double seed) {
  if (seed >= 0 && seed <= kLargestWholeSeed && seed == std::floor(seed)) {
    internal::SeedTwister(fState, static_cast<std::uint32_t>(seed));
    return;
  }
  int exponent = 0;
  const double fraction = Split(seed, exponent) * 0x1p26;
  const unsigned long isOneOrMore = exponent > 0 ? 1 : 0;
  const auto halvings = static_cast<unsigned long>(exponent < 0 ? -exponent : exponent);
  const unsigned long isNegative = seed < 0 ? 1 : 0;
  const double upper = std::floor(fraction);
  const unsigned long key[] = {2 * (isNegative + 2 * (2 * halvings | isOneOrMore)),
                               static_cast<unsigned long>(upper),
                               static_cast<unsigned long>((fraction - upper) * 0x1p27)};
  internal::SeedTwister(fState, key, 3);
}

double NQRNGUTwister::GetNext() { return internal::NextRes53(fState); }

void init_genrand(NQRNGUTwister::Data& state, std::uint32_t seed) {
  internal::SeedTwister(state, seed);
}

std::uint32_t genrand_int32(NQRNGUTwister::Data& state) { return internal::NextWord(state); }

}  // namespace NQMath_940
