#include <nqcommon/model/settings/NQVecValue.h>

#include <nqcommon/model/settings/internal/list_elements.h>
#include <nqcommon/model/settings/internal/setting_display.h>
#include <nqcommon/model/settings/internal/value_order.h>

namespace NQXML_940 {

template <class T>
NQVecValue<T>* NQVecValue<T>::Clone() const {
  return new NQVecValue(*this);
}

template <class T>
bool NQVecValue<T>::operator==(const INQSettingValue& other) const {
  const auto* list = dynamic_cast<const NQVecValue*>(&other);
  return list != nullptr && fvValues == list->fvValues;
}

template <class T>
bool NQVecValue<T>::operator<(const INQSettingValue& other) const {
  return internal::IsLess(*this, other, [](const NQVecValue& a, const NQVecValue& b) {
    return a.fvValues < b.fvValues;
  });
}

template <class T>
void NQVecValue<T>::Display() const {
  internal::DisplayValue("NQVecValue", *this);
}

#define NQ_INSTANTIATE(T) template class NQVecValue<T>;
NQ_FOR_EACH_LIST_ELEMENT(NQ_INSTANTIATE)
#undef NQ_INSTANTIATE

}  // namespace NQXML_940
