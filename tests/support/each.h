// Calls that all answer the same, one by one, so that a failure names those that do not.
#pragma once

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>

namespace nqtest {

// The texts of those calls whose answer is not the one wanted. `calls` has the calls between commas
// as they were written, and a comma inside of brackets belongs to a call.
inline std::string CallsThatDiffer(const std::string& calls, std::initializer_list<bool> answers,
                                   bool want) {
  std::string differing;
  auto at = calls.begin();
  for (const bool answer : answers) {
    const auto start = at;
    for (int depth = 0; at != calls.end() && !(*at == ',' && depth == 0); ++at)
      depth += std::string("([{").find(*at) != std::string::npos   ? 1
               : std::string(")]}").find(*at) != std::string::npos ? -1
                                                                   : 0;
    if (answer != want) differing += std::string(start, at) + ";";
    if (at != calls.end()) ++at;
  }
  return differing;
}

}  // namespace nqtest

#define EXPECT_EACH(want, ...) \
  EXPECT_EQ(::nqtest::CallsThatDiffer(#__VA_ARGS__, {__VA_ARGS__}, want), "") << "not " #want
