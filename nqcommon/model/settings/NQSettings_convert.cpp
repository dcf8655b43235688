#include <nqcommon/model/settings/NQSettings.h>

#include <iostream>
#include <locale>
#include <sstream>
#include <type_traits>

#include <nqcommon/common/memory_guard.h>
#include <nqcommon/common/text_conversion.h>
#include <nqcommon/common/truncate.h>
#include <nqcommon/model/settings/NQSettingListValue.h>
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
  std::istringstream stream(text);
  T number{};
  if (!(stream >> number) || out == nullptr) return false;
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

bool NQSettings::GetSettingValByName(const std::string& name, NQSettings& out) const {
  const NQSetting* setting = FindSetting(name);
  if (setting == nullptr) return false;
  const auto* nested = dynamic_cast<const NQSettingListValue*>(setting->GetValue());
  if (nested == nullptr) return false;
  return GuardMemory([&] { out = nested->GetListValue(); });
}

// ---- Conversions --------------------------------------------------------------------------------

template <class T>
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

bool NQSettings::Str2Double(const std::string& text, double* out) {
  std::string number = text;
  const std::locale locale = std::cout.getloc();
  if (const auto point = number.find('.'); point != std::string::npos)
    number[point] = std::use_facet<std::numpunct<char>>(locale).decimal_point();
  return ReadNumber(number, out);
}

bool NQSettings::StrVec2IntVec(const std::vector<std::string>& in, std::vector<int>& out) {
  return ReadNumbers(Str2Int, in, out);
}

bool NQSettings::StrVec2DoubleVec(const std::vector<std::string>& in, std::vector<double>& out) {
  return ReadNumbers(Str2Double, in, out);
}

}  // namespace NQXML_940
