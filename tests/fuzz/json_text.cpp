// A tree of values written as JSON text and read by another library is the same tree.
#include <nqcommon/xml/JsonObject.h>

#include <charconv>
#include <cmath>
#include <vector>

#include <nlohmann/json.hpp>

#include "any_bytes.h"

using NQXML_940::JsonObject;

namespace {

// Texts that stand as they are in JSON.
std::string NextText(nqtest::Bytes& bytes) {
  static const char* const pieces[] = {"a", "b",   " ", "/",      "{",
                                       "}", "[,]", ":", "\u00e9", "\U0001f600"};
  std::string text;
  for (unsigned n = bytes.Next() % 4; n > 0; --n) text += pieces[bytes.Next() % 10];
  return text;
}

double FifteenDigits(double value) {
  char text[32];
  const auto end = std::to_chars(text, text + 32, value, std::chars_format::general, 15).ptr;
  std::from_chars(text, end, value);
  return value;
}

struct Both {
  JsonObject ours;
  nlohmann::json theirs;
};

Both Next(nqtest::Bytes& bytes, int depth) {
  switch (bytes.Next() % (depth == 0 ? 3 : 5)) {
    case 0: {
      const double number = std::ldexp(bytes.NextInt(), static_cast<int>(bytes.Next()) * 8 - 1024);
      const double value = std::isfinite(number) ? number : 0;
      return {JsonObject(value), FifteenDigits(value)};
    }
    case 1: {
      const bool value = bytes.Next() % 2 == 1;
      return {JsonObject(value), value};
    }
    case 2: {
      const std::string text = NextText(bytes);
      return {JsonObject(text), text};
    }
    case 3: {
      Both list = {JsonObject(std::vector<JsonObject>()), nlohmann::json::array()};
      for (unsigned n = bytes.Next() % 4; n > 0; --n) {
        const Both item = Next(bytes, depth - 1);
        list.ours.AddToList(item.ours);
        list.theirs.push_back(item.theirs);
      }
      return list;
    }
    default: {
      Both object = {JsonObject(), nlohmann::json::object()};
      for (unsigned n = bytes.Next() % 4; n > 0; --n) {
        const std::string key = NextText(bytes);
        const Both value = Next(bytes, depth - 1);
        object.ours.AddPair(key, value.ours);
        object.theirs[key] = value.theirs;
      }
      return object;
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  nqtest::Bytes bytes(data, size);
  const Both both = Next(bytes, 5);
  nqtest::Require(nlohmann::json::parse(both.ours.GetJsonString(true)) == both.theirs);
  return 0;
}
