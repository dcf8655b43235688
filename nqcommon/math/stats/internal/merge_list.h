#pragma once

#include <algorithm>
#include <vector>

namespace NQMath_940::internal {

// Merges the entries into `target` in order, passing over null ones, up to the first that fails.
// The answer is also false unless the first entry has variables, as many as the target has, if any.
template <class Target, class Entry>
bool MergeList(Target& target, const std::vector<Entry*>& others) {
  const auto first = std::find_if(others.begin(), others.end(),
                                  [](const Entry* other) { return other != nullptr; });
  if (first == others.end() || (*first)->GetNVars() < 1) return false;
  return std::all_of(first, others.end(),
                     [&](const Entry* other) { return other == nullptr || target.Merge(*other); });
}

}  // namespace NQMath_940::internal
