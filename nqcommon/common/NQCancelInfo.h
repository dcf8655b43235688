#pragma once

#include <nqcommon/common/NQQueryCancel.h>
#include <nqcommon/export.h>

namespace NQMath_940 {

// The cancel flag that a computation polls. It only ever goes from false to true: a cancel once
// seen stays seen, and the application is not asked again. One computation at a time.
//
//   NQCancelInfo cancel(query);              // the application's NQQueryCancel, or null
//   for (int pass = 1; pass <= most; ++pass) {
//     if (cancel.IsCancel()) return false;   // what was computed so far is given up
//     ...
//   }
class NQ_API NQCancelInfo {
 public:
  // `query` is not owned; null means that only SetCancel cancels.
  explicit NQCancelInfo(NQCommon_940::NQQueryCancel* query) : fpQuery(query) {}

  void SetCancel() { fIsCancel = true; }

  // Asks the query object unless the flag is set, and keeps its answer in the flag.
  bool IsCancel() {
    if (!fIsCancel && fpQuery) fIsCancel = fpQuery->QueryCancel();
    return fIsCancel;
  }

  // The flag or, without storing the answer, the query object's forecast.
  bool WillCancel() const { return fIsCancel || (fpQuery && fpQuery->QueryWillCancel()); }

  NQCommon_940::NQQueryCancel* GetCancelPtr() const { return fpQuery; }
  // Keeps the flag.
  void SetCancelPtr(NQCommon_940::NQQueryCancel* query) { fpQuery = query; }

 private:
  NQCommon_940::NQQueryCancel* fpQuery;
  bool fIsCancel = false;
};

}  // namespace NQMath_940
