// The fast forms against the plain loops, bit for bit. What the plain loops give is tested through
// the records.
#include <nqcommon/math/stats/internal/case_products.h>

#include "support/compare.h"
#include "support/packed.h"
#include "support/special_values.h"

namespace NQMath_940::internal {
namespace {

// What a form adds to, from values that are not 0, and whether columns are constant, in one line of
// numbers.
template <class Add>
std::vector<double> Added(std::size_t nVars, Add add) {
  double weight = 0.3;
  std::vector<double> sums(nVars, 0.1), s(RowStart(nVars), 0.7);
  const std::vector<bool> constant = add(CaseSums{weight, sums}, s.data());
  s.insert(s.end(), sums.begin(), sums.end());
  s.insert(s.end(), constant.begin(), constant.end());
  s.push_back(weight);
  return s;
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
          data[3 * cases.Step()] = nqtest::kInf;
          data[64 * cases.Step() + n - 1] = nqtest::kNaN;
        }
        const std::vector<double> center(n, 0.4);
        const auto plain = Added(n, [&](CaseSums to, double* s) {
          AddProductsPlain(cases, center, to, s);
          if (rows > 0) AddProductsPlain(cases.data, 1.7, center, s);
          return AddSumsPlain(cases, to);
        });
        for (const Isa isa : nqtest::RunnableIsas()) {
          const auto fast = Added(n, [&](CaseSums to, double* s) {
            AddProducts(cases, center, to, s, isa);
            if (rows > 0) AddProducts(cases.data, 1.7, center, s, isa);
            return AddSums(cases, to, isa);
          });
          EXPECT_TRUE(nqtest::AreSame(fast, plain)) << nqtest::Label("products", n, isa) << ", "
                                                    << rows << " cases, weights " << nWeights;
        }
      }
    }
  }
}

}  // namespace
}  // namespace NQMath_940::internal
