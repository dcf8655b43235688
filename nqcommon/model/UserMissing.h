#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace NQXML_940 {

// When two values of a variable are the same, for categories and missing values alike: byte for byte
// for texts; exactly for numbers, so 0 and -0 are the same, and all NaN are the same value.
inline bool SameValue(const std::string& a, const std::string& b) { return a == b; }
inline bool SameValue(double a, double b) { return a == b || (a != a && b != b); }

// The values that a user declares missing one by one, each with a label; numbers or texts. Finding
// one is a linear search: there are a few.
template <class T>
class UserMissing {
 public:
  bool Contains(const T& value) const { return Find(value) < fvValues.size(); }

  // A value that is there already takes the new label, which may be one of these labels.
  void Add(const T& value, std::string label) {
    const std::size_t i = Find(value);
    if (i == fvValues.size()) Append(value);
    SetLabel(i, std::move(label));
  }

  // Adds the value without a label, even one that is there already. The label's place comes first:
  // where memory fails, no value is left without one.
  void Append(const T& value) {
    fvLabels.resize(fvValues.size() + 1);
    fvValues.push_back(value);
  }
  void SetLabel(std::size_t i, std::string label) { fvLabels[i] = std::move(label); }

  void Clear() {
    fvValues.clear();
    fvLabels.clear();
  }

  const std::vector<T>& GetValues() const { return fvValues; }
  const std::vector<std::string>& GetLabels() const { return fvLabels; }

 private:
  std::size_t Find(const T& value) const {
    std::size_t i = 0;
    while (i < fvValues.size() && !SameValue(fvValues[i], value)) ++i;
    return i;
  }

  std::vector<T> fvValues;
  std::vector<std::string> fvLabels;
};

}  // namespace NQXML_940
