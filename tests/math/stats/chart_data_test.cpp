// Data of charts: bins, means, and the variate data that becomes StatXML.
#include <nqcommon/math/stats/NQBarChartData.h>
#include <nqcommon/math/stats/NQHistogramData.h>
#include <nqcommon/math/stats/NQScatterPlotData.h>
#include <nqcommon/math/stats/internal/chart_bins.h>

#include <gtest/gtest.h>

#include <climits>

#include "support/compare.h"
#include "support/displayed.h"
#include "support/element_text.h"
#include "support/special_values.h"

namespace NQMath_940 {
namespace {

using nqtest::Displayed;
using nqtest::kInf;
using nqtest::kMax;
using nqtest::kMissing;
using nqtest::kNaN;
using nqtest::Text;
using Doubles = std::vector<double>;
using Rows = std::vector<Doubles>;

constexpr std::size_t kLast = INT_MAX - 1;

// Rows of the values at each position of the coordinates.
Rows Columns(const NQXML_940::NQVariateData& data) {
  Rows rows(data.GetCoordinates().at(0).GetDoubles()->size());
  for (const auto& coordinates : data.GetCoordinates())
    for (std::size_t i = 0; i < rows.size(); ++i)
      rows[i].push_back(coordinates.GetDoubles()->at(i));
  return rows;
}

void ExpectRows(const Rows& got, const Rows& want, double tolerance, const char* label) {
  ASSERT_EQ(got.size(), want.size()) << label;
  for (std::size_t i = 0; i < got.size(); ++i)
    for (std::size_t j = 0; j < want[i].size(); ++j)
      EXPECT_CLOSE(got[i].at(j), want[i][j], tolerance) << label << ' ' << i << ' ' << j;
}

TEST(ChartBins, AnyNumberHasABin) {
  const struct {
    const char* label;
    int nBins;
    double min, max;
    int wantBins;
    double wantLength;
    Doubles x;
    std::vector<std::size_t> bins;
  } rows[] = {
      {"in range", 4, 0, 8, 4, 2, {0, 1.999, 2, 7.999, 8}, {0, 0, 1, 3, 3}},
      {"outside", 4, 0, 8, 4, 2, {-1, -5, 100, 8e9, 2e10}, {0, 0, 3, 3, 3}},
      {"far", 4, 0, 8, 4, 2, {kNaN, kInf, -kInf, kMax, kMissing}, {0, 3, 0, 3, 0}},
      {"many", INT_MAX, 0, INT_MAX, INT_MAX, 1, {INT_MAX - 1., 1e10, 9.5}, {kLast, kLast, 9}},
      {"one bin", 1, 0, 8, 1, 0, {7, kInf}, {0, 0}},
      {"no bins", 0, 0, 8, 1, 0, {7, kNaN}, {0, 0}},
      {"no range", 4, 3, 3, 1, 0, {3, 100}, {0, 0}},
      {"reversed", 4, 8, 0, 1, 0, {4}, {0}},
      {"NaN", 4, kNaN, 8, 1, 0, {4}, {0}},
      {"longer than any number", 4, -kMax, kMax, 1, 0, {1e308}, {0}},
      {"a length that underflows", 4, 0, 5e-324, 4, 0, {0, 5e-324, -5e-324}, {0, 3, 0}},
  };
  for (const auto& row : rows) {
    int nBins = row.nBins;
    const double length = internal::FitBins(nBins, row.min, row.max);
    EXPECT_TRUE(nBins == row.wantBins && length == row.wantLength) << row.label << length;
    for (std::size_t i = 0; i < row.x.size(); ++i)
      EXPECT_EQ(internal::BinOf(row.x[i], row.min, length, nBins), row.bins[i])
          << row.label << ' ' << row.x[i];
  }
}

TEST(NQHistogramData, ExactRationals) {
  const struct {
    const char* label;
    struct {
      int nBins;
      double min, max;
    } shape;
    Rows cases;
    struct {
      double mean, meanTolerance, stdDev, stdDevTolerance;
    } want;
    Rows bins;
  } rows[] = {
#include "reference/chart_histogram.inc"
  };
  for (const auto& row : rows) {
    NQHistogramData data(row.shape.nBins, row.shape.min, row.shape.max, true);
    for (const Doubles& c : row.cases) EXPECT_TRUE(data.UpdateData(c[0], c[1], c[2]));
    EXPECT_CLOSE(data.GetMean(), row.want.mean, row.want.meanTolerance) << row.label;
    EXPECT_CLOSE(data.GetStdDev(), row.want.stdDev, row.want.stdDevTolerance) << row.label;
    ExpectRows(Columns(data.GenerateNQVariateData("")), row.bins, row.want.meanTolerance,
               row.label);
  }
}

TEST(NQScatterPlotData, ExactRationals) {
  const struct {
    const char* label;
    struct {
      int nBinsX, nBinsY;
      double minX, minY, maxX, maxY;
    } shape;
    Rows cases, cells;
  } rows[] = {
#include "reference/chart_scatter.inc"
  };
  for (const auto& row : rows) {
    const auto& s = row.shape;
    NQScatterPlotData data(s.nBinsX, s.nBinsY, s.minX, s.minY, s.maxX, s.maxY, true);
    for (const Doubles& c : row.cases) data.UpdateData(c[0], c[1], c[2], c[3]);
    ExpectRows(Columns(data.GetNQVariateData("")), row.cells, 1e-14, row.label);
  }
}

TEST(NQHistogramData, WeightsOfZeroAndCancellation) {
  NQHistogramData data(2, 0, 8, true);
  data.UpdateData(3, 0, kInf);  // no mean yet, and none of this
  data.UpdateData(0, 5, kNaN);
  EXPECT_TRUE(data.GetMean() == 0 && data.GetStdDev() == 0 && data.GetTotalWeight() == 3);
  data.UpdateData(1, 1, 1);
  EXPECT_EQ(data.GetStdDev(), 0);  // W is 1
  data.UpdateData(1, 1, 3);
  data.UpdateData(1, 0, kNaN);
  EXPECT_EQ(Columns(data.GenerateNQVariateData("")), Rows({{2, 3}, {kMissing, 3}}));
  EXPECT_TRUE(data.GetMean() == 2 && data.GetStdDev() == std::sqrt(2.0));

  const double eps = std::numeric_limits<double>::epsilon();
  for (const auto& [second, mean] : {std::pair{-(1 - 3 * eps), 0.0}, {-(1 - 4 * eps), 2 * eps}}) {
    NQHistogramData guarded(1, 0, 0, true);
    guarded.UpdateData(1, 1, 1);
    guarded.UpdateData(1, 1, second);  // the sum is 1.5 eps, which is noise, or 2 eps, which is not
    EXPECT_SAME(guarded.GetMean(), mean) << second;
    EXPECT_CLOSE(guarded.GetStdDev(), std::sqrt(2.0), 4 * eps) << second;
  }
}

TEST(NQBarChartData, RefusesWhatIsNoCategory) {
  NQBarChartData three(3, true), none(-1, true);
  for (const double category : {-1.0, 3.0, kNaN, -0.5, kInf, kMissing})
    EXPECT_FALSE(three.UpdateData(1, category) || none.UpdateData(1, category)) << category;
  EXPECT_EQ(three.GetTotalWeight(), 0);
  three.GenerateNQVariateData("", {});  // no share is 0 / 0
  EXPECT_NE(Displayed(three).find("weight (size = 3)\n  0 0 0\n"), std::string::npos);
}

TEST(ChartData, VariateDataIsMadeOnce) {
  NQHistogramData none, histogram(1, 3, 3, true);
  for (const double x : {1.0, 3.0}) histogram.UpdateData(1, 1, x);
  NQBarChartData shares(3, true), weights(3, false);
  for (const auto& [w, category] : {std::pair{1.0, 0.0}, {3.0, 1.9}, {0.0, 2.999}})
    EXPECT_TRUE(shares.UpdateData(w, category) && weights.UpdateData(w, category)) << category;
  NQScatterPlotData points, cells(2, 2, 0, 0, 2, 2, true), huge(INT_MAX, INT_MAX, 0, 0, 1, 1, true);
  for (NQScatterPlotData* plot : {&points, &cells, &huge}) {
    plot->UpdateData(2, 1, 1.5, 0.5);
    plot->UpdateData(1, 1, 0.5, 1.5);
    plot->UpdateData(0, 1, 5, kNaN);
    plot->UpdateData(4, 0, kInf, 0.5);
    EXPECT_TRUE(plot->GetNQVariateData().GetCounts().empty() && plot->GetTotalWeight() == 7);
  }
  EXPECT_EQ(points.GetYCoordinates().GetDoubles()->size(), 4U);
  EXPECT_EQ(cells.GetYCoordinates().GetDoubles()->size(), 0U);
  for (const char* description : {"age", "later"}) {
    const struct {
      const char* label;
      std::string element;
      const char* want;
    } rows[] = {
#include "golden/chart_elements.inc"
    };
    for (const auto& row : rows) EXPECT_EQ(row.element, row.want) << row.label << description;
    histogram.UpdateData(1, 1, 5);
    shares.UpdateData(1, 2);
    for (NQScatterPlotData* plot : {&points, &cells, &huge}) plot->UpdateData(1, 1, 9, 9);
  }
}

TEST(ChartData, Display) {
  NQHistogramData histogram(2, 0, 8, true);
  histogram.UpdateData(2, 1.5, 1);
  histogram.UpdateData(4, 0, 6);
  NQBarChartData bars(2, false);
  bars.UpdateData(2.5, 1);
  NQScatterPlotData cells(1, 2, 0, 0, 4, 4, true), points;
  cells.UpdateData(2, 0.5, 1, 3);
  const struct {
    const char* name;
    std::string shown, want;
  } rows[] = {
#include "golden/chart_displays.inc"
  };
  for (const auto& row : rows) EXPECT_EQ(row.shown, row.want) << row.name;
}

}  // namespace
}  // namespace NQMath_940
