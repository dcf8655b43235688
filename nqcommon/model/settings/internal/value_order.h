#pragma once

#include <typeinfo>

#include <nqcommon/model/settings/INQSettingValue.h>

namespace NQXML_940::internal {

// a < b for an `a` of class V: by `less` when b is one too, else by type code and then by class.
template <class V, class Less>
bool IsLess(const V& a, const INQSettingValue& b, Less less) {
  if (const auto* same = dynamic_cast<const V*>(&b)) return less(a, *same);
  if (a.GetType() != b.GetType()) return a.GetType() < b.GetType();
  return typeid(a).before(typeid(b));
}

}  // namespace NQXML_940::internal
