#include <nqcommon/xml/JsonObject.h>

#include <limits>
#include <utility>

#include <nqcommon/xml/number_format.h>

namespace NQXML_940 {
namespace {

std::int32_t NextDepth(std::int32_t depth) {
  return depth < std::numeric_limits<std::int32_t>::max() ? depth + 1 : depth;
}

JsonObject Text(const std::string& kind, JsonObject pairs) {
  return {"text", JsonObject(kind, std::move(pairs))};
}

}  // namespace

JsonObject::JsonObject(double value) : fType(kNumber), fNumber(value) {}

JsonObject::JsonObject(const std::string& value) : fType(kString), fString(value) {}

JsonObject::JsonObject(const char* value)
    : JsonObject(std::string(value == nullptr ? "" : value)) {}

JsonObject::JsonObject(bool value) : fType(kBoolean), fBoolean(value) {}

JsonObject::JsonObject(const std::vector<JsonObject>& items)
    : JsonObject(std::vector<JsonObject>(items)) {}

JsonObject::JsonObject(std::vector<JsonObject>&& items) : fType(kList), fvItems(std::move(items)) {}

JsonObject::JsonObject(const std::string& key, const JsonObject& value) { AddPair(key, value); }

JsonObject::JsonObject(const std::string& key, JsonObject&& value) {
  AddPair(key, std::move(value));
}

JsonObject::JsonObject(const std::string& key, const char* value) { AddPair(key, value); }

JsonObject::JsonObject(const std::string& key, const std::string& value) { AddPair(key, value); }

JsonObject::JsonObject(const std::string& key, double value) { AddPair(key, value); }

JsonObject::JsonObject(const std::string& key, bool value) { AddPair(key, value); }

void JsonObject::SetPair(const std::string& key, JsonObject value) {
  const auto entry = fPairs.find(key);
  if (entry != fPairs.end()) {
    fvValues[entry->second] = std::move(value);
    return;
  }
  // The value first: a key never points past the values, even when memory ends.
  fvValues.push_back(std::move(value));
  fPairs.emplace(key, fvValues.size() - 1);
}

void JsonObject::AddPair(const std::string& key, const JsonObject& value) {
  AddPair(key, JsonObject(value));
}

void JsonObject::AddPair(const std::string& key, JsonObject&& value) {
  const std::int32_t depth = NextDepth(value.fDepth);
  SetPair(key, std::move(value));
  fDepth = depth;
}

void JsonObject::AddPair(const std::string& key, double value) { SetPair(key, value); }

void JsonObject::AddPair(const std::string& key, const std::string& value) { SetPair(key, value); }

void JsonObject::AddPair(const std::string& key, bool value) { SetPair(key, value); }

void JsonObject::AddPair(const std::string& key, const char* value) { SetPair(key, value); }

void JsonObject::AddToList(const JsonObject& item) { AddToList(JsonObject(item)); }

void JsonObject::AddToList(JsonObject&& item) {
  const std::int32_t depth = NextDepth(item.fDepth);
  fvItems.push_back(std::move(item));
  fDepth = depth;
}

void JsonObject::Clear() {
  fPairs.clear();
  fvValues.clear();
  fDepth = 1;
}

std::string JsonObject::GetJsonString(bool close) const {
  std::string text;
  AppendText(text, close);
  return text;
}

void JsonObject::AppendText(std::string& text, bool close) const {
  const char* separator = "";
  switch (fType) {
    case kString:
      text.append("\"").append(fString).append("\"");
      break;
    case kNumber:
      AppendNumber(text, fNumber);
      break;
    case kBoolean:
      text += fBoolean ? "true" : "false";
      break;
    case kList:
      text += "[";
      for (const JsonObject& item : fvItems) {
        text += std::exchange(separator, ",\n");
        item.AppendText(text, true);
      }
      if (close) text += "]";
      break;
    case kObject:
      text += "{\n";
      for (const auto& [key, i] : fPairs) {
        text.append(std::exchange(separator, ",\n")).append("\t\"").append(key).append("\" : ");
        fvValues[i].AppendText(text, true);
      }
      text += close ? "\n}\n" : "\n";
      break;
  }
}

JsonObject JsonObject::CreateStringText(const std::string& key, const std::string& value) {
  JsonObject pairs("key", key);
  pairs.AddPair("value", value);
  return Text("stringText", std::move(pairs));
}

JsonObject JsonObject::CreateVariableText(const std::string& name) {
  return Text("variableText", JsonObject("variable", name));
}

JsonObject JsonObject::CreateNumDataText(const std::string& variable, double value) {
  JsonObject pairs("variable", variable);
  pairs.AddPair("value", value);
  return Text("numericDataText", std::move(pairs));
}

JsonObject JsonObject::CreateStringDataText(const std::string& variable, const std::string& value) {
  JsonObject pairs("variable", variable);
  pairs.AddPair("value", value);
  return Text("stringDataText", std::move(pairs));
}

}  // namespace NQXML_940
