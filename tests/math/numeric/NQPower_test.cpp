#include <nqcommon/math/numeric/NQPower.h>

#include <vector>

#include <nqcommon/math/numeric/NQExtremeNum.h>
#include <support/compare.h>
#include <support/each.h>
#include <support/special_values.h>

namespace {

using namespace nqtest;
using NQMath_940::NQPower;

struct Row {
  std::vector<double> in;
  int code;
  double want;
};

void Check(int (*operation)(const std::vector<double>&, double&), const std::vector<Row>& rows,
           double tolerance) {
  for (const Row& r : rows) {
    double got = -77;
    EXPECT_EQ(operation(r.in, got), r.code) << ::testing::PrintToString(r.in);
    EXPECT_CLOSE(got, r.want, tolerance) << ::testing::PrintToString(r.in);
  }
}

TEST(NQPower, GuardedOperations) {
  const std::vector<Row> powers = {
#include <reference/guarded_power.inc>
  };
  Check([](auto& in, double& got) { return NQPower::Power(in[0], in[1], got); }, powers, 2.3e-16);
  const std::vector<Row> products = {
#include <reference/guarded_multiply.inc>
  };
  Check([](auto& in, double& got) { return NQPower::Multiply(in[0], in[1], got); }, products, 0);
  const std::vector<Row> exponents = {
#include <reference/guarded_exponent.inc>
  };
  Check([](auto& in, double& got) { return NQPower::Exponent(in[0], got); }, exponents, 2.3e-16);
  const std::vector<Row> roots = {
#include <reference/guarded_root.inc>
  };
  const auto root = [](auto& in, double& got) {
    return NQMath_940::NQExtremeNum::SumSqRoot(in[0], in[1], in[2], in[3], got);
  };
  Check(root, roots, 4e-16);
}

TEST(NQPower, Comparisons) {
  const double next = -1 + 2 * 0x1p-52;
  EXPECT_EACH(true, NQPower::AlmostEqual(0, -0.0, 0), NQPower::AlmostEqual(-1, next, 2));
  EXPECT_EACH(false, NQPower::AlmostEqual(0, 1e-300, 1e20),
              NQPower::AlmostEqual(1e-300, -1e-300, 1e6), NQPower::AlmostEqual(-1, next, 1.9),
              NQPower::AlmostEqual(kNaN, kNaN, 1e20));

  const auto orders = [](double y) {  // 1 odd, 2 even, 3 both
    return NQPower::IsOneOverOddInteger(y, 4) + 2 * NQPower::IsOneOverEvenInteger(y, 4);
  };
  for (const double y : {1.0, 0.2, -1 / 3.0, 1 / 49.0, 1 / 2147483647.0})
    EXPECT_EQ(orders(y), 1) << y;
  for (const double y : {0.5, -0.125, 1 / 98.0}) EXPECT_EQ(orders(y), 2) << y;
  for (const double y : {0.4, 0.0, kNaN, 1 / 2147483649.0}) EXPECT_EQ(orders(y), 0) << y;
}

}  // namespace
