#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include <nqcommon/export.h>
#include <nqcommon/model/settings/INQSettingValue.h>

namespace NQXML_940 {

class NQSettings;

// Whether T is an element type of setting lists.
template <class T>
constexpr bool kIsSettingElement =
    std::is_same_v<T, int> || std::is_same_v<T, double> || std::is_same_v<T, std::string> ||
    std::is_same_v<T, NQSettings> || std::is_same_v<T, std::pair<std::string, std::string>> ||
    std::is_same_v<T, std::pair<std::string, double>> ||
    std::is_same_v<T, std::pair<std::string, int>>;

// A named value with a free-form type tag, empty at first. Copies are deep; a move is a copy, so
// that a setting never is without its value.
class NQ_API NQSetting {
 public:
  // The value is an NQNumValue of kind double, an NQStrValue, an NQSettingListValue or an
  // NQVecValue<T>, T one of its seven element types.
  NQSetting(const std::string& name, double value);
  NQSetting(const std::string& name, const std::string& value);
  NQSetting(const std::string& name, NQSettings value);
  template <class T, typename = std::enable_if_t<kIsSettingElement<T>>>
  NQSetting(const std::string& name, std::vector<T> values);

  NQSetting(const NQSetting& other);
  NQSetting& operator=(const NQSetting& other);

  // A new copy; the caller deletes it.
  NQSetting* Clone() const;

  const std::string& GetName() const { return fName; }
  const std::string& GetType() const { return fType; }
  void SetName(const std::string& name) { fName = name; }
  void SetType(const std::string& type) { fType = type; }

  // The value object; the setting keeps it. SetValue deletes it: pointers to it and into it end.
  const INQSettingValue* GetValue() const { return fpValue.get(); }
  INQSettingValue* GetValue() { return fpValue.get(); }

  // Replaces the value object by a new one, as in the constructors or as a clone of `value`; the
  // argument may be a part of the old one.
  void SetValue(double value);
  void SetValue(const std::string& value);
  void SetValue(const NQSettings& value);
  void SetValue(const INQSettingValue& value);

  bool IsList() const { return fpValue->GetType() == INQSettingValue::kList; }
  bool HasChild() const { return fpValue->GetType() == INQSettingValue::kSettings; }

  // Equal names, type tags and values.
  bool operator==(const NQSetting& other) const;
  bool operator!=(const NQSetting& other) const { return !(*this == other); }
  // The order of the values alone: names and tags do not count.
  bool operator<(const NQSetting& other) const { return *fpValue < *other.fpValue; }

  // Writes the setting as NQSettings::Display does.
  void Display() const;

 private:
  friend class NQSettings;
  NQSetting(const std::string& name, std::unique_ptr<INQSettingValue> value);

  std::string fName;
  std::string fType;
  std::unique_ptr<INQSettingValue> fpValue;
  std::size_t fSlot = 0;  // in the collection that owns the setting
};

}  // namespace NQXML_940
