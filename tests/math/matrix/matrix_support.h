// What the tests of the matrix classes share: comparisons, special values, matrices of all kinds,
// operands of small integers, whose products and sums are exact, and what is wanted of operations
// on them: the schoolbook's answer (dense.h), wherever it goes.
#pragma once

#include <gtest/gtest.h>

#include "support/compare.h"
#include "support/special_values.h"
#include "support/structured.h"

namespace nqtest {

// R and C m x n, B n x 3; S, M, N of order n, T of order m; v of m values, w of n.
struct Operands {
  int m, n;
  std::mt19937 random{static_cast<unsigned>(100 * m + n)};
  NQMath_940::NQRectMatrix r = RandomRect(m, n, random), b = RandomRect(n, 3, random),
                           c = RandomRect(m, n, random);
  NQMath_940::NQSymMatrix s = RandomSym(n, random), M = RandomSym(n, random),
                          N = RandomSym(n, random), t = RandomSym(m, random);
  std::vector<double> v = RandomVector(static_cast<std::size_t>(m), random);
  std::vector<double> w = RandomVector(static_cast<std::size_t>(n), random);
};

inline Dense ToDense(const std::vector<double>& v) { return Column(v); }

inline Dense Plus(Dense a, double x, const Dense& b) {
  for (std::size_t i = 0; i < a.size(); ++i) {
    for (std::size_t j = 0; j < a[i].size(); ++j) a[i][j] += x * b[i][j];
  }
  return a;
}

inline Dense TraceOf(const Dense& a) {
  double sum = 0;
  for (std::size_t i = 0; i < a.size(); ++i) sum += a[i][i];
  return {{sum}};
}

}  // namespace nqtest

// `out`, what the call answers through, is a copy of the operand `target`, then the operand itself.
#define NQ_EXPECT_RESULT(target, call, ...)                                              \
  for (bool inPlace : {false, true}) {                                                   \
    nqtest::Operands in{m, n};                                                           \
    auto copy = in.target;                                                               \
    auto& out = inPlace ? in.target : copy;                                              \
    EXPECT_TRUE(call) << #call;                                                          \
    EXPECT_EQ(nqtest::ToDense(out), __VA_ARGS__) << #call << m << " x " << n << inPlace; \
  }

// A row of a table: its text and the operation on r.
#define NQ_OPERATION(Matrix, ...) #__VA_ARGS__, [](Matrix & r) -> bool { return __VA_ARGS__; }

#define NQ_EXPECT_NUMBER(call, ...) EXPECT_EQ((nqtest::Dense{{call}}), (__VA_ARGS__)) << #call
