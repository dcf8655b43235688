// JSON texts put together from texts.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "text.h"

namespace support {

// Names and values that are JSON already.
using JsonMembers = std::vector<std::pair<const char*, std::string>>;

inline std::string JsonObjectText(const JsonMembers& members) {
  std::string json = "{";
  for (const auto& [name, value] : members)
    json += (json.size() > 1 ? ", " : "") + JsonString(name) + ": " + value;
  return json + "}";
}

// An item a line; item(x) is JSON.
template <class Items, class Item>
std::string JsonArrayText(const Items& items, Item item) {
  std::string json = "[";
  for (const auto& x : items) json += (json.size() > 1 ? ",\n    " : "\n    ") + item(x);
  return json + (items.empty() ? "]" : "\n  ]");
}

// A member a line.
inline std::string JsonDocumentText(const JsonMembers& members) {
  std::string json = "{";
  for (const auto& [name, value] : members)
    json += (json.size() > 1 ? ",\n  " : "\n  ") + JsonString(name) + ": " + value;
  return json + "\n}\n";
}

}  // namespace support
