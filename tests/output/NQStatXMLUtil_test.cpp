// The bytes of the StatXML builders, and the values they are built from.
#include <nqcommon/math/matrix/NQSymMatrix.h>
#include <nqcommon/output/NQStatXMLUtil.h>

#include "support/comma_locale.h"
#include "support/element_text.h"
#include "support/testing.h"

namespace NQXML_940 {
namespace {

using namespace nqtest;
using U = NQStatXMLUtil;
using Elements = U::Elements;
using Strings = Texts;

XMLElement* Leaf(const char* name) { return XMLElement::Create(name); }

TEST(NQStatXMLUtil, Bytes) {
  const CommaCLocale locale;
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
  NQMath_940::NQSymMatrix matrix(2, true);
  matrix.SetElem(0, 0, 4), matrix.SetElem(1, 0, 0.5), matrix.SetElem(1, 1, 1);
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

TEST(NQVariateData, PartsInOrderAndCoordinatesByName) {
  NQVariateData data;
  data.SetDescription("d");
  data.AddCounts(NQXMLCounts(2));
  EXPECT_TRUE(data.AddStatistic("s", "1") && data.AddStatistic("t", ""));
  EXPECT_FALSE(data.AddStatistic("u", 1.0));
  data.AddCoordinates({});  // without values
  for (const char* feature : {"1", "2", "3", "4"}) data.AddCoordinates({feature, "", "", Ints()});
  const auto filled = [](const std::string& name, int count) {
    std::string text = "<" + name +
                       R"( description="d"><Counts totalFreq="2"/><Statistic name="s" value="1"/>)"
                       R"(<Statistic name="t" value=""/>)";
    for (int i = 1; i <= count; ++i)
      text += "<Coordinates feature=\"" + std::to_string(i) +
              R"("><Array type="int" n="0"/></Coordinates>)";
    return text + "</" + name + ">";
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
  EXPECT_EQ(Displayed(coordinates),
            "\n Coordinates display start: \nFeature = \nField = \nStatistic = \nError"
            "\n Coordinates display end. ");
  EXPECT_EACH(true, coordinates.AddValue("a"), coordinates.AddValue("b c"));
  EXPECT_EACH(false, coordinates.AddValue(1), coordinates.AddValue(1.0));
  EXPECT_EQ(coordinates.GetKind(), 2);
  EXPECT_EQ(Displayed(coordinates),
            "\n Coordinates display start: \nFeature = \nField = \nStatistic = \nValues (size = 2)"
            "\n  \"a\" \"b c\"\n Coordinates display end. ");
  coordinates.SetValues(Doubles{kMissing});
  EXPECT_EQ(coordinates.GetKind(), 1);
  EXPECT_EACH(true, coordinates.AddValue(0.5), !coordinates.AddValue(1), !coordinates.GetStrings());
  EXPECT_NE(Displayed(coordinates).find("Values (size = 2)\n  miss 0.5\n"), std::string::npos);
}

}  // namespace
}  // namespace NQXML_940
