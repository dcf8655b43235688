// Distribution functions against 50-digit values.
#include <nqcommon/math/numeric/NQDistFun.h>

#include <support/function_table.h>
#include <support/special_values.h>

namespace {

using namespace nqtest;
using NQMath_940::NQDistFun;

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
  CheckFunctions(kFunctions, {
#include <reference/distribution_beta.inc>
#include <reference/distribution_discrete.inc>
#include <reference/distribution_gamma.inc>
#include <reference/distribution_noncentral.inc>
#include <reference/distribution_normal.inc>
#include <reference/distribution_t_and_f.inc>
                             });
  EXPECT_SAME(NQDistFun::derf(-0.0), -0.0);
}

// NaN in place of any argument gives the missing value; infinities, the ends of the range of doubles
// and zeros give an answer, missing or not, that is not NaN. A missing value has a status, where the
// function has one.
TEST(NQDistFun, NaNIsMissingAndInfinityEnds) {
  const std::pair<const char*, Arguments> ordinary[] = {
#include "math/numeric/ordinary_arguments_cases.inc"
  };
  for (const auto& [name, arguments] : ordinary) {
    for (std::size_t i = 0; i < arguments.size(); ++i) {
      for (const double hostile : {kNaN, kInf, -kInf, kMax, -kMax, 1e-308, 0.0, -1e-308}) {
        Arguments in = arguments;
        in[i] = hostile;
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

}  // namespace
