#pragma once

#include <nqcommon/export.h>

namespace NQCommon_940 {

// The application's answer to a long computation that asks whether to go on. The library calls it
// and never owns or deletes it. The order of the operations is the binary interface.
class NQ_API NQQueryCancel {
 public:
  virtual ~NQQueryCancel() = default;

  // Has the user asked to cancel?
  virtual bool QueryCancel() = 0;
  // Will a cancel be requested?
  virtual bool QueryWillCancel() = 0;
};

}  // namespace NQCommon_940
