#include <nqcommon/version.h>

namespace NQCommon_940 {

const char* GetLibraryVersion() { return NQCOMMON_VERSION; }

}  // namespace NQCommon_940
