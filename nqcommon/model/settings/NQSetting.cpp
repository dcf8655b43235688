#include <nqcommon/model/settings/NQSetting.h>

#include <memory>
#include <utility>

#include <nqcommon/model/settings/NQNumValue.h>
#include <nqcommon/model/settings/NQSettingListValue.h>
#include <nqcommon/model/settings/NQStrValue.h>
#include <nqcommon/model/settings/NQVecValue.h>
#include <nqcommon/model/settings/internal/list_elements.h>
#include <nqcommon/model/settings/internal/setting_display.h>

namespace NQXML_940 {

NQSetting::NQSetting(const std::string& name, std::unique_ptr<INQSettingValue> value)
    : fName(name), fpValue(std::move(value)) {}

NQSetting::NQSetting(const std::string& name, double value)
    : NQSetting(name, std::make_unique<NQNumValue>(value)) {}

NQSetting::NQSetting(const std::string& name, const std::string& value)
    : NQSetting(name, std::make_unique<NQStrValue>(value)) {}

NQSetting::NQSetting(const std::string& name, NQSettings value)
    : NQSetting(name, std::make_unique<NQSettingListValue>(std::move(value))) {}

template <class T, typename>
NQSetting::NQSetting(const std::string& name, std::vector<T> values)
    : NQSetting(name, std::make_unique<NQVecValue<T>>(std::move(values))) {}

NQSetting::NQSetting(const NQSetting& other)
    : fName(other.fName), fType(other.fType), fpValue(other.fpValue->Clone()) {}

NQSetting& NQSetting::operator=(const NQSetting& other) {
  NQSetting copy(other);
  fName.swap(copy.fName);
  fType.swap(copy.fType);
  fpValue.swap(copy.fpValue);
  return *this;
}

NQSetting* NQSetting::Clone() const { return new NQSetting(*this); }

void NQSetting::SetValue(double value) { fpValue = std::make_unique<NQNumValue>(value); }

void NQSetting::SetValue(const std::string& value) {
  fpValue = std::make_unique<NQStrValue>(value);
}

void NQSetting::SetValue(const NQSettings& value) {
  fpValue = std::make_unique<NQSettingListValue>(value);
}

void NQSetting::SetValue(const INQSettingValue& value) { fpValue.reset(value.Clone()); }

bool NQSetting::operator==(const NQSetting& other) const {
  return fName == other.fName && fType == other.fType && *fpValue == *other.fpValue;
}

void NQSetting::Display() const { internal::DisplayValue(internal::SettingLabel(*this), *fpValue); }

#define NQ_INSTANTIATE(T) template NQ_API NQSetting::NQSetting(const std::string&, std::vector<T>);
NQ_FOR_EACH_LIST_ELEMENT(NQ_INSTANTIATE)
#undef NQ_INSTANTIATE

}  // namespace NQXML_940
