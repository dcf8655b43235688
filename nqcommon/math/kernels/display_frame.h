#pragma once

#include <string>

#include <nqcommon/common/display.h>
#include <nqcommon/common/memory_guard.h>

namespace NQMath_940::internal {

// Displays an object between "<name> display start" and "<name> display end"; `parts` displays what
// it is made of. Memory that ends ends the display.
template <class Parts>
void DisplayObject(const char* name, Parts parts) {
  NQCommon_940::GuardMemory([&] {
    NQDisplay_940::DisplayText(1, std::string(name) + " display start");
    parts();
    NQDisplay_940::DisplayText(1, std::string(name) + " display end");
  });
}

}  // namespace NQMath_940::internal
