// The fast forms against the plain loops, bit for bit. What the plain loops give is tested through
// the records.
#include <nqcommon/math/stats/internal/case_products.h>

#include <gtest/gtest.h>

#include <limits>
#include <random>
#include <vector>

#include "support/compare.h"
#include "support/packed.h"

namespace NQMath_940::internal {
namespace {

// What a form adds to, from values that are not 0, in one line of numbers.
template <class Add>
std::vector<double> Added(std::size_t nVars, Add add) {
  double weight = 0.3;
  std::vector<double> sums(nVars, 0.1), s(RowStart(nVars), 0.7);
  add(CaseSums{weight, sums}, s.data());
  s.insert(s.end(), sums.begin(), sums.end());
  s.push_back(weight);
  return s;
}

void ExpectEveryFormSame(const Cases& cases, const std::vector<double>& center) {
  const std::size_t n = cases.nVars;
  std::vector<bool> constant;
  const auto plain = Added(n, [&](CaseSums to, double* s) {
    constant = AddSumsPlain(cases, to);
    AddProductsPlain(cases, center, to, s);
    if (cases.rows > 0) AddProductsPlain(cases.data, 1.7, center, s);
  });
  for (const Isa isa : nqtest::kIsas) {
    const auto fast = Added(n, [&](CaseSums to, double* s) {
      EXPECT_EQ(AddSums(cases, to, isa), constant);
      AddProducts(cases, center, to, s, isa);
      if (cases.rows > 0) AddProducts(cases.data, 1.7, center, s, isa);
    });
    EXPECT_TRUE(nqtest::AreSame(fast, plain))
        << nqtest::Label("products", n, isa) << ", " << cases.rows << " cases, " << cases.nWeights
        << " weights";
  }
}

TEST(CaseProducts, EveryFormGivesTheSameBits) {
  std::mt19937 random(1);
  for (std::size_t n = 0; n <= 100; n += n < 40 ? 1 : 60) {
    for (const std::size_t nWeights : {0u, 1u, 2u}) {
      // Exactly as long as the cases: what is read behind them is seen by the sanitizers.
      for (const std::size_t rows : {0u, 1u, 3u, 4u, 63u, 64u, 65u, 130u}) {
        std::vector<double> data(rows * (n + nWeights));
        for (double& x : data) x = static_cast<double>(random()) / 4294967296.0;
        const Cases cases{data.data(), rows, n, nWeights};
        for (std::size_t k = 1; k < data.size() && n > 1; k += cases.Step()) data[k] = data[1];
        if (n > 2 && rows == 65) {
          data[3 * cases.Step()] = std::numeric_limits<double>::infinity();
          data[64 * cases.Step() + n - 1] = std::numeric_limits<double>::quiet_NaN();
        }
        ExpectEveryFormSame(cases, std::vector<double>(n, 0.4));
      }
    }
  }
}

}  // namespace
}  // namespace NQMath_940::internal
