// Memory that ends is a failure like any other: the one place that turns it into a return value.
#pragma once

#include <utility>

namespace NQCommon_940 {

// Runs `work` and returns what it returns; where memory ends in it (any exception counts, a
// container asked for more than it can hold throws another one), returns `failure`. The public
// operations that allocate and must not throw have this around their body:
//
//   bool NQThing::Solve(const std::vector<double>& b) {
//     return GuardMemory(false, [&] { ... return true; });
//   }
//
// What `work` had changed by then stays changed: an operation that promises "nothing changed" makes
// what it needs first.
template <class Result, class Work>
Result GuardMemory(Result failure, Work&& work) noexcept {
  try {
    return std::forward<Work>(work)();
  } catch (...) {
    return failure;
  }
}

// The same for work without a result: whether it came to its end.
template <class Work>
bool GuardMemory(Work&& work) noexcept {
  try {
    std::forward<Work>(work)();
    return true;
  } catch (...) {
    return false;
  }
}

}  // namespace NQCommon_940
