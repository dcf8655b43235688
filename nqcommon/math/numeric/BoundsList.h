#pragma once

#include <cstddef>
#include <vector>

#include <nqcommon/common/GuardedCopy.h>
#include <nqcommon/common/NQMV.h>
#include <nqcommon/common/memory_guard.h>
#include <nqcommon/export.h>
#include <nqcommon/math/numeric/INumIntegration.h>

namespace NQMath_940 {

// The sub-intervals that an integration has still to do, from left to right, each beginning where
// the one before it ends. On an empty list Split and Remove do nothing and the rest gives the
// system-missing value. Where memory ends, Initialize leaves the list empty, Split as it was, and a
// copy is empty.
class NQ_API BoundsList {
 public:
  // `integrator` evaluates the rule; it is not owned and must outlive this list.
  explicit BoundsList(INumIntegration* integrator) : fIntegrator(integrator) {}

  // One interval, [a, b]. False when there is no memory for it.
  bool Initialize(double a, double b) {
    fRights->clear();
    fLeft = a;
    return Add(b);
  }

  // Halves the first interval; its right half comes directly after it. False when there is no
  // interval, or no memory for another one.
  bool Split() { return !fRights->empty() && Add(Middle()); }

  // Drops the first interval. Returns the number left.
  std::size_t Remove() {
    if (fRights->empty()) return 0;
    fLeft = fRights->back();
    fRights->pop_back();
    return fRights->size();
  }

  double GetFirstLeft() const { return fRights->empty() ? NQCommon_940::NQMV::Missing() : fLeft; }

  // i0 = the rule on the first interval, i1 = the sum of the rule on its halves. Both are missing
  // when a value needed for either is.
  void ComputeI0andI1(double& i0, double& i1) {
    using NQCommon_940::NQMV;
    i0 = i1 = NQMV::Missing();
    if (fRights->empty()) return;
    const double whole = fIntegrator->SumUp(fLeft, fRights->back());
    if (NQMV::IsMissing(whole)) return;
    const double leftHalf = fIntegrator->SumUp(fLeft, Middle());
    if (NQMV::IsMissing(leftHalf)) return;
    const double rightHalf = fIntegrator->SumUp(Middle(), fRights->back());
    if (NQMV::IsMissing(rightHalf)) return;
    i0 = whole;
    i1 = leftHalf + rightHalf;
  }

 private:
  double Middle() const { return fLeft + (fRights->back() - fLeft) / 2; }
  bool Add(double right) {
    return NQCommon_940::GuardMemory([&] { fRights->push_back(right); });
  }

  double fLeft = 0;
  NQCommon_940::GuardedCopy<std::vector<double>> fRights;  // the last is that of the first interval
  INumIntegration* fIntegrator;
};

}  // namespace NQMath_940
