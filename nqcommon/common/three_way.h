#pragma once

namespace NQCommon_940 {

// -1 for a < b, 1 for b < a, 0 for neither.
template <typename T>
int Sign(const T& a, const T& b) {
  return static_cast<int>(b < a) - static_cast<int>(a < b);
}

}  // namespace NQCommon_940
