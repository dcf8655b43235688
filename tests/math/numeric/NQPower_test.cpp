#include <nqcommon/math/numeric/NQPower.h>

#include <nqcommon/math/numeric/NQExtremeNum.h>
#include <support/each.h>
#include <support/function_table.h>
#include <support/special_values.h>

namespace {

using namespace nqtest;
using NQMath_940::NQPower;

// A guarded operation as an entry of the table, its code the status.
template <class Operation>
auto Guarded(Operation operation) {
  return [=](const Arguments& in, long& code) {
    double result = -77;
    code = operation(in, result);
    return result;
  };
}

TEST(NQPower, GuardedOperations) {
  const FunctionTable operations = {
      {"Power", Guarded([](auto& in, auto& r) { return NQPower::Power(in[0], in[1], r); })},
      {"Multiply", Guarded([](auto& in, auto& r) { return NQPower::Multiply(in[0], in[1], r); })},
      {"Exponent", Guarded([](auto& in, auto& r) { return NQPower::Exponent(in[0], r); })},
      {"SumSqRoot", Guarded([](auto& in, auto& r) {
         return NQMath_940::NQExtremeNum::SumSqRoot(in[0], in[1], in[2], in[3], r);
       })}};
  static constexpr FunctionRow kRows[] = {
#include <reference/guarded.inc>
  };
  CheckFunctions(operations, kRows);
}

TEST(NQPower, Comparisons) {
  const double next = -1 + 2 * 0x1p-52;
  EXPECT_EACH(true, NQPower::AlmostEqual(0, -0.0, 0), NQPower::AlmostEqual(-1, next, 2),
              NQPower::AlmostEqual(0.5, 0.5, 0));
  EXPECT_EACH(false, NQPower::AlmostEqual(0, 1e-300, 1e20), NQPower::AlmostEqual(1e-300, 0, 1e20),
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
