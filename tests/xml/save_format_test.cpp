#include <nqcommon/xml/SaveXMLTags.h>
#include <nqcommon/xml/XMLDocType.h>
#include <nqcommon/xml/XMLUtil.h>
#include <nqcommon/xml/save_format.h>
#include <nqcommon/xml/saved_object.h>

#include <climits>
#include <memory>

#include "support/comma_locale.h"
#include "support/memory_file.h"
#include "support/testing.h"

using namespace NQXML_940;
using namespace nqtest;

namespace {

template <class T>
T ReadBy(ObjectReader& reader) {
  T value{};
  reader.Value(value);
  return value;
}

TEST(SaveFormat, WholeFile) {
  const std::string want =
#include "golden/save_format_file.inc"
      ;
  const CommaCLocale comma;
  std::ostringstream file;
  ExportFormat format;
  const std::unique_ptr<XMLDocType> head(
      XMLDocType::Create(SaveXMLTags::XML_ELE_ROOT, SaveXMLTags::SAVEXML_DTD_LOC, 0));
  head->ToStream(file, format, false);
  EXPECT_EQ(WriteHeader(file, "(c) \"1\" & more "), 0);
  ObjectWriter writer(file, "Saved", 1);
  writer.Value(std::string("a < \"b\"  c"));
  writer.Value(INT_MIN);
  writer.Value(UINT_MAX);
  writer.Value(true);
  writer.Value(1000000000000000);
  writer.List(Doubles{0.1 + 0.2, kMissing, 1e20, -0.0, kInf});
  EXPECT_EQ(writer.End(), 13);
  EXPECT_EQ(EndHeader(file), 0);
  EXPECT_EQ(file.str(), want);

  // Escaped text, a long of 16 digits, 17 digits of a double and infinity do not survive.
  std::ifstream is = MemoryFile(want).Open();
  EXPECT_TRUE(ParseStartXML(is));
  ObjectReader reader(is, "Saved");
  EXPECT_EQ(ReadBy<std::string>(reader), "a &lt; &quot;b&quot; &#32;c");
  EXPECT_EQ(ReadBy<int>(reader), INT_MIN);
  EXPECT_EQ(ReadBy<unsigned>(reader), UINT_MAX);
  EXPECT_TRUE(ReadBy<bool>(reader));
  EXPECT_EQ(ReadBy<long>(reader), 1);
  Doubles reals;
  reader.List(reals);
  EXPECT_EQ(reals, (Doubles{0.3, kMissing, 1e20, 0, 0}));
  EXPECT_EQ(reader.End(), 13);
}

TEST(SaveFormat, LiteralsAreStringsAndTabsMayBeNone) {
  std::ostringstream os;
  const XMLObj object("A<", -1);
  const char* const none = nullptr;
  EXPECT_EACH(true, object.StartObj(os) == 0, object.WriteSubElement(os, "yes") == 0,
              object.WriteSubElement(os, none) == 0, object.EndObj(os) == 0);
  EXPECT_EQ(os.str(), "\n<Obj name=\"A<\">\n<String value=\"yes\"/>\n<String value=\"\"/>\n</Obj>");
}

// A line has 255 characters at most: as it is written the value takes what the tag leaves.
TEST(SaveFormat, WhatCanBeReadBack) {
  const std::tuple<bool, int, std::string> rows[] = {
      {true, -1, std::string(237, 'x')},
      {false, -1, std::string(238, 'x')},
      {true, 3, std::string(233, 'x')},
      {false, 3, std::string(234, 'x')},
      {true, 0, std::string(59, '<')},
      {false, 0, std::string(60, '<')},
      {true, 0, ""},
      {false, 0, std::string(1, '\0')},
  };
  for (const auto& [canBe, nTabs, value] : rows) {
    std::ostringstream os;
    XMLObj("A", nTabs).WriteSubElement(os, value);
    std::ifstream is = MemoryFile(os.str().substr(1)).Open();
    std::string read;
    EXPECT_EQ(ParseValue(is, read) && XMLUtil::Unescape(read) == value, canBe) << nTabs << value;
    EXPECT_EQ(CanBeReadBack(value, nTabs), canBe) << nTabs << value;
  }
}

// A value as it is read, or a dash where the reading fails, which must not touch the value.
template <class T>
std::string Read(const MemoryFile& file, T before) {
  std::ifstream is = file.Open();
  T value = before;
  const bool isRead = ParseValue(is, value);
  EXPECT_TRUE(isRead || value == before);
  std::ostringstream text;
  text.imbue(std::locale::classic());
  text.precision(17);
  text << value << ' ';
  return isRead ? text.str() : "- ";
}

TEST(SaveFormat, ReadsLines) {
  const struct {
    std::string text, values, tags;
  } rows[] = {
#include "golden/save_format_lines.inc"
  };
  const CommaCLocale comma;
  for (const auto& row : rows) {
    const MemoryFile file(row.text);
    std::ifstream head = file.Open(), start = file.Open(), end = file.Open();
    EXPECT_EQ(Read(file, -5) + Read(file, 5U) + Read(file, false) + Read(file, -5L) +
                  Read(file, 5.0) + Read(file, std::string("?")),
              row.values + " ")
        << row.text;
    EXPECT_EQ(ParseStartXML(head), row.tags == "h") << row.text;
    EXPECT_EQ(ParseStartObj(start, "A b"), row.tags == "o") << row.text;
    EXPECT_EQ(ParseEndObj(end), row.tags == "e") << row.text;
  }
}

}  // namespace
