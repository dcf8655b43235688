// The values that a user declares missing one by one, each with a label: two vectors, of values and
// of labels. Finding a value is a linear search: there are a few.
#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include <nqcommon/common/memory_guard.h>

namespace NQXML_940::internal {

// When two values of a variable are the same, for categories and missing values alike: byte for
// byte for texts; exactly for numbers, so 0 and -0 are the same, and all NaN are the same value.
inline bool SameValue(const std::string& a, const std::string& b) { return a == b; }
inline bool SameValue(double a, double b) { return a == b || (a != a && b != b); }

// The size of the list for a value that is not in it.
template <class T>
std::size_t PositionOf(const T& value, const std::vector<T>& values) {
  std::size_t i = 0;
  while (i < values.size() && !SameValue(values[i], value)) ++i;
  return i;
}

// A value that is declared already takes the new label. Value and label may be out of these lists.
// False, nothing changed, where memory ends.
template <class T>
bool DeclareMissing(const T& value, const std::string& label, std::vector<T>& values,
                    std::vector<std::string>& labels) {
  const bool isDeclared = NQCommon_940::GuardMemory([&] {
    T newValue = value;
    std::string newLabel = label;
    const std::size_t i = PositionOf(newValue, values);
    if (i == values.size()) {
      labels.resize(i + 1);
      values.push_back(std::move(newValue));
    }
    labels[i] = std::move(newLabel);
  });
  if (!isDeclared) labels.resize(values.size());
  return isDeclared;
}

}  // namespace NQXML_940::internal
