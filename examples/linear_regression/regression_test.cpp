// The fit against certified figures, and what it says where there are none.
#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>
#include <sstream>

#include "json_document.h"
#include "report.h"
#include "support/compare.h"
#include "test_support.h"

using namespace regression;

namespace {

using Table = std::vector<std::pair<std::string, std::vector<double>>>;  // columns, y the last

std::string ToCsv(const Table& table) {
  std::ostringstream csv;
  csv.precision(17);
  for (const auto& column : table) csv << column.first << (column.first == "y" ? '\n' : ',');
  for (std::size_t i = 0; i < table[0].second.size(); ++i) {
    for (const auto& column : table) csv << column.second[i] << (column.first == "y" ? '\n' : ',');
  }
  return csv.str();
}

Regression FitTable(const Table& table, bool intercept = true) {
  return FitText(ToCsv(table), {}, {.intercept = intercept});
}

Table Longley() {
  std::ifstream file(NQ_EXAMPLE_DATA "/longley.csv");
  Table table = {{"y", {}}, {"x1", {}}, {"x2", {}}, {"x3", {}}, {"x4", {}}, {"x5", {}}, {"x6", {}}};
  std::string cell;
  std::getline(file, cell);
  for (std::size_t i = 0; std::getline(file, cell, i % 7 == 6 ? '\n' : ','); ++i)
    table[i % 7].second.push_back(std::stod(cell));
  std::rotate(table.begin(), table.begin() + 1, table.end());
  return table;
}

// ---- The fit ------------------------------------------------------------------------------------

struct Expected {
  std::string name;
  double estimate, stdError, sig, lower, upper;
};

// `units` gives the power of two that column j was multiplied by: the intercept first. Returns the
// largest relative error.
double ExpectCoefficients(const Regression& fit, const std::vector<Expected>& rows,
                          double tolerance, const std::vector<int>& units = {}) {
  double worst = 0;
  for (std::size_t j = 0; j < rows.size(); ++j) {
    const Coefficient& c = fit.coefficients.at(j);
    const Expected& want = rows[j];
    const auto check = [&](const char* figure, double got, double wanted) {
      EXPECT_CLOSE(got, wanted, tolerance) << want.name << ' ' << figure;
      worst = std::max(worst, nqtest::RelativeError(got, wanted));
    };
    const auto scaled = [&](double x) { return units.empty() ? x : std::ldexp(x, units[j]); };
    EXPECT_EQ(c.name, want.name);
    EXPECT_FALSE(c.redundant) << c.name;
    check("estimate", scaled(c.estimate), want.estimate);
    check("standard error", scaled(c.stdError), want.stdError);
    check("t", c.t, want.estimate / want.stdError);
    check("significance", c.sig, want.sig);
    check("lower bound", scaled(c.lower), want.lower);
    check("upper bound", scaled(c.upper), want.upper);
  }
  return worst;
}

// NIST Statistical Reference Datasets, Longley; significances and bounds from these by 50-digit
// arithmetic.
const std::vector<Expected> kLongley = {
    {"(Intercept)", -3482258.63459582, 890420.383607373, 0.003560403663726231, -5496529.483274765,
     -1467987.785916875},
    {"x1", 15.0618722713733, 84.9149257747669, 0.8631408328092144, -177.0290352984936,
     207.1527798412402},
    {"x2", -0.358191792925910e-1, 0.334910077722432e-1, 0.3126810610927115, -0.1115811024139013,
     0.03994274382871933},
    {"x3", -2.02022980381683, 0.488399681651699, 0.002535091734111226, -3.125066641973584,
     -0.9153929656600758},
    {"x4", -1.03322686717359, 0.214274163161675, 0.0009443667641617978, -1.517948700172364,
     -0.5485050341748155},
    {"x5", -0.511041056535807e-1, 0.226073200069370, 0.8262117957636468, -0.5625172145072178,
     0.4603090032000564},
    {"x6", 1829.15146461355, 455.478499142212, 0.003036803341630308, 798.7875152784188,
     2859.515413948681},
};

double ExpectLongley(const Regression& fit, const std::vector<int>& units = {}) {
  EXPECT_CLOSE(fit.residualStdDev, 304.854073561965, 1e-14);
  EXPECT_CLOSE(fit.rSquared, 0.995479004577296, 1e-15);
  EXPECT_CLOSE(fit.adjustedRSquared, 1 - (1 - 0.995479004577296) * 15 / 9, 1e-15);
  EXPECT_CLOSE(fit.fStatistic, 330.285339234588, 1e-14);
  EXPECT_CLOSE(fit.fSig, 4.984030528724809e-10, 1e-13);
  EXPECT_EQ(fit.dfModel, 6);
  EXPECT_EQ(fit.dfResidual, 9);
  return ExpectCoefficients(fit, kLongley, 2e-13, units);
}

TEST(LinearRegression, AgreesWithCertifiedLongleyInChunksOfAnySize) {
  for (const std::uint64_t bytes :
       std::initializer_list<std::uint64_t>{1, 2, 7, 40, 41, 100, 500, 100000}) {
    SCOPED_TRACE(bytes);
    ExpectLongley(FitText(ToCsv(Longley()), {}, {}, {bytes, 2}));
  }
}

// Squares of 2^-700 underflow, those of 2^700 overflow.
TEST(LinearRegression, UnitsDoNotMatter) {
  const std::vector<int> units = {0, -30, -700, 700, 0, 40, -900};
  Table table = Longley();
  for (std::size_t j = 1; j < units.size(); ++j) {
    for (double& x : table[j - 1].second) x = std::ldexp(x, units[j]);
  }
  ExpectLongley(FitTable(table), units);
}

// R 4.2.2, lm(admitted ~ Dept + Gender, weights = Freq), 17 digits.
const std::vector<Expected> kBerkeley = {
    {"(Intercept)", 0.64202580794360953, 0.23855471951538451, 0.015452574303075619,
     0.13871934454439372, 1.1453322713428253},
    {"Dept=B", -0.010334577011594882, 0.38186690710294657, 0.97872441066681248,
     -0.81600332627641969, 0.79533417225322989},
    {"Dept=C", -0.30316539546123022, 0.36151741197369075, 0.41333517281150434, -1.0659004629013076,
     0.45956967197884724},
    {"Dept=D", -0.31110339452387442, 0.36076040727668424, 0.40049420234045008, -1.0722413216617146,
     0.45003453261396581},
    {"Dept=E", -0.40271262661313878, 0.40635666995684028, 0.33556689496884995, -1.2600502590445521,
     0.45462500581827459},
    {"Dept=F", -0.58639974618041735, 0.37087593204049574, 0.13227576265470331, -1.3688795650429055,
     0.19608007268207095},
    {"Gender=Female", 0.018425196190852543, 0.25052236713764986, 0.94222921117321268,
     -0.51013079659183846, 0.54698118897354364},
};

Regression Berkeley(const std::string& weight) {
  const Arguments arguments = {{"target", "admitted"}, {weight, "Freq"}};
  return Fitted(NQ_EXAMPLE_DATA "/berkeley.csv", arguments).fit;
}

TEST(LinearRegression, RegressionWeightScalesTheVariance) {
  const Regression fit = Berkeley("reg-weight");
  ExpectCoefficients(fit, kBerkeley, 1e-13);
  EXPECT_CLOSE(fit.residualStdDev, 7.2326257585570062, 1e-13);
  EXPECT_CLOSE(fit.rSquared, 0.17235935226439011, 1e-12);
  EXPECT_CLOSE(fit.adjustedRSquared, -0.11974911164229574, 1e-12);
  EXPECT_CLOSE(fit.fStatistic, 0.59005257827602831, 1e-12);
  EXPECT_CLOSE(fit.fSig, 0.73395712455690276, 1e-12);
  EXPECT_EQ(fit.dfResidual, 17);
}

TEST(LinearRegression, FrequencyWeightCountsCases) {
  const Regression fit = Berkeley("freq-weight");
  EXPECT_EQ(fit.n, 4526);
  EXPECT_EQ(fit.dfResidual, 4519);
  for (std::size_t j = 0; j < kBerkeley.size(); ++j)
    EXPECT_CLOSE(fit.coefficients.at(j).estimate, kBerkeley[j].estimate, 1e-13);
}

// A row of frequency f is f rows; a regression weight stays with each of them.
TEST(LinearRegression, RepeatedRowsAreAFrequency) {
  std::string weighted = "a,g,f,r,y\n", repeated = "a,g,r,y\n";
  for (int i = 0; i < 30; ++i) {
    const int frequency = i * i % 4;  // 0: the row is dropped
    const std::string ag = std::to_string(i * 7 % 11) + ",g" + std::to_string(i % 3) + ',';
    const std::string ry = std::to_string(0.5 + i % 5) + ',' + std::to_string(i * i % 13) + '\n';
    weighted.append(ag).append(std::to_string(frequency)).append(",").append(ry);
    for (int k = 0; k < frequency; ++k) repeated += ag + ry;
  }
  const Regression one = FitText(weighted, {{"freq-weight", "f"}, {"reg-weight", "r"}});
  const Regression many = FitText(repeated, {{"reg-weight", "r"}});
  EXPECT_EQ(one.rows.badWeight, 15);
  EXPECT_EQ(one.n, many.n);
  EXPECT_CLOSE(one.residualStdDev, many.residualStdDev, 1e-13);
  ASSERT_EQ(one.coefficients.size(), 4u);
  for (std::size_t j = 0; j < 4; ++j) {
    EXPECT_CLOSE(one.coefficients[j].estimate, many.coefficients[j].estimate, 1e-12);
    EXPECT_CLOSE(one.coefficients[j].stdError, many.coefficients[j].stdError, 1e-12);
    const int row = static_cast<int>(j);
    EXPECT_CLOSE(std::sqrt(one.covariance.GetElem(row, row)), one.coefficients[j].stdError, 1e-14);
  }
}

TEST(LinearRegression, FractionalFrequenciesCountAsTheyAre) {
  const Regression fit = FitText("f,x,y\n.5,1,1\n1.75,2,3\n2.5,4,4\n", {{"freq-weight", "f"}});
  EXPECT_EQ(fit.n, 4.75);
  EXPECT_EQ(fit.dfResidual, 2.75);
}

// ---- Redundant columns --------------------------------------------------------------------------

TEST(LinearRegression, NamesRedundantInputs) {
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
    Table table = Longley();
    std::vector<double> extra;
    for (std::size_t i = 0; i < 16; ++i)
      extra.push_back(row.make(table[0].second[i], table[1].second[i]));
    table.insert(table.end() - 1, {"extra", extra});
    const Fitted fitted(FileOf(ToCsv(table)), {});
    const Regression& fit = fitted.fit;
    ExpectLongley(fit);
    const Coefficient& c = fit.coefficients.at(7);
    EXPECT_TRUE(c.redundant && c.estimate == 0 && std::isnan(c.stdError) && std::isnan(c.t));
    EXPECT_EQ(fit.covariance.GetNRows(), 7);
    std::ostringstream report;
    PrintReport(report, fitted.data, fit);
    EXPECT_NE(report.str().find("left out of the fit: extra\n"), std::string::npos) << report.str();
  }
}

// A difference of near-equal inputs keeps the rounding of its terms, far more than 1e-12 of its own
// size; a difference with a part of its own is not redundant.
TEST(LinearRegression, TellsCancellationFromInformation) {
  for (const double own : {0.0, 1e-3}) {
    for (const double gap : {1e-1, 1e-2, 1e-3, 1e-4}) {
      Table table = {{"open", {}}, {"close", {}}, {"change", {}}, {"y", {}}};
      for (int i = 0; i < 40; ++i) {
        const double open = 100 + 7 * (i % 11), close = open + gap * (i * i % 17);
        const double row[] = {open, close, close - open + own * (i % 3), double(i * i % 7)};
        for (std::size_t j = 0; j < 4; ++j) table[j].second.push_back(row[j]);
      }
      const Regression fit = FitTable(table);
      EXPECT_FALSE(fit.coefficients.at(2).redundant) << own << ' ' << gap;
      EXPECT_EQ(fit.coefficients.at(3).redundant, own == 0) << own << ' ' << gap;
    }
  }
}

// The least-squares line of 0.6, 0.5, 0.7, 1 is 0.35 + 0.14 x, residual sum of squares 0.042; here
// x is far out and the points are repeated, over many blocks.
TEST(LinearRegression, DistanceDoesNotMatter) {
  const double points[] = {0.6, 0.5, 0.7, 1};
  Table table = {{"x", {}}, {"flat", {}}, {"y", {}}};
  for (int i = 0; i < 20000; ++i) {
    table[0].second.push_back(0x1p40 + 1 + i % 4);
    table[1].second.push_back(0.1);
    table[2].second.push_back(points[i % 4]);
  }
  const Regression fit = FitTable(table);
  EXPECT_CLOSE(fit.coefficients.at(1).estimate, 0.14, 1e-14);
  EXPECT_CLOSE(fit.coefficients.at(1).stdError, std::sqrt(0.042 / 5 / fit.dfResidual), 1e-13);
  EXPECT_TRUE(fit.coefficients.at(2).redundant);
}

// ---- No intercept, undefined figures ------------------------------------------------------------

TEST(LinearRegression, CategoriesByIntercept) {
  const struct {
    const char* label;
    bool intercept;
    const char* text;
    std::vector<std::pair<const char*, double>> coefficients;  // redundant: 0
  } rows[] = {
      {"first seen is the reference",
       true,
       "g,y\nb,1\nb,3\na,7\nb,2\na,9\n",
       {{"(Intercept)", 2}, {"g=a", 6}}},
      {"group means", false, "g,y\nb,1\nb,3\na,7\nb,2\na,9\n", {{"g=b", 2}, {"g=a", 8}}},
      {"only the first factor whole",
       false,
       "g,h,y\nb,u,1\nb,v,3\na,u,6\na,v,8\nb,u,1\n",
       {{"g=b", 1}, {"g=a", 6}, {"h=v", 2}}},
      {"a single category is a constant",
       true,
       "g,y\nb,1\nb,3\n",
       {{"(Intercept)", 2}, {"g=b", 0}}},
      {"a category of dropped cases is none",
       true,
       "g,x,y\nz,,5\nb,1,1\na,2,9\nb,4,4\na,4,11\n",
       {{"(Intercept)", 0}, {"g=a", 7}, {"x", 1}}},
  };
  for (const auto& row : rows) {
    const Regression fit = FitText(row.text, {}, {.intercept = row.intercept});
    ASSERT_EQ(fit.coefficients.size(), row.coefficients.size()) << row.label;
    for (std::size_t j = 0; j < row.coefficients.size(); ++j) {
      EXPECT_EQ(fit.coefficients[j].name, row.coefficients[j].first) << row.label;
      EXPECT_NEAR(fit.coefficients[j].estimate, row.coefficients[j].second, 1e-14) << row.label;
    }
  }
}

TEST(LinearRegression, JsonHasNullForUndefined) {
  const struct {
    const char* label;
    const char* text;
    const char* nulls;  // of F, R squared, then the standard error, t, significance, bounds of each
  } rows[] = {
      {"perfect fit", "x,y\n1,0.4\n2,0.7\n4,1.3\n7,2.2\n", "F - -t-- -t--"},
      {"as many cases as coefficients", "x,y\n1,4\n2,7\n", "F - stpb stpb"},
      {"constant target", "x,y\n1,0.1\n2,0.1\n4,0.1\n", "F R -t-- -tp-"},
      {"redundant input", "x,y\n3,1\n3,2\n3,4\n", "F - ---- stpb"},
      {"no input", "y\n1\n2\n4\n", "F - ----"},
  };
  for (const auto& row : rows) {
    const Fitted fitted(FileOf(row.text), {});
    const auto json = nlohmann::json::parse(JsonDocument(fitted.data, fitted.fit));
    std::string nulls = json["fStatistic"].is_null() ? "F" : "-";
    nulls += json["rSquared"].is_null() ? " R" : " -";
    for (const auto& c : json["coefficients"]) {
      nulls += c["stdError"].is_null() ? " s" : " -";
      nulls += c["t"].is_null() ? "t" : "-";
      nulls += c["sig"].is_null() ? "p" : "-";
      nulls += c["lower"].is_null() && c["upper"].is_null() ? "b" : "-";
    }
    EXPECT_EQ(nulls, row.nulls) << row.label << '\n' << json;
  }
}

}  // namespace
