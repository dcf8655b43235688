#pragma once

#include <string>
#include <type_traits>

#include <nqcommon/export.h>

namespace NQXML_940 {

// The value of a setting: a number, a text, a list or a collection of settings.
//
// Conversions  never fail; what has no such form gives a value that marks it, the last column.
//
//                NQNumValue        NQStrValue                   NQVecValue, NQSettingListValue
//   GetInt       32-bit field      leading integer, else 0 (a)  -2147483648
//   GetLongLong  64-bit field      leading integer, else 0 (a)  -9223372036854775808
//   GetDouble    double field      leading number, else 0 (b)   2.2250738585072014e-308
//   GetBool      above zero (c)    exactly "true"               true
//   GetString    T2Str (c)         the text                     empty
//
// (a) as atoi and atoll read it; beyond the range the nearest end of it.
// (b) as NQCommon_940::Str2T reads it. Empty text gives the NaN of a default NQNumValue.
// (c) of the field of the current kind; NQCommon_940::T2Str writes six significant digits of a
//     double.
//
// Equality     Values of different classes are unequal. Numbers compare as NQNumValue tells, nested
//              settings by NQSettings::Compare, texts and lists exactly.
// Order        Values of different types by type code; of one type but different classes in an
//              order fixed for the process; texts by bytes; lists lexicographically.
//              No value is less than itself, and of two at most one is less than the other. It is
//              a strict weak ordering for texts, for numbers of one kind without NaN, and for lists
//              of these or of pairs of them. It is none
//                with a NaN, which is neither less nor greater than any double;
//                among numbers of different kinds, which compare by their 32-bit fields: of the
//                double 3e9 (field -2147483648), the int 0 and the double 1 each is less than the
//                next, and the last is less than the first;
//                for collections that hold such values.
class NQ_API INQSettingValue {
 public:
  // What GetType returns.
  static constexpr int kNumber = 0;
  static constexpr int kString = 1;
  static constexpr int kList = 2;
  static constexpr int kSettings = 3;

  virtual ~INQSettingValue();

  // A new copy; the caller deletes it.
  virtual INQSettingValue* Clone() const = 0;

  virtual bool operator==(const INQSettingValue& other) const = 0;
  virtual bool operator<(const INQSettingValue& other) const = 0;

  // Here, in the base, these five give the last column of the table.
  virtual int GetInt() const;
  virtual double GetDouble() const;
  virtual std::string GetString() const;
  virtual bool GetBool() const;
  virtual long long GetLongLong() const;

  virtual int GetType() const = 0;
  // Of a list: 1 for integers, 2 for doubles, 3 for texts; 0 for every class of this library, whose
  // lists are told apart by their class.
  virtual int GetSubType() const { return 0; }

  // Writes the value, labelled with the name of its class, as NQSettings::Display does.
  virtual void Display() const = 0;

  bool operator!=(const INQSettingValue& other) const { return !(*this == other); }

 protected:
  INQSettingValue() = default;
  INQSettingValue(const INQSettingValue&) = default;
  INQSettingValue& operator=(const INQSettingValue&) = default;
};

// Two values of known classes: without this, C++20 finds the operator of either class as good.
template <class A, class B,
          typename = std::enable_if_t<std::is_base_of_v<INQSettingValue, A> &&
                                      std::is_base_of_v<INQSettingValue, B>>>
bool operator==(const A& a, const B& b) {
  return static_cast<const INQSettingValue&>(a).operator==(b);
}

}  // namespace NQXML_940
