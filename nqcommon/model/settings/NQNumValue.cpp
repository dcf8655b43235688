#include <nqcommon/model/settings/NQNumValue.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>

#include <nqcommon/common/Value.h>
#include <nqcommon/common/text_conversion.h>
#include <nqcommon/common/truncate.h>
#include <nqcommon/model/settings/internal/setting_display.h>
#include <nqcommon/model/settings/internal/value_order.h>

namespace NQXML_940 {

using NQCommon_940::T2Str;
using NQCommon_940::Truncate;

namespace {

// Calls `visit` with the fields that two numbers compare by.
template <class Visit>
bool VisitFields(const NQNumValue& a, const NQNumValue& b, Visit visit) {
  if (a.GetNumValueType() == b.GetNumValueType()) {
    if (a.GetNumValueType() == NQNumValue::kLongLong)
      return visit(a.GetLongLong(), b.GetLongLong());
    if (a.GetNumValueType() == NQNumValue::kDouble) return visit(a.GetDouble(), b.GetDouble());
  }
  return visit(a.GetInt(), b.GetInt());
}

template <class Integer>
bool AreEqual(Integer a, Integer b) {
  return a == b;
}
bool AreEqual(double a, double b) {
  if (a == 0 && b == 0) return true;
  return std::max(std::fabs(a), std::fabs(b)) * NQCommon_940::Value::EPSILON > std::fabs(a - b);
}

}  // namespace

NQNumValue::NQNumValue()
    : fInt(std::numeric_limits<int>::min()),
      fDouble(std::bit_cast<double>(std::uint64_t{0xFFFFFFFFFFEFFFFF})),
      fLongLong(std::numeric_limits<int>::min()),
      fKind(kDouble) {}

void NQNumValue::SetNumValue(int value) {
  fInt = value;
  fDouble = value;
  fLongLong = value;
  fKind = kInt;
}

void NQNumValue::SetNumValue(double value) {
  fInt = Truncate<int>(value);
  fDouble = value;
  fLongLong = Truncate<long long>(value);
  fKind = kDouble;
}

void NQNumValue::SetNumValue(long long value) {
  fInt = static_cast<int>(value);
  fDouble = static_cast<double>(value);
  fLongLong = value;
  fKind = kLongLong;
}

NQNumValue* NQNumValue::Clone() const { return new NQNumValue(*this); }

bool NQNumValue::operator==(const INQSettingValue& other) const {
  const auto* number = dynamic_cast<const NQNumValue*>(&other);
  return number != nullptr &&
         VisitFields(*this, *number, [](auto a, auto b) { return AreEqual(a, b); });
}

bool NQNumValue::operator<(const INQSettingValue& other) const {
  return internal::IsLess(*this, other, [](const NQNumValue& a, const NQNumValue& b) {
    return VisitFields(a, b, [](auto x, auto y) { return x < y; });
  });
}

std::string NQNumValue::GetString() const {
  return fKind == kDouble ? T2Str(fDouble) : T2Str(fKind == kInt ? fInt : fLongLong);
}

bool NQNumValue::GetBool() const {
  return fKind == kDouble ? fDouble > 0 : fKind == kInt ? fInt > 0 : fLongLong > 0;
}

void NQNumValue::Display() const { internal::DisplayValue("NQNumValue", *this); }

}  // namespace NQXML_940
