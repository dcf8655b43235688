#include <nqcommon/model/settings/NQSettings.h>

#include <algorithm>
#include <iterator>
#include <new>
#include <span>

#include <nqcommon/model/settings/internal/setting_tree.h>

namespace NQXML_940 {

using internal::Nested;

// ---- Life cycle ---------------------------------------------------------------------------------

NQSettings::NQSettings() = default;

NQSettings::NQSettings(const NQSettings& other) {
  std::vector<std::pair<const NQSettings*, NQSettings*>> left{{&other, this}};
  while (!left.empty()) {
    const auto [from, to] = left.back();
    left.pop_back();
    to->fvSettings.reserve(from->Size());
    for (const auto& setting : from->fvSettings) {
      const INQSettingValue& value = *setting->GetValue();
      auto copy = internal::CloneWithoutNested(value);
      if (const auto sources = Nested(value)) {
        const auto targets = *Nested(*copy);
        for (std::size_t i = 0; i < targets.size(); ++i)
          left.emplace_back(&(*sources)[i], &targets[i]);
      }
      to->Add(std::unique_ptr<NQSetting>(new NQSetting(setting->GetName(), std::move(copy))),
              setting->GetType(), false);
    }
  }
}

NQSettings::NQSettings(NQSettings&& other) noexcept
    : fvSettings(std::exchange(other.fvSettings, {})), fIndex(std::exchange(other.fIndex, {})) {}

NQSettings& NQSettings::operator=(NQSettings other) noexcept {
  fvSettings.swap(other.fvSettings);
  fIndex.swap(other.fIndex);
  return *this;
}

NQSettings::~NQSettings() { Clear(); }

NQSettings* NQSettings::Clone() const { return new NQSettings(*this); }

void NQSettings::Clear() {
  fIndex.clear();
  std::vector<std::unique_ptr<NQSetting>> left;
  left.swap(fvSettings);
  try {
    while (!left.empty()) {
      const auto setting = std::move(left.back());
      left.pop_back();
      for (NQSettings& nested : Nested(*setting->GetValue()).value_or(std::span<NQSettings>())) {
        left.insert(left.end(), std::move_iterator(nested.fvSettings.begin()),
                    std::move_iterator(nested.fvSettings.end()));
        nested.fvSettings.clear();
      }
    }
  } catch (const std::bad_alloc&) {
    // no room for the list: the members' own destructors do what is left, one inside the other
  }
}

// ---- Settings by name ---------------------------------------------------------------------------

void NQSettings::GetSettingNames(std::vector<std::string>& names) const {
  for (const auto& setting : fvSettings) names.push_back(setting->GetName());
}

const NQSetting* NQSettings::FindSetting(const std::string& name) const {
  // not find(), which may give any one of equal names
  const auto found = fIndex.lower_bound(name);
  return found != fIndex.end() && found->first == name ? GetSettingAt(found->second) : nullptr;
}

NQSetting* NQSettings::FindSetting(const std::string& name) {
  return const_cast<NQSetting*>(std::as_const(*this).FindSetting(name));
}

// ---- Adding and removing ------------------------------------------------------------------------

// The new setting is made before any goes: `name` may be that of a setting replaced.
bool NQSettings::Add(std::unique_ptr<NQSetting> setting, const std::string& type, bool replace) {
  setting->SetType(type);
  if (replace) RemoveSetting(setting->GetName(), true);
  fvSettings.push_back(std::move(setting));
  fIndex.emplace(fvSettings.back()->GetName(), fvSettings.size() - 1);
  return true;
}

bool NQSettings::AddSetting(const std::string& name, double value, bool replace) {
  return Add(std::make_unique<NQSetting>(name, value), {}, replace);
}

bool NQSettings::AddSetting(const std::string& name, const std::string& value, bool replace) {
  return Add(std::make_unique<NQSetting>(name, value), {}, replace);
}

bool NQSettings::AddNewSetting(const std::string& name, double value, const std::string& type) {
  return Add(std::make_unique<NQSetting>(name, value), type, false);
}

bool NQSettings::AddNewSetting(const std::string& name, const std::string& value,
                               const std::string& type) {
  return Add(std::make_unique<NQSetting>(name, value), type, false);
}

bool NQSettings::AddNewSetting(const std::string& name, const NQSettings& value,
                               const std::string& type) {
  return Add(std::make_unique<NQSetting>(name, value), type, false);
}

bool NQSettings::AddNewSetting(const std::string& name, NQSettings&& value,
                               const std::string& type) {
  return Add(std::make_unique<NQSetting>(name, std::move(value)), type, false);
}

bool NQSettings::AddNewSetting(const std::string& name, const char* const* values, int count,
                               const std::string& type) {
  if (values == nullptr || count < 1) return false;
  std::vector<std::string> texts;
  for (const char* text : std::span(values, static_cast<std::size_t>(count)))
    texts.emplace_back(text != nullptr ? text : "");
  return AddNewSetting(name, std::move(texts), type);
}

bool NQSettings::AddNewSetting(const std::string& name, const NQSettings* const* lists, int count,
                               const std::string& type) {
  if (lists == nullptr || count < 1) return false;
  std::vector<NQSettings> copies;
  for (const NQSettings* list : std::span(lists, static_cast<std::size_t>(count)))
    copies.push_back(list != nullptr ? *list : NQSettings());
  return AddNewSetting(name, std::move(copies), type);
}

bool NQSettings::RemoveSetting(const std::string& name, bool all) {
  const auto [first, last] = fIndex.equal_range(name);
  if (first == last) return false;
  const auto end = all ? last : std::next(first);
  std::vector<std::size_t> gaps;  // ascending, as the positions of equal names are
  for (auto entry = first; entry != end; ++entry) gaps.push_back(entry->second);
  fIndex.erase(first, end);
  for (auto& [other, position] : fIndex)
    position -= static_cast<std::size_t>(std::lower_bound(gaps.begin(), gaps.end(), position) -
                                         gaps.begin());
  for (const std::size_t gap : gaps) fvSettings[gap].reset();
  std::erase(fvSettings, nullptr);
  return true;
}

// ---- Order --------------------------------------------------------------------------------------

int NQSettings::Compare(const NQSettings& other) const {
  return internal::CompareTrees({this, 1}, {&other, 1});
}

}  // namespace NQXML_940
