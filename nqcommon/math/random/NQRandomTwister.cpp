#include <nqcommon/math/random/NQRandomTwister.h>

#include <cstdint>

#include <nqcommon/math/random/internal/mersenne_twister.h>

namespace NQMath_940 {

void NQRandomTwister::Initialize(unsigned long s) {
  internal::SeedTwister(fState, static_cast<std::uint32_t>(s));
}

void NQRandomTwister::InitByArray(const unsigned long* key, unsigned long length) {
  internal::SeedTwister(fState, key, key != nullptr ? length : 0);
}

unsigned long NQRandomTwister::GetInteger32() { return internal::NextWord(fState); }

unsigned long NQRandomTwister::GetInteger31() { return internal::NextWord(fState) >> 1; }

double NQRandomTwister::GetRealClosed() { return internal::NextWord(fState) / 4294967295.0; }

double NQRandomTwister::GetRealClosedOpen() { return internal::NextWord(fState) * 0x1p-32; }

double NQRandomTwister::GetRealOpen() { return (internal::NextWord(fState) + 0.5) * 0x1p-32; }

double NQRandomTwister::GetRealRes53() { return internal::NextRes53(fState); }

}  // namespace NQMath_940
