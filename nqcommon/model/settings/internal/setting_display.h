#pragma once

#include <string>

#include <nqcommon/model/settings/INQSettingValue.h>
#include <nqcommon/model/settings/NQSetting.h>

namespace NQXML_940::internal {

// The name of a setting with its type tag: "method (enum)", or "method" without a tag.
std::string SettingLabel(const NQSetting& setting);

// Writes a labelled value through the diagnostic display, in the layout of NQSettings::Display.
void DisplayValue(const std::string& label, const INQSettingValue& value);

}  // namespace NQXML_940::internal
