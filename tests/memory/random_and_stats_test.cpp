#include <gtest/gtest.h>

#include <nqcommon/math/random/NQRandomValues.h>
#include <nqcommon/math/stats/NQAccumXProdPair.h>
#include <nqcommon/math/stats/NQCategoryXProducts.h>
#include <nqcommon/math/stats/NQHashKey.h>
#include <nqcommon/math/stats/NQIterationReporter.h>
#include <nqcommon/math/stats/NQMeansXProducts.h>
#include <nqcommon/math/stats/NQPackedInt.h>
#include <nqcommon/math/stats/NQProvMeans.h>
#include <nqcommon/math/stats/NQTimeUtil.h>
#include <nqcommon/math/stats/charts/NQBarChartData.h>
#include <nqcommon/math/stats/charts/NQHistogramData.h>
#include <nqcommon/math/stats/charts/NQScatterPlotData.h>

#include "support/each.h"
#include "support/element_text.h"
#include "support/memory_file.h"
#include "support/memory_rows.h"
#include "support/rect.h"

namespace {

using namespace NQMath_940;
using namespace nqtest;
using Values = std::vector<double>;
using Ints = std::vector<int>;

// A vector that can be displayed.
struct Shown {
  Ints ints;
  void Display() const { NQDisplay_940::DisplayIV("", ints); }
};

// What a draw changes: its output, and where the source stands, which the next uniform shows.
struct Draw {
  mutable NQRandomValues values;
  Values vector{};
  NQSymMatrix matrix{};
  void Display() const {
    NQDisplay_940::DisplayDV("", vector, true);
    NQDisplay_940::DisplayDV("", matrix.AsVectorConst(), true);
    NQDisplay_940::DisplayDF("", values.RVUni(0, 1));
  }
};

TEST(Memory, Random) {
  NQRandomValues set, normal, wishart;
  const Values low = {1, 2, 3}, high = {4, 5, 6};
  const NQSymMatrix scale = FromPacked({4, 1, 3, 0.5, -1, 2});
  EXPECT_TRUE(set.SetParamUniform(low, high));
  EXPECT_TRUE(normal.SetParamNormal(low, scale));
  EXPECT_TRUE(wishart.SetParamWishart(3, 5, scale));
  const NQURandom source(7, true, true);
  std::ostringstream text;
  source.WriteObjectXML(text, 0);
  std::vector<MemoryCase> rows = {
      {"NQURandom::ReadObjectXML",
       [&](Injection& inject) {
         NQURandom read(1, true, true);
         std::ifstream file = MemoryFile(text.str()).Open();
         int lines = -1;
         ::testing::internal::CaptureStderr();
         inject([&] { lines = read.ReadObjectXML(file); });
         const bool isReported = !::testing::internal::GetCapturedStderr().empty();
         return Verdict{lines == 5 ? !isReported : lines == 0 && inject.HasFailed()};
       }},
      NQ_ANSWERS(wishart, r.SetParamUniform(low, high)),
      NQ_ANSWERS(wishart, r.SetParamUniform(3)),
      NQ_ANSWERS(wishart, r.SetParamNormal(3)),
      NQ_ANSWERS(wishart, r.SetParamNormal(high, scale)),
      NQ_ANSWERS(set, r.SetParamWishart(3, 5)),
      NQ_ANSWERS(set, r.SetParamWishart(3, 5, scale)),
      NQ_ANSWERS(Draw{set}, r.values.GetRandom(r.vector)),
      NQ_ANSWERS(Draw{normal}, r.values.GetRandom(r.vector)),
      NQ_ANSWERS(Draw{wishart}, r.values.GetRandom(r.matrix)),
  };
  AddObject(rows, "NQURandom", source, source);
  AddObject(rows, "NQRandomValues", wishart, wishart);
  RunMemoryCases("random numbers", rows);
}

TEST(Memory, MeansAndProducts) {
  const NQRectMatrix cases = ToRect({{1, 2, 1}, {4, 7, 2}, {5, 1, 0.5}, {3, 3, 1}, {2, 9, 4}});
  const Values one = {1}, x = {7, 8};
  const NQMeansXProducts none, empty(2, true, true, false);
  NQMeansXProducts full = empty, raw = empty;
  NQProvMeans means(2, false);
  EXPECT_EACH(true, full.Compute(cases, 0), raw.UpdateOnePass(cases, 0), means.Update(x, 3));
  const std::vector<NQMeansXProdData*> list = {&full};
  std::vector<MemoryCase> rows = {
      NQ_MAKES(NQMeansXProdData(3, true), NQMeansXProdData()),
      NQ_ANSWERS(full, r.SetNVars(3)),
      NQ_ANSWERS(full, r.SetData(true, 2, one, one)),
      NQ_ANSWERS(full, r.SetData(true, 2, r.GetMeans(), r.GetXProds().AsVectorConst())),
      NQ_ANSWERS(full, r.Merge(full)),
      NQ_ANSWERS(none, r.Merge(full)),
      NQ_ANSWERS(empty, r.Merge(full)),
      NQ_ANSWERS(empty, r.Merge(list)),
      NQ_ANSWERS(full, r.Compute(cases, 4)),
      NQ_ANSWERS(full, r.Update(cases, 3)),
      NQ_ANSWERS(full, r.UpdateOnePass(cases, 3)),
      NQ_ANSWERS(raw, r.UpdateOnePass(cases, 3)),
      NQ_ANSWERS(raw, r.FinishUpdateOnePass()),
      NQ_ANSWERS(NQSymMatrix(), full.GetCovariances(r)),
      NQ_ANSWERS(NQSymMatrix(), full.GetCorrelations(r)),
      {"a copy of raw sums is finished, or refused",
       [=](Injection& inject) {
         NQMeansXProducts copy;
         inject([&] { copy = raw; });
         return Verdict{copy.FinishUpdateOnePass() ? copy.GetNCases() == 8.5 : inject.HasFailed()};
       }},
  };
  AddObject(rows, "NQMeansXProdData", NQMeansXProdData(full), NQMeansXProdData());
  AddObject(rows, "NQProvMeans", means, NQProvMeans(0, false));
  AddObject(rows, "NQMeansXProducts", full, NQMeansXProducts(0, true, true, false));
  const Ints levels = {2, 3}, codes = {1, 2};
  const NQRectMatrix coded = ToRect({{1, 0, 2, 1}, {3, 1, 1, 2}, {9, 1, 0, 1}});
  const NQCategoryXProducts zero, cleared(1, levels, true, true, false);
  NQCategoryXProducts counts = cleared;
  EXPECT_TRUE(counts.Compute(coded, 0));
  for (const MemoryCase& row :
       {NQ_MAKES(NQCategoryXProducts(1, levels, true, true, false), zero),
        NQ_MAKES(NQCategoryXProducts(cleared) = counts, zero),
        NQ_ANSWERS(counts, r.Compute(coded, 2)), NQ_ANSWERS(counts, r.Update(coded, 0)),
        NQ_ANSWERS(counts, r.AddCase(x, codes, 2)), NQ_ANSWERS(counts, r.Merge(counts)),
        NQ_ANSWERS(cleared, r.Merge(counts)), NQ_ANSWERS(zero, r.Merge(counts)),
        NQ_ANSWERS(NQMeansXProdData(), counts.GetRecord(r))})
    rows.push_back(row);
  AddObject(rows, "NQCategoryXProducts", counts, zero);
  RunMemoryCases("means and products", rows);
}

TEST(Memory, Pairs) {
  NQAccumXProdPair pairs(3, 2);
  const NQAccumXProdPair none(0, 2);
  for (const int cell : {0, 1, 2}) EXPECT_TRUE(pairs.Update(cell, 1, cell, 2));
  // All cells are there, or everything is refused.
  const auto works = [=](const char* operation, auto change) {
    return MemoryCase{operation, [=](Injection& inject) {
                        NQAccumXProdPair p = pairs;
                        NQSymMatrix matrix;
                        inject([&] { change(p); });
                        const bool isThere = p.Update(1, 5, 0, 6, 2);
                        return Verdict{isThere != inject.HasFailed() && p.GetNVars() == 3 &&
                                       p.GetCovarianceMatrix(matrix) == isThere &&
                                       p.Merge(NQAccumXProdPair(p)) == isThere &&
                                       (isThere || !p.Finish())};
                      }};
  };
  std::vector<MemoryCase> rows = {
      works("NQAccumXProdPair(int, int)", [](auto& p) { p = NQAccumXProdPair(3, 2); }),
      works("InitAll", [](auto& p) { p.InitAll(); }),
      works("copy", [](auto& p) { p = NQAccumXProdPair(p); }),
      NQ_ANSWERS(pairs, r.Merge(pairs)),
      NQ_ANSWERS(none, r.Merge(pairs)),
      NQ_ANSWERS(NQSymMatrix(-1, true), NQAccumXProdPair(pairs).GetCorr().IsValidMatrix()),
      NQ_ANSWERS(NQSymMatrix(), pairs.GetCovarianceMatrix(r)),
      NQ_ANSWERS(NQSymMatrix(), pairs.GetCorrelationMatrix(r)),
  };
  AddObject(rows, "NQAccumXProdPair", none, none);
  RunMemoryCases("pairs", rows);
}

TEST(Memory, Utilities) {
  NQHashKey key(3);
  key[1] = 7;
  const Ints sizes = {3, 4, 5}, codes = {1, 2, 3}, packed = {17};
  const NQPackedInt packer(3, 1, sizes), none(0, 1, {});
  const std::string name = "a name that is longer than a string holds in itself";
  std::vector<MemoryCase> rows = {
      NQ_MAKES(NQHashKey(3), NQHashKey()),
      NQ_MAKES(NQPackedInt(3, 1, sizes), none),
      NQ_MAKES(NQTimeUtil(name), NQTimeUtil()),
      NQ_ANSWERS(Shown(), packer.Pack(codes, r.ints, true)),
      NQ_ANSWERS(Shown(), packer.Unpack(r.ints, packed)),
  };
  AddObject(rows, "NQHashKey", key, NQHashKey());
  AddObject(rows, "NQPackedInt", packer, none);
  AddObject(rows, "NQTimeUtil", NQTimeUtil(name), NQTimeUtil());
  AddObject(rows, "NQIterationReporter", NQIterationReporter(), NQIterationReporter());
  RunMemoryCases("accumulator utilities", rows);
}

// Variate data is put together at once, or at the next attempt; a copy is whole or still displays.
template <class Chart, class Get>
void AddChart(std::vector<MemoryCase>& rows, const char* name, const Chart& chart, Get get) {
  rows.push_back({name, [=](Injection& inject) {
                    Chart reference = chart, tried = chart;
                    const std::string want = Text(get(reference).GetUnivariateDataElem());
                    bool isThere = false;
                    inject([&] { isThere = !get(tried).GetCounts().empty(); });
                    return Verdict{Text(get(tried).GetUnivariateDataElem()) == want &&
                                   Displayed(tried) == Displayed(reference) &&
                                   isThere != inject.HasFailed()};
                  }});
  rows.push_back({name, [=](Injection& inject) {
                    Chart copy = chart;
                    inject([&] { copy = Chart(chart); });
                    return Verdict{Displayed(copy) == Displayed(chart) || inject.HasFailed()};
                  }});
}

// Points, which the chart itself does not display.
struct Points {
  NQScatterPlotData chart;
  void Display() const {
    NQDisplay_940::DisplayDF("", chart.GetTotalWeight());
    for (const auto* list :
         {&chart.GetXCoordinates(), &chart.GetYCoordinates(), &chart.GetFrequencies()})
      NQDisplay_940::DisplayDV("", *list->GetDoubles(), true);
  }
};

TEST(Memory, Charts) {
  NQHistogramData bins(4, 0, 8, true);
  NQBarChartData bars(3, true);
  NQScatterPlotData points, cells(2, 2, 0, 0, 2, 2, true);
  EXPECT_EACH(true, bins.UpdateData(1, 1, 3), bars.UpdateData(1, 2), points.UpdateData(1, 1, 3, 3),
              cells.UpdateData(1, 1, 1, 1));
  const std::string name = "a description that is longer than a string holds in itself";
  const std::vector<std::string> names = {name, name};
  // Fewer bins, and the totals.
  const auto fits = [](const char* operation, auto make, auto add, auto nBins) {
    return MemoryCase{
        operation, [=](Injection& inject) {
          auto made = make();
          inject([&] { made = make(); });
          const bool isAdded = add(made);
          const bool isSmall = nBins(made) < 2;
          return Verdict{isAdded && isSmall == inject.HasFailed() && made.GetTotalWeight() == 2};
        }};
  };
  std::vector<MemoryCase> rows = {
      fits(
          "NQHistogramData", [] { return NQHistogramData(4, 0, 8, true); },
          [](auto& c) { return c.UpdateData(2, 1, 3); }, [](auto& c) { return c.GetNBins(); }),
      fits(
          "NQScatterPlotData", [] { return NQScatterPlotData(2, 3, 0, 0, 4, 6, true); },
          [](auto& c) { return c.UpdateData(2, 1, 3, 3); }, [](auto& c) { return c.GetNBinsX(); }),
      NQ_MAKES(NQBarChartData(3, true), NQBarChartData(0, true)),
      NQ_ANSWERS(Points{points}, r.chart.UpdateData(1, 1, 3, 3)),
  };
  const auto get = [=](auto& chart) -> auto& { return chart.GetNQVariateData(name); };
  AddChart(
      rows, "histogram", bins, [=](auto& c) -> auto& { return c.GenerateNQVariateData(name); });
  AddChart(
      rows, "bars", bars, [=](auto& c) -> auto& { return c.GenerateNQVariateData(name, names); });
  AddChart(rows, "points", points, get);
  AddChart(rows, "cells", cells, get);
  RunMemoryCases("charts", rows);
}

}  // namespace
