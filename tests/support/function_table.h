// Runs functions of doubles, chosen by name, over the rows of a reference table.
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <iostream>
#include <map>
#include <span>
#include <string>
#include <tuple>
#include <type_traits>

#include <support/compare.h>

namespace nqtest {

// Arguments that a row does not give are 0. Tables are constant data: thousands of rows that were
// made when the program starts would take minutes to compile.
using Arguments = std::array<double, 5>;

struct FunctionRow {
  const char* function;
  Arguments in;
  double want;
  double tolerance;
  long status = 0;
};

using FunctionTable = std::map<std::string, std::function<double(const Arguments&, long&)>>;

// The status that a function without one leaves.
constexpr long kUnset = -99;

template <class P>
constexpr bool kIsStatus = std::is_same_v<P, long&> || std::is_same_v<P, int&>;

// A function as an entry of the table: its parameters are the arguments of a row in order, with its
// status, if it has one, wherever that stands among them.
template <class... P>
FunctionTable::mapped_type OverArguments(double (*function)(P...)) {
  return [function](const Arguments& in, long& status) {
    std::size_t taken = 0;
    const auto next = [&](bool isStatus) {
      return isStatus ? static_cast<double>(status) : in.at(taken++);
    };
    std::tuple<std::decay_t<P>...> values{static_cast<std::decay_t<P>>(next(kIsStatus<P>))...};
    const double value = std::apply(function, values);
    const auto take = [&](auto... v) {
      ((status = kIsStatus<P> ? static_cast<long>(v) : status), ...);
    };
    std::apply(take, values);
    return value;
  };
}

// Every row against its tolerance and status, and every function by at least one row. A function
// that sets its status sets it in all rows. Prints the worst row of each function.
inline void CheckFunctions(const FunctionTable& functions, std::span<const FunctionRow> rows) {
  struct Worst {
    double error = -1;
    Arguments in{};
    bool setsStatus = false;
    bool leavesStatus = false;
  };
  std::map<std::string, Worst> worst;
  for (const FunctionRow& r : rows) {
    long status = kUnset;
    const double got = functions.at(r.function)(r.in, status);
    EXPECT_CLOSE(got, r.want, r.tolerance) << r.function << ::testing::PrintToString(r.in);
    Worst& w = worst[r.function];
    (status == kUnset ? w.leavesStatus : w.setsStatus) = true;
    EXPECT_EQ(status == kUnset ? 0 : status, r.status)
        << r.function << ::testing::PrintToString(r.in);
    if (const double error = RelativeError(got, r.want); error > w.error) {
      w.error = error;
      w.in = r.in;
    }
  }
  for (const auto& [name, function] : functions) {
    EXPECT_TRUE(worst.count(name)) << name;
    EXPECT_FALSE(worst[name].setsStatus && worst[name].leavesStatus) << name;
    std::cout << name << ": worst " << worst[name].error << " at "
              << ::testing::PrintToString(worst[name].in) << '\n';
  }
}

}  // namespace nqtest
