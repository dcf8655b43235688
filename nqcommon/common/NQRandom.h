#pragma once

#include <nqcommon/export.h>

namespace NQCommon_940 {

// A uniform source that the application supplies. The library calls it and never owns or deletes
// it. The order of the operations is the binary interface.
class NQ_API NQRandom {
 public:
  virtual ~NQRandom() = default;

  // The next uniform of (0, 1). Variates drawn from a source that also returns 0 or 1 stay defined,
  // but one that returns nothing else can keep a rejection method going for ever.
  virtual double GetNext() = 0;
};

}  // namespace NQCommon_940
