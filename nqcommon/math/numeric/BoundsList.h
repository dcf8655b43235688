#pragma once

#include <cstddef>
#include <iterator>
#include <list>

#include <nqcommon/common/GuardedCopy.h>
#include <nqcommon/common/NQMV.h>
#include <nqcommon/common/memory_guard.h>
#include <nqcommon/export.h>
#include <nqcommon/math/numeric/INumIntegration.h>

namespace NQMath_940 {

// The sub-intervals that an integration has still to do, from left to right: the k-th is
// [k-th left end, k-th right end]. On an empty list Split and Remove do nothing and the rest gives
// the system-missing value. Where memory ends, Initialize leaves the list empty, Split as it was, and
// a copy is empty.
class NQ_API BoundsList {
 public:
  // `integrator` evaluates the rule; it is not owned and must outlive this list.
  explicit BoundsList(INumIntegration* integrator) : fIntegrator(integrator) {}

  // One interval, [a, b]. False when there is no memory for it.
  bool Initialize(double a, double b) {
    fEnds->lefts.clear();
    fEnds->rights.clear();
    return InsertBoth(0, a, b);
  }

  // Halves the first interval; its right half comes directly after it. False when there is no
  // interval, or no memory for another one.
  bool Split() {
    if (fEnds->lefts.empty()) return false;
    const double middle = FirstMiddle();
    return InsertBoth(1, middle, middle);
  }

  // Drops the first interval. Returns the number left.
  std::size_t Remove() {
    if (fEnds->lefts.empty()) return 0;
    fEnds->lefts.pop_front();
    fEnds->rights.pop_front();
    return fEnds->lefts.size();
  }

  double GetFirstLeft() const {
    return fEnds->lefts.empty() ? NQCommon_940::NQMV::Missing() : fEnds->lefts.front();
  }

  // i0 = the rule on the first interval, i1 = the sum of the rule on its halves. Both are missing
  // when a value needed for either is.
  void ComputeI0andI1(double& i0, double& i1) {
    using NQCommon_940::NQMV;
    i0 = i1 = NQMV::Missing();
    if (fEnds->lefts.empty()) return;
    const double middle = FirstMiddle();
    const double whole = fIntegrator->SumUp(fEnds->lefts.front(), fEnds->rights.front());
    if (NQMV::IsMissing(whole)) return;
    const double leftHalf = fIntegrator->SumUp(fEnds->lefts.front(), middle);
    if (NQMV::IsMissing(leftHalf)) return;
    const double rightHalf = fIntegrator->SumUp(middle, fEnds->rights.front());
    if (NQMV::IsMissing(rightHalf)) return;
    i0 = whole;
    i1 = leftHalf + rightHalf;
  }

 private:
  double FirstMiddle() const {
    return fEnds->lefts.front() + (fEnds->rights.front() - fEnds->lefts.front()) / 2;
  }

  // A left end after the first `skip` ones, and a right end before all others; both or none.
  bool InsertBoth(int skip, double left, double right) {
    return NQCommon_940::GuardMemory([&] {
      std::list<double> lefts(1, left);
      fEnds->rights.push_front(right);
      fEnds->lefts.splice(std::next(fEnds->lefts.begin(), skip), lefts);
    });
  }

  struct Ends {
    std::list<double> lefts;
    std::list<double> rights;
  };

  NQCommon_940::GuardedCopy<Ends> fEnds;
  INumIntegration* fIntegrator;
};

}  // namespace NQMath_940
