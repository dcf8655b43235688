// Files in and files out: the forms of data that are read, the documents, the program.
#include <iostream>
#include <nlohmann/json.hpp>
#include <sstream>

#include <nqcommon/model/NQVarList.h>
#include <nqcommon/xml/save_format.h>

#include "pmml_document.h"
#include "support/compare.h"
#include "support/xmllint.h"
#include "test_support.h"

using namespace regression;
using support::ModelData;

namespace {

// ---- The data -----------------------------------------------------------------------------------

TEST(LinearRegression, ReadsPermittedForms) {
  const std::string text =
      "\xEF\xBB\xBF"
      "\"x\"\"1\",note, y \r\n+1.5,\"two\nlines, \"\"so\"\"\",-2e-3\r\n\r\n \" 7 \" , b ,+.5\r\n"
      "NA,b,1\n2,\"\",1\n3,c,NaN\n3,\"NA\",-1.7976931348623157e308\n  \n4,\"NA\",-3";
  support::Team team(1, nullptr);
  const ModelData data(Settings(FileOf(text), {}), team);
  EXPECT_EQ(data.Variables().GetVarAt(0)->GetVariableName(), "x\"1");
  EXPECT_EQ(data.CategoriesOf(1), (std::vector<std::string>{"two\nlines, \"so\"", "b", "NA"}));
  EXPECT_EQ(data.Counts().missing, 4);
  std::vector<std::vector<double>> cases;
  support::Chunk chunk;
  data.File().Load(0, chunk);
  support::CaseReader taken(data);
  taken.Start(chunk);
  while (taken.Next()) cases.emplace_back(taken.Values(), taken.Values() + 3);
  EXPECT_EQ(cases, (std::vector<std::vector<double>>{{1.5, 0, -2e-3}, {7, 1, .5}, {4, 2, -3}}));
}

// Rows across the ends of the reader's blocks of 2^18 bytes, and one longer than two of them.
TEST(LinearRegression, ReadsRowsAcrossBlocks) {
  std::string text = "skipped,x,y\n";
  for (int i = 0; i < 40000; ++i) {
    const std::string note = i == 20000 ? std::string(600000, 'n') : "some, note \"\"";
    text += '"' + note + "\"," + std::to_string(i % 10) + ',' + std::to_string(3 * (i % 10)) + '\n';
  }
  const Regression fit = FitText(text, {{"inputs", "x"}});
  EXPECT_EQ(fit.rows.used, 40000);
  EXPECT_CLOSE(fit.coefficients.at(1).estimate, 3, 1e-14);
}

// ---- The documents ------------------------------------------------------------------------------

TEST(LinearRegression, PmmlIsExact) {
  const std::string text =
      "g,x,f,y\n\"R&D \",1,2,11\nKüche,2,1,14\n\"R&D \",3,1,13\nKüche,4,1,16\n";
  const Fitted fitted(FileOf(text), {{"freq-weight", "f"}}, {.charts = true});
  const std::string pmml = PmmlDocument(fitted.data, fitted.fit, {"p", "1", "", false});
  const std::string model =
      "<RegressionModel functionName=\"regression\" algorithmName=\"leastSquares\" "
      "modelType=\"linearRegression\" targetFieldName=\"y\">\n"
      "<MiningSchema>\n"
      "<MiningField name=\"g\" usageType=\"active\"/>\n"
      "<MiningField name=\"x\" usageType=\"active\"/>\n"
      "<MiningField name=\"y\" usageType=\"predicted\"/>\n"
      "<MiningField name=\"f\" usageType=\"supplementary\"/>\n"
      "</MiningSchema>\n"
      "<ModelStats>\n"
      "<UnivariateStats field=\"g\">\n<Counts totalFreq=\"5\"/>\n"
      "<DiscrStats>\n<Array type=\"real\">3 2</Array>\n</DiscrStats>\n</UnivariateStats>\n"
      "<UnivariateStats field=\"x\">\n<Counts totalFreq=\"5\"/>\n"
      "<NumericInfo minimum=\"1\" maximum=\"4\" mean=\"2.2\" "
      "standardDeviation=\"1.30384048104053\"/>"
      "\n<ContStats/>\n</UnivariateStats>\n"
      "</ModelStats>\n"
      "<RegressionTable intercept=\"10\">\n"
      "<NumericPredictor name=\"x\" coefficient=\"1\"/>\n"
      "<CategoricalPredictor name=\"g\" value=\"Küche\" coefficient=\"2\"/>\n"
      "</RegressionTable>\n</RegressionModel>\n</PMML>\n";
  const std::size_t at = pmml.find("<RegressionModel");
  ASSERT_NE(at, pmml.npos);
  EXPECT_NE(pmml.find("<Value value=\"R&amp;D&#32;\" property=\"valid\"/>"), pmml.npos);
  EXPECT_EQ(pmml.substr(at), model);
}

// ---- The program --------------------------------------------------------------------------------

TEST(LinearRegression, RefusesBadInputWithOneLineAndNoFiles) {
  const std::string good = "a,b,y\n1,2,3\n2,1,5\n3,5,4\n4,4,9\n";
  std::string manyCategories = "id,y\n";
  for (int i = 0; i <= 1000; ++i) manyCategories += 'i' + std::to_string(i) + ",1\n";
  const struct {
    std::string content, arguments, message;
  } rows[] = {
      {good, "--target z", "no column 'z'"},
      {good, "--target y --inputs a,z", "no column 'z'"},
      {good, "--target y --inputs a,y", "column 'y' is both an input and the target"},
      {good, "--target y --inputs a,b,a", "column 'a' is both an input and an input"},
      {good, "--target y --freq-weight y", "'y' is both the target and the frequency weight"},
      {good, "--target y --categorical y", "categorical column 'y' is not an input"},
      {"a,b,a\n1,2,3\n", "--target b", "line 1: two columns are named 'a'"},
      {"a,,y\n1,2,3\n", "--target y", "line 1: column 2 has no name"},
      {"\xFF,y\n1,2\n", "--target y", "is not UTF-8 text"},
      {"a,y\n\"b\x01\",2\n", "--target y", "line 2, column 'a': 'b ' is not UTF-8 text"},
      {"a,y\n1,2\n\n2,x7\n", "--target y", "line 4, column 'y': 'x7' is not a number"},
      {"a,y\n1,2\n2\xC2\xA0,3\n", "--target y", "line 3, column 'a': '2\xC2\xA0' is not a number"},
      {"a,y\n\"1\n2\",2\n", "--target a", "line 2, column 'a': '1 2' is not a number"},
      {"a,y\n1,-inf\n2,3\n", "--target y", "line 2, column 'y': '-inf' is not finite"},
      {"a,y\n1,2\n+-2,3\n", "--target y", "line 3, column 'a': '+-2' is not a number"},
      {"a,y\n1e999,2\n", "--target y", "line 2, column 'a': '1e999' is not finite"},
      {"a,y\n1,2\n1,2,3\n", "--target y", "line 3: expected 2 cells, found 3"},
      {"a,y\n\"1\n\",2\n1\n", "--target y", "line 4: expected 2 cells, found 1"},
      {"a,y\n1,2\n\"3,4\n", "--target y", "line 3: a quote is out of place"},
      {"a,y\n1,2\n\"3\"4,4\n", "--target y", "line 3: a quote is out of place"},
      {"a,y\n1,2\n3\"\",4\n", "--target y", "line 3: a quote is out of place"},
      {"", "--target y", "no header row"},
      {"a,y\n", "--target y", "data.csv has no rows"},
      {"a,y\n,2\n3,NA\n", "--target y", "every case has a missing cell"},
      {"w,y\n0,2\n-1,3\n", "--target y --freq-weight w", "no case has a weight above 0"},
      {"a,b,y\n1,2,2\n2,5,3\n", "--target y", "too few cases: 2 for 3 coefficients"},
      {"y\n1\n2\n", "--target y --no-intercept", "nothing to fit"},
      {"a,y\n1e-300,1e300\n2e-300,3e300\n", "--target y", "coefficient of 'a' is not finite"},
      {manyCategories, "--target y", "more than 1000 categories"},
      {good, "", "--target is required"},
      {good, "--target y --save /nowhere/fit", "cannot write /nowhere/fit"},
      {good, "--target y --save \"$D/b.json\"", "b.json is the same file as --json"},
      {good, "--target y --what", "--what"},
      {good, "--target y --statxml \"$D/./data.csv\"", "is the same file as the data"},
      {good, "--target y --json ''", "needs the name of a file"},
      {good, "--target y --out \"$D/o\"", "--out needs --predict"},
      {good, "--target y --reference a=1", "reference 'a=1' is not"},
      {"a;b;y\n1;2;3\n", "--target y", "line 1: one column named 'a;b;y'; --separator ';'"},
      {"a,y\n.,1\n2,2\n", "--target y", "line 2, column 'a': '.' is not a number; --missing"},
      {"a,y\n1,1\n2,2\n\"1,5\",2\n", "--target y", "line 4, column 'a': '1,5' is not a number"},
      {"a,y\n1,1\n1e-400,2\n", "--target y", "line 3, column 'a': '1e-400' is too close to 0"},
      {"a,b,y\n,1,1\n,2,2\n", "--target y", "column 'a' has no value in any row"},
      {"i,b,y\nA1,1,1\nA2,1,2\nA3,1,1\n", "--target y", "'i' has a category for each case"},
      {"\x1F\x8B\x08\x08", "--target y", "is compressed by gzip"},
      {std::string("a,y\n1,\0\n", 8), "--target y", "has zero bytes"},
      {"a,y\r1,2\r", "--target y", "end in CR alone"},
      {"a,y\n1,2\n# 3\n", "--target y", "line 3: expected 2 cells, found 1; comment lines are not"},
      {"a,y\n]]>,2\nb,3\nb,5\n", "--target y --statxml \"$D/b.xml\"", "cannot hold the ']]>'"},
      {"a,y\n1,2\n\"" + std::string(std::size_t{20} << 20, 'x') + "\",2\n", "--target y",
       "line 3: the row is longer than 16 MiB"},
  };
  for (const auto& row : rows) {
    const std::string file = FileOf(row.content);
    ExpectRefused(
        RunProgram("'" + file + "' --json \"$D/b.json\" --pmml \"$D/b.pmml\" " + row.arguments,
                   "D='" + kDirectory.string() + "'; "),
        row.message);
    EXPECT_EQ(FilesIn(kDirectory), 1u) << row.message;
  }
  const std::string file = FileOf(good);
  ExpectRefused(RunProgram("'" + file + "' --target y --html '" + file + ".html'", "PATH=/nowhere"),
                "xsltproc");
  std::filesystem::remove_all(kDirectory);
  ExpectRefused(RunProgram("'" + file + "' --target y"), "cannot open");
  ExpectRefused(RunProgram("'" + ::testing::TempDir() + "' --target y"), "is a directory");
  EXPECT_EQ(RunProgram("--help").status, 0);
}

// A column may be named like the intercept, or like a category's coefficient.
TEST(LinearRegression, CollidingNamesStayApart) {
  const Regression fit = FitText(
      "(Intercept),x=b,x,y\n1,2,a,3\n2,1,b,5\n3,5,a,4\n4,4,b,9\n7,3,b,1\n2,2,c,2\n9,9,c,3\n");
  std::vector<std::string> names;
  for (const Coefficient& c : fit.coefficients) names.push_back(c.name);
  EXPECT_EQ(names,
            (std::vector<std::string>{"(Intercept)", "\"(Intercept)\"", "x=b", "\"x=b\"", "x=c"}));
}

TEST(LinearRegression, OptionsOfTheDataAreHeard) {
  const Fitted fitted(FileOf("a,b;g;y\n1;u;1\n?;u;2\n3;v;-9\n;u;4\n2;v;5\n4;w;9\n3;u;1\nNA;v;2\n"),
                      {{"separator", ";"}, {"missing", "?,-9,NA"}, {"inputs", "a,b"}});
  EXPECT_EQ(fitted.data.Counts().used, 4);
  EXPECT_EQ(fitted.data.Counts().missing, 4);
  const Fitted other(FileOf("g,y\nu,1\nv,2\nu,4\nw,5\nv,2\n"), {{"reference", "g=v"}});
  EXPECT_EQ(other.fit.coefficients.at(1).name, "g=u");
}

// The data come through a pipe; a signal leaves neither files nor a page half made.
TEST(LinearRegression, EndsOfASignalWithoutATrace) {
  const std::string file = FileOf("a,y\n1,2\n2,3\n4,4\n");
  EXPECT_EQ(RunProgram("- --target y < '" + file + "'").status, 0);
  const Outcome outcome =
      RunProgram("\"$D/pipe\" --target y --json \"$D/o.json\" & sleep 0.3; kill -TERM $!; wait $!",
                 "D='" + kDirectory.string() + "'; mkfifo \"$D/pipe\"; sleep 1 >\"$D/pipe\" & ");
  EXPECT_EQ(outcome.status, 143) << outcome.text;
  EXPECT_EQ(FilesIn(kDirectory), 2u);
  std::filesystem::remove(kDirectory / "pipe");
}

TEST(LinearRegression, ProgramWritesAllDocuments) {
  const std::string text =
      "a b,g,extra,f,y\n1,x y,2,1,3\n2,\"q\"\"<\\\",4,2,5\n3,x "
      "y,6,1,4\n4,q,8,3,9\n6,q,12,1,2\n,q,1,1,1\n";
  const std::string file = FileOf(text), base = (kDirectory / "fit").string();
  std::filesystem::create_symlink("linked.json", base + ".json");
  const Outcome outcome = RunProgram("--target y --inputs 'a b',g,extra --freq-weight f '" + file +
                                     "' --json '" + base + ".json' --statxml '" + base +
                                     ".xml' --save '" + base + ".save' --html '" + base + ".html'");
  ASSERT_EQ(outcome.status, 0) << outcome.text;
  EXPECT_EQ(FilesIn(kDirectory), 6u);
  EXPECT_TRUE(std::filesystem::is_symlink(base + ".json"));
  const auto json = nlohmann::json::parse(ContentOf(base + ".json"));
  EXPECT_EQ(json["n"], 8);
  EXPECT_EQ(json["nDropped"], 1);
  EXPECT_EQ(json["dfResidual"], 4);
  EXPECT_EQ(json["coefficients"].at(2)["name"], "g=q\"<\\");
  EXPECT_EQ(json["coefficients"].at(4)["redundant"], true);

  const std::string statXml = ContentOf(base + ".xml");
  EXPECT_EQ(nqtest::Complaints(statXml, "--schema", "statxml-7-0.xsd"), "");
  for (const char* part : {"<Array type=\"string\" n=\"3\">\"x y\" \"q\\\"&lt;\\\\\" \"q\"</Array>",
                           "<Statistic name=\"bins\" value=\"4\"/>",
                           "<FTest fStatistic=", "kind=\"symmetric\" nbRows=\"4\"",
                           "<Covariate field=\"a b\" power=\"1\"/>",
                           "<Counts totalFreq=\"8\" missingFreq=\"1\" invalidFreq=\"0\"/>"})
    EXPECT_NE(statXml.find(part), statXml.npos) << part << " in\n" << statXml;

  const std::string html = ContentOf(base + ".html");
  for (const char* part : {"<title>x y: 2</title>", "q\"&lt;\\</text>", "redundant: a combination",
                           "histogram of a b"})
    EXPECT_NE(html.find(part), html.npos) << part << " in\n" << html;
  EXPECT_EQ(html.find("NaN"), html.npos);

  std::ifstream saved(base + ".save");
  NQXML_940::NQVarList variables;
  ASSERT_TRUE(NQXML_940::ParseStartXML(saved));
  variables.ReadObjectXML(saved);
  EXPECT_EQ(variables.GetVarNames(), (std::vector<std::string>{"a b", "g", "extra", "y", "f"}));
  EXPECT_EQ(variables.GetEncoderAt(1)->EncodeConst(std::string("q")), 2);
}

}  // namespace
