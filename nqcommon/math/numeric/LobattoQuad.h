#pragma once

#include <nqcommon/common/GuardedCopy.h>
#include <nqcommon/common/NQWarnings.h>
#include <nqcommon/export.h>
#include <nqcommon/math/numeric/IIntegrand.h>
#include <nqcommon/math/numeric/INumIntegration.h>

namespace NQMath_940 {

class BoundsList;

// Adaptive integration of one function over a finite interval by the five-point Gauss-Lobatto rule
// (Abramowitz and Stegun 1964, 25.4.32, n = 5).
//
// Method    Both ends are first pulled in over tails that are negligible beside the value at a
//           pivot. The intervals left are worked through from the left: the rule on the whole, i0,
//           and on its two halves, i1, are compared; an interval where they differ is halved.
// Accuracy  The tolerance bounds |i1 - i0| / max(|i0|, |i1|) on every accepted interval; i1 itself
//           is then about 1/256 of that off on a smooth function. Two things stay outside the
//           tolerance: the tails cut off, and a last sliver of at most `closeness` times the span,
//           which is not integrated when the function still forces small intervals there.
//           A peak that lies between the nodes of the first step is not seen: put the pivot on it.
// Failure   status 901 (a warning): the iteration limit was reached and the rest was integrated in
//                  one step; the result is a rough value.
//           status 902 (a warning): a value was missing at a node, an end of the interval is
//                  infinite or NaN, or memory ended, where the warning may be lost too; the result
//                  is the system-missing value. What the integrand throws passes through.
//           A copy for which memory ends has no warnings.
//           Infinities and NaN from the integrand are numbers to the rule and carry into the
//           result when their interval is added.
class NQ_API LobattoQuad : public INumIntegration {
 public:
  // `integrand` is not owned; without one every integral is 0.
  explicit LobattoQuad(IIntegrand* integrand) : fIntegrand(integrand) {}

  // ---- Settings: a value that is not positive is ignored where noted --------------------------

  void SetIntegrand(IIntegrand* integrand) { fIntegrand = integrand; }
  // Positive; 1e-6.
  void SetTolerance(double tolerance) { SetIfPositive(tolerance, fTolerance); }
  // The tolerance bounds |i1 - i0| itself; false.
  void SetAbsConvergence(bool absolute) { fAbsConvergence = absolute; }
  // Positive; 2000. One iteration accepts one interval.
  void SetMaxIter(int maxIter) { SetIfPositive(maxIter, fMaxIter); }
  // Positive; 100. An interval halved that often is accepted as it is.
  void SetMaxSplits(int maxSplits) { SetIfPositive(maxSplits, fMaxSplits); }
  // Positive; 0.01. The part of the span that may be left out at the right.
  void SetCloseness(double closeness) { SetIfPositive(closeness, fCloseness); }

  // Which ends may be pulled in; both true. An end moves only inwards, towards the pivot: with the
  // pivot outside [a, b] the end between them stays.
  void SetAdjustRight(bool adjust) { fAdjustRight = adjust; }
  void SetAdjustLeft(bool adjust) { fAdjustLeft = adjust; }
  // An end is negligible when |f(end)| < coef * |f(pivot)|; 1e-12. No end is when f(pivot) is
  // missing or not finite.
  void SetBoundaryAdjustmentCoef(double coef) { fBoundaryAdjustmentCoef = coef; }
  // A point where the function is large; 1.
  void SetBoundaryAdjustmentPivot(double pivot) { fBoundaryAdjustmentPivot = pivot; }

  // ---- Integration ----------------------------------------------------------------------------

  // The five-point rule on [a, b], exact for polynomials up to degree 7; 0 when b <= a. Evaluates
  // from left to right and returns the system-missing value at the first missing one.
  double SumUp(double a, double b) override;

  // The integral over [a, b]; 0 when b <= a. Starts a new count of iterations and a new list of
  // current warnings; the accumulated list keeps those of earlier integrations.
  double Integrate(double a, double b) override;

  // Whether to stop before the interval that starts at `left`: the iteration limit is reached, or
  // what remains up to `right` is at most closeness * span.
  bool StopOuterLoop(double left, double right, double span) const;

  // Whether to accept i1 on an interval after `splits` halvings: it agrees with i0 to the
  // tolerance, both are 0, or no more splits are allowed.
  bool StopInnerLoop(double i0, double i1, int splits) const;

  // Intervals accepted by the last Integrate.
  int GetNIterations() const { return fNIterations; }

  NQCommon_940::NQWarnings& GetWarnings() { return *fWarnings; }

 private:
  template <class T>
  static void SetIfPositive(T value, T& setting) {
    if (value > 0) setting = value;
  }

  void AdjustBounds(double& a, double& b);
  // `end`, moved towards the pivot while the function stays negligible; itself when it is not.
  double AdjustedEnd(double end, double threshold);
  // Halves the first interval until its rule is accepted; false when a value is missing or memory
  // ends.
  bool RefineFirst(BoundsList& intervals, double& integral);
  void Warn(long code);
  // Records a missing value and returns it.
  double Fail();

  IIntegrand* fIntegrand;
  double fTolerance = 1e-6;
  bool fAbsConvergence = false;
  int fMaxIter = 2000;
  int fMaxSplits = 100;
  int fNIterations = 0;
  NQCommon_940::GuardedCopy<NQCommon_940::NQWarnings> fWarnings;
  double fCloseness = 0.01;
  bool fAdjustRight = true;
  bool fAdjustLeft = true;
  double fBoundaryAdjustmentCoef = 1e-12;
  double fBoundaryAdjustmentPivot = 1.0;
};

}  // namespace NQMath_940
