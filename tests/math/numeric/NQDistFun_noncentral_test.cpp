// Noncentral distributions against 50-digit values.
#include <nqcommon/math/numeric/NQDistFun.h>

#include <support/function_table.h>
#include <support/hostile_arguments.h>
#include <support/special_values.h>

namespace {

using namespace nqtest;
using NQMath_940::NQDistFun;
using Arg = const Arguments&;

const FunctionTable& Noncentral() {
  using D = NQDistFun;
  static const FunctionTable functions = {
      {"NonCentralCdfChi", [](Arg a, long&) { return D::NonCentralCdfChi(a[0], a[1], a[2]); }},
      {"NonCentralCdfF",
       [](Arg a, long&) { return D::NonCentralCdfF(a[0], a[1], a[2], a[3], a[4]); }},
      {"NonCentralCdfT", [](Arg a, long&) { return D::NonCentralCdfT(a[0], a[1], a[2], a[3]); }},
      {"NonCentralPdfT", [](Arg a, long& s) { return D::NonCentralPdfT(a[0], a[1], a[2], s); }},
      {"ncdbet", [](Arg a, long& s) { return D::ncdbet(a[0], a[1], a[2], a[3], a[4], s); }},
      {"FindNCParamChi", [](Arg a, long&) { return D::FindNCParamChi(a[0], a[1], a[2], a[3]); }},
      {"FindNCParamF", [](Arg a, long&) { return D::FindNCParamF(a[0], a[1], a[2], a[3], a[4]); }},
      {"FindNCParamT", [](Arg a, long&) { return D::FindNCParamT(a[0], a[1], a[2], a[3], a[4]); }},
  };
  return functions;
}

TEST(NQDistFunNoncentral, Values) {
  CheckFunctions(Noncentral(), {
#include <reference/distribution_noncentral.inc>
                               });
}

TEST(NQDistFunNoncentral, NaNIsMissingAndInfinityEnds) {
  CheckHostileArguments(Noncentral(), {{"NonCentralCdfChi", {3, 2, 1}},
                                       {"NonCentralCdfF", {3, 2, 9, 1, 0}},
                                       {"NonCentralCdfT", {3, 2, 1, 0}},
                                       {"NonCentralPdfT", {3, 2, 1}},
                                       {"ncdbet", {0.3, 2, 9, 1, 0}},
                                       {"FindNCParamChi", {3, 2, 0.1, 0}},
                                       {"FindNCParamF", {3, 2, 9, 0.1, 0}},
                                       {"FindNCParamT", {3, 2, 0.1, 0, 0}}});
}

// Along a fine grid across the point where the sum changes sides (the mean), and across the width
// from which it takes strides, the functions do not step back by more than their rounding.
TEST(NQDistFunNoncentral, Monotone) {
  struct Row {
    const char* label;
    double center, step, rounding;
    double (*rising)(double);
  };
  const Row rows[] = {
      {"chi-square, x", 25, 1e-7, 4e-15,
       [](double x) { return NQDistFun::NonCentralCdfChi(x, 5, 20); }},
      {"chi-square, ncp", 20, 1e-7, 4e-15,
       [](double x) { return 1 - NQDistFun::NonCentralCdfChi(25, 5, x); }},
      {"chi-square, strides", 39995.00078, 1e-7, 2e-14,
       [](double x) { return 1 - NQDistFun::NonCentralCdfChi(40005, 5, x); }},
      {"F, x", 5, 1e-7, 4e-15, [](double x) { return NQDistFun::NonCentralCdfF(x, 5, 9, 20, 0); }},
      {"t, x through 0", 0, 1e-7, 4e-15,
       [](double x) { return NQDistFun::NonCentralCdfT(x, 9, 0.5, 0); }},
      {"t, ncp through 0", 0, 1e-7, 4e-15,
       [](double x) { return 1 - NQDistFun::NonCentralCdfT(0.5, 9, x, 0); }},
      {"t, x", 4, 1e-7, 4e-15, [](double x) { return NQDistFun::NonCentralCdfT(x, 9, 4, 0); }},
  };
  for (const Row& r : rows) {
    double before = r.rising(r.center - 40 * r.step);
    for (int i = -39; i <= 40; ++i) {
      const double at = r.rising(r.center + i * r.step);
      EXPECT_GT(at, before - r.rounding) << r.label << ' ' << i;
      EXPECT_LT(at, before + r.step + r.rounding) << r.label << ' ' << i;
      before = at;
    }
  }
}

}  // namespace
