#pragma once

#include <nqcommon/export.h>

namespace NQCommon_940 {

// Base of an application's progress report. The library calls no operation of it; it only holds the
// type records (the destructors are defined in the library), so that reports that cross library
// boundaries share one type.
class NQ_API ProgressReport {
 public:
  virtual ~ProgressReport();
};

class NQ_API ProgressReportVect : public ProgressReport {
 public:
  ~ProgressReportVect() override;
};

}  // namespace NQCommon_940
