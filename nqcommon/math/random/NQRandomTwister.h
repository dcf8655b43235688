#pragma once

#include <nqcommon/export.h>
#include <nqcommon/math/random/NQRNGUTwister.h>

namespace NQMath_940 {

// The Mersenne twister MT19937 (Matsumoto and Nishimura 1998, with the initialisation of 2002), and
// the conversions to double of its reference code. Never seeded, the stream is that of seed 5489.
//
// Copies continue where the copied object stands.
// Draws     each operation takes one integer of the stream, GetRealRes53 two.
// Threads   one object, one thread at a time.
class NQ_API NQRandomTwister {
 public:
  // The standard initialisation with the lower 32 bits of s.
  void Initialize(unsigned long s);
  // Initialisation by an array of any length; of each key the lower 32 bits count. No key at all,
  // or a null one, counts as a single 0.
  void InitByArray(const unsigned long* key, unsigned long length);

  unsigned long GetInteger32();
  unsigned long GetInteger31();
  // With x the next integer, x / (2^32 - 1), x / 2^32 and (x + 1/2) / 2^32.
  double GetRealClosed();
  double GetRealClosedOpen();
  double GetRealOpen();
  // A multiple of 2^-53 in [0, 1), the upper 27 bits from the first integer.
  double GetRealRes53();

 private:
  NQRNGUTwister::Data fState;
};

}  // namespace NQMath_940
