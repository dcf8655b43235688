#include <nqcommon/xml/save_format.h>

#include <gtest/gtest.h>

#include <climits>
#include <iomanip>
#include <memory>

#include <nqcommon/xml/IOException.h>
#include <nqcommon/xml/SaveXMLTags.h>
#include <nqcommon/xml/XMLDocType.h>
#include <nqcommon/xml/XMLUtil.h>
#include <nqcommon/xml/internal/save_line.h>
#include <nqcommon/xml/saved_object.h>

#include "support/comma_locale.h"
#include "support/save_format_checks.h"
#include "support/special_values.h"

using namespace NQXML_940;
using nqtest::MemoryFile;

namespace {

const std::string kFile =
#include "golden/save_format_file.inc"
    ;
const std::size_t kBlockBegin = kFile.find("\n\t<Obj");
const std::string kBlock = kFile.substr(kBlockBegin, kFile.rfind('\n') - kBlockBegin);

// A class that saves itself; the same walk writes and reads.
struct Saved {
  template <class Part, class Self>
  static int Walk(Part part, Self& self) {
    part.Value(self.fText);
    part.Value(self.fInt);
    part.Value(self.fUnsigned);
    part.Value(self.fBool);
    part.Value(self.fLong);
    part.List(self.fvReals);
    if (self.fInner) part.Object(*self.fInner);
    return part.End();
  }
  int WriteObjectXML(std::ostream& os, int nTabs) const {
    return Walk(ObjectWriter(os, "Saved", nTabs), *this);
  }
  int ReadObjectXML(std::ifstream& is) {
    return Walk(ObjectReader(is, "Saved", fReportedName), *this);
  }

  std::string fText, fReportedName;
  int fInt = 0;
  unsigned fUnsigned = 0;
  bool fBool = false;
  long fLong = 0;
  std::vector<double> fvReals;
  std::unique_ptr<Saved> fInner;
};

TEST(SaveFormat, WholeFile) {
  const nqtest::CommaCLocale comma;
  const auto nLines = std::count(kBlock.begin(), kBlock.end(), '\n');
  Saved object{"a < \"b\"  c",
               "",
               INT_MIN,
               UINT_MAX,
               true,
               1000000000000000,
               {0.1 + 0.2, nqtest::kMissing, 1e20, -0.0, nqtest::kInf},
               std::make_unique<Saved>()};
  object.fInner->fLong = 123456789012345;
  std::ostringstream file, again;
  ExportFormat format;
  const std::unique_ptr<XMLDocType> head(
      XMLDocType::Create(SaveXMLTags::XML_ELE_ROOT, SaveXMLTags::SAVEXML_DTD_LOC, 0));
  head->ToStream(file, format, false);
  EXPECT_EQ(WriteHeader(file, "(c) \"1\" & more "), 0);
  EXPECT_EQ(object.WriteObjectXML(file, 1), nLines);
  EXPECT_EQ(EndRoot(file), 0);
  EXPECT_EQ(file.str(), kFile);

  Saved read;
  read.fInner = std::make_unique<Saved>();
  std::ifstream is = MemoryFile(kFile).Open();
  EXPECT_TRUE(ParseStartXML(is));
  EXPECT_EQ(read.ReadObjectXML(is), nLines);
  // what does not survive: escaped text, a long of 16 digits, 17 digits of a double, infinity
  EXPECT_EQ(std::exchange(read.fText, object.fText), "a &lt; &quot;b&quot; &#32;c");
  EXPECT_EQ(std::exchange(read.fLong, object.fLong), 1);
  EXPECT_EQ(std::exchange(read.fvReals, object.fvReals),
            (std::vector<double>{0.3, nqtest::kMissing, 1e20, 0, 0}));
  read.WriteObjectXML(again, 1);
  EXPECT_EQ(again.str(), kBlock);
}

TEST(SaveFormat, LiteralsAreStringsAndTabsMayBeNone) {
  std::ostringstream os;
  const XMLObj object("A<", -1);
  const char* const none = nullptr;
  object.StartObj(os);
  EXPECT_EQ(object.WriteSubElement(os, "yes") + object.WriteSubElement(os, none), 0);
  EXPECT_EQ(os.str(), "\n<Obj name=\"A<\">\n<String value=\"yes\"/>\n<String value=\"\"/>");
}

// The last value whose line the reader takes is the last of which that is said.
TEST(SaveFormat, WhatCanBeReadBack) {
  for (const int nTabs : {-1, 0, 3}) {
    for (const char* const start : {"", "<", "  "}) {
      bool isRead = true;
      for (std::size_t length = 200; length < 250; ++length) {
        const std::string value = start + std::string(length, 'x');
        std::ostringstream os;
        XMLObj("A", nTabs).WriteSubElement(os, value);
        std::ifstream is = MemoryFile(os.str().substr(1)).Open();
        std::string read;
        isRead = ParseValue(is, read) && XMLUtil::Unescape(read) == value;
        EXPECT_EQ(CanBeReadBack(value, nTabs), isRead) << nTabs << value;
      }
      EXPECT_FALSE(isRead);
    }
  }
  EXPECT_TRUE(CanBeReadBack("", 0));
  EXPECT_FALSE(CanBeReadBack(std::string(1, '\0'), 0));
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
  text << std::setprecision(17) << value;
  return isRead ? text.str() + " " : "- ";
}

TEST(SaveFormat, ReadsLines) {
  const struct {
    std::string text, values, tags;
  } rows[] = {
#include "golden/save_format_lines.inc"
  };
  const nqtest::CommaCLocale comma;
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

TEST(SaveFormat, DamagedObjectsAreReported) {
  std::vector<std::string> damaged;
  for (std::size_t n = 0; n + 2 < kBlock.size(); ++n) damaged.push_back(kBlock.substr(1, n));
  for (const char* count : {"\"-1\"", "\"4\"", "\"2147483647\""})
    damaged.emplace_back(kBlock).replace(kBlock.find("\"5\""), 3, count);
  for (const std::string& text : damaged) {
    std::ifstream is = MemoryFile(text).Open();
    Saved object;
    object.fReportedName = text.empty() ? "" : "Saved from XML";
    testing::internal::CaptureStderr();
    try {
      ADD_FAILURE() << object.ReadObjectXML(is) << text;
    } catch (const IOException* e) {
      delete e;
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              text.empty() ? "Failure reading Saved!\n" : "Failure reading Saved from XML!\n");
  }
}

// The seeds of the fuzz targets, cut at every byte and with every byte changed.
TEST(SaveFormat, AnyBytesAreRead) {
  for (const std::string& seed : nqtest::kSaveFormatSeeds)
    for (std::size_t at = 0; at < seed.size(); ++at) {
      std::string changed = seed;
      changed[at] = std::string_view("\0\n\"=", 4)[at % 4];
      for (const std::string& text : {seed.substr(0, at), changed}) {
        nqtest::CheckHeaderReader(text);
        nqtest::CheckObjectReaders(text);
        nqtest::CheckValueReaders(text);
      }
    }
}

}  // namespace
