// Calls that all answer the same, one by one, so that a failure names those that do not.
#pragma once

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>

namespace nqtest {

// Call k of the list that was written as `calls`; empty behind the last one. A comma inside of
// brackets belongs to a call.
inline std::string CallAt(const std::string& calls, std::size_t k) {
  std::string call;
  int depth = 0;
  for (const char c : calls) {
    depth += c == '(' || c == '[' || c == '{';
    depth -= c == ')' || c == ']' || c == '}';
    const bool ends = c == ',' && depth == 0;
    if (!ends && k == 0) call += c;
    if (ends && k-- == 0) break;
  }
  return call;
}

// The texts of those calls whose answer is not the one wanted.
inline std::string CallsThatDiffer(const std::string& calls, std::initializer_list<bool> answers,
                                   bool want) {
  std::string differing;
  for (std::size_t k = 0; k < answers.size(); ++k) {
    if (answers.begin()[k] != want) differing += CallAt(calls, k) + ";";
  }
  return differing;
}

}  // namespace nqtest

#define EXPECT_EACH(want, ...) \
  EXPECT_EQ(::nqtest::CallsThatDiffer(#__VA_ARGS__, {__VA_ARGS__}, want), "") << "not " #want
