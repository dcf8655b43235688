#include <nqcommon/model/settings/INQSettingValue.h>

#include <limits>

namespace NQXML_940 {

INQSettingValue::~INQSettingValue() = default;

int INQSettingValue::GetInt() const { return std::numeric_limits<int>::min(); }

double INQSettingValue::GetDouble() const { return std::numeric_limits<double>::min(); }

std::string INQSettingValue::GetString() const { return {}; }

bool INQSettingValue::GetBool() const { return true; }

long long INQSettingValue::GetLongLong() const { return std::numeric_limits<long long>::min(); }

}  // namespace NQXML_940
