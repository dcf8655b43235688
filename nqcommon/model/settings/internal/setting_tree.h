// Settings as a tree: the steps of the loops that copy, compare, display and destroy it. They are
// loops because recursions would end where the stack does.
#pragma once

#include <memory>
#include <optional>
#include <span>

#include <nqcommon/model/settings/INQSettingValue.h>
#include <nqcommon/model/settings/NQSettings.h>

namespace NQXML_940::internal {

// The collections in a nested value or in a list of settings; nothing for any other value, derived
// classes included: these keep their own operations.
std::optional<std::span<NQSettings>> Nested(INQSettingValue& value);
std::optional<std::span<const NQSettings>> Nested(const INQSettingValue& value);

// A copy with every nested collection still empty.
std::unique_ptr<INQSettingValue> CloneWithoutNested(const INQSettingValue& value);

// The lexicographic order, -1, 0 or 1, of two sequences of collections: NQSettings::Compare for
// sequences of one. Every pair of values is met once: with `<` tried in both directions the cost
// would double at every level.
int CompareTrees(std::span<const NQSettings> a, std::span<const NQSettings> b);

}  // namespace NQXML_940::internal
