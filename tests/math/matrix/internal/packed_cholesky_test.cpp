// The rules of the plain loops on cases small enough to know, and the fast forms against the plain
// loops, bit for bit.
#include <nqcommon/math/matrix/internal/packed_cholesky.h>

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

#include "support/compare.h"
#include "support/packed.h"

namespace NQMath_940::internal {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();

// The pivots of aliased rows, and no others, are 0.
TEST(PackedCholesky, PivotRules) {
  struct Row {
    const char* name;
    std::vector<double> s, t;
    double eps;
    std::vector<double> factor;
  };
  const Row rows[] = {
      {"order 0", {}, {}, 0, {}},
      {"regular", {4, 2, 5, 6, 7, 22}, {1, 1, 1}, 0, {2, 1, 2, 3, 2, 3}},
      {"dependent row", {4, 6, 9, 2, 7, 17}, {1, 1, 1}, 0, {2, 3, 0, 1, 0, 4}},
      {"at and above the threshold", {4, 0, 4}, {8, 7}, 0.5, {0, 0, 2}},
      {"negative", {-4, 2, 9}, {1, 1}, 0, {0, 0, 3}},
      {"NaN is aliased", {kNaN, 2, 9}, {1, 1}, 0, {0, 0, 3}},
      {"a NaN pivot divides", {-4, 2, 9}, {2, 1}, -4, {kNaN, kNaN, 0}},
      {"infinite pivot", {kInf, 2, 9}, {1, 1}, 0, {kInf, 0, 3}},
  };
  for (const Row& row : rows) {
    std::vector<double> s = row.s;
    std::vector<bool> aliased, want;
    for (std::size_t i = 0; i < row.t.size(); ++i) want.push_back(row.factor[DiagIndex(i)] == 0);
    std::size_t count = CholeskyPlain(s.data(), row.t.size(), row.t.data(), row.eps, &aliased);
    EXPECT_TRUE(nqtest::AreSame(s, row.factor)) << row.name;
    EXPECT_EQ(aliased, want) << row.name;
    for (const bool is : want) count -= is;
    EXPECT_EQ(count, 0u) << row.name;
  }
}

void ExpectEveryFormSame(const std::vector<double>& s, std::size_t n, const char* name,
                         double eps = 1e-10) {
  const std::vector<double> t(n, static_cast<double>(n));
  std::vector<double> want = s;
  std::vector<bool> wantAliased;
  const std::size_t count = CholeskyPlain(want.data(), n, t.data(), eps, &wantAliased);
  for (const Isa isa : nqtest::kIsas) {
    const std::string label = nqtest::Label(name, n, isa);
    std::vector<double> got = s;
    std::vector<bool> aliased;
    EXPECT_EQ(Cholesky(got.data(), n, t.data(), eps, &aliased, isa), count) << label;
    EXPECT_TRUE(nqtest::AreSame(got, want)) << label;
    EXPECT_EQ(aliased, wantAliased) << label;
  }
}

TEST(PackedCholesky, EveryFormGivesTheSameBits) {
  for (const std::size_t n : nqtest::PackedOrders()) {
    const std::vector<double> regular = nqtest::RandomPositiveDefinite(n);
    ExpectEveryFormSame(regular, n, "regular");

    // Rows of a tile: 4 or 8. The first, inner and last ones, and neighbours.
    std::vector<double> aliased = regular;
    aliased[0] = 0;
    for (const std::size_t k : {3u, 4u, 7u, 10u, 15u, 16u, 63u, 100u}) {
      if (k < n) nqtest::CopyRow(aliased, n, k - 2, k);
    }
    ExpectEveryFormSame(aliased, n, "aliased");

    std::vector<double> negative = regular;
    negative[DiagIndex(n / 3)] *= -1;
    ExpectEveryFormSame(negative, n, "a NaN pivot", -2);

    for (const double x : {kNaN, kInf}) {
      std::vector<double> special = regular;
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
