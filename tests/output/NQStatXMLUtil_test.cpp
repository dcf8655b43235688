// The bytes of the StatXML builders, and the values they are built from.
#include <nqcommon/output/NQStatXMLUtil.h>

#include <gtest/gtest.h>

#include "support/comma_locale.h"
#include "support/displayed.h"
#include "support/element_text.h"
#include "support/special_values.h"

namespace NQXML_940 {
namespace {

using nqtest::kInf;
using nqtest::kMissing;
using nqtest::kNaN;
using nqtest::Text;
using U = NQStatXMLUtil;
using Elements = U::Elements;
using Ints = std::vector<int>;
using Doubles = std::vector<double>;
using Strings = std::vector<std::string>;

XMLElement* Leaf(const char* name) { return XMLElement::Create(name); }

TEST(NQStatXMLUtil, Bytes) {
  const nqtest::CommaCLocale locale;
  const Ints ints = {12, 150, 7, -2147483647 - 1, 2147483647, -95};
  const Doubles doubles = {0.1, kMissing, 1e20, -kInf, 1.0 / 3, -0.0, std::abs(kNaN)};
  NQXMLCoordinatesGroup group("roc"), sharing;
  group.AddCoordinates({"x", "", "", Ints{1}});
  group.AddCoordinates({});
  group.SetCoordinates({group.GetCoordinates()[1], group.GetCoordinates()[0]});
  sharing.SetShared({"s", "", "", Doubles{}});
  NQXMLRecordInfo record("7", "seven", {Ints{1, 2}, Strings{"a b"}});
  record.AddArray(Doubles{3});
  XMLElement* records = Leaf("r");
  U::AddRecordInfos(*records, {record, NQXMLRecordInfo("<8>")});
  const struct {
    const char* label;
    XMLElement* element;
    const char* want;
  } rows[] = {
#include "golden/statxml_elements.inc"
  };
  for (const auto& row : rows) EXPECT_EQ(Text(row.element), row.want) << row.label;
  std::string text = "\"a\\";
  U::ReplaceSpecialChar(text, text);
  EXPECT_EQ(text, "\\\"a\\\\");
}

// What is not linear takes minutes here. Digits: 10, 2 90, 3 900, 4 9000, 5 90000, 6 900000.
TEST(NQStatXMLUtil, AMillionItems) {
  Ints ints(1000000);
  Doubles doubles;
  Strings strings(1000000, "a \"");
  for (int i = 0; i < 1000000; ++i) doubles.push_back(ints[static_cast<std::size_t>(i)] = i);
  const std::size_t digits = 5888890, blanks = 999999;
  const auto listed = [](XMLElement* array) {
    const std::string text = Text(array);
    return text.find("</") - text.find('>') - 1;
  };
  EXPECT_EQ(listed(U::CreateElemArray(ints)), digits + blanks);
  EXPECT_EQ(listed(U::CreateElemArray(doubles)), digits + blanks);
  EXPECT_EQ(listed(U::CreateElemArray(strings)), 6 * 1000000 + blanks);
}

TEST(NQVariateData, PartsInOrderAndCoordinatesByName) {
  NQVariateData data;
  data.SetDescription("d");
  data.AddCounts(NQXMLCounts(2));
  EXPECT_TRUE(data.AddStatistic("s", "1") && data.AddStatistic("t", ""));
  EXPECT_FALSE(data.AddStatistic("u", 1.0));
  data.AddCoordinates({});                    // without values
  std::string want[] = {"", "", "", "", ""};  // after so many others
  for (int i = 1; i <= 4; ++i) {
    data.AddCoordinates({"c", "", "", Ints{i}});
    want[i] = want[i - 1] + R"(<Coordinates feature="c"><Array type="int" n="1">)" +
              std::to_string(i) + "</Array></Coordinates>";
  }
  const auto filled = [&want](const std::string& name, int count) {
    return "<" + name +
           R"( description="d"><Counts totalFreq="2"/><Statistic name="s" value="1"/>)"
           R"(<Statistic name="t" value=""/>)" +
           want[count] + "</" + name + ">";
  };
  EXPECT_EQ(Text(data.GetUnivariateDataElem()), filled("UnivariateData", 1));
  EXPECT_EQ(Text(data.GetBivariateDataElem()), filled("BivariateData", 2));
  EXPECT_EQ(Text(data.GetMultiVariateDataElem()), filled("MultivariateData", 4));

  EXPECT_FALSE(data.SetStatistics({"a"}, Doubles{}));
  EXPECT_TRUE(data.HasStringStatistics());
  EXPECT_TRUE(data.SetStatistics({"a"}, Doubles{kMissing}));
  EXPECT_TRUE(data.AddStatistic("b", 2.5));
  data.SetCoordinates({});
  data.SetCounts({NQXMLCounts(1), NQXMLCounts(0, 0, kMissing, 3)});
  EXPECT_EQ(
      Text(U::CreateElemVarData("Other", "", data)),
      R"(<Other><Counts totalFreq="1"/><Counts totalFreq="0" missingFreq="0" cardinality="3"/>)"
      R"(<Statistic name="a"/><Statistic name="b" value="2.5"/></Other>)");
}

TEST(NQXMLCoordinates, TakesOneKindAndDisplays) {
  NQXMLCoordinates coordinates;
  EXPECT_EQ(coordinates.GetKind(), -1);
  EXPECT_EQ(nqtest::Displayed(coordinates),
            "\n Coordinates display start: \nFeature = \nField = \nStatistic = \nError"
            "\n Coordinates display end. ");
  EXPECT_TRUE(coordinates.AddValue("a") && coordinates.AddValue("b c"));
  EXPECT_FALSE(coordinates.AddValue(1) || coordinates.AddValue(1.0));
  EXPECT_TRUE(coordinates.GetKind() == 2 && coordinates.GetStrings()->size() == 2);
  EXPECT_EQ(nqtest::Displayed(coordinates),
            "\n Coordinates display start: \nFeature = \nField = \nStatistic = \nValues (size = 2)"
            "\n  \"a\" \"b c\"\n Coordinates display end. ");
  coordinates.SetValues(Doubles{kMissing});
  EXPECT_TRUE(coordinates.AddValue(0.5) && !coordinates.AddValue(1) && !coordinates.GetStrings());
  EXPECT_NE(nqtest::Displayed(coordinates).find("Values (size = 2)\n  miss 0.5\n"),
            std::string::npos);
}

}  // namespace
}  // namespace NQXML_940
