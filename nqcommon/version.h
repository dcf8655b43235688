// The version: of the headers a program was compiled with, and of the library it runs with.
#pragma once

#include <nqcommon/export.h>

#define NQCOMMON_VERSION_MAJOR 9
#define NQCOMMON_VERSION_MINOR 4
#define NQCOMMON_VERSION_PATCH 0
#define NQCOMMON_VERSION "9.4.0"
// One number to compare with: 90400 for 9.4.0.
#define NQCOMMON_VERSION_NUMBER \
  (NQCOMMON_VERSION_MAJOR * 10000 + NQCOMMON_VERSION_MINOR * 100 + NQCOMMON_VERSION_PATCH)

namespace NQCommon_940 {

// The NQCOMMON_VERSION that the library was built with. The file name and the namespaces carry the
// first two numbers, so a program never meets a library that differs in those.
NQ_API const char* GetLibraryVersion();

}  // namespace NQCommon_940
