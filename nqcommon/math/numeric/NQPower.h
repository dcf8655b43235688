#pragma once

#include <nqcommon/export.h>

namespace NQMath_940 {

// Exponentials, powers and products that report where they leave the range of normal doubles, and
// comparisons that count machine epsilons.
//
// Codes     kOk         the value is in `result`
//           kUnderflow  0: the magnitude is below the smallest normal double
//           kOverflow   the system-missing value: the magnitude is too large
//           kUndefined  the system-missing value: an operand is missing, or there is no real value
// NaN       is not missing: a NaN operand gives NaN and kOk.
class NQ_API NQPower {
 public:
  static constexpr int kOk = 0;
  static constexpr int kUnderflow = 1;
  static constexpr int kOverflow = 2;
  static constexpr int kUndefined = 3;

  // Exponent evaluates exp(x) for x in this range: exp stays finite and normal.
  static constexpr double gMachineMaxExp = 709.0;
  static constexpr double gMachineMinExp = -708.39;

  // exp(x). The range is decided on x alone, so the system-missing value is one more x far below
  // the range: 0 and kUnderflow.
  static int Exponent(double x, double& result);

  // x to the power y. Accuracy: that of std::pow, below 1 ulp.
  //   y = 0            1, for x = 0 too
  //   x = 0            0 for y > 0, kOverflow for y < 0
  //   x < 0            y an integer: the sign follows its parity
  //                    y = 1/n, n an odd integer (to 4 epsilons): -(|x| to the power y)
  //                    any other y: kUndefined
  // A result that would be the system-missing value itself is kOverflow. Infinite operands count as
  // std::pow counts them; an infinite result is kOverflow.
  static int Power(double x, double y, double& result);

  // a b, with the codes above; 0 exactly and kOk when an operand is 0, kUndefined for 0 times
  // infinity.
  static int Multiply(double a, double b, double& result);

  // Whether a and b differ by at most tol machine epsilons (2.220446049250313e-16) of the larger
  // magnitude. Two zeros always do; a zero and a non-zero, or two signs, never; nor do two
  // infinities.
  static bool AlmostEqual(double a, double b, double tol);

  // Whether 1/y is an odd (even) integer to tol machine epsilons. y may be negative; false for
  // y = 0 and for 1/y > 2147483647.
  static bool IsOneOverOddInteger(double y, double tol);
  static bool IsOneOverEvenInteger(double y, double tol);
};

}  // namespace NQMath_940
