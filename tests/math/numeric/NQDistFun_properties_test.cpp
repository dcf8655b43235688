// What holds between the continuous central distributions, over grids that cross every joint of the
// methods.
#include <nqcommon/math/numeric/NQDistFun.h>

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <string>
#include <vector>

#include <support/compare.h>

namespace {

using namespace nqtest;
using NQMath_940::NQDistFun;

using Function = std::function<double(double)>;

// A distribution with its parameters bound, and where to look.
struct Family {
  std::string name;
  Function lower, upper, quantile;  // upper may be empty
  double from, to;                  // grid, even in ln x where from > 0
};

std::vector<Family> Families() {
  std::vector<Family> families = {{"normal", NQDistFun::CdfStdNorm,
                                   [](double z) { return NQDistFun::CdfStdNorm(-z); },
                                   NQDistFun::IdfStdNorm, -8, 8}};
  for (const double df : {0.3, 1.0, 3.0, 39.99, 40.0, 500.0, 2e4, 1e9}) {
    const double spread = 8 * std::sqrt(2 / df);
    families.push_back(
        {"chi-square " + std::to_string(df), [df](double x) { return NQDistFun::CdfChi(x, df); },
         [df](double x) { return NQDistFun::SigChi(x, df); },
         [df](double p) { return NQDistFun::IdfChi(p, df); },
         df * std::exp(-std::min(spread, 20.0)), df * std::exp(std::min(spread, 3.0))});
  }
  for (const double df : {0.5, 1.0, 2.0, 30.0, 1e3, 1e6}) {
    families.push_back({"t " + std::to_string(df),
                        [df](double t) { return NQDistFun::CdfT(t, df); },
                        [df](double t) { return NQDistFun::SigT(t, df); },
                        [df](double p) { return NQDistFun::IdfT(p, df, 1e-20, 1e-12); }, -9, 9});
  }
  for (const double df1 : {0.5, 1.0, 2.0, 3.0, 60.0, 1e5}) {
    for (const double df2 : {0.7, 2.0, 30.0, 1e4}) {
      const double spread = std::min(8 * std::sqrt(2 / df1 + 2 / df2), 12.0);
      families.push_back({"F " + std::to_string(df1) + " " + std::to_string(df2),
                          [=](double x) { return NQDistFun::CdfF(x, df1, df2); },
                          [=](double x) { return NQDistFun::SigF(x, df1, df2); },
                          [=](double p) { return NQDistFun::IdfF(p, df1, df2); }, std::exp(-spread),
                          std::exp(spread)});
    }
  }
  return families;
}

constexpr int kSteps = 2000;

double GridPoint(const Family& f, int i) {
  const double part = static_cast<double>(i) / kSteps;
  return f.from > 0 ? f.from * std::pow(f.to / f.from, part) : f.from + part * (f.to - f.from);
}

TEST(NQDistFunProperties, TailsAddToOneAndAreMonotone) {
  constexpr double kJump = 4e-14;  // what two methods may differ by where they meet
  for (const Family& f : Families()) {
    double lower = 0;
    double upper = 1;
    for (int i = 0; i <= kSteps; ++i) {
      const double x = GridPoint(f, i);
      const double nextLower = f.lower(x);
      const double nextUpper = f.upper(x);
      EXPECT_NEAR(nextLower + nextUpper, 1, 4e-15) << f.name << " at " << x;
      EXPECT_GE(nextLower, lower * (1 - kJump)) << f.name << " at " << x;
      EXPECT_LE(nextUpper, upper * (1 + kJump)) << f.name << " at " << x;
      lower = nextLower;
      upper = nextUpper;
    }
  }
}

// Two neighbouring doubles around a joint must give neighbouring values: whatever changes more than
// the rounding is a jump between methods.
TEST(NQDistFunProperties, NoJumpWhereMethodsMeet) {
  const struct {
    const char* name;
    Function function;
    double joint;
  } rows[] = {
      {"x = 1", [](double x) { return NQDistFun::SigChi(2 * x, 0.8); }, 1},
      {"x = a + 1", [](double x) { return NQDistFun::SigChi(2 * x, 9); }, 5.5},
      {"shape 1 below x", [](double a) { return NQDistFun::SigChi(3.5, 2 * a); }, 1},
      {"shape 1 above x", [](double a) { return NQDistFun::CdfChi(0.5, 2 * a); }, 1},
      {"shape 20", [](double a) { return NQDistFun::SigChi(60, 2 * a); }, 20},
      {"shape 20, lower", [](double a) { return NQDistFun::CdfChi(25, 2 * a); }, 20},
      {"beta shape 1", [](double a) { return NQDistFun::CdfBeta(0.2, a, 3); }, 1},
      {"other beta shape 1", [](double b) { return NQDistFun::CdfBeta(0.2, 3, b); }, 1},
      {"beta 1/2", [](double a) { return NQDistFun::CdfBeta(0.01, a, 7); }, 0.5},
      {"series to fraction", [](double x) { return NQDistFun::CdfBeta(x, 9, 0.6); }, 0.75},
      {"mean", [](double x) { return NQDistFun::CdfBeta(x, 2, 6); }, 0.3},
      {"both shapes 1e9", [](double a) { return NQDistFun::CdfBeta(0.50002, a, a); }, 1e9},
      {"t at 1", [](double t) { return NQDistFun::SigT(t, 6); }, 1},
      {"Cauchy", [](double df) { return NQDistFun::SigT(5, df); }, 1},
      {"normal pieces", NQDistFun::CdfStdNorm, -4},
  };
  for (const auto& r : rows) {
    // a step on either side, so that the joint lies between the middle two
    const double step = 1e-14 * r.joint;
    EXPECT_CLOSE(r.function(r.joint - step), r.function(r.joint + step), 1e-12) << r.name;
  }
}

TEST(NQDistFunProperties, QuantileInvertsTheDistributionFunction) {
  for (const Family& f : Families()) {
    for (const double p : {1e-200, 1e-30, 1e-7, 0.01, 0.3, 0.5 + 1e-9, 0.8, 0.999, 1 - 1e-12}) {
      const double x = f.quantile(p);
      if (!(std::fabs(x) > 1e-290 && std::fabs(x) < 1e290)) continue;
      // a step of the quantile's own accuracy moves the distribution function across p
      const double step = 2e-14 * std::fabs(x);
      if (p < 0.5) {
        EXPECT_LE(f.lower(x - step), p * (1 + 5e-15)) << f.name << " p " << p;
        EXPECT_GE(f.lower(x + step), p * (1 - 5e-15)) << f.name << " p " << p;
      } else {
        EXPECT_GE(f.upper(x - step), (1 - p) * (1 - 5e-15)) << f.name << " p " << p;
        EXPECT_LE(f.upper(x + step), (1 - p) * (1 + 5e-15)) << f.name << " p " << p;
      }
    }
  }
}

TEST(NQDistFunProperties, Symmetries) {
  for (const double df : {0.4, 1.0, 5.0, 300.0, 1e7}) {
    for (const double t : {1e-8, 0.7, 1.0, 4.0, 1e5}) {
      EXPECT_SAME(NQDistFun::CdfT(-t, df), NQDistFun::SigT(t, df)) << t << ' ' << df;
      EXPECT_CLOSE(2 * NQDistFun::SigT(t, df), NQDistFun::SigF(t * t, 1, df), 3e-15)
          << t << ' ' << df;
    }
    EXPECT_SAME(NQDistFun::IdfT(0.125, df, 0, 0), -NQDistFun::IdfT(0.875, df, 0, 0)) << df;
  }
  // x and 1 - x both exact
  for (const double x : {0x1p-30, 0.125, 0.4375, 0.5, 0.75, 1 - 0x1p-20}) {
    for (const double a : {0.01, 0.5, 1.0, 6.5, 2e3}) {
      for (const double b : {0.3, 1.0, 40.0}) {
        const double sum = NQDistFun::CdfBeta(x, a, b) + NQDistFun::CdfBeta(1 - x, b, a);
        EXPECT_NEAR(sum, 1, 8e-16) << x << ' ' << a << ' ' << b;
      }
    }
  }
}

}  // namespace
