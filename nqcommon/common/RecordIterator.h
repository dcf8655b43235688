#pragma once

#include <nqcommon/common/Record.h>
#include <nqcommon/export.h>

namespace NQCommon_940 {

// Serves the cases of a source one at a time.
//
//   while (cases.HasMore()) {
//     const Record* record = cases.Next();
//     if (record) Use(*record);
//   }
//
// The virtual operations are declared in a fixed order, the library's binary interface.
class NQ_API RecordIterator {
 public:
  virtual ~RecordIterator();

  virtual bool HasMore() = 0;
  // The next record, overwritten by the call after; null when there is none.
  virtual Record* Next() = 0;
  // 0 while there are more data, 1 at their end.
  virtual int GetFailReason() = 0;
  // Starts again at the first record where the source can. Returns the fail reason.
  virtual int NewPass() = 0;
};

// An iterator whose NewPass always starts again.
class NQ_API MultiPassRecordIter : public RecordIterator {
 public:
  ~MultiPassRecordIter() override;
};

}  // namespace NQCommon_940
