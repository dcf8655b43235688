// What holds between the continuous central distributions, over grids that cross every joint of the
// methods.
#include <nqcommon/math/numeric/NQDistFun.h>

#include <gtest/gtest.h>

#include <cmath>

namespace {

using NQMath_940::NQDistFun;

// Two methods may differ by kJump where they meet. The grid from .. to is even in ln x where from > 0.
template <class Lower, class Upper, class Quantile>
void ExpectConsistent(double from, double to, Lower lower, Upper upper, Quantile quantile) {
  constexpr double kJump = 4e-14;
  constexpr int kSteps = 2000;
  double p = 0, q = 1;
  for (int i = 0; i <= kSteps; ++i) {
    const double part = static_cast<double>(i) / kSteps;
    const double x = from > 0 ? from * std::pow(to / from, part) : from + part * (to - from);
    EXPECT_NEAR(lower(x) + upper(x), 1, 4e-15) << x;
    EXPECT_GE(lower(x), p * (1 - kJump)) << x;
    EXPECT_LE(upper(x), q * (1 + kJump)) << x;
    p = lower(x);
    q = upper(x);
  }
  for (const double goal : {1e-200, 1e-30, 1e-7, 0.01, 0.3, 0.5 + 1e-9, 0.8, 0.999, 1 - 1e-12}) {
    const double x = quantile(goal);
    if (!(std::fabs(x) > 1e-290 && std::fabs(x) < 1e290)) continue;
    // A step of the quantile's own accuracy moves the distribution function across its goal.
    const double step = 2e-14 * std::fabs(x);
    const bool isLower = goal < 0.5;
    const double tail = isLower ? goal : 1 - goal;
    EXPECT_LE(isLower ? lower(x - step) : upper(x + step), tail * (1 + 5e-15)) << goal;
    EXPECT_GE(isLower ? lower(x + step) : upper(x - step), tail * (1 - 5e-15)) << goal;
  }
}

TEST(NQDistFunProperties, TailsAddToOneRiseAndAreInverted) {
  ExpectConsistent(
      -8, 8, NQDistFun::CdfStdNorm, [](double z) { return NQDistFun::CdfStdNorm(-z); },
      NQDistFun::IdfStdNorm);
  for (const double df : {0.3, 1.0, 3.0, 39.99, 40.0, 500.0, 2e4, 1e9}) {
    SCOPED_TRACE(::testing::Message() << "chi-square " << df);
    const double spread = 8 * std::sqrt(2 / df);
    ExpectConsistent(
        df * std::exp(-std::min(spread, 20.0)), df * std::exp(std::min(spread, 3.0)),
        [df](double x) { return NQDistFun::CdfChi(x, df); },
        [df](double x) { return NQDistFun::SigChi(x, df); },
        [df](double p) { return NQDistFun::IdfChi(p, df); });
  }
  for (const double df : {0.5, 1.0, 2.0, 30.0, 1e3, 1e6}) {
    SCOPED_TRACE(::testing::Message() << "t " << df);
    ExpectConsistent(
        -9, 9, [df](double t) { return NQDistFun::CdfT(t, df); },
        [df](double t) { return NQDistFun::SigT(t, df); },
        [df](double p) { return NQDistFun::IdfT(p, df, 0, 0); });
  }
  for (const double df1 : {0.5, 1.0, 2.0, 3.0, 60.0, 1e5}) {
    for (const double df2 : {0.7, 2.0, 30.0, 1e4}) {
      SCOPED_TRACE(::testing::Message() << "F " << df1 << ' ' << df2);
      const double spread = std::exp(std::min(8 * std::sqrt(2 / df1 + 2 / df2), 12.0));
      ExpectConsistent(
          1 / spread, spread, [=](double x) { return NQDistFun::CdfF(x, df1, df2); },
          [=](double x) { return NQDistFun::SigF(x, df1, df2); },
          [=](double p) { return NQDistFun::IdfF(p, df1, df2); });
    }
  }
}

}  // namespace
