// Documents that the library writes, against the schemas it ships.
#include <nqcommon/math/stats/charts/NQHistogramData.h>
#include <nqcommon/math/stats/charts/NQScatterPlotData.h>
#include <nqcommon/output/NQStatXMLUtil.h>
#include <nqcommon/xml/save_format.h>
#include <nqcommon/xml/write_tree.h>

#include "support/testing.h"
#include "support/variable_list_checks.h"
#include "support/xmllint.h"

namespace {

using namespace NQXML_940;
using namespace nqtest;
using U = NQStatXMLUtil;

// With every element that the builders make, and every attribute.
std::string StatXMLDocument() {
  NQMath_940::NQHistogramData histogram(4, 0, 8, true);
  NQMath_940::NQScatterPlotData points;
  for (const double x : {-5.0, 1.0, 1e300, kInf, kNaN}) {
    histogram.UpdateData(1, 0, x);
    points.UpdateData(1, 1, x, -x);
  }
  NQVariateData odd;
  odd.SetCounts({NQXMLCounts(), NQXMLCounts(kMissing, -kInf, kNaN, 1e300)});
  odd.AddStatistic("mode", "a < b");
  const std::unique_ptr<XMLElement> root(U::BuildRoot());
  XMLElement* const filled = U::CreateElemStructuredData("s");
  U::AddRecordInfos(*filled, {NQXMLRecordInfo("7", "seven", {Doubles{1}, Ints{2}})});
  XMLElement* const parameter = U::CreateElemRegressionParameter(
      "b", false, {U::CreateElemFactor("f", "v", true)}, {U::CreateElemCovariate("c", -1)});
  XMLElement* const labels = U::CreateElemMatrixLabels(
      {U::CreateElemRowColLabels(U::Elements{U::CreateElemLabel(parameter)}, "both")});
  for (XMLElement* element : {
           histogram.GenerateNQVariateData("age").GetUnivariateDataElem(),
           points.GetNQVariateData("points").GetBivariateDataElem(),
           odd.GetMultiVariateDataElem(),
           U::CreateElemUnivarData("u"),
           filled,
           U::CreateElemCoordinatesGroup(
               U::CreateElemCoordinates("f", "g", "s", Doubles{1e-300}, U::CreateElemLabel(0.5)),
               {U::CreateElemCoordinates("f", "", "", "a", 1)}, "g"),
           U::CreateElemMatrix(labels, U::Elements{U::CreateElemArray(Doubles{kMissing})}, 1, 1,
                               "symmetric", true),
           U::CreateElemMatrix(nullptr, {U::CreateElemArray(Doubles{2})},
                               {U::CreateElemIndices(U::CreateElemArray(Ints{7}), "col")}, 1, 9,
                               "any", false),
           U::CreateElemSegmentData(
               U::CreateElemSegmentInfo("1", {U::CreateElemFieldInfo("f", 0.5, true),
                                              U::CreateElemCounts(NQXMLCounts(1))}),
               U::CreateElem("ParameterStats", "estimate", 0.5)),
       })
    root->AddElement(element);
  std::ostringstream os;
  WriteTree(os, nullptr, root.get(), true);
  return os.str();
}

std::string SavedDocument() {
  std::ostringstream os;
  const std::unique_ptr<XMLDocType> doctype(XMLDocType::Create("NQXMLRoot", "savexml.dtd", 0));
  ExportFormat format;
  doctype->ToStream(os, format, false);
  StartRoot(os, "(c) <Somebody>");
  FullVariableList().WriteObjectXML(os, 1);
  EndRoot(os);
  return os.str();
}

TEST(Schemas, TakeWhatIsWrittenAndNothingElse) {
  const struct {
    const char *label, *from, *to;
  } statXML[] =
      {
#include "output/faults_statxml.inc"
      },
    saved[] = {
        {"no copyright", " copyright=\"", " copyleft=\""},
        {"an object without a name", "<Obj name=\"NQStringEncoder\"", "<Obj"},
        {"an unknown value", "<Int value", "<Short value"},
        {"text", "<Int value", "text<Int value"},
    };
  const auto check = [](const std::string& document, const char* option, const char* schema,
                        const auto& faults) {
    EXPECT_EQ(Complaints(document, option, schema), "") << document;
    for (const auto& fault : faults) {
      std::string bad = document;
      const std::size_t at = bad.find(fault.from);
      ASSERT_NE(at, bad.npos) << fault.label;
      bad.replace(at, std::string(fault.from).size(), fault.to);
      EXPECT_NE(Complaints(bad, option, schema), "") << fault.label;
    }
  };
  check(StatXMLDocument(), "--schema", "statxml-7-0.xsd", statXML);
  check(SavedDocument(), "--dtdvalid", "savexml.dtd", saved);
}

}  // namespace
