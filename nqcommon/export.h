#pragma once

// NQ_API marks what the shared library exports; everything else stays hidden.
#if defined(__GNUC__)
#define NQ_API __attribute__((visibility("default")))
#else
#define NQ_API
#endif
