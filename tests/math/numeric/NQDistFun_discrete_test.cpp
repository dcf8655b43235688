// Discrete distributions against 50-digit values; grouped data against values worked out by hand.
#include <nqcommon/math/numeric/NQDistFun.h>

#include <support/function_table.h>
#include <support/hostile_arguments.h>
#include <support/special_values.h>

namespace {

using namespace nqtest;
using NQMath_940::NQDistFun;
using Arg = const Arguments&;

const FunctionTable& Discrete() {
  static const FunctionTable functions = {
      {"CdfBin", [](Arg a, long& s) { return NQDistFun::CdfBin(a[0], a[1], a[2], s); }},
      {"PdfBin", [](Arg a, long& s) { return NQDistFun::PdfBin(a[0], a[1], a[2], s); }},
      {"IdfBin", [](Arg a, long& s) { return NQDistFun::IdfBin(a[0], a[1], a[2], s); }},
      {"PdfNegBin", [](Arg a, long& s) { return NQDistFun::PdfNegBin(a[0], a[1], a[2], s); }},
      {"PdfHyper",
       [](Arg a, long&) {
         return NQDistFun::PdfHyper(static_cast<long>(a[0]), static_cast<long>(a[1]),
                                    static_cast<long>(a[2]), static_cast<long>(a[3]));
       }},
      {"CDFHyper",
       [](Arg a, long& s) {
         int status = -7;
         const double p = NQDistFun::CDFHyper(a[0], a[1], a[2], a[3], status);
         s = status;
         return p;
       }},
      {"dnlbnc", [](Arg a, long& s) { return NQDistFun::dnlbnc(a[0], a[1], s); }},
  };
  return functions;
}

TEST(NQDistFunDiscrete, Values) {
  CheckFunctions(Discrete(), {
#include <reference/distribution_discrete.inc>
                             });
}

TEST(NQDistFunDiscrete, NaNIsMissingAndInfinityEnds) {
  CheckHostileArguments(Discrete(), {{"CdfBin", {3, 9, 0.4}},
                                     {"PdfBin", {3, 9, 0.4}},
                                     {"IdfBin", {0.3, 9, 0.4}},
                                     {"PdfNegBin", {3, 9, 0.4}},
                                     {"CDFHyper", {3, 20, 9, 8}},
                                     {"dnlbnc", {9, 4}}});
}

// Built from the answer: the quantile of what CdfBin reaches is k, that of any more is k + 1.
TEST(NQDistFunDiscrete, IdfBinInvertsCdfBin) {
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

// Too many terms to add for the first k and few for the last: no step where the sum turns into an
// integral, and none at the mean.
TEST(NQDistFunDiscrete, HypergeometricTailsRiseByTheirProbabilities) {
  int status = 0;
  const long total = 8000000, draws = 3000000, successes = 4000000;
  const double mean = 1500000;
  for (long k = 1496900; k <= 1500100; k += 50) {
    const auto at = [&](long j) {
      return NQDistFun::CDFHyper(static_cast<double>(j), total, successes, draws, status);
    };
    const double rise = at(k) - at(k - 1);
    EXPECT_NEAR(rise, NQDistFun::PdfHyper(k, total, draws, successes),
                1e-14 * at(k) + (static_cast<double>(k) > mean ? 1e-15 : 0))
        << k;
  }
}

TEST(NQDistFunGrouped, GPTile) {
  struct Row {
    const char* label;
    double pct;
    long method;
    double want;
    long status;
    std::vector<double> freqs = {1, 4, 5};
    long n = 3;
    std::vector<double> bounds = {6, 14, 28, 50};
  };
  const std::vector<double> values = {10, 20, 40};
  const std::vector<double> open = {-kInf, 14, 28, kInf};
  const Row rows[] = {
      {"between midpoints", 50, 0, 260.0 / 9, 0},
      {"negative method", 50, -3, 260.0 / 9, 0},
      {"at the first midpoint", 5, 0, 10, 0},
      {"below the first midpoint", 4.9, 0, kMissing, 1},
      {"at the last midpoint", 75, 0, 40, 0},
      {"above the last midpoint", 76, 0, kMissing, 2},
      {"half a width around the value", 30, 1, 20, 0},
      {"upper end of a width", 50, 1, 27, 0},
      {"wide last class", 80, 1, 42.2, 0},
      {"between bounds", 30, 2, 21, 0},
      {"larger method", 80, 9, 41.2, 0},
      {"first bound", 0, 2, 6, 0},
      {"last bound", 100, 2, 50, 0},
      {"below the first bound", -1, 2, kMissing, 1},
      {"above the last bound", 101, 1, kMissing, 2},
      {"empty first class", 0, 2, kMissing, 0, {0, 4, 6}},
      {"empty class passed over", 60, 2, 32.4, 0, {5, 0, 5}},
      {"all empty", 50, 0, kMissing, 0, {0, 0, 0}},
      {"inside an open first class", 5, 2, -kInf, 0, {1, 4, 5}, 3, open},
      {"end of an open first class", 10, 2, 14, 0, {1, 4, 5}, 3, open},
      {"between open classes", 30, 2, 21, 0, {1, 4, 5}, 3, open},
      {"class without bounds", 5, 2, kMissing, 0, {1, 4, 5}, 3, {-kInf, kInf, kInf, kInf}},
      {"infinite frequency", 50, 2, kMissing, -1, {1, kInf, 5}},
      {"infinite percentage", kInf, 2, kMissing, 2},
      {"NaN percentage", kNaN, 0, kMissing, -1},
      {"NaN frequency", 50, 2, kMissing, -1, {1, kNaN, 3}},
      {"one class", 50, 0, kMissing, -1, {1, 4, 5}, 1},
      {"too few frequencies", 50, 0, kMissing, -1, {1, 4}},
      {"too few bounds", 50, 2, kMissing, -1, {1, 4, 5, 1}, 4},
  };
  for (const Row& r : rows) {
    double result = 0;
    long status = 7;
    NQDistFun::GPTile(r.n, r.pct, values, r.freqs, r.bounds, r.method, result, status);
    EXPECT_CLOSE(result, r.want, 4e-16) << r.label;
    EXPECT_EQ(status, r.status) << r.label;
  }
}

TEST(NQDistFunGrouped, Mednci) {
  struct Row {
    const char* label;
    std::vector<double> values;
    std::vector<double> freqs;
    double total;
    double confPct;
    bool flag;
    double lower, upper, achieved;  // 100 (1 - 2 P(X <= j)), X binomial in `total` halves
  };
  const std::vector<double> five = {1, 2, 3, 4, 5}, ones = {1, 1, 1, 1, 1};
  const std::vector<double> three = {4, 6, 9}, grouped = {3, 4, 3};
  const Row rows[] = {
      {"j = 1 of 5", five, ones, 5, 80, true, 2, 4, 100 * (1 - 12.0 / 32)},
      {"j = 0 of 5", five, ones, 5, 95, true, 1, 5, 100 * (1 - 2.0 / 32)},
      {"at a reached probability", five, ones, 5, 62.5, true, 2, 4, 62.5},
      {"whole range", five, ones, 5, 100, true, 1, 5, 100 * (1 - 2.0 / 32)},
      {"ranks 3 and 8 within groups", three, grouped, 10, 95, true, 4, 9, 89.0625},
      {"ranks 4 and 7 within groups", three, grouped, 10, 75, true, 6, 6, 65.625},
      {"frequencies that miss the total", three, grouped, 11, 95, true, kMissing, kMissing,
       kMissing},
      {"unchecked", three, grouped, 11, 95, false, 4, 9, 100 * (1 - 134.0 / 2048)},
      {"values that do not ascend", {4, 4, 9}, grouped, 10, 95, true, kMissing, kMissing, kMissing},
      {"two observations", {1, 2}, {1, 1}, 2, 50, false, kMissing, kMissing, kMissing},
      {"a total that is not whole", three, grouped, 10.5, 95, false, kMissing, kMissing, kMissing},
      {"an infinite total", three, grouped, kInf, 95, false, kMissing, kMissing, kMissing},
      {"confidence above 100", three, grouped, 10, 101, false, kMissing, kMissing, kMissing},
      {"NaN confidence", three, grouped, 10, kNaN, false, kMissing, kMissing, kMissing},
      {"short frequencies", three, {5, 5}, 10, 95, false, kMissing, kMissing, kMissing},
  };
  for (const Row& r : rows) {
    double lower = 0, upper = 0, achieved = 0;
    NQDistFun::Mednci(static_cast<long>(r.values.size()), r.values, r.freqs, r.total, r.confPct,
                      r.flag, lower, upper, achieved);
    EXPECT_EQ(lower, r.lower) << r.label;
    EXPECT_EQ(upper, r.upper) << r.label;
    EXPECT_CLOSE(achieved, r.achieved, 1e-14) << r.label;
  }
}

}  // namespace
