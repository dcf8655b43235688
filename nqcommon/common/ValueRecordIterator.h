#pragma once

#include <nqcommon/common/ValueRecord.h>
#include <nqcommon/export.h>

namespace NQCommon_940 {

// Serves the cases of a source that has names and values of any type, such as a table of a
// database, one at a time; RecordIterator is its sister for rows of numbers.
//
//   while (cases.HasMore()) {
//     const ValueRecord* record = cases.Next();
//     if (record) Use(*record);
//   }
//
// The virtual operations are declared in a fixed order, the library's binary interface.
class NQ_API ValueRecordIterator {
 public:
  virtual ~ValueRecordIterator();

  virtual bool HasMore() = 0;
  // The next record, overwritten by the call after, so that all have the same names at the same
  // positions; null when there is none.
  virtual ValueRecord* Next() = 0;
  // 0 while there are more data, 1 at their end, and a number of the source's own where it failed.
  virtual int GetFailReason() = 0;
  // Starts again at the first record where the source can. Returns the fail reason.
  virtual int NewPass() = 0;
};

}  // namespace NQCommon_940
