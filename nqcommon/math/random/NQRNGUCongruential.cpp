#include <nqcommon/math/random/NQRNGUCongruential.h>

#include <algorithm>
#include <cmath>

#include <nqcommon/math/random/internal/congruential.h>

namespace NQMath_940 {

void NQRNGUCongruential::SetSeed(double seed) {
  constexpr auto kLargest = static_cast<double>(internal::kCongruentialModulus);
  const double whole = std::floor(std::fabs(seed));
  fState = whole >= 1 ? static_cast<std::uint64_t>(std::min(whole, kLargest)) : 1;
}

double NQRNGUCongruential::GetNext() {
  internal::CongruentialStep(fState);
  return internal::CongruentialUniform(fState);
}

}  // namespace NQMath_940
