// Data of charts: bins, means, and the variate data that becomes StatXML.
#include <nqcommon/math/stats/charts/NQBarChartData.h>
#include <nqcommon/math/stats/charts/NQHistogramData.h>
#include <nqcommon/math/stats/charts/NQScatterPlotData.h>
#include <nqcommon/math/stats/charts/internal/chart_bins.h>

#include <climits>
#include <tuple>

#include "support/element_text.h"
#include "support/testing.h"

namespace NQMath_940 {
namespace {

using namespace nqtest;
using Rows = std::vector<Doubles>;

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
  constexpr std::size_t kLast = INT_MAX - 1;
  const std::tuple<const char*, int, Doubles, int, double, Doubles, std::vector<std::size_t>>
      rows[] = {
#include "math/stats/charts/bin_cases.inc"
      };
  for (const auto& [label, nWanted, range, nFitted, wantLength, x, bins] : rows) {
    int nBins = nWanted;
    const double length = internal::FitBins(nBins, range[0], range[1]);
    EXPECT_EACH(true, nBins == nFitted, length == wantLength) << label << length;
    for (std::size_t i = 0; i < x.size(); ++i)
      EXPECT_EQ(internal::BinOf(x[i], range[0], length, nBins), bins[i]) << label << ' ' << x[i];
  }
}

TEST(NQHistogramData, ExactRationalsWeightsOfZeroAndCancellation) {
  const std::tuple<const char*, Doubles, Rows, Doubles, Rows> rows[] = {
#include "math/stats/charts/histogram_cases.inc"
#include "reference/chart_histogram.inc"
  };
  for (const auto& [label, shape, cases, want, bins] : rows) {
    NQHistogramData data(static_cast<int>(shape[0]), shape[1], shape[2], true);
    for (const Doubles& c : cases) EXPECT_TRUE(data.UpdateData(c[0], c[1], c[2]));
    double total = 0;
    for (const Doubles& bin : bins) total += bin[1];
    EXPECT_CLOSE(data.GetTotalWeight(), total, 1e-15) << label;
    EXPECT_CLOSE(data.GetMean(), want[0], want[1]) << label;
    EXPECT_EQ(std::signbit(data.GetMean()), std::signbit(want[0])) << label;
    EXPECT_CLOSE(data.GetStdDev(), want[2], want[3]) << label;
    ExpectRows(Columns(data.GenerateNQVariateData("")), bins, want[1], label);
  }
}

TEST(ChartData, LimitsOfBins) {
  NQHistogramData four(4, 0, 8, false);
  four.UpdateData(3, 1, 100);
  EXPECT_EQ(four.GetBinMean(3), 100);
  EXPECT_EQ((Doubles{four.GetBinFrequency(3), four.GetBinFrequency(4), four.GetBinMean(0)}),
            (Doubles{3, kMissing, kMissing}));
  NQScatterPlotData cells(2, 1, 0, 5, 4, 6, true), grid(2, 2, 0, 5, 4, 6, true), points;
  cells.UpdateData(2, 1, 3, 9);
  grid.UpdateData(2, 1, 3, 9);
  EXPECT_EQ((Doubles{grid.GetCellFrequency(1, 1), grid.GetCellFrequency(0, 1),
                     cells.GetCellFrequency(1, 0), cells.GetCellFrequency(0, 1),
                     cells.GetCellFrequency(-1, 0), cells.GetCellFrequency(2, 0),
                     points.GetCellFrequency(0, 0)}),
            (Doubles{2, 0, 2, kMissing, kMissing, kMissing, kMissing}));
  Doubles limits;
  for (int i = -1; i <= 5; ++i) limits.push_back(four.GetBinLimit(i));
  for (int i = 0; i <= 3; ++i) limits.push_back(cells.GetBinLimitX(i));
  for (int i = 0; i <= 1; ++i) limits.push_back(cells.GetBinLimitY(i));
  EXPECT_EQ(limits, (Doubles{kMissing, 0, 2, 4, 6, 8, kMissing, 0, 2, 4, kMissing, 5, 6}));
}

TEST(NQBarChartData, RefusesWhatIsNoCategory) {
  NQBarChartData three(3, true), none(-1, true);
  for (const double category : {-1.0, 3.0, kNaN, -0.5, kInf, kMissing})
    EXPECT_EACH(false, three.UpdateData(1, category), none.UpdateData(1, 0)) << category;
  EXPECT_EQ(three.GetTotalWeight(), 0);
  three.GenerateNQVariateData("", {});  // no share is 0 / 0
  EXPECT_NE(Displayed(three).find("weight (size = 3)\n  0 0 0\n"), std::string::npos);
}

TEST(ChartData, VariateDataIsMadeOnce) {
  NQHistogramData none, histogram(1, 3, 3, true);
  for (const double x : {1.0, 3.0}) histogram.UpdateData(1, 1, x);
  NQBarChartData shares(3, true), weights(3, false);
  for (const auto& [w, category] : {std::pair{1.0, 0.0}, {3.0, 1.9}, {0.0, 2.999}})
    EXPECT_EACH(true, shares.UpdateData(w, category), weights.UpdateData(w, category)) << category;
  NQScatterPlotData points, cells(2, 2, 0, 0, 2, 2, true), huge(INT_MAX, INT_MAX, 0, 0, 1, 1, true);
  for (NQScatterPlotData* plot : {&points, &cells, &huge}) {
    plot->UpdateData(2, 1, 1.5, 0.5);
    plot->UpdateData(1, 1, 0.5, 1.5);
    plot->UpdateData(0, 1, 5, kNaN);
    plot->UpdateData(4, 0, kInf, 0.5);
    EXPECT_EACH(true, plot->GetNQVariateData().GetCounts().empty(), plot->GetTotalWeight() == 7);
  }
  EXPECT_EQ(points.GetXCoordinates().GetFeature() + points.GetYCoordinates().GetFeature(), "xy");
  EXPECT_EQ(cells.GetYCoordinates().GetDoubles()->size(), 0U);
  for (const char* description : {"age", "later"}) {
    const std::string rows[][3] = {
#include "golden/chart_elements.inc"
    };
    for (const auto& [label, element, want] : rows)
      EXPECT_EQ(element, want) << label << description;
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
  const std::string rows[][3] = {
#include "golden/chart_displays.inc"
  };
  for (const auto& [name, shown, want] : rows) EXPECT_EQ(shown, want) << name;
}

}  // namespace
}  // namespace NQMath_940
