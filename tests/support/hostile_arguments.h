// Functions of doubles with one argument at a time that is no ordinary number.
#pragma once

#include <gtest/gtest.h>

#include <map>
#include <string>

#include <support/function_table.h>
#include <support/special_values.h>

namespace nqtest {

// NaN in place of any argument of `ordinary` gives the missing value; infinities, the ends of the
// range of doubles and zeros give an answer, missing or not, that is not NaN. For functions with a
// status, a missing value has one.
inline void CheckHostileArguments(const FunctionTable& functions,
                                  const std::map<std::string, Arguments>& ordinary) {
  constexpr long kUnset = -99;
  for (const auto& [name, arguments] : ordinary) {
    for (std::size_t i = 0; i < arguments.size(); ++i) {
      for (const double hostile : {kNaN, kInf, -kInf, kMax, -kMax, 1e-308, 0.0, -1e-308}) {
        Arguments in = arguments;
        in[i] = hostile;
        long status = kUnset;
        const double got = functions.at(name)(in, status);
        EXPECT_FALSE(std::isnan(got)) << name << ::testing::PrintToString(in);
        if (std::isnan(hostile)) {
          EXPECT_EQ(got, kMissing) << name << " argument " << i;
        }
        if (status != kUnset) {
          EXPECT_EQ(status != 0, got == kMissing) << name << " argument " << i;
        }
      }
    }
  }
}

}  // namespace nqtest
