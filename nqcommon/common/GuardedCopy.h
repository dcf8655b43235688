#pragma once

#include <utility>

#include <nqcommon/common/memory_guard.h>

namespace NQCommon_940 {

// A value of a type that allocates, within a class that must not throw: a copy for which memory
// ends is T(), such as a vector without elements. Moves are those of T. A class that holds its
// parts this way is copied and moved by the operations that the compiler writes.
template <class T>
class GuardedCopy {
 public:
  GuardedCopy() = default;
  explicit GuardedCopy(const T& value) noexcept { Assign(value); }
  GuardedCopy(const GuardedCopy& other) noexcept { Assign(other.fValue); }
  GuardedCopy(GuardedCopy&&) noexcept = default;
  ~GuardedCopy() = default;

  GuardedCopy& operator=(const GuardedCopy& other) noexcept {
    if (this != &other) Assign(other.fValue);
    return *this;
  }
  GuardedCopy& operator=(GuardedCopy&&) noexcept = default;

  T& operator*() { return fValue; }
  const T& operator*() const { return fValue; }
  T* operator->() { return &fValue; }
  const T* operator->() const { return &fValue; }

 private:
  void Assign(const T& value) noexcept {
    if (!GuardMemory([&] { fValue = value; })) fValue = T();
  }

  T fValue{};
};

}  // namespace NQCommon_940
