#include <nqcommon/model/settings/internal/setting_tree.h>

#include <algorithm>
#include <cstddef>
#include <typeinfo>
#include <vector>

#include <nqcommon/common/three_way.h>
#include <nqcommon/model/settings/NQSettingListValue.h>
#include <nqcommon/model/settings/NQVecValue.h>

namespace NQXML_940::internal {

using NQCommon_940::Sign;

namespace {

// `value` as a V when that is its very class.
template <class V>
V* Exactly(INQSettingValue& value) {
  return typeid(value) == typeid(V) ? static_cast<V*>(&value) : nullptr;
}

// Two sequences of collections, equal before setting `fSetting` of collection `fCollection`.
struct Level {
  std::span<const NQSettings> fA, fB;
  std::size_t fCollection = 0;
  std::size_t fSetting = 0;
};

}  // namespace

std::optional<std::span<NQSettings>> Nested(INQSettingValue& value) {
  if (auto* nested = Exactly<NQSettingListValue>(value))
    return std::span(&nested->GetListValue(), 1);
  if (auto* list = Exactly<NQVecValue<NQSettings>>(value)) return list->GetVecValue();
  return {};
}

std::optional<std::span<const NQSettings>> Nested(const INQSettingValue& value) {
  return Nested(const_cast<INQSettingValue&>(value));
}

std::unique_ptr<INQSettingValue> CloneWithoutNested(const INQSettingValue& value) {
  const auto nested = Nested(value);
  if (!nested) return std::unique_ptr<INQSettingValue>(value.Clone());
  if (value.GetType() == INQSettingValue::kSettings) return std::make_unique<NQSettingListValue>();
  return std::make_unique<NQVecValue<NQSettings>>(std::vector<NQSettings>(nested->size()));
}

int CompareTrees(std::span<const NQSettings> a, std::span<const NQSettings> b) {
  std::vector<Level> path{{a, b}};
  while (!path.empty()) {
    Level& level = path.back();
    if (level.fCollection == std::min(level.fA.size(), level.fB.size())) {
      if (const int order = Sign(level.fA.size(), level.fB.size())) return order;
      path.pop_back();
      continue;
    }
    const NQSettings& x = level.fA[level.fCollection];
    const NQSettings& y = level.fB[level.fCollection];
    if (level.fSetting == std::min(x.Size(), y.Size())) {
      if (const int order = Sign(x.Size(), y.Size())) return order;
      ++level.fCollection;
      level.fSetting = 0;
      continue;
    }
    const INQSettingValue& v = *x.GetSettingAt(level.fSetting)->GetValue();
    const INQSettingValue& w = *y.GetSettingAt(level.fSetting)->GetValue();
    ++level.fSetting;
    const auto inV = Nested(v), inW = Nested(w);
    if (inV && inW && v.GetType() == w.GetType()) {
      path.push_back({*inV, *inW});
    } else if (const int order = Sign(v, w)) {
      return order;
    }
  }
  return 0;
}

}  // namespace NQXML_940::internal
