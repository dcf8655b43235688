// Comparisons that print what was compared: the inputs (as a label), got, wanted, and the error in
// relative terms and in units in the last place.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

namespace nqtest {

// Distance between two doubles in representable steps; huge when either is NaN.
inline double UlpDistance(double a, double b) {
  if (std::isnan(a) || std::isnan(b)) return std::numeric_limits<double>::infinity();
  const auto ordered = [](double x) {
    const auto bits = std::bit_cast<std::int64_t>(x);
    return bits < 0 ? std::numeric_limits<std::int64_t>::min() - bits : bits;
  };
  const auto [low, high] = std::minmax({ordered(a), ordered(b)});
  return static_cast<double>(static_cast<std::uint64_t>(high) - static_cast<std::uint64_t>(low));
}

// |got - want| / |want|, or |got| where want is 0. Equal values (infinities too) and two NaN give
// 0.
inline double RelativeError(double got, double want) {
  if (got == want || (std::isnan(got) && std::isnan(want))) return 0;
  const double error = want == 0 ? std::fabs(got) : std::fabs(got - want) / std::fabs(want);
  return std::isnan(error) ? std::numeric_limits<double>::infinity() : error;
}

inline ::testing::AssertionResult IsClose(double got, double want, double tolerance) {
  const double error = RelativeError(got, want);
  if (error <= tolerance) return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure()
         << "got " << std::hexfloat << got << " wanted " << want << std::defaultfloat
         << " relative error " << error << " (allowed " << tolerance << "), "
         << UlpDistance(got, want) << " ulp";
}

// Same bits, with every NaN equal to every other.
inline ::testing::AssertionResult IsSame(double got, double want) {
  if ((std::isnan(got) && std::isnan(want)) ||
      std::bit_cast<std::uint64_t>(got) == std::bit_cast<std::uint64_t>(want))
    return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure() << "got " << std::hexfloat << got << " wanted " << want
                                       << ", " << UlpDistance(got, want) << " ulp";
}

// The first place where two arrays differ in a bit is the failure.
inline ::testing::AssertionResult AreSame(const std::vector<double>& got,
                                          const std::vector<double>& want) {
  if (got.size() != want.size())
    return ::testing::AssertionFailure() << got.size() << " values, wanted " << want.size();
  for (std::size_t i = 0; i < got.size(); ++i) {
    if (auto same = IsSame(got[i], want[i]); !same)
      return ::testing::AssertionFailure() << "at " << i << ": " << same.message();
  }
  return ::testing::AssertionSuccess();
}

}  // namespace nqtest

// relative tolerance; `<<` a label that names the row and its inputs
#define EXPECT_CLOSE(got, want, tolerance) EXPECT_TRUE(::nqtest::IsClose(got, want, tolerance))
#define EXPECT_SAME(got, want) EXPECT_TRUE(::nqtest::IsSame(got, want))
