// Certified figures and those of R: correct digits of every one.
#include <cmath>
#include <sstream>

#include "json_document.h"
#include "prediction.h"
#include "statxml_document.h"
#include "support/compare.h"
#include "test_support.h"

using namespace regression;

namespace {

std::string Wampler(double delta, bool second) {
  constexpr int kDeltas[] = {759,   -2048, 2048,  -2048, 2523,  -2048, 2048,
                             -2048, 1838,  -2048, 2048,  -2048, 1838,  -2048,
                             2048,  -2048, 2523,  -2048, 2048,  -2048, 759};
  std::ostringstream csv;
  csv << "x,x2,x3,x4,x5,y\n";
  csv.precision(17);
  for (int x = 0; x <= 20; ++x) {
    double y = 0, decimal = 0;
    for (int k = 0, power = 1; k <= 5; ++k, power *= x) {
      if (k > 0) csv << power << ',';
      y += power;
      decimal += power * std::pow(10, 5 - k);  // whole, of 10^-5
    }
    csv << (second ? decimal : y + delta * kDeltas[x]) << (second ? "e-5\n" : "\n");
  }
  return csv.str();
}

constexpr const char* kNorris =
    "x,y\n.2,.1\n337.4,338.8\n118.2,118.1\n884.6,888\n10.1,9.2\n226.5,228.1\n666.3,668.5\n"
    "996.3,998.5\n448.6,449.1\n777,778.9\n558.2,559.2\n.4,.3\n.6,.1\n775.5,778.1\n666.9,668.8\n"
    "338,339.3\n447.5,448.9\n11.6,10.8\n556,557.7\n228.1,228.3\n995.8,998\n887.6,888.8\n"
    "120.2,119.6\n.3,.3\n.3,.6\n556.8,557.6\n339.1,339.3\n887.2,888\n999,998.5\n779,778.9\n"
    "11.1,10.2\n118.3,117.6\n229.2,228.9\n669.1,668.4\n448.9,449.2\n.5,.2\n";

std::string Pontius() {
  constexpr double kDeflections[] = {
      .11019,  .21956,  .32949,  .43899,  .54803,  .65694,  .76562,  .87487,  .98292,  1.09146,
      1.20001, 1.30822, 1.41599, 1.52399, 1.63194, 1.73947, 1.84646, 1.95392, 2.06128, 2.16844,
      .11052,  .22018,  .32939,  .43886,  .54798,  .65739,  .76596,  .87474,  .98300,  1.09150,
      1.20004, 1.30818, 1.41613, 1.52408, 1.63159, 1.73965, 1.84696, 1.95445, 2.06177, 2.16829};
  std::ostringstream csv;
  csv << "x,x2,y\n";
  csv.precision(17);
  for (int i = 0; i < 40; ++i) {
    const double x = 150000 * (i % 20 + 1);
    csv << x << ',' << x * x << ',' << kDeflections[i] << '\n';
  }
  return csv.str();
}

// NIST Statistical Reference Datasets; R 4.2.2's lm has the digits given, or half of one more.
TEST(Certified, EveryFigureHasTheDigitsOfAnOrthogonalFactorisation) {
  const std::vector<double> wampler = {2152.32624678170, 2363.55173469681, 779.343524331583,
                                       101.475507550350, 5.64566512170752, .112324854679312};
  const auto times = [&](double factor) {
    std::vector<double> errors = wampler;
    for (double& x : errors) x *= factor;
    return errors;
  };
  const std::vector<double> ones(6, 1), none(6, 0);
  const struct {
    const char* label;
    std::string text;
    bool intercept;
    double digits, errorDigits;
    std::vector<double> estimates, errors;
    double deviation;
  } rows[] = {
      {"Norris",
       kNorris,
       true,
       12.6,
       13.5,
       {-.262323073774029, 1.00211681802045},
       {.232818234301152, .429796848199937e-3},
       .884796396144373},
      {"Pontius",
       Pontius(),
       true,
       12,
       12.3,
       {.673565789473684e-3, .732059160401003e-6, -.316081871345029e-14},
       {.107938612033077e-3, .157817399981659e-9, .486652849992036e-16},
       .205177424076185e-3},
      {"NoInt1",
       "x,y\n60,130\n61,131\n62,132\n63,133\n64,134\n65,135\n66,136\n67,137\n68,138\n69,139\n"
       "70,140\n",
       false,
       14.5,
       14.4,
       {2.07438016528926},
       {.165289256198347e-1},
       3.56753034006338},
      {"NoInt2",
       "x,y\n4,3\n5,4\n6,4\n",
       false,
       15,
       15,
       {.727272727272727},
       {.420827318078432e-1},
       .369274472937998},
      {"Wampler1", Wampler(0, false), true, 9.3, 15, ones, none, 0},
      {"Wampler2", Wampler(0, true), true, 13, 15, {1, .1, .01, .001, 1e-4, 1e-5}, none, 0},
      {"Wampler3", Wampler(1, false), true, 9.3, 13.4, ones, wampler, 2360.14502379268},
      {"Wampler4", Wampler(100, false), true, 7.9, 13.4, ones, times(100), 236014.502379268},
      {"Wampler5", Wampler(1e4, false), true, 5.9, 13.4, ones, times(1e4), 23601450.2379268},
  };
  for (const auto& row : rows) {
    const Regression fit = FitText(row.text, {}, {.intercept = row.intercept});
    const double tolerance = std::pow(10, -row.digits), errors = std::pow(10, -row.errorDigits);
    ASSERT_EQ(fit.coefficients.size(), row.estimates.size());
    for (std::size_t j = 0; j < row.estimates.size(); ++j) {
      EXPECT_CLOSE(fit.coefficients[j].estimate, row.estimates[j], tolerance) << row.label << j;
      EXPECT_CLOSE(fit.coefficients[j].stdError, row.errors[j], errors) << row.label << j;
    }
    EXPECT_CLOSE(fit.residualStdDev, row.deviation, errors) << row.label;
  }
}

// R 4.2.2: logLik, AIC, BIC, drop1(test = "F"), hatvalues, cooks.distance, quantile of lm; vif by
// its formula from vcov.
TEST(AgainstR, FiguresOfTheResiduals) {
  const struct {
    const char* label;
    Fitted fitted;
    std::vector<double> whole;      // log-likelihood, AIC, BIC, Durbin-Watson
    std::vector<double> quartiles;  // with the extremes
    std::vector<std::vector<double>> terms, influence;
  } rows[] = {
      {"longley",
       {NQ_EXAMPLE_DATA "/longley.csv", {}},
       {-109.61743480848, 235.234869616961, 241.415579394879, 2.55948768928154},
       {-410.1146219309034, -157.6747192953902, -28.1619848187658, 101.5503832580747,
        455.3940945518580},
       {{1, .0314623, .86314083, 135.53243828001814}, {1, 1.14387, .31268106, 1788.51348271866686}},
       {{5, .615511094174134, .613916838192184, 309.714590760232},
        {16, .688614601693894, .466682597016330, -206.757825193736}}},
      {"berkeley",
       {NQ_EXAMPLE_DATA "/berkeley.csv", {{"target", "admitted"}, {"reg-weight", "Freq"}}},
       {-19.9639798928, 55.9279597856, 65.3523904284, 3.29216802754},
       {-.660451004134, -.341482211764, .141961467051, .653274189671, .944373938237},
       {{5, .624372, .68343, 1.30898973978}, {1, .00540918, .94223, 1.30898973978}},
       {{1, .556998466372, .508542095829, .357974192056},
        {5, .604192274385, .504330728601, .368308769068}}},
  };
  for (const auto& row : rows) {
    const Regression& fit = row.fitted.fit;
    const auto check = [&](const std::vector<double>& got, const std::vector<double>& wanted,
                           double tolerance) {
      for (std::size_t i = 0; i < got.size(); ++i)
        EXPECT_CLOSE(got[i], wanted[i], tolerance) << row.label << ' ' << i;
    };
    const ResidualFigures& r = fit.residuals;
    check({fit.logLik, fit.aic, fit.bic, fit.durbinWatson}, row.whole, 2e-12);
    check({r.min, r.q1, r.median, r.q3, r.max}, row.quartiles, 1e-11);
    for (std::size_t i = 0; i < row.terms.size(); ++i) {
      const Term& term = fit.terms[i];
      check({term.df, term.f, term.sig, term.vif}, row.terms[i], 1e-5);
      const InfluentialCase& c = fit.influence[i];
      check({static_cast<double>(c.row), c.leverage, c.cooksDistance, c.residual}, row.influence[i],
            1e-11);
    }
  }
}

// Without x2 its double takes its place, and the fit loses nothing; x1 is missed as in R's drop1.
TEST(AgainstR, TermsBesideRedundantColumns) {
  const Regression fit = FitText("x1,x2,x3,y\n1,2,2,3\n2,1,1,5\n3,5,5,4\n4,4,4,9\n5,7,7,7\n");
  EXPECT_TRUE(fit.coefficients[3].redundant);
  EXPECT_EQ(fit.terms[1].df, 0);
  EXPECT_TRUE(std::isnan(fit.terms[1].f));
  const Regression without = FitText("x1,x2,y\n1,2,3\n2,1,5\n3,5,4\n4,4,9\n5,7,7\n");
  EXPECT_CLOSE(fit.terms[0].f, without.terms[0].f, 1e-12);
}

// R 4.2.2's predict with interval = "confidence" and "prediction".
TEST(AgainstR, Predictions) {
  Fitted fitted(NQ_EXAMPLE_DATA "/longley.csv", {{"inputs", "x6,x1"}});
  const std::string table = FileOf("note,x1,x6\n\"a\n\"\"b\",83,1947\nc,,1948\nd,100.5,1950\n");
  std::ostringstream out;
  const support::PredictionCounts counts = support::WritePredictions(
      fitted.data, kPredictionTitles, PredictionOf(fitted.fit), {table}, fitted.team, out);
  EXPECT_EQ(counts.rows, 3);
  EXPECT_EQ(counts.missing, 1);
  EXPECT_EQ(out.str().substr(0, out.str().find('\n')),
            "note,x1,x6,fit,se,lower,upper,predLower,predUpper");
  EXPECT_NE(out.str().find("\n\"a\n\"\"b\",83,1947,"), std::string::npos) << out.str();
  EXPECT_NE(out.str().find("\nc,,1948,,,,,,\n"), std::string::npos) << out.str();
  const std::size_t at = out.str().find("\nd,100.5,1950,");
  ASSERT_NE(at, std::string::npos) << out.str();
  std::istringstream line(out.str().substr(at + 14));
  for (const double wanted : {63439.1011232613, 1426.53729906491, 60357.2546550864,
                              66520.9475914362, 59833.4813890467, 67044.7208574759}) {
    std::string cell;
    std::getline(line, cell, ',');
    EXPECT_CLOSE(std::stod(cell), wanted, 1e-11);
  }
}

// ---- Threads and chunks -------------------------------------------------------------------------

// Factors, missing cells, both weights, quoted line ends and doubled quotes, over many chunks.
TEST(Threads, GiveTheSameBytes) {
  std::ostringstream csv;
  csv << "note,a,g,f,r,y\n";
  for (int i = 0; i < 500; ++i) {
    csv << "\"n" << (i % 3 == 0 ? "\n" : "") << (i % 5 == 0 ? "\"\"" : ",") << "\","
        << (i % 17 == 0 ? "NA" : std::to_string(i * 7 % 11)) << ",g" << i * i % 5 << ',' << i % 4
        << ',' << 0.5 + i % 3 << ',' << i * i % 13 << '\n';
  }
  const std::string file = FileOf(csv.str());
  const auto documents = [&](const Reading& reading) {
    const Fitted fitted(file, {{"inputs", "a,g"}, {"freq-weight", "f"}, {"reg-weight", "r"}},
                        {.charts = true}, reading);
    EXPECT_EQ(fitted.fit.rows.used, 353);
    return JsonDocument(fitted.data, fitted.fit) + StatXmlDocument(fitted.data, fitted.fit);
  };
  for (const std::uint64_t bytes : std::initializer_list<std::uint64_t>{5, 64, 1000, 1 << 18}) {
    const std::string one = documents({bytes, 1});
    for (const int threads : {2, 3, 7})
      EXPECT_EQ(documents({bytes, threads}), one) << bytes << ' ' << threads;
  }
}

TEST(Threads, NameTheFirstBadLine) {
  std::string text = "a,y\n";
  for (int i = 2; i < 400; ++i) text += i == 201 || i >= 302 ? "1,2,3\n" : "\"1\",2\n";
  const std::string file = FileOf(text);
  for (int threads = 1; threads <= 7; ++threads) {
    try {
      const Fitted fitted(file, {}, {}, {50, threads});
      ADD_FAILURE();
    } catch (const std::runtime_error& error) {
      EXPECT_STREQ(error.what(), "line 201: expected 2 cells, found 3") << threads;
    }
  }
}

}  // namespace
