#include <nqcommon/common/ProgressReport.h>

namespace NQCommon_940 {

ProgressReport::~ProgressReport() = default;
ProgressReportVect::~ProgressReportVect() = default;

}  // namespace NQCommon_940
