// Parts that an object owns and copies with their Clone.
#pragma once

#include <memory>

namespace NQXML_940::internal {

template <class T>
std::unique_ptr<T> CloneOf(const std::unique_ptr<T>& part) {
  return std::unique_ptr<T>(part ? part->Clone() : nullptr);
}

// Deletes the old part and owns this one; nothing happens when it is the same.
template <class T>
void TakeOver(std::unique_ptr<T>& part, T* object) {
  if (object != part.get()) part.reset(object);
}

}  // namespace NQXML_940::internal
