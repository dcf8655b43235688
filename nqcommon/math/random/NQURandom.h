#pragma once

#include <fstream>
#include <optional>
#include <ostream>

#include <nqcommon/common/NQRandom.h>
#include <nqcommon/export.h>
#include <nqcommon/math/random/NQRandomTwister.h>

namespace NQMath_940 {

// A uniform source that can be saved, in one of four modes. The first that applies is used:
//
//   user generator      one that the application supplies; not owned, it must outlive its use
//   not portable        the platform's rand(), whose state the whole process shares
//   portable            the multiplicative congruential generator, the seed being its state
//   portable, twister   the Mersenne twister, initialised with the seed
//
// Copies    have the seed, the flags and the user generator. In twister mode a copy starts again
//           from the seed, wherever the stream of the copied object stands; moving, and assigning
//           an object to itself, carry the stream on.
// Memory    None but its own: nothing fails for the lack of it, except that saving and restoring
//           as text then fail as on a bad stream.
// Threads   one object, one thread at a time; all objects that are not portable count as one.
//
// Saved records
//   binary    20 bytes in native byte order: "NQUR", the seed as a double, the two flags as 32-bit
//             integers, 1 for true and any other value for false
//   XML       <Obj name="NQURandom"> with the seed as a Double and the flags as two Int
// A seed above 2^53 is rounded to 53 bits by the binary record, and any seed to 15 digits by the
// XML record. A seed read that is outside the range of unsigned long becomes the nearest end of it,
// its fraction is dropped, and NaN is 0.
class NQ_API NQURandom {
 public:
  // The twister is used when both flags are true and there is no user generator.
  NQURandom(unsigned long seed, bool usePortable, bool useTwister,
            NQCommon_940::NQRandom* userRNG = nullptr);
  NQURandom(const NQURandom& other);
  NQURandom(NQURandom&& other) noexcept = default;
  NQURandom& operator=(const NQURandom& other);
  NQURandom& operator=(NQURandom&& other) noexcept = default;
  ~NQURandom() = default;

  // Sets the seed and restarts the stream. Not portable: srand(s). A user generator is not reached.
  void SetSeed(unsigned long s);
  // Turning portability off also turns the twister off, for good.
  void SetUsePortable(bool b);

  bool GetUsePortable() const { return fUsePortable; }
  bool GetUseTwister() const { return fUseTwister; }
  NQCommon_940::NQRandom* GetUserRNG() const { return fpUserRNG; }

  // The next uniform, one step of the generator that is used.
  //   user generator      its GetNext()
  //   not portable        rand() / 2147483647, in [0, 1]
  //   portable            seed <- seed * 397204094 mod 2147483647, 0 becoming 1; seed / 2^31.
  //                       A seed above 2^31 wraps around in the product, and a negative remainder
  //                       has the modulus added: every uniform is in (0, 1)
  //   portable, twister   NQRandomTwister::GetRealOpen
  double GetRandom();

  // ---- Saving ----------------------------------------------------------------------------------

  // Return 20, the number of bytes, or 0 on a failed stream. Reading also returns 0, with nothing
  // changed, for another tag or a short record. It restores the seed and the flags and leaves the
  // twister as it is: a stream that was in progress goes on; where there was none, one starts from
  // the seed with the first draw.
  int WriteObject(std::fstream& file) const;
  int ReadObject(std::fstream& file);

  // Return 5, the number of lines, or 0 on a failed stream. A failed read also writes "Failure
  // reading NQURandom!" to the standard error stream, and keeps the fields that were read before
  // the failure; otherwise reading restores what ReadObject restores.
  int WriteObjectXML(std::ostream& out, int indent) const;
  int ReadObjectXML(std::ifstream& file);

  void Display() const;

 private:
  NQRandomTwister& StartTwister();

  unsigned long fSeed;
  bool fUsePortable;
  bool fUseTwister;
  std::optional<NQRandomTwister> fTwister;  // in twister mode, from the first draw on at latest
  NQCommon_940::NQRandom* fpUserRNG;
};

}  // namespace NQMath_940
