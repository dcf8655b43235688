#pragma once

#include <utility>

#include <nqcommon/export.h>
#include <nqcommon/model/settings/INQSettingValue.h>
#include <nqcommon/model/settings/NQSettings.h>

namespace NQXML_940 {

// A collection of settings as the value of one: how settings nest. The scalar conversions give the
// last column of the table of INQSettingValue.
class NQ_API NQSettingListValue : public INQSettingValue {
 public:
  explicit NQSettingListValue(NQSettings settings = {}) : fSettings(std::move(settings)) {}

  const NQSettings& GetListValue() const { return fSettings; }
  NQSettings& GetListValue() { return fSettings; }

  NQSettingListValue* Clone() const override;
  bool operator==(const INQSettingValue& other) const override;
  bool operator<(const INQSettingValue& other) const override;
  int GetType() const override { return kSettings; }
  void Display() const override;

 private:
  NQSettings fSettings;
};

}  // namespace NQXML_940
