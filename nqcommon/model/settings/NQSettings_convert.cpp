#include <nqcommon/model/settings/NQSettings.h>

#include <type_traits>
#include <utility>

#include <nqcommon/common/memory_guard.h>
#include <nqcommon/common/text_conversion.h>
#include <nqcommon/common/truncate.h>
#include <nqcommon/model/settings/NQNumValue.h>
#include <nqcommon/model/settings/NQSettingListValue.h>
#include <nqcommon/model/settings/NQStrValue.h>
#include <nqcommon/model/settings/NQVecValue.h>
#include <nqcommon/model/settings/internal/list_elements.h>

namespace NQXML_940 {

using NQCommon_940::GuardMemory;

namespace {

template <class Out>
bool Store(const NQSetting* setting, Out (INQSettingValue::*get)() const, Out& out) {
  return setting != nullptr && GuardMemory([&] { out = (setting->GetValue()->*get)(); });
}

template <class T>
bool ReadNumber(const std::string& text, T* out) {
  T number{};
  const auto read = [&] { return NQCommon_940::Str2T(text, number); };
  if (out == nullptr || !GuardMemory(false, read)) return false;
  *out = number;
  return true;
}

template <class T>
bool ReadNumbers(bool (*read)(const std::string&, T*), const std::vector<std::string>& in,
                 std::vector<T>& out) {
  out.clear();
  const bool isRead = GuardMemory(false, [&] {
    out.reserve(in.size());
    for (const std::string& text : in) {
      T number{};
      if (!read(text, &number)) return false;
      out.push_back(number);
    }
    return !in.empty();
  });
  if (!isRead) out.clear();
  return isRead;
}

// ---- Lists: Convert(in, out) for every pair of int, double and std::string ----------------------

template <class From, class To, class ConvertElement>
bool ConvertEach(const std::vector<From>& in, std::vector<To>& out, ConvertElement convert) {
  return GuardMemory([&] {
    std::vector<To> converted;
    converted.reserve(in.size());
    for (const From& element : in) converted.push_back(convert(element));
    out = std::move(converted);
  });
}

template <class T>
bool Convert(const std::vector<T>& in, std::vector<T>& out) {
  return ConvertEach(in, out, [](const T& element) { return element; });
}
bool Convert(const std::vector<int>& in, std::vector<double>& out) {
  return ConvertEach(in, out, [](int x) { return static_cast<double>(x); });
}
bool Convert(const std::vector<double>& in, std::vector<int>& out) {
  return ConvertEach(in, out, NQCommon_940::Truncate<int>);
}
bool Convert(const std::vector<int>& in, std::vector<std::string>& out) {
  return ConvertEach(in, out, NQCommon_940::T2Str<long long>);
}
bool Convert(const std::vector<double>& in, std::vector<std::string>& out) {
  return ConvertEach(in, out, NQCommon_940::T2Str<double>);
}
bool Convert(const std::vector<std::string>& in, std::vector<int>& out) {
  return NQSettings::StrVec2IntVec(in, out);
}
bool Convert(const std::vector<std::string>& in, std::vector<double>& out) {
  return NQSettings::StrVec2DoubleVec(in, out);
}

// ---- Values whose type fits: Take(value, out) ---------------------------------------------------

template <class V>
const V* As(const INQSettingValue& value) {
  return dynamic_cast<const V*>(&value);
}

template <class Integer>
bool Take(const INQSettingValue& value, Integer& out) {
  const auto* number = As<NQNumValue>(value);
  if (number == nullptr) return false;
  const long long whole = number->GetLongLong();
  const bool isWhole = number->GetNumValueType() != NQNumValue::kDouble ||
                       static_cast<double>(whole) == number->GetDouble();
  if (!isWhole || !std::in_range<Integer>(whole)) return false;
  out = static_cast<Integer>(whole);
  return true;
}

bool Take(const INQSettingValue& value, double& out) {
  const auto* number = As<NQNumValue>(value);
  if (number != nullptr) out = number->GetDouble();
  return number != nullptr;
}

bool Take(const INQSettingValue& value, std::string& out) {
  const auto* text = As<NQStrValue>(value);
  if (text != nullptr) out = text->GetString();
  return text != nullptr;
}

bool Take(const INQSettingValue& value, bool& out) {
  std::string text;
  if (!Take(value, text) || (text != "true" && text != "false")) return false;
  out = text == "true";
  return true;
}

bool Take(const INQSettingValue& value, NQSettings& out) {
  const auto* nested = As<NQSettingListValue>(value);
  if (nested != nullptr) out = nested->GetListValue();
  return nested != nullptr;
}

template <class T>
bool Take(const INQSettingValue& value, std::vector<T>& out) {
  const auto* list = As<NQVecValue<T>>(value);
  return list != nullptr && Convert(list->GetVecValue(), out);
}

// The conversion of a list of one of the element types named; true for any other value.
template <class... Elements, class To>
bool ConvertListOf(const INQSettingValue& value, std::vector<To>& out) {
  bool converted = true;
  const auto tryList = [&](const auto* list) {
    if (list != nullptr) converted = Convert(list->GetVecValue(), out);
    return list != nullptr;
  };
  (tryList(dynamic_cast<const NQVecValue<Elements>*>(&value)) || ...);
  return converted;
}

}  // namespace

// ---- Typed getters ------------------------------------------------------------------------------

bool NQSettings::GetSettingValByName(const std::string& name, int& out) const {
  return Store(FindSetting(name), &INQSettingValue::GetInt, out);
}

bool NQSettings::GetSettingValByName(const std::string& name, double& out) const {
  return Store(FindSetting(name), &INQSettingValue::GetDouble, out);
}

bool NQSettings::GetSettingValByName(const std::string& name, std::string& out) const {
  return Store(FindSetting(name), &INQSettingValue::GetString, out);
}

bool NQSettings::GetSettingValByName(const std::string& name, bool& out) const {
  return Store(FindSetting(name), &INQSettingValue::GetBool, out);
}

bool NQSettings::GetSettingValByName(const std::string& name, long long& out) const {
  return Store(FindSetting(name), &INQSettingValue::GetLongLong, out);
}

bool NQSettings::GetSettingValByName(const std::string& name, long& out) const {
  static_assert(sizeof(long) == sizeof(long long));
  long long number = 0;
  const bool isFound = GetSettingValByName(name, number);
  if (isFound) out = static_cast<long>(number);
  return isFound;
}

bool NQSettings::GetSettingValByName(const std::string& name, NQSettings& out) const {
  return GetSettingValIfFits(name, out);
}

template <class T>
bool NQSettings::GetSettingValIfFits(const std::string& name, T& out) const {
  const NQSetting* setting = FindSetting(name);
  return setting != nullptr && GuardMemory(false, [&] { return Take(*setting->GetValue(), out); });
}

// NOLINTBEGIN(bugprone-macro-parentheses): the name of a type
#define NQ_INSTANTIATE(T) \
  template NQ_API bool NQSettings::GetSettingValIfFits(const std::string&, T&) const;
// NOLINTEND(bugprone-macro-parentheses)
NQ_INSTANTIATE(int)
NQ_INSTANTIATE(long)
NQ_INSTANTIATE(long long)
NQ_INSTANTIATE(double)
NQ_INSTANTIATE(bool)
NQ_INSTANTIATE(std::string)
NQ_INSTANTIATE(NQSettings)
#define NQ_INSTANTIATE_LIST(T) NQ_INSTANTIATE(std::vector<T>)
NQ_FOR_EACH_LIST_ELEMENT(NQ_INSTANTIATE_LIST)
#undef NQ_INSTANTIATE_LIST
#undef NQ_INSTANTIATE

// ---- Conversions --------------------------------------------------------------------------------

template <class T, typename>
bool NQSettings::MapVecValue(const INQSettingValue* value, std::vector<T>& out) {
  if (value == nullptr) return false;
  if constexpr (std::is_arithmetic_v<T> || std::is_same_v<T, std::string>) {
    return ConvertListOf<int, double, std::string>(*value, out);
  } else {
    return ConvertListOf<T>(*value, out);
  }
}

#define NQ_INSTANTIATE(T) \
  template NQ_API bool NQSettings::MapVecValue(const INQSettingValue*, std::vector<T>&);
NQ_FOR_EACH_LIST_ELEMENT(NQ_INSTANTIATE)
#undef NQ_INSTANTIATE

bool NQSettings::Str2Int(const std::string& text, int* out) { return ReadNumber(text, out); }

bool NQSettings::Str2Double(const std::string& text, double* out) { return ReadNumber(text, out); }

bool NQSettings::StrVec2IntVec(const std::vector<std::string>& in, std::vector<int>& out) {
  return ReadNumbers(Str2Int, in, out);
}

bool NQSettings::StrVec2DoubleVec(const std::vector<std::string>& in, std::vector<double>& out) {
  return ReadNumbers(Str2Double, in, out);
}

}  // namespace NQXML_940
