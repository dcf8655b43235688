#include <nqcommon/model/settings/NQStrValue.h>

#include <nqcommon/common/text_conversion.h>
#include <nqcommon/model/settings/NQNumValue.h>
#include <nqcommon/model/settings/internal/setting_display.h>
#include <nqcommon/model/settings/internal/value_order.h>

namespace NQXML_940 {

NQStrValue* NQStrValue::Clone() const { return new NQStrValue(*this); }

bool NQStrValue::operator==(const INQSettingValue& other) const {
  const auto* text = dynamic_cast<const NQStrValue*>(&other);
  return text != nullptr && fText == text->fText;
}

bool NQStrValue::operator<(const INQSettingValue& other) const {
  return internal::IsLess(
      *this, other, [](const NQStrValue& a, const NQStrValue& b) { return a.fText < b.fText; });
}

int NQStrValue::GetInt() const {
  int number = 0;
  NQCommon_940::ReadNumber(fText, number);
  return number;
}

long long NQStrValue::GetLongLong() const {
  long long number = 0;
  NQCommon_940::ReadNumber(fText, number);
  return number;
}

double NQStrValue::GetDouble() const {
  if (fText.empty()) return NQNumValue().GetDouble();
  double number = 0;
  NQCommon_940::Str2T(fText, number);
  return number;
}

void NQStrValue::Display() const { internal::DisplayValue("NQStrValue", *this); }

}  // namespace NQXML_940
