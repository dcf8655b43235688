// What the tests of the matrix classes share: comparisons, special values, matrices of all kinds,
// operands of small integers, whose products and sums are exact, and what is wanted of operations
// on them: the schoolbook's answer (dense.h), wherever it goes.
#pragma once

#include "support/structured.h"
#include "support/testing.h"

namespace nqtest {

// r and c m x n, b n x 3; s, g and h of order n, t of order m; v of m values, w of n.
struct Operands {
  int m, n;
  std::mt19937 random{static_cast<unsigned>(100 * m + n)};
  NQMath_940::NQRectMatrix r = RandomRect(m, n, random), b = RandomRect(n, 3, random),
                           c = RandomRect(m, n, random);
  NQMath_940::NQSymMatrix s = RandomSym(n, random), g = RandomSym(n, random),
                          h = RandomSym(n, random), t = RandomSym(m, random);
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

// What a call answers. Of bools false, of numbers the missing value and of counts -1 refuse.
struct Answer {
  Answer() = default;
  template <class T>
  Answer(T answer)  // NOLINT(google-explicit-constructor)
      : value(static_cast<double>(answer)),
        refuses(value == (std::is_same_v<T, bool> ? 0
                          : std::is_integral_v<T> ? -1
                                                  : kMissing)) {}
  bool operator==(const Answer&) const = default;

  double value = 0;
  bool refuses = false;
};

inline void ExpectRefused(const std::string& calls, std::initializer_list<Answer> answers) {
  for (std::size_t k = 0; k < answers.size(); ++k)
    EXPECT_TRUE(answers.begin()[k].refuses) << CallAt(calls, k) << answers.begin()[k].value;
}

}  // namespace nqtest

// Each of the calls is refused.
#define NQ_EXPECT_REFUSED(...) nqtest::ExpectRefused(#__VA_ARGS__, {__VA_ARGS__})

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
