#include <gtest/gtest.h>
#include <sys/wait.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <limits>
#include <nlohmann/json.hpp>
#include <sstream>

#include "csv_table.h"
#include "regression.h"
#include "report.h"
#include "support/compare.h"

using regression::ChooseColumns;
using regression::Coefficient;
using regression::Column;
using regression::Fit;
using regression::ReadCsv;
using regression::Regression;

static std::vector<Column> Longley() {
  std::ifstream file(NQ_LONGLEY_CSV);
  return ChooseColumns(ReadCsv(file), {}, "y");
}

static std::vector<Column> Parse(const std::string& text, const std::vector<std::string>& inputs,
                                 const std::string& target) {
  std::istringstream in(text);
  return ChooseColumns(ReadCsv(in), inputs, target);
}

struct Certified {
  std::string name;
  double estimate;
  double stdError;
};

// NIST Statistical Reference Datasets, Longley.
static const Certified kLongley[] = {
    {"(Intercept)", -3482258.63459582, 890420.383607373},
    {"x1", 15.0618722713733, 84.9149257747669},
    {"x2", -0.358191792925910e-1, 0.334910077722432e-1},
    {"x3", -2.02022980381683, 0.488399681651699},
    {"x4", -1.03322686717359, 0.214274163161675},
    {"x5", -0.511041056535807e-1, 0.226073200069370},
    {"x6", 1829.15146461355, 455.478499142212},
};

// `units` gives the power of two that column j was multiplied by: the intercept first.
static double ExpectLongley(const Regression& fit, const std::vector<int>& units) {
  double worst = 0;
  const auto check = [&](const std::string& figure, double got, double want) {
    EXPECT_CLOSE(got, want, 1e-12) << figure;
    worst = std::max(worst, nqtest::RelativeError(got, want));
  };
  for (std::size_t j = 0; j < std::size(kLongley); ++j) {
    const Coefficient& c = fit.coefficients.at(j);
    EXPECT_EQ(c.name, kLongley[j].name);
    EXPECT_FALSE(c.redundant) << c.name;
    check(c.name, std::ldexp(c.estimate, units[j]), kLongley[j].estimate);
    check(c.name + " standard error", std::ldexp(c.stdError, units[j]), kLongley[j].stdError);
    check(c.name + " t", c.t, kLongley[j].estimate / kLongley[j].stdError);
  }
  check("residual standard deviation", fit.residualStdDev, 304.854073561965);
  check("R squared", fit.rSquared, 0.995479004577296);
  check("F", fit.fStatistic, 330.285339234588);
  EXPECT_EQ(fit.dfModel, 6);
  EXPECT_EQ(fit.dfResidual, 9);
  return worst;
}

TEST(LinearRegression, AgreesWithCertifiedLongley) {
  const double worst = ExpectLongley(Fit(Longley(), true), std::vector<int>(7));
  std::cout << "Longley: worst figure has " << -std::log10(worst) << " digits\n";
}

// Squares of 2^-700 underflow, those of 2^700 overflow.
TEST(LinearRegression, UnitsDoNotMatter) {
  const std::vector<int> units = {0, -30, -700, 700, 0, 40, -900};
  std::vector<Column> columns = Longley();
  for (std::size_t j = 1; j < units.size(); ++j) {
    for (double& x : columns[j - 1].values) x = std::ldexp(x, units[j]);
  }
  ExpectLongley(Fit(columns, true), units);
}

TEST(LinearRegression, NamesRedundantInputs) {
  const std::vector<Column> longley = Longley();
  const struct {
    const char* label;
    double (*make)(double x1, double x2);
  } rows[] = {
      {"duplicate", [](double x1, double) { return x1; }},
      {"sum", [](double x1, double x2) { return x1 + x2; }},
      {"tiny sum", [](double x1, double x2) { return 1e-9 * x1 + 1e-9 * x2; }},
      {"constant that no mean is equal to", [](double, double) { return 0.1; }},
      {"zero", [](double, double) { return 0.0; }},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.label);
    Column extra = longley[0];
    extra.name = "extra";
    for (std::size_t i = 0; i < extra.values.size(); ++i)
      extra.values[i] = row.make(longley[0].values[i], longley[1].values[i]);
    std::vector<Column> columns = longley;
    columns.insert(columns.end() - 1, extra);
    const Regression fit = Fit(columns, true);
    ExpectLongley(fit, std::vector<int>(7));
    const Coefficient& c = fit.coefficients.at(7);
    EXPECT_TRUE(c.redundant && c.estimate == 0 && std::isnan(c.stdError) && std::isnan(c.t));
    std::ostringstream report;
    regression::PrintReport(report, fit);
    EXPECT_NE(report.str().find("left out of the fit: extra\n"), std::string::npos) << report.str();
  }
}

// A difference of near-equal inputs keeps the rounding of its terms, far more than 1e-12 of its own
// size; a difference with a part of its own is not redundant.
TEST(LinearRegression, TellsCancellationFromInformation) {
  for (const double own : {0.0, 1e-3}) {
    for (const double gap : {1e-1, 1e-2, 1e-3, 1e-4}) {
      Column open{"open", {}, {}}, close{"close", {}, {}}, change{"change", {}, {}}, y{"y", {}, {}};
      for (int i = 0; i < 40; ++i) {
        open.values.push_back(100 + 7 * (i % 11));
        close.values.push_back(open.values.back() + gap * (i * i % 17));
        change.values.push_back(close.values.back() - open.values.back() + own * (i % 3));
        y.values.push_back(i * i % 7);
      }
      const Regression fit = Fit({open, close, change, y}, true);
      EXPECT_FALSE(fit.coefficients.at(2).redundant) << own << ' ' << gap;
      EXPECT_EQ(fit.coefficients.at(3).redundant, own == 0) << own << ' ' << gap;
    }
  }
}

// The least-squares line of 0.6, 0.5, 0.7, 1 is 0.35 + 0.14 x, residual sum of squares 0.042; here
// x is far out and the points are repeated, with tenths whose plain sum drifts.
TEST(LinearRegression, CentresLongAndDistantColumns) {
  constexpr int kTimes = 25000;
  const double points[] = {0.6, 0.5, 0.7, 1};
  Column x{"x", {}, {}}, flat{"flat", {}, {}}, y{"y", {}, {}};
  for (int i = 0; i < 4 * kTimes; ++i) {
    x.values.push_back(0x1p40 + 1 + i % 4);
    flat.values.push_back(0.1);
    y.values.push_back(points[i % 4]);
  }
  const Regression fit = Fit({x, flat, y}, true);
  const auto dfResidual = static_cast<double>(fit.dfResidual);
  EXPECT_CLOSE(fit.coefficients.at(1).estimate, 0.14, 1e-14);
  EXPECT_CLOSE(fit.coefficients.at(1).stdError, std::sqrt(0.042 / 5 / dfResidual), 1e-14);
  EXPECT_TRUE(fit.coefficients.at(2).redundant);
}

// NIST Statistical Reference Datasets, NoInt1.
TEST(LinearRegression, FitsThroughZero) {
  Column x{"x", {}, {}}, y{"y", {}, {}};
  for (int i = 0; i <= 10; ++i) {
    x.values.push_back(60 + i);
    y.values.push_back(130 + i);
  }
  const Regression fit = Fit({x, y}, false);
  ASSERT_EQ(fit.coefficients.size(), 1u);
  EXPECT_CLOSE(fit.coefficients[0].estimate, 2.07438016528926, 1e-14);
  EXPECT_CLOSE(fit.coefficients[0].stdError, 0.165289256198347e-1, 1e-13);
  EXPECT_CLOSE(fit.residualStdDev, 3.56753034006338, 1e-13);
  EXPECT_CLOSE(fit.rSquared, 0.999365492298663, 1e-14);
  EXPECT_CLOSE(fit.fStatistic, 15750.25, 1e-12);
  EXPECT_EQ(fit.dfResidual, 10);
}

TEST(LinearRegression, JsonHasNullForUndefined) {
  const struct {
    const char* label;
    std::vector<Column> columns;
    const char* nulls;  // of F, R squared, then the standard error and t of each coefficient
  } rows[] = {
      {"perfect fit", Parse("x,y\n1,0.4\n2,0.7\n4,1.3\n7,2.2\n", {}, "y"), "F - -t -t"},
      {"constant target", Parse("x,y\n1,0.1\n2,0.1\n4,0.1\n", {}, "y"), "F R -t -t"},
      {"redundant input", Parse("x,y\n3,1\n3,2\n3,4\n", {}, "y"), "F - -- st"},
      {"no input", Parse("y\n1\n2\n4\n", {}, "y"), "F - --"},
  };
  for (const auto& row : rows) {
    const auto json = nlohmann::json::parse(regression::ToJson(Fit(row.columns, true)));
    std::string nulls = json["fStatistic"].is_null() ? "F" : "-";
    nulls += json["rSquared"].is_null() ? " R" : " -";
    for (const auto& c : json["coefficients"]) {
      nulls += c["stdError"].is_null() ? " s" : " -";
      nulls += c["t"].is_null() ? "t" : "-";
    }
    EXPECT_EQ(nulls, row.nulls) << row.label << '\n' << json;
  }
}

TEST(LinearRegression, ReadsPermittedForms) {
  const std::string text =
      "\xEF\xBB\xBF"
      "\"x, 1\",note, y \r\n+1.5,\"two\nlines\",-2e-3\r\n\r\n \" 7 \" ,,+.5";
  const std::vector<Column> columns = Parse(text, {"x, 1"}, "y");
  EXPECT_EQ(columns[0].name, "x, 1");
  EXPECT_EQ(columns[0].values, (std::vector<double>{1.5, 7}));
  EXPECT_EQ(columns[1].values, (std::vector<double>{-2e-3, 0.5}));
}

// ---- The program
// -----------------------------------------------------------------------------------

struct Outcome {
  int status;
  std::string text;  // both streams
};

static Outcome RunProgram(const std::string& arguments) {
  const std::string command = "'" NQ_REGRESSION_PROGRAM "' " + arguments + " 2>&1";
  std::FILE* pipe = popen(command.c_str(), "r");
  Outcome outcome{-1, {}};
  if (!pipe) return outcome;
  for (int c; (c = std::fgetc(pipe)) != EOF;) outcome.text += static_cast<char>(c);
  const int status = pclose(pipe);
  if (WIFEXITED(status)) outcome.status = WEXITSTATUS(status);
  return outcome;
}

TEST(LinearRegression, RefusesBadInputWithOneLine) {
  const std::string good = "a,b,y\n1,2,3\n2,1,5\n3,5,4\n4,4,9\n";
  const std::string file = ::testing::TempDir() + "linear_regression_test.csv";
  const struct {
    std::string content, arguments, message;
  } rows[] = {
      {good, "--target z", "no column 'z'"},
      {good, "--target y --inputs a,z", "no column 'z'"},
      {good, "--target y --inputs a,y", "target 'y' is among the inputs"},
      {good, "--target y --inputs a,b,a", "input 'a' is given twice"},
      {"a,b,a\n1,2,3\n", "--target b", "line 1: two columns are named 'a'"},
      {"a,,y\n1,2,3\n", "--target y", "line 1: column 2 has no name"},
      {"a,y\n1,2\n\n2,x7\n", "--target y", "line 4, column 'y': 'x7' is not a number"},
      {"a,y\n1,2\n2,3x\n", "--target y", "line 3, column 'y': '3x' is not a number"},
      {"a,y\nnan,2\n2,3\n", "--target y", "line 2, column 'a': 'nan' is not a number"},
      {"a,y\n1,-inf\n2,3\n", "--target y", "line 2, column 'y': '-inf' is not a number"},
      {"a,y\n1,2\n+-2,3\n", "--target y", "line 3, column 'a': '+-2' is not a number"},
      {"a,y\n1,2\n1e999,3\n", "--target y", "line 3, column 'a': '1e999' is not a number"},
      {"a,y\n1,2\n,3\n", "--target y", "line 3, column 'a': empty cell"},
      {"a,y\n1,2\n1,2,3\n", "--target y", "line 3: expected 2 cells, found 3"},
      {"a,y\n1,2\n1\n", "--target y", "line 3: expected 2 cells, found 1"},
      {"a,y\n1,2\n\"3,4\n", "--target y", "line 3: a quoted cell is not closed"},
      {"a,y\n1,2\n\"3\"4,4\n", "--target y", "line 3: a quote is out of place"},
      {"", "--target y", "no header row"},
      {"a,y\n", "--target y", "no rows below the header"},
      {"a,y\n1,2\n2,3\n", "--target y", "too few rows: 2 for 2 coefficients"},
      {"y\n1\n2\n", "--target y --no-intercept", "nothing to fit"},
      {good, "", "--target is required"},
      {good, "--target y --json /nowhere/fit.json", "cannot write /nowhere/fit.json"},
      {good, "--target y --what", "--what"},
  };
  for (const auto& row : rows) {
    std::ofstream(file, std::ios::binary) << row.content;
    const Outcome outcome = RunProgram("'" + file + "' " + row.arguments);
    EXPECT_EQ(outcome.status, 2) << row.message;
    EXPECT_NE(outcome.text.find(row.message), std::string::npos) << outcome.text;
    EXPECT_EQ(std::count(outcome.text.begin(), outcome.text.end(), '\n'), 1) << outcome.text;
  }
  std::remove(file.c_str());
  EXPECT_EQ(RunProgram("'" + file + "' --target y").status, 2) << "no file";
  EXPECT_EQ(RunProgram("'" + ::testing::TempDir() + "' --target y").status, 2) << "a directory";
  EXPECT_EQ(RunProgram("--help").status, 0);
}

TEST(LinearRegression, ProgramWritesJson) {
  const std::string file = ::testing::TempDir() + "linear_regression_test.json";
  const Outcome outcome =
      RunProgram("--target y --inputs x6,x1 '" NQ_LONGLEY_CSV "' --json '" + file + "'");
  EXPECT_EQ(outcome.status, 0) << outcome.text;
  std::ifstream in(file);
  const auto json = nlohmann::json::parse(in);
  EXPECT_EQ(json["n"], 16);
  EXPECT_EQ(json["dfModel"], 2);
  EXPECT_EQ(json["dfResidual"], 13);
  EXPECT_EQ(json["coefficients"].at(0)["name"], "(Intercept)");
  EXPECT_EQ(json["coefficients"].at(1)["name"], "x6");
  std::remove(file.c_str());
}
