#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <type_traits>
#include <vector>

#include <nqcommon/export.h>

namespace NQXML_940 {

// A value to be written as JSON text: a string, a number, a boolean, a list, or an object of keyed
// pairs. Nothing reads JSON.
//
//   JsonObject point("x", 0.1);                   {
//   point.AddPair("on", true);                    <tab>"on" : true,
//                                                 <tab>"x" : 0.1
//                                                 }
//
// Text     Strings and keys are written as they stand: a quote, a backslash or a control character
//          in them gives text that is not JSON. Numbers have 15 significant digits in the classic
//          locale; an integer is written as the double next to it. No number is left out: inf and
//          nan are written so, and the system-missing value as -1.79769313486232e+308.
// Copies   A copy is deep, and so is adding a named object: an object that is moved in is not
//          copied. A value may be added to itself.
// Depth    Copying, writing and destroying recurse: a tree of 10,000 levels needs less than a stack
//          of 8 MiB in an optimised build.
// Threads  One object, one thread at a time.
class NQ_API JsonObject {
 public:
  // Any integer type but bool and char: without its own form, 3 could be a double or a boolean.
  template <class T>
  using IfInteger = std::enable_if_t<
      std::is_integral_v<T> && !std::is_same_v<T, bool> && !std::is_same_v<T, char>, int>;

  // The numbers that GetType returns.
  static constexpr std::int32_t kString = 0;
  static constexpr std::int32_t kNumber = 1;
  static constexpr std::int32_t kBoolean = 2;
  static constexpr std::int32_t kList = 3;
  static constexpr std::int32_t kObject = 4;

  // ---- Life cycle -------------------------------------------------------------------------------

  JsonObject() = default;  // an object without pairs
  JsonObject(double value);
  JsonObject(const std::string& value);
  JsonObject(const char* value);  // a null pointer counts as ""
  JsonObject(bool value);
  template <class Integer, IfInteger<Integer> = 0>
  JsonObject(Integer value) : JsonObject(static_cast<double>(value)) {}
  JsonObject(const std::vector<JsonObject>& items);
  JsonObject(std::vector<JsonObject>&& items);
  // A list of numbers, strings or booleans.
  template <class T, std::enable_if_t<!std::is_same_v<T, JsonObject>, int> = 0>
  JsonObject(const std::vector<T>& items)
      : JsonObject(std::vector<JsonObject>(items.begin(), items.end())) {}

  // An object with one pair.
  JsonObject(const std::string& key, const JsonObject& value);
  JsonObject(const std::string& key, JsonObject&& value);
  JsonObject(const std::string& key, const char* value);
  JsonObject(const std::string& key, const std::string& value);
  JsonObject(const std::string& key, double value);
  JsonObject(const std::string& key, bool value);
  template <class Integer, IfInteger<Integer> = 0>
  JsonObject(const std::string& key, Integer value) : JsonObject(key, static_cast<double>(value)) {}

  JsonObject(const JsonObject& other) = default;
  JsonObject(JsonObject&& other) = default;
  JsonObject& operator=(const JsonObject& other) { return *this = JsonObject(other); }
  JsonObject& operator=(JsonObject&& other) = default;
  ~JsonObject() = default;

  // ---- Contents ---------------------------------------------------------------------------------
  //
  // The type stays: only an object shows its pairs in the text, and only a list its items.

  std::int32_t GetType() const { return fType; }

  // 1; after a JsonObject was added, one more than the depth that one had.
  std::int32_t GetDepth() const { return fDepth; }

  // Sets the value of a key. The pairs are in the order of their keys, byte by byte.
  void AddPair(const std::string& key, const JsonObject& value);
  void AddPair(const std::string& key, JsonObject&& value);
  void AddPair(const std::string& key, double value);
  void AddPair(const std::string& key, const std::string& value);
  void AddPair(const std::string& key, bool value);
  void AddPair(const std::string& key, const char* value);  // a null pointer counts as ""
  template <class Integer, IfInteger<Integer> = 0>
  void AddPair(const std::string& key, Integer value) {
    AddPair(key, static_cast<double>(value));
  }

  // Appends an item.
  void AddToList(const JsonObject& item);
  void AddToList(JsonObject&& item);

  // Removes the pairs, not the items, and sets the depth to 1.
  void Clear();

  // ---- Text -------------------------------------------------------------------------------------

  // The bytes, where <v> is the text of a value and line feeds are shown:
  //
  //   string   "text"
  //   number   0.1
  //   boolean  true or false
  //   list     [<v>,        items separated by a comma and a line feed
  //            <v>]
  //   object   {            each pair on its line, after one tab at every depth
  //            <tab>"a" : <v>,
  //            <tab>"b" : <v>
  //            }            and a line feed; a nested object keeps its own
  //
  // Without `close` the ] of this list, or the } and line feed of this object, is left to the
  // caller; the values in it are always closed. Linear in the length of the text.
  std::string GetJsonString(bool close) const;

  // ---- Texts of an application's output ---------------------------------------------------------

  // {"text": {"stringText": {"key": key, "value": value}}}
  static JsonObject CreateStringText(const std::string& key, const std::string& value);
  // {"text": {"variableText": {"variable": name}}}
  static JsonObject CreateVariableText(const std::string& name);
  // {"text": {"numericDataText": {"variable": variable, "value": value}}}
  static JsonObject CreateNumDataText(const std::string& variable, double value);
  // {"text": {"stringDataText": {"variable": variable, "value": value}}}
  static JsonObject CreateStringDataText(const std::string& variable, const std::string& value);

 private:
  void SetPair(const std::string& key, JsonObject value);
  void AppendText(std::string& text, bool close) const;

  std::int32_t fType = kObject;
  std::int32_t fDepth = 1;
  double fNumber = 0;
  bool fBoolean = false;
  std::string fString;
  std::vector<JsonObject> fvItems;
  std::vector<JsonObject> fvValues;           // of the pairs
  std::map<std::string, std::size_t> fPairs;  // from a key to the position of its value
};

}  // namespace NQXML_940
