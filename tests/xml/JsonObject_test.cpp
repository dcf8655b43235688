#include <nqcommon/xml/JsonObject.h>

#include "support/comma_locale.h"
#include "support/safe_depth.h"
#include "support/testing.h"

using namespace NQXML_940;

TEST(JsonObject, ExactBytes) {
  using Items = std::vector<JsonObject>;
  JsonObject pairs("b", "x");
  pairs.AddPair("a", true);
  pairs.AddPair("\xe4", 3.0);
  const Items none;
  pairs.AddPair("b", JsonObject(Items{JsonObject("c", 0.1), none, JsonObject()}));
  JsonObject list(Items{false});
  list.AddToList("y");
  list.AddToList(list);
  JsonObject ignored("z");
  ignored.AddPair("k", 1.0);
  ignored.AddToList(2.0);
  struct {
    const char* name;
    JsonObject object;
    std::string open, close;
  } rows[] = {
#include "golden/json_text.inc"
  };
  const nqtest::CommaCLocale comma;
  for (const auto& row : rows) {
    EXPECT_EQ(row.object.GetJsonString(false), row.open) << row.name;
    EXPECT_EQ(row.object.GetJsonString(true), row.open + row.close) << row.name;
  }
}

TEST(JsonObject, CopiesAreValues) {
  JsonObject inner("a", 1.0), outer("inner", inner);
  const JsonObject copy = outer;
  const std::string before = copy.GetJsonString(true);
  inner.AddPair("a", 2.0);
  outer.AddPair("self", outer);
  outer.AddPair("inner", inner);
  EXPECT_EQ(copy.GetJsonString(true), before);
  EXPECT_EQ(outer.GetJsonString(true),
            "{\n\t\"inner\" : {\n\t\"a\" : 2\n}\n,\n\t\"self\" : " + before + "\n}\n");
  EXPECT_EQ(outer.GetDepth(), 2);  // of the last object added
  outer.AddPair("copy", JsonObject("deeper", copy));
  outer.AddPair("b", true);
  EXPECT_EQ(outer.GetDepth(), 4);
}

TEST(JsonObject, SafeDepth) {
  JsonObject tree;
  std::string begin, end;
  for (int level = 0; level < nqtest::kSafeDepth / 2; ++level) {
    std::vector<JsonObject> items;
    items.push_back(std::move(tree));
    tree = JsonObject("k", JsonObject(std::move(items)));
    begin += "{\n\t\"k\" : [";
    end += "]\n}\n";
  }
  const JsonObject copy = tree;
  tree.Clear();
  EXPECT_EQ(tree.GetJsonString(true) + std::to_string(tree.GetDepth()), "{\n\n}\n1");
  EXPECT_EQ(copy.GetJsonString(true), begin + "{\n\n}\n" + end);
}
