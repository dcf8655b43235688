#include <nqcommon/model/settings/NQSettings.h>

#include <cstddef>
#include <iterator>
#include <span>
#include <typeinfo>

#include <nqcommon/common/memory_guard.h>
#include <nqcommon/common/three_way.h>
#include <nqcommon/model/settings/NQSettingListValue.h>
#include <nqcommon/model/settings/NQVecValue.h>
#include <nqcommon/model/settings/internal/list_elements.h>

namespace NQXML_940 {

using NQCommon_940::GuardMemory;
using NQCommon_940::OrderItems;
using NQCommon_940::Sign;

namespace {

// Classes that are derived from V keep their own order, so they are none here.
template <class V>
const V* Exactly(const INQSettingValue& value) {
  return typeid(value) == typeid(V) ? static_cast<const V*>(&value) : nullptr;
}

// The order of two values; nested settings, for which `<` in both directions would cost double at
// every level, by Compare.
int CompareValues(const INQSettingValue& a, const INQSettingValue& b) {
  const auto *settingsA = Exactly<NQSettingListValue>(a),
             *settingsB = Exactly<NQSettingListValue>(b);
  if (settingsA && settingsB) return settingsA->GetListValue().Compare(settingsB->GetListValue());
  const auto *listA = Exactly<NQVecValue<NQSettings>>(a),
             *listB = Exactly<NQVecValue<NQSettings>>(b);
  if (!listA || !listB) return Sign(a, b);
  return OrderItems(listA->GetVecValue(), listB->GetVecValue(),
                    [](const NQSettings& p, const NQSettings& q) { return p.Compare(q); });
}

}  // namespace

// ---- Life cycle ---------------------------------------------------------------------------------

NQSettings::NQSettings() = default;

NQSettings::NQSettings(const NQSettings& other) {
  fvSettings.reserve(other.Size());
  for (const auto& setting : other.fvSettings) {
    if (setting) Append(std::unique_ptr<NQSetting>(setting->Clone()), false);
  }
}

NQSettings::NQSettings(NQSettings&& other) noexcept
    : fvSettings(std::exchange(other.fvSettings, {})),
      fNGaps(std::exchange(other.fNGaps, 0)),
      fIndex(std::exchange(other.fIndex, {})) {}

NQSettings& NQSettings::operator=(NQSettings other) noexcept {
  fvSettings.swap(other.fvSettings);
  std::swap(fNGaps, other.fNGaps);
  fIndex.swap(other.fIndex);
  return *this;
}

NQSettings::~NQSettings() = default;

NQSettings* NQSettings::Clone() const { return new NQSettings(*this); }

void NQSettings::Clear() { *this = NQSettings(); }

// ---- Settings by name ---------------------------------------------------------------------------

void NQSettings::GetSettingNames(std::vector<std::string>& names) const {
  for (const auto& setting : fvSettings) {
    if (setting) names.push_back(setting->GetName());
  }
}

NQSetting* NQSettings::FindSetting(const std::string& name) {
  // std::multimap::find may give any one of equal names.
  const auto found = fIndex.lower_bound(name);
  return found != fIndex.end() && found->first == name ? found->second : nullptr;
}

const NQSetting* NQSettings::FindSetting(const std::string& name) const {
  return const_cast<NQSettings*>(this)->FindSetting(name);
}

// ---- Adding and removing ------------------------------------------------------------------------

// A slot that is not filled yet is a gap, and so is one that memory did not suffice to fill.
void NQSettings::Append(std::unique_ptr<NQSetting> setting, bool replace) {
  if (fNGaps > Size()) CloseGaps();
  fvSettings.emplace_back();
  ++fNGaps;
  const auto entry = fIndex.emplace(setting->GetName(), setting.get());
  if (replace) Remove(fIndex.lower_bound(entry->first), entry);
  setting->fSlot = fvSettings.size() - 1;
  fvSettings.back() = std::move(setting);
  --fNGaps;
}

void NQSettings::Remove(Index::iterator first, Index::iterator last) {
  for (auto entry = first; entry != last; ++entry) fvSettings[entry->second->fSlot].reset();
  fNGaps += static_cast<std::size_t>(std::distance(first, last));
  fIndex.erase(first, last);
}

void NQSettings::CloseGaps() const {
  std::erase(fvSettings, nullptr);
  fNGaps = 0;
  for (std::size_t i = 0; i < fvSettings.size(); ++i) fvSettings[i]->fSlot = i;
}

template <class T>
bool NQSettings::Add(const std::string& name, T&& value, const std::string& type, bool replace) {
  return GuardMemory([&] {
    auto setting = std::make_unique<NQSetting>(name, std::forward<T>(value));
    setting->SetType(type);
    Append(std::move(setting), replace);
  });
}

bool NQSettings::AddSetting(const std::string& name, double value, bool replace) {
  return Add(name, value, "", replace);
}

bool NQSettings::AddSetting(const std::string& name, const std::string& value, bool replace) {
  return Add(name, value, "", replace);
}

bool NQSettings::AddNewSetting(const std::string& name, double value, const std::string& type) {
  return Add(name, value, type, false);
}

bool NQSettings::AddNewSetting(const std::string& name, const std::string& value,
                               const std::string& type) {
  return Add(name, value, type, false);
}

bool NQSettings::AddNewSetting(const std::string& name, const NQSettings& value,
                               const std::string& type) {
  return Add(name, value, type, false);
}

bool NQSettings::AddNewSetting(const std::string& name, NQSettings&& value,
                               const std::string& type) {
  return Add(name, std::move(value), type, false);
}

bool NQSettings::AddNewSetting(const std::string& name, const char* const* values, int count,
                               const std::string& type) {
  if (values == nullptr || count < 1) return false;
  return GuardMemory(false, [&] {
    std::vector<std::string> texts;
    for (const char* text : std::span(values, static_cast<std::size_t>(count)))
      texts.emplace_back(text != nullptr ? text : "");
    return Add(name, std::move(texts), type, false);
  });
}

bool NQSettings::AddNewSetting(const std::string& name, const NQSettings* const* lists, int count,
                               const std::string& type) {
  if (lists == nullptr || count < 1) return false;
  return GuardMemory(false, [&] {
    std::vector<NQSettings> copies;
    for (const NQSettings* list : std::span(lists, static_cast<std::size_t>(count)))
      copies.push_back(list != nullptr ? *list : NQSettings());
    return Add(name, std::move(copies), type, false);
  });
}

template <class T, typename>
bool NQSettings::AddNewSetting(const std::string& name, std::vector<T> values,
                               const std::string& type) {
  return Add(name, std::move(values), type, false);
}

#define NQ_INSTANTIATE(T)                                                            \
  template NQ_API bool NQSettings::AddNewSetting(const std::string&, std::vector<T>, \
                                                 const std::string&);
NQ_FOR_EACH_LIST_ELEMENT(NQ_INSTANTIATE)
#undef NQ_INSTANTIATE

bool NQSettings::RemoveSetting(const std::string& name, bool all) {
  const auto [first, last] = fIndex.equal_range(name);
  if (first == last) return false;
  Remove(first, all ? last : std::next(first));
  return true;
}

// ---- Order --------------------------------------------------------------------------------------

int NQSettings::Compare(const NQSettings& other) const {
  CloseGaps();
  other.CloseGaps();
  return OrderItems(fvSettings, other.fvSettings, [](const auto& a, const auto& b) {
    return CompareValues(*a->GetValue(), *b->GetValue());
  });
}

}  // namespace NQXML_940
