#pragma once

#include <nqcommon/export.h>

namespace NQMath_940 {

// Base of the random number generators: uniform ones, and those of other distributions, which draw
// their uniforms from another generator of this kind. The order of the operations is the binary
// interface.
//
// Threads   one object, and the generator it draws from, one thread at a time.
class NQ_API NQRNGenerator {
 public:
  virtual ~NQRNGenerator() = default;

  // Restarts the stream: the same seed gives the same numbers.
  virtual void SetSeed(double seed) = 0;
  // The next number of the stream.
  virtual double GetNext() = 0;
};

}  // namespace NQMath_940
