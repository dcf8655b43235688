// How deep trees may be: the depth that the headers state for a stack of 8 MiB.
#pragma once

namespace nqtest {

#if defined __SANITIZE_ADDRESS__ || !defined __OPTIMIZE__  // frames are several times as large
constexpr int kSafeDepth = 1000;
#else
constexpr int kSafeDepth = 10000;
#endif

}  // namespace nqtest
