#include <nqcommon/model/settings/NQSettingListValue.h>

#include <nqcommon/model/settings/internal/setting_display.h>
#include <nqcommon/model/settings/internal/value_order.h>

namespace NQXML_940 {

NQSettingListValue* NQSettingListValue::Clone() const { return new NQSettingListValue(*this); }

bool NQSettingListValue::operator==(const INQSettingValue& other) const {
  const auto* nested = dynamic_cast<const NQSettingListValue*>(&other);
  return nested != nullptr && fSettings == nested->fSettings;
}

bool NQSettingListValue::operator<(const INQSettingValue& other) const {
  return internal::IsLess(*this, other,
                          [](const NQSettingListValue& a, const NQSettingListValue& b) {
                            return a.fSettings < b.fSettings;
                          });
}

void NQSettingListValue::Display() const { internal::DisplayValue("NQSettingListValue", *this); }

}  // namespace NQXML_940
