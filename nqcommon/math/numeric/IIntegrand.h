#pragma once

#include <nqcommon/export.h>

namespace NQMath_940 {

// A function of one variable to be integrated.
class NQ_API IIntegrand {
 public:
  virtual ~IIntegrand() = default;

  // The value at x; the system-missing value says that it cannot be evaluated there.
  virtual double Evaluate(double x) = 0;
};

}  // namespace NQMath_940
