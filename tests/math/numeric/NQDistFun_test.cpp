// Distribution functions against 50-digit values, grouped data against values worked out by hand,
// and what holds between tails and quantiles of the continuous central distributions, over grids
// that cross every joint of the methods.
#include <nqcommon/math/numeric/NQDistFun.h>

#include <algorithm>
#include <vector>

#include <support/function_table.h>
#include <support/special_values.h>

namespace {

using namespace nqtest;
using NQMath_940::NQDistFun;
using Vector = std::vector<double>;

#define NQ_FUNCTION(name) \
  { #name, OverArguments(&NQDistFun::name) }

const FunctionTable kFunctions = {NQ_FUNCTION(CdfStdNorm),     NQ_FUNCTION(prbnrm),
                                  NQ_FUNCTION(CdfNorm),        NQ_FUNCTION(PdfNormalStandard),
                                  NQ_FUNCTION(PdfNormal),      NQ_FUNCTION(IdfStdNorm),
                                  NQ_FUNCTION(IdfNorm),        NQ_FUNCTION(probit),
                                  NQ_FUNCTION(derf),           NQ_FUNCTION(derfc),
                                  NQ_FUNCTION(dnlgam),         NQ_FUNCTION(tarndnlgam),
                                  NQ_FUNCTION(gammad),         NQ_FUNCTION(cdfexp),
                                  NQ_FUNCTION(CdfChi),         NQ_FUNCTION(SigChi),
                                  NQ_FUNCTION(IdfChi),         NQ_FUNCTION(tarnidfchi),
                                  NQ_FUNCTION(idfchb),         NQ_FUNCTION(CdfGam),
                                  NQ_FUNCTION(PdfGamma),       NQ_FUNCTION(IdfGam),
                                  NQ_FUNCTION(cdfbet),         NQ_FUNCTION(betinv),
                                  NQ_FUNCTION(cbtaux),         NQ_FUNCTION(CdfBeta),
                                  NQ_FUNCTION(IdfBeta),        NQ_FUNCTION(tarncdft),
                                  NQ_FUNCTION(tarncdff),       NQ_FUNCTION(tarnidft),
                                  NQ_FUNCTION(tarnidff),       NQ_FUNCTION(CdfT),
                                  NQ_FUNCTION(SigT),           NQ_FUNCTION(PdfT),
                                  NQ_FUNCTION(IdfT),           NQ_FUNCTION(CdfF),
                                  NQ_FUNCTION(SigF),           NQ_FUNCTION(IdfF),
                                  NQ_FUNCTION(CdfBin),         NQ_FUNCTION(PdfBin),
                                  NQ_FUNCTION(IdfBin),         NQ_FUNCTION(PdfNegBin),
                                  NQ_FUNCTION(PdfHyper),       NQ_FUNCTION(CDFHyper),
                                  NQ_FUNCTION(dnlbnc),         NQ_FUNCTION(NonCentralCdfChi),
                                  NQ_FUNCTION(NonCentralCdfF), NQ_FUNCTION(NonCentralCdfT),
                                  NQ_FUNCTION(NonCentralPdfT), NQ_FUNCTION(ncdbet),
                                  NQ_FUNCTION(FindNCParamChi), NQ_FUNCTION(FindNCParamF),
                                  NQ_FUNCTION(FindNCParamT)};

TEST(NQDistFun, Values) {
  static constexpr FunctionRow kRows[] = {
#include <reference/distribution_beta.inc>
#include <reference/distribution_discrete.inc>
#include <reference/distribution_gamma.inc>
#include <reference/distribution_noncentral.inc>
#include <reference/distribution_normal.inc>
#include <reference/distribution_t_and_f.inc>
  };
  CheckFunctions(kFunctions, kRows);
  EXPECT_SAME(NQDistFun::derf(-0.0), -0.0);
}

// NaN in place of any argument gives the missing value; infinities, the ends of the range of
// doubles and zeros give an answer, missing or not, that is not NaN. A missing value has a status,
// where the function has one.
TEST(NQDistFun, NaNIsMissingAndInfinityEnds) {
  const std::pair<const char*, Vector> ordinary[] = {
#include "math/numeric/ordinary_arguments_cases.inc"
  };
  for (const auto& [name, arguments] : ordinary) {
    for (std::size_t i = 0; i < arguments.size(); ++i) {
      for (const double hostile : {kNaN, kInf, -kInf, kMax, -kMax, 1e-308, 0.0, -1e-308}) {
        Arguments in{};
        std::copy(arguments.begin(), arguments.end(), in.begin());
        in.at(i) = hostile;
        long status = kUnset;
        const double got = kFunctions.at(name)(in, status);
        const auto label = ::testing::Message() << name << ::testing::PrintToString(in);
        EXPECT_FALSE(std::isnan(got)) << label;
        EXPECT_TRUE(got == kMissing || !std::isnan(hostile)) << label;
        EXPECT_TRUE(status == kUnset || (status != 0) == (got == kMissing)) << label;
      }
    }
  }
}

// Built from the answer: the quantile of what CdfBin reaches is k, that of any more is k + 1.
TEST(NQDistFun, IdfBinInvertsCdfBin) {
  long status = 0;
  for (const double n : {1.0, 7.0, 40.0, 1000.0}) {
    for (const double p : {0.001, 0.3, 0.5, 0.97}) {
      for (double k = 0; k < n; k += 1) {
        const double q = NQDistFun::CdfBin(k, n, p, status);
        const double next = NQDistFun::CdfBin(k + 1, n, p, status);
        if (q == 0 || next - q < 1e-12 * q) continue;
        EXPECT_EQ(NQDistFun::IdfBin(q, n, p, status), k) << n << ' ' << p;
        EXPECT_EQ(NQDistFun::IdfBin(q + (next - q) / 8, n, p, status), k + 1) << n << ' ' << p;
      }
    }
  }
}

TEST(NQDistFun, GPTile) {
  const struct {
    const char* label;
    double percentage;
    long method;
    double want;
    long status;
    Vector frequencies = {1, 4, 5};
    long n = 3;
    Vector bounds = {6, 14, 28, 50};
  } rows[] = {
#include "math/numeric/percentile_cases.inc"
  };
  for (const auto& r : rows) {
    double result = 0;
    long status = 7;
    NQDistFun::GPTile(r.n, r.percentage, {10, 20, 40}, r.frequencies, r.bounds, r.method, result,
                      status);
    EXPECT_CLOSE(result, r.want, 4e-16) << r.label;
    EXPECT_EQ(status, r.status) << r.label;
  }
}

TEST(NQDistFun, Mednci) {
  const struct {
    const char* label;
    Vector values, frequencies;
    double total, confidence;
    bool flag;
    double lower, upper, achieved;
  } rows[] = {
#include "math/numeric/median_interval_cases.inc"
  };
  for (const auto& r : rows) {
    double lower = 0, upper = 0, achieved = 0;
    NQDistFun::Mednci(static_cast<long>(r.values.size()), r.values, r.frequencies, r.total,
                      r.confidence, r.flag, lower, upper, achieved);
    EXPECT_EQ(lower, r.lower) << r.label;
    EXPECT_EQ(upper, r.upper) << r.label;
    EXPECT_CLOSE(achieved, r.achieved, 1e-14) << r.label;
  }
}

// Two methods may differ by kJump where they meet. The grid from .. to is even in ln x where
// from > 0.
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

TEST(NQDistFun, TailsAddToOneRiseAndAreInverted) {
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
