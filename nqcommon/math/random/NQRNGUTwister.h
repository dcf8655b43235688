#pragma once

#include <cstdint>

#include <nqcommon/export.h>
#include <nqcommon/math/random/NQRNGenerator.h>

namespace NQMath_940 {

// Uniforms with 53 random bits from the Mersenne twister MT19937 (Matsumoto and Nishimura 1998,
// with the initialisation of 2002). Never seeded, the stream is that of seed 5489.
//
// Copies continue where the copied object stands.
class NQ_API NQRNGUTwister : public NQRNGenerator {
 public:
  // The state of a twister: 624 words, of which those before mti are used up; mti is 625 before the
  // state is first set.
  struct Data {
    std::uint32_t mt[624] = {};
    int mti = 625;
  };

  // Every double starts a stream of its own.
  //   whole numbers of 0 .. 2147483647    the standard initialisation with that number
  //   others                              initialisation by an array of three words: sign and
  //                                       exponent, then 26 and 27 bits of the fraction
  // -0 is 0. The infinities count as -2^1024 and 2^1024; all NaN give one stream.
  void SetSeed(double seed) override;

  // A multiple of 2^-53 in [0, 1). Takes two integers, the upper 27 bits from the first.
  double GetNext() override;

  // Where the stream stands, to be kept and gone on from later, by this or another object.
  const Data& GetState() const { return fState; }
  void SetState(const Data& state) { fState = state; }

 private:
  Data fState;
};

// The standard initialisation with a seed, and the next integer of 32 bits.
NQ_API void init_genrand(NQRNGUTwister::Data& state, std::uint32_t seed);
NQ_API std::uint32_t genrand_int32(NQRNGUTwister::Data& state);

}  // namespace NQMath_940
