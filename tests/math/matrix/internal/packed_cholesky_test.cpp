// The rules of the plain loops on cases small enough to know, and the fast forms against the plain
// loops, bit for bit.
#include <nqcommon/math/matrix/internal/packed_cholesky.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <tuple>

#include "support/compare.h"
#include "support/packed.h"
#include "support/special_values.h"

namespace NQMath_940::internal {
namespace {

using namespace nqtest;

// The pivots of aliased rows, and no others, are 0.
TEST(PackedCholesky, PivotRules) {
  for (auto [name, s, t, eps, factor] :
       std::vector<std::tuple<const char*, Values, Values, double, Values>>{
#include "golden/matrix_pivot_rules.inc"
       }) {
    Bits aliased, want;
    for (std::size_t i = 0; i < t.size(); ++i) want.push_back(factor[DiagIndex(i)] == 0);
    const std::size_t count = CholeskyPlain(s.data(), t.size(), t.data(), eps, &aliased);
    EXPECT_TRUE(AreSame(s, factor)) << name;
    EXPECT_EQ(aliased, want) << name;
    EXPECT_EQ(count, static_cast<std::size_t>(std::count(want.begin(), want.end(), true))) << name;
  }
}

void ExpectEveryFormSame(const Values& s, std::size_t n, const char* name, double eps = 1e-10) {
  const Values t(n, static_cast<double>(n));
  Values want = s;
  Bits wantAliased;
  const std::size_t count = CholeskyPlain(want.data(), n, t.data(), eps, &wantAliased);
  for (const Isa isa : kIsas) {
    const std::string label = Label(name, n, isa);
    Values got = s;
    Bits aliased;
    EXPECT_EQ(Cholesky(got.data(), n, t.data(), eps, &aliased, isa), count) << label;
    EXPECT_TRUE(AreSame(got, want)) << label;
    EXPECT_EQ(aliased, wantAliased) << label;
  }
}

TEST(PackedCholesky, EveryFormGivesTheSameBits) {
  for (const std::size_t n : PackedOrders()) {
    const Values regular = RandomPositiveDefinite(n);
    ExpectEveryFormSame(regular, n, "regular");

    // Rows of a tile: 4 or 8. The first, inner and last ones, and neighbours.
    Values aliased = regular;
    aliased[0] = 0;
    for (const std::size_t k : {3u, 4u, 7u, 10u, 15u, 16u, 63u, 100u}) {
      if (k < n) CopyRow(aliased, n, k - 2, k);
    }
    ExpectEveryFormSame(aliased, n, "aliased");

    Values negative = regular;
    negative[DiagIndex(n / 3)] *= -1;
    ExpectEveryFormSame(negative, n, "a NaN pivot", -2);

    for (const double x : {kNaN, kInf}) {
      Values special = regular;
      special[LowerIndex(n - 1, n / 2)] = x;
      special[DiagIndex(n / 3)] = x;
      ExpectEveryFormSame(special, n, "NaN or infinity");
      special = aliased;  // in the column of an aliased pivot
      special[LowerIndex(n - 1, 0)] = x;
      ExpectEveryFormSame(special, n, "NaN or infinity, aliased");
    }
  }
}

}  // namespace
}  // namespace NQMath_940::internal
