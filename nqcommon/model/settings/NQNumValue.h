#pragma once

#include <string>
#include <type_traits>

#include <nqcommon/export.h>
#include <nqcommon/model/settings/INQSettingValue.h>

namespace NQXML_940 {

// A number in three fields, int, double and 64-bit integer, all filled from the one that was given;
// the kind tells which.
//
//   given            int field                  double field  64-bit field
//   nothing          -2147483648                NaN (a)       -2147483648            kind kDouble
//   int              itself                     exact         exact                  kind kInt
//   double           truncated toward zero (b)  itself        truncated (b)          kind kDouble
//   long long (c)    its low 32 bits            nearest       itself                 kind kLongLong
//
// (a) bits 0xFFFFFFFFFFEFFFFF: deliberately neither zero nor the system-missing value.
// (b) NaN and what is out of range give the most negative integer.
// (c) and long, std::size_t and the other unsigned integers, which are converted to it.
class NQ_API NQNumValue : public INQSettingValue {
  template <class Integer>
  using EnableIfLong =
      std::enable_if_t<std::is_integral_v<Integer> &&
                       (sizeof(Integer) > sizeof(int) || std::is_same_v<Integer, unsigned>)>;

 public:
  static constexpr int kInt = 0;
  static constexpr int kDouble = 1;
  static constexpr int kLongLong = 2;

  NQNumValue();
  explicit NQNumValue(int value) { SetNumValue(value); }
  explicit NQNumValue(double value) { SetNumValue(value); }
  explicit NQNumValue(long long value) { SetNumValue(value); }
  template <class Integer, typename = EnableIfLong<Integer>>
  explicit NQNumValue(Integer value) {
    SetNumValue(value);
  }

  void SetNumValue(int value);
  void SetNumValue(double value);
  void SetNumValue(long long value);
  template <class Integer, typename = EnableIfLong<Integer>>
  void SetNumValue(Integer value) {
    SetNumValue(static_cast<long long>(value));
  }

  int GetNumValueType() const { return fKind; }
  void GetNumValue(int& value) const { value = fInt; }
  void GetNumValue(double& value) const { value = fDouble; }
  void GetNumValue(long long& value) const { value = fLongLong; }

  NQNumValue* Clone() const override;

  // Two numbers of kind long long compare their 64-bit fields, two of kind double those, and any
  // other two their int fields. Doubles are equal when both are zero or when
  // |a - b| < 2.22045e-16 max(|a|, |b|): so 1 equals its neighbours, and a NaN, an infinity and a
  // number below about 1e-308 do not equal even themselves. `<` has no tolerance: equal doubles may
  // be less.
  bool operator==(const INQSettingValue& other) const override;
  bool operator<(const INQSettingValue& other) const override;

  int GetInt() const override { return fInt; }
  double GetDouble() const override { return fDouble; }
  std::string GetString() const override;
  bool GetBool() const override;
  long long GetLongLong() const override { return fLongLong; }
  int GetType() const override { return kNumber; }
  void Display() const override;

 private:
  int fInt;
  double fDouble;
  long long fLongLong;
  int fKind;
};

}  // namespace NQXML_940
