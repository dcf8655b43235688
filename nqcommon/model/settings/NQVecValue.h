#pragma once

#include <string>
#include <utility>
#include <vector>

#include <nqcommon/export.h>
#include <nqcommon/model/settings/INQSettingValue.h>
#include <nqcommon/model/settings/NQSettings.h>

namespace NQXML_940 {

// A list of T: int, double, std::string, NQSettings, or pairs of a std::string with a std::string,
// a double or an int. The scalar conversions give the last column of the table of INQSettingValue.
// Lists are equal and ordered by == and < of their elements in turn: doubles without a tolerance.
template <class T>
class NQ_API NQVecValue : public INQSettingValue {
 public:
  explicit NQVecValue(std::vector<T> values = {}) : fvValues(std::move(values)) {}

  const std::vector<T>& GetVecValue() const { return fvValues; }
  std::vector<T>& GetVecValue() { return fvValues; }

  NQVecValue* Clone() const override;
  bool operator==(const INQSettingValue& other) const override;
  bool operator<(const INQSettingValue& other) const override;
  int GetType() const override { return kList; }
  void Display() const override;

 private:
  std::vector<T> fvValues;
};

extern template class NQVecValue<int>;
extern template class NQVecValue<double>;
extern template class NQVecValue<std::string>;
extern template class NQVecValue<NQSettings>;
extern template class NQVecValue<std::pair<std::string, std::string>>;
extern template class NQVecValue<std::pair<std::string, double>>;
extern template class NQVecValue<std::pair<std::string, int>>;

}  // namespace NQXML_940
