#pragma once

#include <memory>
#include <utility>

namespace NQCommon_940 {

// Owns an object, or none, and copies it with its Clone: a class that holds its parts this way is
// copied in depth by the copy operations that the compiler writes.
template <class T>
class ClonePtr {
 public:
  ClonePtr() = default;
  explicit ClonePtr(T* object) : fObject(object) {}
  explicit ClonePtr(std::unique_ptr<T> object) : fObject(std::move(object)) {}
  ClonePtr(const ClonePtr& other) : fObject(other.fObject ? other.fObject->Clone() : nullptr) {}
  ClonePtr(ClonePtr&&) noexcept = default;
  ~ClonePtr() = default;

  // The copy is made before the old object goes: on a failed copy it stays.
  ClonePtr& operator=(const ClonePtr& other) {
    if (this != &other) *this = ClonePtr(other);
    return *this;
  }
  ClonePtr& operator=(ClonePtr&&) noexcept = default;

  // Deletes the old object and owns this one; nothing happens when it is the same.
  void Reset(T* object = nullptr) {
    if (object != fObject.get()) fObject.reset(object);
  }

  T* Get() const { return fObject.get(); }
  T& operator*() const { return *fObject; }
  T* operator->() const { return fObject.get(); }
  explicit operator bool() const { return fObject != nullptr; }

 private:
  std::unique_ptr<T> fObject;
};

}  // namespace NQCommon_940
