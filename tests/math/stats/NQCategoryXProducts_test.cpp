#include <nqcommon/math/stats/NQCategoryXProducts.h>
#include <nqcommon/math/stats/NQMeansXProducts.h>

#include <gtest/gtest.h>

#include <random>

#include "support/compare.h"
#include "support/displayed.h"
#include "support/each.h"
#include "support/rect.h"
#include "support/special_values.h"

namespace NQMath_940 {
namespace {

using namespace nqtest;
using Values = std::vector<double>;

// Three variables, factors of 3 and 4 levels (of which one is never met), two weights of 0, 1/2, 1
// or 2. The second variable lies far from 0, and so does the third, whose first value, where its
// centre is at first, lies far from the others. The expanded cases are less `shift`, which is
// exact: the mean of the dense record keeps more digits then.
struct Sample {
  Dense cases, expanded;

  Sample(int n, double offset, double shift) {
    std::mt19937 random(static_cast<unsigned>(n));
    const auto number = [&] { return static_cast<double>(random()) / 4294967296.0; };
    const double weights[] = {1, 0, 0.5, 2, 1};
    const double unit = n == 2 ? 1 : 0x1p-20;  // the weights of many add up to far less than 1
    for (int i = 0; i < n; ++i) {
      const std::size_t levels[] = {random() % 3, random() % 3};
      const double first = static_cast<double>(levels[0]), second = static_cast<double>(levels[1]);
      const double x[] = {number(), offset + number() + first, offset + (i == 0 ? 1e6 : number())};
      const double w[] = {weights[i % 5] * unit, weights[(i / 5) % 5]};
      cases.push_back({x[0], x[1], x[2], first + 0.75, second, w[0], w[1]});
      Values wide = {x[0], x[1] - shift, x[2] - shift, 0, 0, 0, 0, 0, 0, 0, w[0], w[1]};
      wide[3 + levels[0]] = wide[6 + levels[1]] = 1;
      expanded.push_back(wide);
    }
  }
};

NQCategoryXProducts Empty(bool intercept) { return {3, {3, 4}, intercept, true, true}; }

// Products to 1e-13 of what the two diagonal elements allow.
void ExpectExpanded(const NQCategoryXProducts& got, const NQMeansXProdData& want, double shift,
                    const char* way) {
  NQMeansXProdData record;
  ASSERT_TRUE(got.GetRecord(record)) << way;
  EXPECT_EQ(record.GetNCases(), want.GetNCases()) << way;
  ASSERT_EQ(record.GetNVars(), want.GetNVars()) << way;
  const NQSymMatrix& s = want.GetXProds();
  for (int i = 0; i < record.GetNVars(); ++i) {
    const auto at = static_cast<std::size_t>(i);
    const double mean = want.GetMeans()[at] + (i == 1 || i == 2 ? shift : 0);
    // Raw sums round as they grow.
    EXPECT_CLOSE(record.GetMeans()[at], mean, record.IsIntercept() ? 2e-15 : 1e-14) << way << i;
    for (int j = 0; j <= i; ++j)
      EXPECT_NEAR(record.GetXProds().GetElem(i, j), s.GetElem(i, j),
                  1e-13 * std::sqrt(s.GetElem(i, i) * s.GetElem(j, j)))
          << way << i << ' ' << j;
  }
}

TEST(CategoryXProducts, EveryWayGivesTheExpandedRecord) {
  for (const auto& [n, offset] : {std::pair{2, 3.0}, {200, 0.0}, {200, 1e9}, {9000, 1e9}}) {
    for (const bool intercept : {true, false}) {
      SCOPED_TRACE(::testing::Message() << n << " cases at " << offset << ", " << intercept);
      const double shift = intercept ? offset : 0;
      const Sample sample(n, offset, shift);
      NQMeansXProducts dense(10, intercept, true, true);
      ASSERT_TRUE(dense.Compute(ToRect(sample.expanded), 0));
      const NQRectMatrix cases = ToRect(sample.cases);
      NQCategoryXProducts whole = Empty(intercept), blocks = whole, single = whole, merged;
      // What blocks compute first is replaced by what follows.
      EXPECT_EACH(true, whole.Compute(cases, 0), blocks.Compute(cases, 3),
                  blocks.Compute(cases, 1));
      for (auto from = sample.cases.begin() + 1; from != sample.cases.end();) {
        const auto to = from + std::min<std::ptrdiff_t>(37, sample.cases.end() - from);
        const NQRectMatrix block = ToRect(Dense(from, to));
        from = to;
        NQCategoryXProducts part = Empty(intercept);
        EXPECT_EACH(true, part.Compute(block, 0), merged.Merge(part), blocks.Update(block, 0));
      }
      for (const Values& x : sample.cases)
        EXPECT_TRUE(
            single.AddCase(x, {static_cast<int>(x[3]), static_cast<int>(x[4])}, x[5] * x[6]));
      NQCategoryXProducts start = Empty(intercept);
      EXPECT_EACH(true, start.Update(cases, 1), start.Merge(merged));
      ExpectExpanded(whole, dense, shift, "at once");
      ExpectExpanded(blocks, dense, shift, "blocks");
      ExpectExpanded(single, dense, shift, "case by case");
      ExpectExpanded(start, dense, shift, "merged");
      EXPECT_EACH(true, whole.Merge(whole), dense.Merge(dense));
      ExpectExpanded(whole, dense, shift, "twice itself");
    }
  }
}

// Whole counts are exact, and so is a constant, whose sum is beyond the range.
TEST(CategoryXProducts, CountsAndConstants) {
  NQCategoryXProducts counts(1, {2}, true, false, false);
  NQMeansXProdData record;
  EXPECT_EACH(true, counts.Update(ToRect({{1e308, 0}, {1e308, 1}}), 0),
              counts.AddCase({1e308}, {1}, 1), counts.GetRecord(record));
  EXPECT_EQ(record.GetMeans(), (Values{1e308, 1 / 3.0, 2 / 3.0}));
  EXPECT_EQ(record.GetXProds().AsVectorConst(), (Values{0, 0, 2 / 3.0, 0, -2 / 3.0, 2 / 3.0}));
}

TEST(CategoryXProducts, RefusalsChangeNothing) {
  NQCategoryXProducts r = Empty(true), none, raw = Empty(false), other(3, {4, 3}, true, true, true);
  const Values good = {5, 4, 1, 2, 3, 1, 2};
  NQCategoryXProducts own(3, {3, 4}, false, false, false);
  EXPECT_EACH(true, r.Compute(ToRect({good}), 0), raw.Compute(ToRect({good}), 0));
  const std::string before = Displayed(r);
  for (const Values& bad : {Values{1, 2, 3, 3, 0, 1, 1}, Values{1, 2, 3, 0, -1, 1, 1},
                            Values{1, 2, 3, 0, kNaN, 1, 1}, Values{1, 2, 3, 0, 0, -3, 1}})
    EXPECT_EACH(false, r.Compute(ToRect({good, bad}), 0), r.Update(ToRect({good, bad}), 0));
  const Values x = {1, 2, 3};
  EXPECT_EACH(false, r.AddCase(x, {0, 4}, 1), r.AddCase(x, {-1, 0}, 1), r.AddCase(x, {0}, 1),
              r.AddCase({1, 2}, {0, 0}, 1), r.AddCase(x, {0, 0}, -1), r.AddCase(x, {0, 0}, kNaN),
              r.Update(ToRect({{1, 2, 3, 0, 0, 1}}), 0), r.Merge(raw), r.Merge(other),
              r.Merge(none));
  EXPECT_EQ(Displayed(r), before);
  const NQRectMatrix weightless = ToRect({{1, 2, 3, 0, 0, 1, 1}, {4, 5, 6, 1, 1, -1, 1}});
  EXPECT_EACH(true, r.Update(weightless, 0), Displayed(r) == before, r.Compute(weightless, 0),
              r.AddCase(x, {0, 0}, 0), Displayed(r) == Displayed(Empty(true)), own.Merge(raw),
              own.Update(ToRect({{1, 2, 3, 0, 0}}), 0));
  EXPECT_EQ(NQCategoryXProducts(0, {2, 1}, true, false, false).GetNColumns(), 3);
  for (const auto& refused :
       {NQCategoryXProducts(-1, {2}, true, false, false), {1, {2, 0}, true, false, false}})
    EXPECT_EQ(refused.GetNColumns(), 0);
}

}  // namespace
}  // namespace NQMath_940
