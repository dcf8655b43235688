#pragma once

#include <nqcommon/common/RecordIterator.h>
#include <nqcommon/export.h>

namespace NQCommon_940 {

// Cases from arrays in memory, which must outlive the iterator and are not owned.
//
// Record    element 0 is the identifier, 1 .. nValues the values, and nValues + 1 the weight when
//           there are weights.
class NQ_API MemoryRecordIterator : public MultiPassRecordIter {
 public:
  // ids: nRecords, or null: the identifiers are then 1, 2, ...; values: nRecords rows of nValues,
  // one after the other; weights: nRecords, or null. A negative nValues counts as 0.
  MemoryRecordIterator(int nRecords, int nValues, double* ids, double* values, double* weights);
  ~MemoryRecordIterator() override;

  bool HasMore() override { return fFailReason == 0; }
  // Null, too, when the storage for the record could not be had.
  Record* Next() override;
  int GetFailReason() override { return fFailReason; }
  // Returns 0, and HasMore is true afterwards, without records too: Next is then null and tells the
  // end.
  int NewPass() override;

 private:
  int fNRecords;
  int fNValues;
  const double* fpIds;
  const double* fpValues;
  const double* fpWeights;
  Record fRecord;
  int fFailReason;
  int fPosition = 0;
};

}  // namespace NQCommon_940
