#include <gtest/gtest.h>

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

#include "support/element_text.h"
#include "support/memory_rows.h"
#include "support/rect.h"

namespace {

using namespace NQMath_940;
using namespace nqtest;
using Values = std::vector<double>;
using Ints = std::vector<int>;

// fill(object, out) answers whether `out` was filled; else it is as it was.
template <class Out, class Object, class Fill>
MemoryCase Fills(const char* operation, const Object& object, Fill fill) {
  return {operation, [=](Injection& inject) {
            Out want, got, before;
            EXPECT_TRUE(fill(object, want));
            bool isFilled = false;
            inject([&] { isFilled = fill(object, got); });
            return Verdict{isFilled ? got == want : inject.HasFailed() && got == before};
          }};
}

TEST(Memory, MeansAndProducts) {
  const NQRectMatrix cases = ToRect({{1, 2, 1}, {4, 7, 2}, {5, 1, 0.5}, {3, 3, 1}, {2, 9, 4}});
  NQMeansXProducts none, empty(2, true, true, false), full = empty, raw = empty;
  NQProvMeans means(2, false);
  EXPECT_TRUE(full.Compute(cases, 0));
  EXPECT_TRUE(raw.UpdateOnePass(cases, 0));
  EXPECT_TRUE(means.Update({1, 2}, 3));
  const Values one = {1}, x = {7, 8};
  const std::vector<NQMeansXProdData*> list = {&full};
  const auto merge = [=](auto& r) { return r.Merge(full); };
  std::vector<MemoryCase> rows = {
      Makes(
          "NQMeansXProdData(int, bool)", [] { return NQMeansXProdData(3, true); },
          NQMeansXProdData()),
      Answers("SetNVars", full, [](auto& r) { return r.SetNVars(3); }),
      Answers("SetData", full, [=](auto& r) { return r.SetData(true, 2, one, one); }),
      Answers(
          "SetData, its own", full,
          [](auto& r) { return r.SetData(true, 2, r.GetMeans(), r.GetXProds().AsVectorConst()); }),
      Answers("Merge", full, merge),
      Answers("Merge into one without variables", none, merge),
      Answers("Merge into an empty one", empty, merge),
      Answers("Merge of a list", empty, [=](auto& r) { return r.Merge(list); }),
      Answers("AddCase", means, [=](auto& r) { return r.AddCase(x, 2); }),
      Answers("DeleteCase", means, [=](auto& r) { return r.DeleteCase(x, 2); }),
      Answers("UpdateXX without an intercept", means, [=](auto& r) { return r.UpdateXX(x, 2); }),
      Answers("NQProvMeans::Update", means, [=](auto& r) { return r.Update(x, 2); }),
      Answers("Compute", full, [=](auto& r) { return r.Compute(cases, 3); }),
      Answers("Update", full, [=](auto& r) { return r.Update(cases, 3); }),
      Answers("StartUpdateOnePass", full, [](auto& r) { return r.StartUpdateOnePass(); }),
      Answers("UpdateOnePass", raw, [=](auto& r) { return r.UpdateOnePass(cases, 3); }),
      Answers("FinishUpdateOnePass", raw, [](auto& r) { return r.FinishUpdateOnePass(); }),
      Fills<Values>("GetCovariances", full,
                    [](auto& r, Values& out) {
                      NQSymMatrix matrix;
                      return r.GetCovariances(matrix) && (out.swap(matrix.AsVector()), true);
                    }),
      Fills<Values>("GetCorrelations", full,
                    [](auto& r, Values& out) {
                      NQSymMatrix matrix;
                      return r.GetCorrelations(matrix) && (out.swap(matrix.AsVector()), true);
                    }),
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
  RunMemoryCases("means and products", rows);
}

TEST(Memory, CategoryXProducts) {
  const Ints levels = {2, 3}, codes = {1, 2};
  const Values x = {4};
  const NQRectMatrix cases = ToRect({{1, 0, 2, 1}, {3, 1, 1, 2}, {9, 1, 0, 1}});
  const NQCategoryXProducts none, empty(1, levels, true, true, false);
  NQCategoryXProducts full = empty;
  EXPECT_TRUE(full.Compute(cases, 0));
  const auto merge = [=](auto& r) { return r.Merge(full); };
  std::vector<MemoryCase> rows = {
      Makes(
          "NQCategoryXProducts(int, vector, ...)",
          [=] { return NQCategoryXProducts(1, levels, true, true, false); }, none),
      Answers("Compute", full, [=](auto& r) { return r.Compute(cases, 2); }),
      Answers("Update", full, [=](auto& r) { return r.Update(cases, 0); }),
      Answers("AddCase", full, [=](auto& r) { return r.AddCase(x, codes, 2); }),
      Answers("Merge", full, merge),
      Answers("Merge into an empty one", empty, merge),
      Answers("Merge into one without columns", none, merge),
      Fills<std::string>("GetRecord", full,
                         [](auto& r, std::string& out) {
                           NQMeansXProdData record;
                           const bool isGiven = r.GetRecord(record);
                           if (isGiven) out = record.GetNVars() == 6 ? "whole" : "not whole";
                           return isGiven;
                         }),
  };
  AddObject(rows, "NQCategoryXProducts", full, none);
  RunMemoryCases("categories", rows);
}

TEST(Memory, Pairs) {
  NQAccumXProdPair pairs(3, 2), none(0, 2);
  for (const int cell : {0, 1, 2}) {
    EXPECT_TRUE(pairs.Update(cell, 1, cell, 1));
    EXPECT_TRUE(pairs.Update(cell, 2, 1, 1));
  }
  // Without cells everything is refused.
  const auto isWhole = [](NQAccumXProdPair& p) {
    NQSymMatrix matrix;
    const bool isThere = p.Update(0, 5, 6, 2);
    EXPECT_EQ(p.GetCovarianceMatrix(matrix), isThere);
    EXPECT_EQ(p.Merge(NQAccumXProdPair(p)), isThere);
    EXPECT_TRUE(isThere || !p.Finish());
    return isThere;
  };
  const auto matrix = [](bool (NQAccumXProdPair::*get)(NQSymMatrix&) const) {
    return [=](const NQAccumXProdPair& p, Values& out) {
      NQSymMatrix made;
      return (p.*get)(made) && (out.swap(made.AsVector()), true);
    };
  };
  const auto works = [=](const char* operation, auto change) {
    return MemoryCase{
        operation, [=](Injection& inject) {
          NQAccumXProdPair tried = pairs;
          inject([&] { change(tried); });
          return Verdict{tried.GetNVars() == 3 && isWhole(tried) == !inject.HasFailed()};
        }};
  };
  std::vector<MemoryCase> rows = {
      works("NQAccumXProdPair(int, int)", [](auto& p) { p = NQAccumXProdPair(3, 2); }),
      works("InitAll", [](auto& p) { p.InitAll(); }),
      works("copy", [](auto& p) { p = NQAccumXProdPair(p); }),
      Answers("Merge", pairs, [=](auto& p) { return p.Merge(pairs); }),
      Answers("Merge into one without variables", none, [=](auto& p) { return p.Merge(pairs); }),
      Answers("Update", pairs, [](auto& p) { return p.Update(1, 3.0, 0, 2.0, 1.0); }),
      Answers("Finish", pairs, [](auto& p) { return p.Finish(); }),
      {"GetCorr",
       [=](Injection& inject) {
         NQAccumXProdPair tried = pairs;
         int order = -2;
         inject([&] { order = tried.GetCorr().GetNRows(); });
         return Verdict{order == (inject.HasFailed() ? -1 : 3)};
       }},
      Fills<Values>("GetCovarianceMatrix", pairs, matrix(&NQAccumXProdPair::GetCovarianceMatrix)),
      Fills<Values>("GetCorrelationMatrix", pairs, matrix(&NQAccumXProdPair::GetCorrelationMatrix)),
  };
  AddObject(rows, "NQAccumXProdPair", none, none);
  RunMemoryCases("pairs", rows);
}

TEST(Memory, Utilities) {
  NQHashKey key(3);
  key[1] = 7;
  const Ints sizes = {3, 4, 5, 6}, codes = {1, 2, 3}, packed = {17};
  const NQPackedInt packer(3, 1, sizes), none(0, 1, {});
  const std::string name = "a name that is longer than a string holds in itself";
  const NQTimeUtil timer(name), unnamed;
  std::vector<MemoryCase> rows = {
      Makes(
          "NQHashKey(int)", [] { return NQHashKey(3); }, NQHashKey()),
      Makes(
          "NQPackedInt(int, int, vector)", [=] { return NQPackedInt(3, 1, sizes); }, none),
      Makes(
          "NQPackedInt::SetForSequence",
          [=] {
            NQPackedInt changed = packer;
            changed.SetForSequence(4, 1, sizes);
            return changed;
          },
          none),
      Fills<Ints>("NQPackedInt::Pack", packer,
                  [=](auto& p, Ints& out) { return p.Pack(codes, out, true); }),
      Fills<Ints>("NQPackedInt::Unpack", packer,
                  [=](auto& p, Ints& out) { return p.Unpack(out, packed); }),
      Makes(
          "NQTimeUtil(string)", [=] { return NQTimeUtil(name); }, unnamed),
  };
  AddObject(rows, "NQHashKey", key, NQHashKey());
  AddObject(rows, "NQPackedInt", packer, none);
  AddObject(rows, "NQTimeUtil", timer, unnamed);
  AddObject(rows, "NQIterationReporter", NQIterationReporter(), NQIterationReporter());
  RunMemoryCases("accumulator utilities", rows);
}

// Variate data, put together at once, at the second attempt, or not at all.
template <class Chart, class Get>
MemoryCase Gives(const char* operation, const Chart& chart, Get get) {
  return {operation, [=](Injection& inject) {
            Chart reference = chart, tried = chart;
            const std::string want = Text(get(reference).GetUnivariateDataElem());
            bool isThere = false;
            inject([&] { isThere = !get(tried).GetCounts().empty(); });
            return Verdict{Text(get(tried).GetUnivariateDataElem()) == want &&
                           Displayed(tried) == Displayed(reference) &&
                           isThere != inject.HasFailed()};
          }};
}

// Copying, moving and displaying.
template <class Chart>
MemoryCase Copies(const char* operation, const Chart& chart) {
  return {operation, [=](Injection& inject) {
            Chart copy = chart;
            inject([&] {
              copy = Chart(chart);
              copy.Display();
            });
            return Verdict{Displayed(copy) == Displayed(chart) || inject.HasFailed()};
          }};
}

TEST(Memory, Charts) {
  std::ostringstream text;
  std::ostream& out = NQDisplay_940::GetOutStream();
  NQDisplay_940::SetOutStream(text);
  NQHistogramData bins(4, 0, 8, true);
  NQBarChartData bars(3, true);
  NQScatterPlotData points, cells(2, 2, 0, 0, 2, 2, true);
  for (const double x : {0.5, 1.5}) {
    EXPECT_TRUE(bins.UpdateData(1, 1, x));
    EXPECT_TRUE(bars.UpdateData(1, x));
    EXPECT_TRUE(points.UpdateData(1, 1, x, x));
    EXPECT_TRUE(cells.UpdateData(1, 1, x, x));
  }
  const std::string name = "a description that is longer than a string holds in itself";
  const std::vector<std::string> names = {name, name};
  const auto generate = [=](auto& chart) -> auto& { return chart.GenerateNQVariateData(name); };
  const auto get = [=](auto& chart) -> auto& { return chart.GetNQVariateData(name); };
  const auto generateLabels = [=](auto& chart) -> auto& {
    return chart.GenerateNQVariateData(name, names);
  };
  RunMemoryCases(
      "charts",
      {{"NQHistogramData(int, double, double, bool)",
        [](Injection& inject) {
          NQHistogramData made;
          inject([&] { made = NQHistogramData(4, 0, 8, true); });
          made.UpdateData(2, 1, 3);
          return Verdict{made.GetMean() == 3 &&
                         (inject.HasFailed() ? made.GetNBins() < 2 : made.GetBinMean(1) == 3)};
        }},
       {"NQScatterPlotData(int, int, ...)",
        [](Injection& inject) {
          NQScatterPlotData made;
          inject([&] { made = NQScatterPlotData(2, 3, 0, 0, 4, 6, true); });
          made.UpdateData(2, 1, 3, 3);
          return Verdict{
              made.GetTotalWeight() == 2 &&
              (inject.HasFailed() ? made.GetNBinsX() < 2 : made.GetCellFrequency(1, 1) == 2)};
        }},
       Makes(
           "NQBarChartData(int, bool)", [] { return NQBarChartData(3, true); },
           NQBarChartData(0, true)),
       Copies("NQHistogramData", bins),
       Copies("NQBarChartData", bars),
       Copies("NQScatterPlotData of points", points),
       Copies("NQScatterPlotData", cells),
       Answers("NQHistogramData::UpdateData", bins, [](auto& c) { return c.UpdateData(1, 1, 2); }),
       {"NQScatterPlotData::UpdateData of points",
        [=](Injection& inject) {
          NQScatterPlotData tried = points;
          bool isKept = false;
          inject([&] { isKept = tried.UpdateData(1, 1, 3, 3); });
          const std::size_t n = isKept ? 3 : 2;
          for (const auto* axis :
               {&tried.GetXCoordinates(), &tried.GetYCoordinates(), &tried.GetFrequencies()})
            if (axis->GetDoubles()->size() != n) return Verdict{false};
          return Verdict{tried.GetTotalWeight() == static_cast<double>(n) &&
                         isKept != inject.HasFailed()};
        }},
       Gives("NQHistogramData::GenerateNQVariateData", bins, generate),
       Gives("NQBarChartData::GenerateNQVariateData", bars, generateLabels),
       Gives("NQScatterPlotData::GetNQVariateData, points", points, get),
       Gives("NQScatterPlotData::GetNQVariateData, cells", cells, get)});
  NQDisplay_940::SetOutStream(out);
}

}  // namespace
