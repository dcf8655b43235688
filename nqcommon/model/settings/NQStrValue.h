#pragma once

#include <cstddef>
#include <string>
#include <utility>

#include <nqcommon/export.h>
#include <nqcommon/model/settings/INQSettingValue.h>

namespace NQXML_940 {

// A text: bytes, no encoding assumed. Conversions as in the table of INQSettingValue.
class NQ_API NQStrValue : public INQSettingValue {
 public:
  explicit NQStrValue(std::string text = {}) : fText(std::move(text)) {}

  // The number of bytes.
  std::size_t GetLength() const { return fText.size(); }

  NQStrValue* Clone() const override;
  bool operator==(const INQSettingValue& other) const override;
  bool operator<(const INQSettingValue& other) const override;
  int GetInt() const override;
  double GetDouble() const override;
  std::string GetString() const override { return fText; }
  bool GetBool() const override { return fText == "true"; }
  long long GetLongLong() const override;
  int GetType() const override { return kString; }
  void Display() const override;

 private:
  std::string fText;
};

}  // namespace NQXML_940
