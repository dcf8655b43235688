#include <nqcommon/xml/JsonObject.h>

#include <atomic>
#include <limits>
#include <utility>

#include <nqcommon/xml/number_format.h>

namespace NQXML_940 {
namespace {

std::int32_t NextDepth(std::int32_t depth) {
  return depth < std::numeric_limits<std::int32_t>::max() ? depth + 1 : depth;
}

JsonObject Text(const std::string& kind, const JsonObject& pairs) {
  return {"text", JsonObject(kind, pairs)};
}

}  // namespace

// A list or object of which the text is being written, and the next child to write.
struct JsonObject::Frame {
  explicit Frame(const JsonObject& container)
      : fContainer(container), fItem(container.fvItems.begin()), fPair(container.fPairs.begin()) {}

  // Writes what stands before the next child and returns it; null at the end.
  const JsonObject* Next(std::string& text) {
    const bool isList = fContainer.fType == kList;
    if (isList ? fItem == fContainer.fvItems.end() : fPair == fContainer.fPairs.end())
      return nullptr;
    if (isList ? fItem != fContainer.fvItems.begin() : fPair != fContainer.fPairs.begin())
      text += ",\n";
    if (isList) return (fItem++)->get();
    text.append("\t\"").append(fPair->first).append("\" : ");
    return (fPair++)->second.get();
  }

  void End(std::string& text, bool close) const {
    if (fContainer.fType == kList) {
      if (close) text += "]";
    } else {
      text += close ? "\n}\n" : "\n";
    }
  }

  const JsonObject& fContainer;
  std::vector<Child>::const_iterator fItem;
  std::map<std::string, Child>::const_iterator fPair;
};

JsonObject::JsonObject(double value) : fType(kNumber), fNumber(value) {}

JsonObject::JsonObject(const std::string& value) : fType(kString), fString(value) {}

JsonObject::JsonObject(const char* value)
    : JsonObject(std::string(value == nullptr ? "" : value)) {}

JsonObject::JsonObject(bool value) : fType(kBoolean), fBoolean(value) {}

JsonObject::JsonObject(const std::vector<JsonObject>& items) : fType(kList) {
  fvItems.reserve(items.size());
  for (const JsonObject& item : items) fvItems.push_back(std::make_shared<JsonObject>(item));
}

JsonObject::JsonObject(const std::string& key, const JsonObject& value) { AddPair(key, value); }

JsonObject::JsonObject(const std::string& key, const char* value) { AddPair(key, value); }

JsonObject::JsonObject(const std::string& key, const std::string& value) { AddPair(key, value); }

JsonObject::JsonObject(const std::string& key, double value) { AddPair(key, value); }

JsonObject::JsonObject(const std::string& key, bool value) { AddPair(key, value); }

// Children that nothing else holds give up their own children before they are destroyed, so that no
// destructor runs inside another for every level of the tree.
JsonObject::~JsonObject() {
  std::vector<Child> released;
  ReleaseChildren(released);
  while (!released.empty()) {
    const Child child = std::move(released.back());
    released.pop_back();
    if (child.use_count() > 1) continue;
    // what other threads did with the child through their copies came before
    std::atomic_thread_fence(std::memory_order_acquire);
    child->ReleaseChildren(released);
  }
}

void JsonObject::ReleaseChildren(std::vector<Child>& released) {
  for (Child& item : fvItems) released.push_back(std::move(item));
  for (auto& pair : fPairs) released.push_back(std::move(pair.second));
  fvItems.clear();
  fPairs.clear();
}

void JsonObject::SetPair(const std::string& key, JsonObject value) {
  fPairs.insert_or_assign(key, std::make_shared<JsonObject>(std::move(value)));
}

void JsonObject::AddPair(const std::string& key, const JsonObject& value) {
  const std::int32_t depth = NextDepth(value.fDepth);  // first: the value may be this object
  SetPair(key, value);
  fDepth = depth;
}

void JsonObject::AddPair(const std::string& key, double value) { SetPair(key, value); }

void JsonObject::AddPair(const std::string& key, const std::string& value) { SetPair(key, value); }

void JsonObject::AddPair(const std::string& key, bool value) { SetPair(key, value); }

void JsonObject::AddPair(const std::string& key, const char* value) { SetPair(key, value); }

void JsonObject::AddToList(const JsonObject& item) {
  const std::int32_t depth = NextDepth(item.fDepth);
  fvItems.push_back(std::make_shared<JsonObject>(item));
  fDepth = depth;
}

void JsonObject::Clear() {
  fPairs.clear();
  fDepth = 1;
}

std::string JsonObject::GetJsonString(bool close) const {
  std::string text;
  std::vector<Frame> open;
  const auto begin = [&](const JsonObject& value) {
    switch (value.fType) {
      case kString:
        text.append("\"").append(value.fString).append("\"");
        break;
      case kNumber:
        text += Format(value.fNumber, false, nullptr);
        break;
      case kBoolean:
        text += value.fBoolean ? "true" : "false";
        break;
      case kList:
        text += "[";
        break;
      case kObject:
        text += "{\n";
        break;
    }
    if (value.fType == kList || value.fType == kObject) open.emplace_back(value);
  };
  begin(*this);
  while (!open.empty()) {
    if (const JsonObject* child = open.back().Next(text)) {
      begin(*child);
    } else {
      open.back().End(text, close || open.size() > 1);
      open.pop_back();
    }
  }
  return text;
}

JsonObject JsonObject::CreateStringText(const std::string& key, const std::string& value) {
  JsonObject pairs("key", key);
  pairs.AddPair("value", value);
  return Text("stringText", pairs);
}

JsonObject JsonObject::CreateVariableText(const std::string& name) {
  return Text("variableText", JsonObject("variable", name));
}

JsonObject JsonObject::CreateNumDataText(const std::string& variable, double value) {
  JsonObject pairs("variable", variable);
  pairs.AddPair("value", value);
  return Text("numericDataText", pairs);
}

JsonObject JsonObject::CreateStringDataText(const std::string& variable, const std::string& value) {
  JsonObject pairs("variable", variable);
  pairs.AddPair("value", value);
  return Text("stringDataText", pairs);
}

}  // namespace NQXML_940
