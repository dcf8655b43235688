// The continuous central distributions against 50-digit values.
#include <nqcommon/math/numeric/NQDistFun.h>

#include <support/function_table.h>
#include <support/hostile_arguments.h>
#include <support/special_values.h>

namespace {

using namespace nqtest;
using NQMath_940::NQDistFun;
using Arg = const Arguments&;

TEST(NQDistFun, Normal) {
  const FunctionTable functions = {
      {"CdfStdNorm", [](Arg a, long&) { return NQDistFun::CdfStdNorm(a[0]); }},
      {"prbnrm", [](Arg a, long&) { return NQDistFun::prbnrm(a[0]); }},
      {"CdfNorm", [](Arg a, long&) { return NQDistFun::CdfNorm(a[0], a[1], a[2]); }},
      {"PdfNormalStandard", [](Arg a, long&) { return NQDistFun::PdfNormalStandard(a[0]); }},
      {"PdfNormal", [](Arg a, long&) { return NQDistFun::PdfNormal(a[0], a[1], a[2]); }},
      {"IdfStdNorm", [](Arg a, long&) { return NQDistFun::IdfStdNorm(a[0]); }},
      {"IdfNorm", [](Arg a, long&) { return NQDistFun::IdfNorm(a[0], a[1], a[2]); }},
      {"probit", [](Arg a, long&) { return NQDistFun::probit(a[0]); }},
      {"derf", [](Arg a, long&) { return NQDistFun::derf(a[0]); }},
      {"derfc", [](Arg a, long&) { return NQDistFun::derfc(a[0]); }},
  };
  CheckFunctions(functions, {
#include <reference/distribution_normal.inc>
                            });
  EXPECT_SAME(NQDistFun::derf(-0.0), -0.0);
}

TEST(NQDistFun, Gamma) {
  const FunctionTable functions = {
      {"dnlgam", [](Arg a, long&) { return NQDistFun::dnlgam(a[0]); }},
      {"tarndnlgam", [](Arg a, long&) { return NQDistFun::tarndnlgam(a[0]); }},
      {"gammad", [](Arg a, long& s) { return NQDistFun::gammad(a[0], a[1], a[2] != 0, s); }},
      {"cdfexp", [](Arg a, long& s) { return NQDistFun::cdfexp(a[0], a[1], s); }},
      {"CdfChi", [](Arg a, long&) { return NQDistFun::CdfChi(a[0], a[1]); }},
      {"SigChi", [](Arg a, long&) { return NQDistFun::SigChi(a[0], a[1]); }},
      {"IdfChi", [](Arg a, long&) { return NQDistFun::IdfChi(a[0], a[1]); }},
      {"tarnidfchi", [](Arg a, long& s) { return NQDistFun::tarnidfchi(a[0], a[1], s); }},
      {"idfchb", [](Arg a, long& s) { return NQDistFun::idfchb(a[0], a[1], s); }},
      {"CdfGam", [](Arg a, long&) { return NQDistFun::CdfGam(a[0], a[1], a[2]); }},
      {"PdfGamma", [](Arg a, long&) { return NQDistFun::PdfGamma(a[0], a[1], a[2]); }},
      {"IdfGam", [](Arg a, long&) { return NQDistFun::IdfGam(a[0], a[1], a[2]); }},
  };
  CheckFunctions(functions, {
#include <reference/distribution_gamma.inc>
                            });
  CheckHostileArguments(functions, {{"cdfexp", {2, 3}},
                                    {"CdfChi", {2, 3}},
                                    {"SigChi", {2, 3}},
                                    {"tarnidfchi", {0.3, 3}},
                                    {"idfchb", {0.3, 3}},
                                    {"CdfGam", {2, 3, 4}},
                                    {"PdfGamma", {2, 3, 4}},
                                    {"IdfGam", {0.3, 3, 4}}});
}

TEST(NQDistFun, Beta) {
  const auto betinv = [](Arg a, long& s) {
    return NQDistFun::betinv(a[0], a[1], a[2], 1e-20, 1e-12, s);
  };
  const FunctionTable functions = {
      {"cdfbet", [](Arg a, long& s) { return NQDistFun::cdfbet(a[0], a[1], a[2], s); }},
      {"betinv", betinv},
      {"cbtaux", [](Arg a, long&) { return NQDistFun::cbtaux(a[0]); }},
      {"CdfBeta", [](Arg a, long&) { return NQDistFun::CdfBeta(a[0], a[1], a[2]); }},
      {"IdfBeta", [](Arg a, long&) { return NQDistFun::IdfBeta(a[0], a[1], a[2]); }},
  };
  CheckFunctions(functions, {
#include <reference/distribution_beta.inc>
                            });
  CheckHostileArguments(functions, {{"cdfbet", {0.3, 2, 3}}, {"IdfBeta", {0.3, 2, 3}}});
}

TEST(NQDistFun, TAndF) {
  const auto tarnidft = [](Arg a, long& s) {
    return NQDistFun::tarnidft(a[0], a[1], s, a[2], a[3]);
  };
  const FunctionTable functions = {
      {"tarncdft", [](Arg a, long& s) { return NQDistFun::tarncdft(a[0], a[1], s); }},
      {"tarncdff", [](Arg a, long& s) { return NQDistFun::tarncdff(a[0], a[1], a[2], s); }},
      {"tarnidft", tarnidft},
      {"tarnidff", [](Arg a, long& s) { return NQDistFun::tarnidff(a[0], a[1], a[2], s); }},
      {"CdfT", [](Arg a, long&) { return NQDistFun::CdfT(a[0], a[1]); }},
      {"SigT", [](Arg a, long&) { return NQDistFun::SigT(a[0], a[1]); }},
      {"PdfT", [](Arg a, long& s) { return NQDistFun::PdfT(a[0], a[1], s); }},
      {"IdfT", [](Arg a, long&) { return NQDistFun::IdfT(a[0], a[1], a[2], a[3]); }},
      {"CdfF", [](Arg a, long&) { return NQDistFun::CdfF(a[0], a[1], a[2]); }},
      {"SigF", [](Arg a, long&) { return NQDistFun::SigF(a[0], a[1], a[2]); }},
      {"IdfF", [](Arg a, long&) { return NQDistFun::IdfF(a[0], a[1], a[2]); }},
  };
  CheckFunctions(functions, {
#include <reference/distribution_t_and_f.inc>
                            });
  CheckHostileArguments(functions, {{"tarncdft", {2, 3}},
                                    {"SigT", {2, 3}},
                                    {"PdfT", {2, 3}},
                                    {"tarncdff", {2, 3, 4}},
                                    {"SigF", {2, 3, 4}},
                                    {"tarnidff", {0.3, 3, 4}}});
}

}  // namespace
