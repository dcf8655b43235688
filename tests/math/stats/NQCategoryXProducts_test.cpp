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
// centre is at first, lies far from the others. The expanded cases are less `shift`, which is exact:
// the mean of the dense record keeps more digits then.
struct Sample {
  Dense cases, expanded;

  Sample(int n, double offset, double shift) {
    std::mt19937 random(static_cast<unsigned>(n));
    const double weights[] = {1, 0, 0.5, 2, 1};
    for (int i = 0; i < n; ++i) {
      const auto level = [&](unsigned levels) { return random() % levels; };
      const auto number = [&] { return static_cast<double>(random()) / 4294967296.0; };
      const auto first = level(3), second = level(3);
      Values row = {number(), offset + number() + static_cast<double>(first),
                    offset + (i == 0 ? 1e6 : number())};
      Values wide = row;
      wide[1] -= shift;
      wide[2] -= shift;
      wide.resize(10);
      wide[3 + first] = wide[6 + second] = 1;
      row.insert(row.end(), {static_cast<double>(first) + 0.75, static_cast<double>(second)});
      for (Values* to : {&row, &wide})
        to->insert(to->end(), {weights[i % 5], weights[(i / 5) % 5]});
      cases.push_back(row);
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
  EXPECT_EQ(record.IsIntercept(), want.IsIntercept());
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
      NQCategoryXProducts whole = Empty(intercept), blocks = whole, single = whole, merged;
      EXPECT_TRUE(blocks.Compute(ToRect(sample.cases), 3));  // replaced by what follows
      for (NQCategoryXProducts* start : {&whole, &blocks})
        EXPECT_TRUE(start->Compute(ToRect(sample.cases), start == &whole ? 0 : 1));
      for (std::size_t first = 1; first < sample.cases.size(); first += 37) {
        const std::size_t end = std::min(first + 37, sample.cases.size());
        const NQRectMatrix block = ToRect(Dense(sample.cases.begin() + static_cast<long>(first),
                                                sample.cases.begin() + static_cast<long>(end)));
        NQCategoryXProducts part = Empty(intercept);
        EXPECT_TRUE(part.Compute(block, 0));
        EXPECT_TRUE(merged.Merge(part));
        EXPECT_TRUE(blocks.Update(block, 0));
      }
      for (const Values& x : sample.cases)
        EXPECT_TRUE(
            single.AddCase(x, {static_cast<int>(x[3]), static_cast<int>(x[4])}, x[5] * x[6]));
      NQCategoryXProducts start = Empty(intercept);
      EXPECT_TRUE(start.Update(ToRect(sample.cases), 1));
      EXPECT_TRUE(start.Merge(merged));
      ExpectExpanded(whole, dense, shift, "at once");
      ExpectExpanded(blocks, dense, shift, "blocks");
      ExpectExpanded(single, dense, shift, "case by case");
      ExpectExpanded(start, dense, shift, "merged");
      EXPECT_TRUE(whole.Merge(whole));
      EXPECT_TRUE(dense.Merge(dense));
      ExpectExpanded(whole, dense, shift, "twice itself");
    }
  }
}

// Whole counts are exact, and so is a constant.
TEST(CategoryXProducts, CountsAndConstants) {
  NQCategoryXProducts counts(1, {2}, true, false, false);
  for (const int code : {0, 1, 1}) EXPECT_TRUE(counts.AddCase({0.1}, {code}, 1));
  NQMeansXProdData record;
  EXPECT_TRUE(counts.GetRecord(record));
  EXPECT_EQ(record.GetMeans(), (Values{0.1, 1 / 3.0, 2 / 3.0}));
  EXPECT_EQ(record.GetXProds().AsVectorConst(), (Values{0, 0, 2 / 3.0, 0, -2 / 3.0, 2 / 3.0}));
}

TEST(CategoryXProducts, RefusalsChangeNothing) {
  const Sample sample(20, 5, 0);
  NQCategoryXProducts r = Empty(true), none, raw = Empty(false), other(3, {4, 3}, true, true, true);
  EXPECT_TRUE(r.Compute(ToRect(sample.cases), 0));
  EXPECT_TRUE(raw.Compute(ToRect(sample.cases), 0));
  const std::string before = Displayed(r);
  Dense bad[] = {sample.cases, sample.cases, sample.cases, sample.cases, sample.expanded};
  bad[0][19][3] = 3;
  bad[1][19][4] = -1;
  bad[2][19][4] = kNaN;
  bad[3][19][5] = -1e9;
  for (const Dense& cases : bad)
    EXPECT_EACH(false, r.Compute(ToRect(cases), 0), r.Update(ToRect(cases), 0));
  const Values x = {1, 2, 3};
  EXPECT_EACH(false, r.AddCase(x, {0, 4}, 1), r.AddCase(x, {-1, 0}, 1), r.AddCase(x, {0}, 1),
              r.AddCase({1, 2}, {0, 0}, 1), r.AddCase(x, {0, 0}, -1), r.AddCase(x, {0, 0}, kNaN),
              r.Merge(raw), r.Merge(other), r.Merge(none));
  EXPECT_EQ(Displayed(r), before);
  NQCategoryXProducts cleared = r;
  EXPECT_TRUE(cleared.Update(ToRect({{1, 2, 3, 0, 0, 0, 1}}), 0));  // a weight of 0
  EXPECT_EQ(Displayed(cleared), before);
  EXPECT_TRUE(cleared.Compute(ToRect({{1, 2, 3, 0, 0, 0, 1}}), 0));
  EXPECT_EQ(Displayed(cleared), Displayed(Empty(true)));
  for (const auto& refused :
       {NQCategoryXProducts(-1, {2}, true, false, false), {1, {2, 0}, true, false, false}})
    EXPECT_EQ(refused.GetNColumns(), 0);
}

}  // namespace
}  // namespace NQMath_940
