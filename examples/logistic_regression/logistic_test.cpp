#include "logistic.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

#include "json_document.h"
#include "pmml_document.h"
#include "report_xsl.h"
#include "statxml_document.h"
#include "support/page.h"
#include "support/xmllint.h"

namespace logistic {
namespace {

using Names = std::vector<std::string>;

struct Fitted {
  support::Team team;
  support::ModelData data;
  LogisticFit fit;

  Fitted(const std::string& path, const std::vector<std::pair<std::string, std::string>>& settings,
         int threads = 1, std::uint64_t chunkBytes = support::kChunkBytes)
      : team(threads, nullptr),
        data(Settings(path, settings), team, chunkBytes),
        fit(Fit(data, EventCode(data, ""), WithSummaries(), team)) {}

  static FitOptions WithSummaries() {
    FitOptions options;
    options.summaries = true;
    return options;
  }

  static NQXML_940::NQSettings Settings(
      const std::string& path, const std::vector<std::pair<std::string, std::string>>& given) {
    NQXML_940::NQSettings settings;
    settings.AddSetting("data", path, true);
    settings.AddSetting("event", std::string(), true);
    for (const auto& [name, value] : given) settings.AddSetting(name, value, true);
    return settings;
  }

  const Coefficient& At(const std::string& name) const {
    for (const Coefficient& c : fit.coefficients) {
      if (c.name == name) return c;
    }
    throw std::out_of_range(name);
  }
};

Fitted FitText(const std::string& text, const std::string& weight = "") {
  const std::string path =
      std::filesystem::path(::testing::TempDir()) / ("logistic_" + std::to_string(getpid()));
  std::ofstream(path) << text;
  const struct Remover {
    const std::string& path;
    ~Remover() { std::filesystem::remove(path); }
  } remover{path};
  return Fitted(path, {{"target", "y"}, {"freq-weight", weight}});
}

void ExpectDigits(double got, double wanted, double digits, const std::string& what) {
  EXPECT_NEAR(got, wanted, std::fabs(wanted) * std::pow(10, -digits)) << what;
}

const std::string kBerkeley = NQ_EXAMPLE_DATA "/berkeley.csv";

// Wanted from R 4.2: glm(admitted ~ Dept + Gender, binomial, weights = Freq, epsilon = 1e-15),
// drop1(test = "LRT"), and the count of all pairs for the area.
TEST(Logistic, BerkeleyAsGlm) {
  const Fitted fitted(kBerkeley, {{"target", "admitted"}, {"freq-weight", "Freq"}});
  const LogisticFit& fit = fitted.fit;
  const struct {
    const char* name;
    double estimate, stdError, z, sig;
  } rows[] = {
      {"(Intercept)", 0.582051395276028, 0.0689925968758311, 8.43643262658414,
       3.27170129161551e-17},
      {"Dept=B", -0.0433979312092458, 0.10983889832203, -0.395105303059488, 0.692765175340292},
      {"Dept=F", -3.30648005588716, 0.169981808613564, -19.4519642004993, 2.80478577291415e-84},
      {"Gender=Female", 0.0998700881593496, 0.0808464665323692, 1.23530554200985,
       0.216716811945331}};
  for (const auto& row : rows) {
    const Coefficient& c = fitted.At(row.name);
    ExpectDigits(c.estimate, row.estimate, 11, row.name);
    ExpectDigits(c.stdError, row.stdError, 11, row.name);
    ExpectDigits(c.z, row.z, 11, row.name);
    ExpectDigits(c.sig, row.sig, 10, row.name);
    ExpectDigits(c.oddsRatio, std::exp(row.estimate), 11, row.name);
    ExpectDigits(std::sqrt(c.upper / c.lower), std::exp(1.959963984540054 * row.stdError), 11,
                 row.name);
  }
  ExpectDigits(fit.deviance, 5187.48849417136, 13, "deviance");
  ExpectDigits(fit.nullDeviance, 6044.3406320639, 13, "null deviance");
  ExpectDigits(fit.terms[0].chiSquare, 763.40273069680279, 11, "Dept");
  ExpectDigits(fit.terms[1].chiSquare, 1.53123145089194, 9, "Gender");
  ExpectDigits(fit.auc, 0.733663575020486, 13, "area");
  EXPECT_EQ(fit.aucBinning, 0);
  EXPECT_EQ(fit.dfResidual, 4519);
  EXPECT_TRUE(fit.converged);
  EXPECT_EQ(fit.separated, Names());
}

// The odds ratio of a table of two by two is a d / (b c), its log's variance 1/a + 1/b + 1/c + 1/d;
// an input far from zero in small units has the same.
TEST(Logistic, TableOfTwoByTwo) {
  for (const auto& [zero, one] : {std::pair{"0", "1"}, std::pair{"1e9", "1.000000001e9"}}) {
    const std::string a = zero, b = one;
    const Fitted fitted =
        FitText("x,y,f\n" + a + ",0,40\n" + a + ",1,10\n" + b + ",0,15\n" + b + ",1,35\n", "f");
    ExpectDigits(fitted.At("x").estimate, std::log(40 * 35 / (10 * 15.0)), 12, a);
    ExpectDigits(fitted.At("x").stdError, std::sqrt(1 / 40. + 1 / 10. + 1 / 15. + 1 / 35.), 12, a);
  }
}

TEST(Logistic, Separation) {
  const struct {
    const char* what;
    const char* text;
    Names separated;
  } rows[] = {{"complete", "x,u,y\n1,2,0\n2,1,0\n3,3,0\n4,2,1\n5,1,1\n6,3,1\n", {"x"}},
              {"a category without events",
               "g,u,y\na,1,0\na,2,1\na,3,0\nb,1,1\nb,3,0\nb,2,1\nc,1,0\nc,2,0\n",
               {"g"}},
              {"none", "x,y\n1,0\n2,1\n3,0\n4,1\n5,0\n6,1\n", {}}};
  for (const auto& row : rows) {
    const LogisticFit fit = FitText(row.text).fit;
    EXPECT_EQ(fit.separated, row.separated) << row.what;
    EXPECT_EQ(fit.converged, row.separated.empty()) << row.what;
    for (const Coefficient& c : fit.coefficients)
      EXPECT_TRUE(std::isfinite(c.estimate)) << row.what << ' ' << c.name;
  }
}

TEST(Logistic, OddInputs) {
  const Fitted redundant = FitText("x,z,y\n1,2,0\n2,4,1\n3,6,0\n4,8,1\n5,10,0\n6,12,1\n");
  EXPECT_TRUE(redundant.At("z").redundant);
  EXPECT_EQ(redundant.fit.terms[0].df, 0);  // z stands in for x
  EXPECT_EQ(redundant.fit.dfModel, 1);
  for (const char* text : {"x,y\n1,0\n2,0\n3,0\n", "x,y\n1,a\n2,b\n3,c\n", "x,z,y\n1,1,0\n2,4,1\n"})
    EXPECT_THROW(FitText(text), std::runtime_error) << text;
  EXPECT_EQ(FitText("x,y\n1,no\n2,yes\n3,no\n4,yes\n5,no\n").fit.event, "yes");
  EXPECT_EQ(FitText("x,y\n1,1\n2,0\n3,1\n4,0\n5,1\n").fit.event, "1");
}

// The logit of each table is the probability of its category.
TEST(Logistic, PmmlHasATableOfEachCategory) {
  const Fitted fitted = FitText("x,y,f\n0,0,40\n0,1,10\n1,0,15\n1,1,35\n", "f");
  const std::string pmml = PmmlDocument(fitted.data, fitted.fit, {"p", "1", "", false});
  const double b0 = fitted.At("(Intercept)").estimate, b1 = fitted.At("x").estimate;
  for (const double sign : {1, -1}) {
    const std::string table = "<RegressionTable intercept=\"" + support::Shortest(sign * b0) +
                              "\" targetCategory=\"" + (sign > 0 ? "1" : "0") +
                              "\">\n<NumericPredictor name=\"x\" coefficient=\"" +
                              support::Shortest(sign * b1) + "\"/>\n</RegressionTable>";
    EXPECT_NE(pmml.find(table), pmml.npos) << table << pmml;
  }
}

// More probabilities than are kept one by one: x itself has the same area, counted pair by pair.
TEST(Logistic, BinsCostWhatTheySay) {
  std::string text = "x,y\n";
  double others = 0, events = 0, larger = 0;
  for (int i = 0; i < 6000; ++i) {
    const bool isEvent = i * 7919 % 6000 < i / 2;
    text += std::to_string(i) + (isEvent ? ",1\n" : ",0\n");
    (isEvent ? events : others) += 1;
    if (isEvent) larger += others;
  }
  const LogisticFit fit = FitText(text).fit;
  EXPECT_NEAR(fit.auc, larger / (events * others), fit.aucBinning);
  EXPECT_GT(fit.aucBinning, 0);
  EXPECT_LT(fit.aucBinning, 1e-3);
  const std::vector<RocPoint> curve = fit.ranking.Curve();
  double area = 0;
  for (std::size_t i = 1; i < curve.size(); ++i) {
    area += (curve[i].falsePositives - curve[i - 1].falsePositives) *
            (curve[i].truePositives + curve[i - 1].truePositives) / 2;
    EXPECT_LT(curve[i].probability, curve[i - 1].probability) << i;
  }
  EXPECT_NEAR(area, fit.auc, 1.0 / 128);
  EXPECT_LE(curve.size(), 258u);
  // The probabilities of a fit with an intercept add up to the events.
  double cases = 0, sum = 0;
  const std::vector<support::Point> groups = fit.ranking.Calibration();
  for (const support::Point& group : groups) {
    cases += group.frequency;
    sum += group.frequency * group.x;
    EXPECT_NEAR(group.x, group.y, 0.1) << group.x;
  }
  EXPECT_NEAR(static_cast<double>(groups.size()), 19, 1);
  EXPECT_EQ(cases, 6000);
  ExpectDigits(sum, events, 9, "events");
}

// Valid, without NaN and -0, and with names as they are.
TEST(Logistic, DocumentsOfOddFits) {
  const struct {
    const char* what;
    const char* text;
    const char* page;
  } rows[] = {
      {"no inputs", "y\n1\n0\n1\n0\n", "area 0.500000"},
      {"names", "g,\"x<&]]\",y\nk,1,<b>\nk,2,\"c \"\"\"\nk,2,<b>\nk,4,\"c \"\"\"\nk,1,<b>\n",
       "redundant, left out of the fit: g=k"},
      {"separated", "x,y\n1,0\n2,0\n3,1\n4,1\n", "no finite estimates: x"}};
  for (const auto& row : rows) {
    const Fitted fitted = FitText(row.text);
    const std::string document = StatXmlDocument(fitted.data, fitted.fit);
    const std::string page = support::HtmlPage(kReportStylesheet, document, {});
    EXPECT_EQ(nqtest::Complaints(document, "--schema", "statxml-7-0.xsd"), "") << row.what;
    EXPECT_NE(page.find(row.page), page.npos) << row.what << page;
    for (const std::string& text : {document, page, JsonDocument(fitted.data, fitted.fit)}) {
      for (const char* odd : {"NaN", "nan", "\"-0\"", ">-0<", " -0 ", " -0,", "−0<"})
        EXPECT_EQ(text.find(odd), text.npos) << row.what << ' ' << odd << text;
    }
  }
}

TEST(Logistic, ThreadsChangeNothing) {
  const std::vector<std::pair<std::string, std::string>> settings = {{"target", "admitted"},
                                                                     {"freq-weight", "Freq"}};
  const Fitted one(kBerkeley, settings, 1, 64);
  const std::string wanted = JsonDocument(one.data, one.fit);
  for (const int threads : {2, 5}) {
    const Fitted several(kBerkeley, settings, threads, 64);
    EXPECT_EQ(JsonDocument(several.data, several.fit), wanted) << threads;
  }
}

}  // namespace
}  // namespace logistic
