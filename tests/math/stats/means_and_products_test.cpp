// The four classes of means and cross-products.
#include <nqcommon/math/stats/NQAccumXProdPair.h>
#include <nqcommon/math/stats/NQCategoryXProducts.h>
#include <nqcommon/math/stats/NQMeansXProducts.h>
#include <nqcommon/math/stats/NQProvMeans.h>

#include <gtest/gtest.h>

#include <tuple>

#include "support/compare.h"
#include "support/displayed.h"
#include "support/each.h"
#include "support/rect.h"
#include "support/special_values.h"

namespace NQMath_940 {
namespace {

using namespace nqtest;
using Values = std::vector<double>;

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

TEST(MeansXProducts, EveryWayGivesTheExactRecord) {
  for (const WeightedCases& row : kWeightedCases) {
    const auto expect = [&](const NQMeansXProdData& record, Cost cost, const char* way) {
      ExpectNear(ValuesOf(record), row.record, cost, std::string(row.name) + ", " + way);
    };
    expect(Computed(row.cases, row.intercept), kMeansFirst, "Compute");
    expect(InBlocks(row, row.intercept, false), kRoundedMeans, "blocks");
    NQCategoryXProducts none(3, {}, row.intercept, true, false);
    NQMeansXProdData record;
    EXPECT_EACH(true, none.Compute(ToRect(row.cases), 0), none.GetRecord(record));
    expect(record, kMeansFirst, "without factors");
    NQProvMeans single(3, row.intercept);
    for (const auto& one : row.cases) EXPECT_TRUE(single.Update(one, one.back()));
    EXPECT_EACH(true, single.Update(row.cases[0], single.GetNCases() / 2),
                single.Update(row.cases[0], -single.GetNCases() / 3));
    expect(single, kRoundedMeans, "case by case");
    if (!row.intercept) continue;
    expect(InBlocks(row, true, true), kRawSums, "one pass");
    expect(InBlocks(row, false, true), kRawSums, "one pass, centred without intercept too");
  }
}

TEST(MeansXProducts, CertifiedMeanAndDeviation) {
  const double table[][6] = {
#include "math/stats/certified_deviation_cases.inc"
  };
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

// Ten times 0.1 is not 1 when added up: without weights that decides. Ten times 3.61 is 36.1, a
// tenth of which is not 3.61.
TEST(MeansXProducts, ConstantColumnsHaveExactMeans) {
  const NQRectMatrix cases = ToRect(Dense(10, {0.1, 0.5, 0.7, 3.61}));
  NQMeansXProducts record(2, true, true, true), one(3, true, true, false);
  NQMeansXProducts plain(4, true, false, false);
  EXPECT_EACH(true, record.Compute(cases, 0), one.Compute(cases, 0), plain.Compute(cases, 0));
  EXPECT_CLOSE(record.GetNCases(), 25.27, 1e-15);
  EXPECT_EQ(record.GetMeans(), (Values{0.1, 0.5}));
  EXPECT_EQ(one.GetMeans(), (Values{0.1, 0.5, 0.7}));
  EXPECT_EQ(plain.GetMeans()[0], 0.09999999999999999);
  EXPECT_EQ(plain.GetMeans()[3], 3.61);
}

TEST(MeansXProducts, RefusedAndEmptyBlocks) {
  const NQMeansXProducts good = Computed({{1, 2, 3, 0.5}, {4, 7, 1, 0.5}});
  const std::pair<Dense, bool> rows[] = {
#include "math/stats/block_cases.inc"
  };
  for (const auto& [block, isEmpty] : rows) {
    SCOPED_TRACE(::testing::PrintToString(block));
    NQMeansXProducts record = good, computed = good;
    EXPECT_EQ(computed.Compute(ToRect(block), 0), isEmpty);
    EXPECT_EQ(record.Update(ToRect(block), 0), isEmpty);
    EXPECT_EQ(ValuesOf(record), ValuesOf(good));
    EXPECT_EQ(record.UpdateOnePass(ToRect(block), 0) && record.FinishUpdateOnePass(), isEmpty);
    for (const auto& r : {record, computed})
      EXPECT_EQ(ValuesOf(r), isEmpty ? Values(10) : ValuesOf(good));
  }
  // Raw sums are of the variables that the record had then: they cannot be finished for others.
  NQMeansXProducts record(1, true, false, false);
  EXPECT_EACH(true, record.StartUpdate(), record.UpdateOnePass(ToRect({{1}, {3}}), 0),
              record.SetNVars(0), record.SetNVars(2), !record.FinishUpdateOnePass(),
              record.UpdateOnePass(ToRect({{1, 5}}), 0), record.UpdateOnePass(ToRect({{3, 5}}), 0),
              record.FinishUpdateOnePass());
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
    EXPECT_EACH(true, record.AddCase({3, 3}, 0), record.DeleteCase({0, 1}, -1),
                record.AddCase({4, 6}, 1));
    EXPECT_EACH(true, record.AddCase({2, 5, kNaN}, 2), record.AddCase({10, -6}, 0));
    const NQMeansXProdData copy(record), moved(std::move(record));
    record = copy;
    EXPECT_EACH(true, record.AddCase({10, -6}, 4), record.DeleteCase({10, -6}, 4));
    for (const auto& r : {record, copy, moved}) EXPECT_EQ(ValuesOf(r), ValuesOf(Sample(intercept)));
    EXPECT_EACH(true, record.DeleteCase({7, 7}, 4), ValuesOf(record) == Values(6)) << "W reached 0";
  }
}

TEST(MeansXProdData, CovariancesAndCorrelations) {
  NQMeansXProdData record, light(1, true);
  NQSymMatrix out;
  EXPECT_EACH(true, record.SetData(true, 1.5, {1, 2, 3}, {4, 6, 16, 0, 0, 0}),
              record.GetCovariances(out));
  EXPECT_EQ(out.AsVector(), (Values{8, 12, 32, 0, 0, 0}));
  EXPECT_EACH(true, light.AddCase({1}, 1), light.GetCorrelations(out), record.GetCorrelations(out));
  EXPECT_EQ(out.AsVector(), (Values{1, 0.75, 1, kMissing, kMissing, kMissing}));
  EXPECT_EACH(false, light.GetCovariances(out), NQMeansXProdData(1, true).GetCorrelations(out));
  // Products whose ratio rounds to more than 1, below 1 on the diagonal, and roots that only one by
  // one stay in range.
  EXPECT_EACH(true, record.SetData(true, 5, {1, 2}, {0.7, 0.7000000000000003, 0.7}),
              record.GetCorrelations(out));
  EXPECT_EQ(out.AsVector(), (Values{1, 1, 1}));
  EXPECT_EACH(true, record.SetData(true, 5, {1, 2}, {1e-300, 5e-301, 1e-300}),
              record.GetCorrelations(out));
  EXPECT_CLOSE(out.GetElem(1, 0), 0.5, 1e-15);
}

TEST(MeansXProdData, RefusalsChangeNothing) {
  using List = std::vector<const NQMeansXProdData*>;
  const NQProvMeans a = Sample(), raw = Sample(false);
  const NQMeansXProdData one(1, true), none;
  EXPECT_TRUE(NQMeansXProdData().Merge(List{&one}));
  for (NQProvMeans r : {a, NQProvMeans(2, true)}) {
    const Values before = ValuesOf(r);
    EXPECT_EACH(false, r.SetNVars(-1), r.SetData(true, -1, {1}, {1}), r.SetData(true, 1, {1}, {}));
    EXPECT_EACH(false, r.Merge(raw), r.Merge(List{&one}), r.Merge(List{&none, &raw}));
    EXPECT_EACH(false, r.AddCase({1}, 1), r.DeleteCase({1}, 1), r.UpdateXX({1}, 1));
    EXPECT_EACH(false, r.AddCase({1, 1}, -5), r.DeleteCase({1, 1}, 5), r.AddCase({1, 1}, kNaN));
    EXPECT_EACH(false, r.Update({1}, 0), r.Update({1, 1}, -4.5), r.Update({1, 1}, kNaN));
    EXPECT_EQ(ValuesOf(r), before);
  }
  NQMeansXProdData stopped;
  EXPECT_FALSE(stopped.Merge(List{nullptr, &a, &raw, &a}));
  EXPECT_EQ(ValuesOf(stopped), ValuesOf(a));
}

TEST(MeansXProdData, MergesWithEmptyAndWithItself) {
  NQMeansXProdData two, odd, many;  // odd: values that the formulas would round
  EXPECT_EACH(true, two.SetNVars(2), two.UpdateXX({1, 2}, 3), two.Merge(NQMeansXProdData(2, true)),
              odd.SetData(true, 0.7, {0.1, 1 / 3.0}, {0.7, 1e-3, 1e300}),
              many.SetData(true, 0.25, {2, 4.25}, {8, 10, 14.75}));
  EXPECT_EQ(ValuesOf(two), (Values{0, 0, 0, 3, 6, 12}));
  for (NQMeansXProdData empty : {NQMeansXProdData(), NQMeansXProdData(2, true)}) {
    EXPECT_EACH(true, empty.Merge(NQMeansXProdData(2, true)), empty.Merge(odd),
                empty.Merge(NQMeansXProdData(2, true)));
    EXPECT_EQ(ValuesOf(empty), ValuesOf(odd));
  }
  for (int k = 0; k < 25; ++k) EXPECT_TRUE(many.Merge(many));
  const double n = 1 << 25;
  EXPECT_EQ(ValuesOf(many), (Values{0.25 * n, 2, 4.25, 8 * n, 10 * n, 14.75 * n}));
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
      EXPECT_EACH(true, all.Finish(), halves[0].Merge(halves[1]));
      ExpectNear(ValuesOf(all), row.pairs, kRawSums, row.name);
      ExpectNear(ValuesOf(halves[0]), row.pairs, kRawSums, row.name);
    }
  }
}

TEST(AccumXProdPair, FoldsWhenTheBatchAllows) {
  const std::tuple<int, Values, std::vector<bool>, Values, bool> runs[] = {
#include "math/stats/batch_cases.inc"
  };
  for (const auto& [nAccum, weights, returned, folded, finished] : runs) {
    NQAccumXProdPair pairs(2, 100);
    for (const int size : {nAccum, 0}) pairs.SetNAccum(size);
    for (std::size_t k = 0; k < weights.size(); ++k) {
      EXPECT_EQ(pairs.Update(0, 1, 1, weights[k]), returned[k]) << k;
      EXPECT_EQ(pairs.GetStats(0).nCases, folded[k]) << k;
    }
    EXPECT_EQ(pairs.Finish(), finished);
  }
  // A lowered size, and a batch thrown away.
  NQAccumXProdPair pairs(2, 100), three(3, 9);
  for (const double x : {1, 2, 6}) EXPECT_TRUE(pairs.Update(0, x, 2 * x, 1));
  EXPECT_EACH(true, pairs.Merge(pairs), pairs.IncrStats(0));
  EXPECT_DOUBLE_EQ(pairs.GetCovar().GetElem(0), 56.0 / 5);
  EXPECT_EACH(true, pairs.Update(0, 1, 1, 1), pairs.Update(0, 2, 2, 1));
  pairs.SetNAccum(2);
  EXPECT_EACH(true, pairs.Update(0, 3, 3, 1), pairs.Update(0, 4, 4, 1));
  pairs.InitAccumCounts(0);
  EXPECT_EACH(true, pairs.Finish(), pairs.GetStats(0).nCases == 9, NQAccumXProdPair(1, 1).Finish(),
              NQAccumXProdPair(1, 0).GetNAccum() == 1);
  // A pair that has no cases does not keep the next one from being finished.
  EXPECT_EACH(true, three.Update(2, 1, 1, 4), !three.Finish(),
              ValuesOf(three) == (Values{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 4, 1, 1, 0, 0, 0}));
}

// Variances are those of the pair; of the covariance matrix, of the first pair with most cases. A
// merge with an empty accumulator rounds nothing and does not square the mean.
TEST(AccumXProdPair, CovarianceAndCorrelationMatrices) {
  NQAccumXProdPair pairs(3, 1), merged(0, 1);
  NQSymMatrix out;
  EXPECT_EACH(true, pairs.SetStats(0, {5, 1e200, 0, 4, 9}, 3),
              pairs.SetStats(1, {7, 0, 0, 16, 25}, 10), pairs.SetStats(2, {7, 0, 0, 36, 0}, 1),
              merged.Merge(pairs), merged.Merge(NQAccumXProdPair(3, 1)),
              merged.GetCorrelationMatrix(out));
  EXPECT_EQ(merged.GetCovar().AsVectorConst(), (Values{3, 10, 1}));
  EXPECT_EQ(out.AsVector(), (Values{1, 0.5, 1, 0.5, kMissing, 1}));
  EXPECT_TRUE(merged.GetCovarianceMatrix(out));
  EXPECT_EQ(out.AsVector(), (Values{25, 3, 0, 10, 1, 16}));
  EXPECT_TRUE(NQAccumXProdPair(1, 1).GetCovarianceMatrix(out));
  EXPECT_EQ(out.AsVector(), Values{kMissing});
}

TEST(AccumXProdPair, RefusalsChangeNothing) {
  NQAccumXProdPair a(3, 1), b(2, 1), none(-3, 0);
  const std::string before = Displayed(a);
  EXPECT_EACH(false, a.Update(3, 1, 0, 1, 9), a.Update(1, 1, -1, 1, 9), a.Update(1, 1, 1, 1, 9));
  EXPECT_EACH(false, a.Update(-1, 1, 1, 9), a.Update(3, 1, 1, 9), a.IncrStats(3));
  EXPECT_EACH(false, a.Merge(b), a.Merge(std::vector{&b}), a.Merge(std::vector{&none}));
  EXPECT_EACH(false, a.SetStats(3, {2, 0, 0, 0, 0}, 0), a.SetStats(0, {1, 0, 0, 0, 0}, 0));
  EXPECT_EQ(Displayed(a), before);
}

// The covariances are read as rows with a diagonal; only InitAll makes room for the last row.
TEST(AccumXProdPair, CorrelationsOfTheArrayAsItLies) {
  NQAccumXProdPair pairs(3, 1);
  const auto correlations = [&](const Values& covariances) {
    for (std::size_t k = 0; k < covariances.size(); ++k)
      EXPECT_TRUE(pairs.SetStats(static_cast<int>(k), {2, 0, 0, 0, 0}, covariances[k]));
    return pairs.GetCorr().AsVectorConst();
  };
  EXPECT_EQ(correlations({0.0625, 3, 81}), (Values{0.25, 2, 9, kMissing, kMissing, kMissing}));
  EXPECT_EQ(correlations({0, 3, 81}),
            (Values{kMissing, kMissing, 9, kMissing, kMissing, kMissing}));
  pairs.InitAll();
  EXPECT_FALSE(pairs.Update(3, 1, 0, 1, 9)) << "a cell, but no pair";
  EXPECT_EQ(pairs.GetCovar().AsVectorConst(), Values(6));
  EXPECT_EQ(correlations({16, 3, 81, 2, 6, 256}), (Values{4, 0.5, 9, 0.25, 0.5, 16}));
}

TEST(MeansAndProducts, Display) {
  NQMeansXProducts products;
  NQAccumXProdPair pairs(2, 3);
  EXPECT_EACH(true, products.Merge(Sample()), pairs.SetStats(0, {2, 4, 5, 6, 7}, 8));
  EXPECT_TRUE(pairs.Update(1, 2, 0, 3, 0.5));
  const char* const want =
#include "golden/means_and_products_display.inc"
      ;
  EXPECT_EQ(Displayed(products) + Displayed(pairs), want);
}

}  // namespace
}  // namespace NQMath_940
