// The four classes of means and cross-products.
#include <nqcommon/math/stats/NQAccumXProdPair.h>
#include <nqcommon/math/stats/NQMeansXProducts.h>
#include <nqcommon/math/stats/NQProvMeans.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include <nqcommon/common/NQMV.h>

#include "support/compare.h"
#include "support/displayed.h"
#include "support/rect.h"

namespace NQMath_940 {
namespace {

using nqtest::Dense;
using nqtest::ToRect;
using Values = std::vector<double>;
constexpr double kMissing = NQCommon_940::Getsysmis();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

// A number and how much it may be off, by how it was come by.
enum Cost { kMeansFirst, kRoundedMeans, kRawSums };
struct ExactNumber {
  double value;
  double allowed[3];
};

struct WeightedCases {
  const char* name;
  bool intercept;
  Dense cases;  // three variables and a weight
  std::vector<ExactNumber> record, pairs;
};
const std::vector<WeightedCases> kWeightedCases = {
#include "reference/means_xprods.inc"
};

void ExpectNear(const Values& got, const std::vector<ExactNumber>& want, Cost cost,
                const std::string& label) {
  ASSERT_EQ(got.size(), want.size()) << label;
  for (std::size_t k = 0; k < got.size(); ++k)
    EXPECT_NEAR(got[k], want[k].value, want[k].allowed[cost]) << label << ", number " << k;
}

// W, the means, the products.
Values ValuesOf(const NQMeansXProdData& record) {
  Values values{record.GetNCases()};
  values.insert(values.end(), record.GetMeans().begin(), record.GetMeans().end());
  for (const double x : record.GetXProds().AsVectorConst()) values.push_back(x);
  return values;
}

NQMeansXProducts Computed(const Dense& cases, bool intercept = true) {
  NQMeansXProducts record(3, intercept, true, false);
  EXPECT_TRUE(record.Compute(ToRect(cases), 0));
  return record;
}

// Three cases and then one by one, the last case first.
NQMeansXProdData InBlocks(const WeightedCases& row, bool intercept, bool onePass) {
  const auto update = onePass ? &NQMeansXProducts::UpdateOnePass : &NQMeansXProducts::Update;
  NQMeansXProducts record(3, intercept, true, false);
  const Dense cases(row.cases.rbegin(), row.cases.rend());
  EXPECT_TRUE((record.*update)(ToRect(cases), 3));
  for (std::size_t k = 3; k < cases.size(); ++k)
    EXPECT_TRUE((record.*update)(ToRect({cases[k]}), 1000));
  EXPECT_TRUE(onePass ? record.FinishUpdateOnePass() : record.FinishUpdate());
  return record;
}

NQMeansXProdData CaseByCase(const WeightedCases& row) {
  NQProvMeans record(3, row.intercept);
  for (const auto& one : row.cases) EXPECT_TRUE(record.Update(one, one.back()));
  EXPECT_TRUE(record.Update(row.cases[0], record.GetNCases() / 2));
  EXPECT_TRUE(record.Update(row.cases[0], -record.GetNCases() / 3));
  return record;
}

TEST(MeansXProducts, EveryWayGivesTheExactRecord) {
  for (const WeightedCases& row : kWeightedCases) {
    const auto expect = [&](const NQMeansXProdData& record, Cost cost, const char* way) {
      ExpectNear(ValuesOf(record), row.record, cost, std::string(row.name) + ", " + way);
    };
    expect(Computed(row.cases, row.intercept), kMeansFirst, "Compute");
    expect(InBlocks(row, row.intercept, false), kRoundedMeans, "blocks");
    expect(CaseByCase(row), kRoundedMeans, "case by case");
    if (!row.intercept) continue;
    expect(InBlocks(row, true, true), kRawSums, "one pass");
    expect(InBlocks(row, false, true), kRawSums, "one pass, centred without intercept too");
  }
}

// Certified results of c, and some times c - d and c + d. The tolerance is what rounding the values
// allows: 2 eps c / d.
TEST(MeansXProducts, CertifiedMeanAndDeviation) {
  const double table[][6] = {{10000002, 10000001, 10000003, 1, 1, 0},
                             {1.2, 1.1, 1.3, 500, 0.1, 1e-14},
                             {1000000.2, 1000000.1, 1000000.3, 500, 0.1, 4e-9},
                             {10000000.2, 10000000.1, 10000000.3, 500, 0.1, 4e-8}};
  for (const auto& [mean, below, above, times, deviation, tolerance] : table) {
    Dense cases{{mean}};
    for (int k = 0; k < times; ++k) cases.insert(cases.end(), {{below}, {above}});
    NQMeansXProducts record(1, true, false, false);
    ASSERT_TRUE(record.Compute(ToRect(cases), 0));
    const double variance = record.GetXProds().GetElem(0) / (record.GetNCases() - 1);
    EXPECT_CLOSE(record.GetMeans()[0], mean, 1e-14);
    EXPECT_CLOSE(std::sqrt(variance), deviation, tolerance) << mean;
  }
}

// Ten times 0.1 is not 1 when added up: without weights that decides.
TEST(MeansXProducts, ConstantColumnsHaveExactMeans) {
  const NQRectMatrix cases = ToRect(Dense(10, {0.1, 0.5, 0.7, 3}));
  NQMeansXProducts record(2, true, true, true), plain(4, true, false, false);
  ASSERT_TRUE(record.Compute(cases, 0) && plain.Compute(cases, 0));
  EXPECT_CLOSE(record.GetNCases(), 21, 1e-15);
  EXPECT_EQ(record.GetMeans(), (Values{0.1, 0.5}));
  EXPECT_EQ(record.GetXProds().AsVectorConst(), Values(3));
  EXPECT_EQ(plain.GetMeans()[0], 0.09999999999999999);
  EXPECT_EQ(plain.GetMeans()[3], 3);
}

TEST(MeansXProducts, RefusedAndEmptyBlocks) {
  const NQMeansXProducts good = Computed({{1, 2, 3, 1}, {4, 7, 1, 0.5}});
  for (const Dense& bad :
       {Dense{{1, 2, 3}}, Dense{{1, 2, 3, 4, 5}}, Dense{{1, 2, 3, -2}}, Dense{{1, 2, 3, kNaN}}}) {
    NQMeansXProducts record = good;
    EXPECT_FALSE(record.Compute(ToRect(bad), 0) || record.Update(ToRect(bad), 0));
    EXPECT_FALSE(record.UpdateOnePass(ToRect(bad), 0) && record.FinishUpdateOnePass());
    EXPECT_EQ(ValuesOf(record), ValuesOf(good));
  }
  for (const Dense& none : {Dense{{1, 2, 3, 0}}, Dense{{1, 2, 3, 1}, {4, 5, 6, -1}}}) {
    NQMeansXProducts record = good;
    EXPECT_TRUE(record.Update(ToRect(none), 0));
    EXPECT_EQ(ValuesOf(record), ValuesOf(good));
    EXPECT_TRUE(record.UpdateOnePass(ToRect(none), 0) && record.FinishUpdateOnePass());
    for (const auto& empty : {record, Computed(none)}) EXPECT_EQ(ValuesOf(empty), Values(10));
  }
  // Raw sums are of the variables that the record had then.
  NQMeansXProducts record(1, true, false, false);
  EXPECT_TRUE(record.UpdateOnePass(ToRect({{1}, {3}}), 0) && record.SetNVars(2));
  EXPECT_TRUE(record.UpdateOnePass(ToRect({{1, 5}, {3, 5}}), 0) && record.FinishUpdateOnePass());
  EXPECT_EQ(ValuesOf(record), (Values{2, 2, 5, 2, 0, 0}));
}

// The cases (0, 1), (2, 5), (4, 6) with weights 1, 2 and 1.
NQProvMeans Sample(bool intercept = true) {
  NQProvMeans record;
  EXPECT_TRUE(intercept ? record.SetData(true, 4, {2, 4.25}, {8, 10, 14.75})
                        : record.SetData(false, 4, {2, 4.25}, {24, 44, 87}));
  return record;
}

TEST(MeansXProdData, CasesInAndOutAndCopies) {
  for (const bool intercept : {true, false}) {
    NQMeansXProdData record(2, intercept);
    EXPECT_TRUE(record.DeleteCase({0, 1}, -1) && record.AddCase({4, 6}, 1));
    EXPECT_TRUE(record.AddCase({2, 5, kNaN}, 2) && record.AddCase({10, -6}, 0));
    const NQMeansXProdData copy(record), moved(std::move(record));
    record = copy;
    EXPECT_TRUE(record.AddCase({10, -6}, 4) && record.DeleteCase({10, -6}, 4));
    for (const auto& r : {record, copy, moved}) EXPECT_EQ(ValuesOf(r), ValuesOf(Sample(intercept)));
    EXPECT_TRUE(record.DeleteCase({7, 7}, 4) && ValuesOf(record) == Values(6)) << "W reached 0";
  }
}

TEST(MeansXProdData, RefusalsChangeNothing) {
  using List = std::vector<const NQMeansXProdData*>;
  const NQProvMeans a = Sample(), raw = Sample(false);
  const NQMeansXProdData one(1, true), none;
  for (NQProvMeans r : {a, NQProvMeans(2, true)}) {
    const Values before = ValuesOf(r);
    EXPECT_FALSE(r.SetNVars(-1) || r.SetData(true, -1, {1}, {1}) || r.SetData(true, 1, {1}, {}));
    EXPECT_FALSE(r.Merge(raw) || r.Merge(List{&one}) || r.Merge(List{&none, &raw}));
    EXPECT_FALSE(r.AddCase({1}, 1) || r.DeleteCase({1}, 1) || r.UpdateXX({1}, 1));
    EXPECT_FALSE(r.AddCase({1, 1}, -5) || r.DeleteCase({1, 1}, 5) || r.AddCase({1, 1}, kNaN));
    EXPECT_FALSE(r.Update({1}, 0) || r.Update({1, 1}, -4.5) || r.Update({1, 1}, kNaN));
    EXPECT_EQ(ValuesOf(r), before);
  }
  NQMeansXProdData stopped;
  EXPECT_FALSE(stopped.Merge(List{nullptr, &a, &raw, &a}));
  EXPECT_EQ(ValuesOf(stopped), ValuesOf(a));
}

TEST(MeansXProdData, MergesWithEmptyAndWithItself) {
  NQMeansXProdData odd;  // values that the formulas would round
  ASSERT_TRUE(odd.SetData(true, 3.1, {0.1, 1 / 3.0}, {0.7, 1e-3, 1e300}));
  for (NQMeansXProdData empty : {NQMeansXProdData(), NQMeansXProdData(2, true)}) {
    EXPECT_TRUE(empty.Merge(odd) && empty.Merge(NQMeansXProdData(2, true)));
    EXPECT_EQ(ValuesOf(empty), ValuesOf(odd));
  }
  NQMeansXProdData many = Sample();
  for (int k = 0; k < 25; ++k) EXPECT_TRUE(many.Merge(many));
  const double n = 1 << 25;
  EXPECT_EQ(ValuesOf(many), (Values{4 * n, 2, 4.25, 8 * n, 10 * n, 14.75 * n}));
}

// All pairs of three variables of a case, one of them the other way round.
void AddCase(const Values& x, NQAccumXProdPair& to) {
  to.Update(1, x[1], 0, x[0], x[3]);
  to.Update(0, x[0], 2, x[2], x[3]);
  to.Update(2, x[2], x[1], x[3]);
}

Values ValuesOf(const NQAccumXProdPair& pairs) {
  Values values;
  for (int cell = 0; cell < 3; ++cell) {
    const auto [n, x, y, xx, yy] = pairs.GetStats(cell);
    values.insert(values.end(), {n, x, y, xx, yy, pairs.GetCovar().GetElem(cell)});
  }
  return values;
}

TEST(AccumXProdPair, EveryBatchSizeAndGroupingGivesTheExactStatistics) {
  for (const WeightedCases& row : kWeightedCases) {
    if (row.pairs.empty()) continue;
    for (const int nAccum : {1, 3, 100}) {
      NQAccumXProdPair all(3, nAccum), halves[] = {NQAccumXProdPair(0, 1), all};
      for (std::size_t k = 0; k < row.cases.size(); ++k) {
        // A part of a case each, most of them too light to be folded by themselves.
        NQAccumXProdPair part(3, nAccum);
        AddCase(row.cases[k], part);
        AddCase(row.cases[k], all);
        EXPECT_TRUE(halves[k % 2].Merge(std::vector{&part}));
      }
      EXPECT_TRUE(all.Finish() && halves[0].Merge(halves[1]));
      ExpectNear(ValuesOf(all), row.pairs, kRawSums, row.name);
      ExpectNear(ValuesOf(halves[0]), row.pairs, kRawSums, row.name);
    }
  }
}

TEST(AccumXProdPair, FoldsWhenTheBatchAllows) {
  struct Run {
    int nAccum;
    Values weights, returned, folded;  // for each case, and W after it
    bool finished;
  };
  for (const Run& run : {Run{1, {1, 1, 0.5}, {0, 1, 1}, {0, 2, 2.5}, true},
                         {2, {1, 1, 1}, {1, 1, 1}, {0, 2, 2}, true},
                         {2, {0.25, 0.5, 0.25, 1}, {1, 0, 0, 1}, {0, 0, 0, 2}, true},
                         {1, {2, 0, 1}, {1, 1, 1}, {2, 2, 3}, true},
                         {1, {0.5, 0.5}, {0, 0}, {0, 0}, false},
                         {1, {kNaN}, {0}, {0}, false}}) {
    NQAccumXProdPair pairs(2, run.nAccum);
    pairs.SetNAccum(-7);
    for (std::size_t k = 0; k < run.weights.size(); ++k) {
      EXPECT_EQ(pairs.Update(0, 1, 1, run.weights[k]), run.returned[k] != 0) << k;
      EXPECT_EQ(pairs.GetStats(0).nCases, run.folded[k]) << k;
    }
    EXPECT_EQ(pairs.Finish(), run.finished);
  }
  // A lowered size, and a batch thrown away.
  NQAccumXProdPair pairs(2, 100);
  for (const double x : {1, 2, 6}) EXPECT_TRUE(pairs.Update(0, x, 2 * x, 1));
  EXPECT_TRUE(pairs.Merge(pairs));
  EXPECT_DOUBLE_EQ(pairs.GetCovar().GetElem(0), 56.0 / 5);
  EXPECT_TRUE(pairs.Update(0, 1, 1, 1) && pairs.Update(0, 2, 2, 1));
  pairs.SetNAccum(2);
  EXPECT_TRUE(pairs.Update(0, 3, 3, 1) && pairs.Update(0, 4, 4, 1));
  pairs.InitAccumCounts(0);
  EXPECT_TRUE(pairs.Finish() && NQAccumXProdPair(1, 1).Finish());
  EXPECT_EQ(pairs.GetStats(0).nCases, 9);
  // A pair that has no cases does not keep the next one from being finished.
  NQAccumXProdPair three(3, 9);
  EXPECT_TRUE(three.Update(2, 1, 1, 4));
  EXPECT_FALSE(three.Finish());
  EXPECT_EQ(three.GetStats(2).nCases, 4);
}

TEST(AccumXProdPair, RefusalsChangeNothing) {
  NQAccumXProdPair a(3, 1), b(2, 1), none(-3, 0);
  const std::string before = nqtest::Displayed(a);
  EXPECT_FALSE(a.Update(3, 1, 0, 1, 9) || a.Update(1, 1, -1, 1, 9) || a.Update(1, 1, 1, 1, 9));
  EXPECT_FALSE(a.Update(-1, 1, 1, 9) || a.Update(3, 1, 1, 9) || a.IncrStats(3));
  EXPECT_FALSE(a.Merge(b) || a.Merge(std::vector{&b}) || a.Merge(std::vector{&none}));
  EXPECT_FALSE(a.SetStats(3, {2, 0, 0, 0, 0}, 0) || a.SetStats(0, {1, 0, 0, 0, 0}, 0));
  EXPECT_EQ(nqtest::Displayed(a), before);
}

// The covariances are read as rows with a diagonal; only InitAll makes room for the last row.
TEST(AccumXProdPair, CorrelationsOfTheArrayAsItLies) {
  NQAccumXProdPair pairs(3, 1);
  const auto correlations = [&](const Values& covariances) {
    for (std::size_t k = 0; k < covariances.size(); ++k)
      EXPECT_TRUE(pairs.SetStats(static_cast<int>(k), {2, 0, 0, 0, 0}, covariances[k]));
    return pairs.GetCorr().AsVectorConst();
  };
  EXPECT_EQ(correlations({16, 3, 81}), (Values{4, 0.5, 9, kMissing, kMissing, kMissing}));
  EXPECT_EQ(correlations({0, 3, 81}),
            (Values{kMissing, kMissing, 9, kMissing, kMissing, kMissing}));
  pairs.InitAll();
  EXPECT_EQ(pairs.GetCovar().AsVectorConst(), Values(6));
  EXPECT_EQ(correlations({16, 3, 81, 2, 6, 256}), (Values{4, 0.5, 9, 0.25, 0.5, 16}));
}

TEST(MeansAndProducts, Display) {
  NQMeansXProducts products;
  NQAccumXProdPair pairs(2, 3);
  EXPECT_TRUE(products.Merge(Sample()) && pairs.SetStats(0, {2, 4, 5, 6, 7}, 8));
  EXPECT_TRUE(pairs.Update(1, 2, 0, 3, 0.5));
  const char* const want =
#include "golden/means_and_products_display.inc"
      ;
  EXPECT_EQ(nqtest::Displayed(products) + nqtest::Displayed(pairs), want);
}

}  // namespace
}  // namespace NQMath_940
