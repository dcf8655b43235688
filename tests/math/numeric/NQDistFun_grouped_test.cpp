// Grouped data against values worked out by hand.
#include <nqcommon/math/numeric/NQDistFun.h>

#include <support/compare.h>
#include <support/special_values.h>

namespace {

using namespace nqtest;
using NQMath_940::NQDistFun;
using Values = std::vector<double>;

TEST(NQDistFunGrouped, GPTile) {
  const struct {
    const char* label;
    double percentage;
    long method;
    double want;
    long status;
    Values frequencies = {1, 4, 5};
    long n = 3;
    Values bounds = {6, 14, 28, 50};
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

TEST(NQDistFunGrouped, Mednci) {
  const struct {
    const char* label;
    Values values, frequencies;
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

}  // namespace
