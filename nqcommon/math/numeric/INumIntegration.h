#pragma once

#include <nqcommon/export.h>

namespace NQMath_940 {

// A numerical integrator of one function. Both operations return the system-missing value when the
// function could not be evaluated.
class NQ_API INumIntegration {
 public:
  virtual ~INumIntegration() = default;

  // The basic rule on [a, b], applied once.
  virtual double SumUp(double a, double b) = 0;

  // The integral over [a, b] to the integrator's tolerance.
  virtual double Integrate(double a, double b) = 0;
};

}  // namespace NQMath_940
