#include <nqcommon/math/stats/charts/NQScatterPlotData.h>

#include <cstddef>
#include <utility>

#include <nqcommon/common/display.h>
#include <nqcommon/math/stats/charts/internal/chart_bins.h>
#include <nqcommon/output/NQStatXMLTags.h>

namespace NQMath_940 {

using NQXML_940::NQVariateData;
using NQXML_940::NQXMLCounts;
using Doubles = std::vector<double>;

NQScatterPlotData::NQScatterPlotData(int nBinsX, int nBinsY, double minX, double minY, double maxX,
                                     double maxY, bool binned)
    : fNBinsX(nBinsX),
      fNBinsY(nBinsY),
      fBinLengthX(internal::FitBins(fNBinsX, minX, maxX)),
      fBinLengthY(internal::FitBins(fNBinsY, minY, maxY)),
      fMinX(minX),
      fMaxX(maxX),
      fMinY(minY),
      fMaxY(maxY),
      fBinned(binned),
      fX("x", "", "", Doubles()),
      fY("y", "", "", Doubles()),
      fFrequencies(NQStatXMLTags::XML_VAL_frequency, "", "", Doubles()) {
  const auto nCells = static_cast<std::size_t>(fNBinsX) * static_cast<std::size_t>(fNBinsY);
  if (!fBinned || internal::MakeCells(fvCells, nCells)) return;
  fNBinsX = fNBinsY = 1;
  fBinLengthX = fBinLengthY = 0;
  fvCells.resize(1);
}

void NQScatterPlotData::UpdateData(double f, double r, double x, double y) {
  fSumFrequency += f;
  if (!fBinned) {
    fX.AddValue(x);
    fY.AddValue(y);
    fFrequencies.AddValue(f);
    return;
  }
  const std::size_t binX = internal::BinOf(x, fMinX, fBinLengthX, fNBinsX);
  const std::size_t binY = internal::BinOf(y, fMinY, fBinLengthY, fNBinsY);
  Cell& cell = fvCells[binX * static_cast<std::size_t>(fNBinsY) + binY];
  const double w = f * r;
  cell.weight += w;
  cell.frequency += f;
  internal::MoveMean(cell.meanX, x, w, cell.weight);
  internal::MoveMean(cell.meanY, y, w, cell.weight);
}

void NQScatterPlotData::CollectCells() {
  Doubles x, y, frequencies;
  for (const Cell& cell : fvCells) {
    if (!(cell.frequency > 0)) continue;
    x.push_back(cell.meanX);
    y.push_back(cell.meanY);
    frequencies.push_back(cell.frequency);
  }
  fX.SetValues(std::move(x));
  fY.SetValues(std::move(y));
  fFrequencies.SetValues(std::move(frequencies));
}

NQVariateData& NQScatterPlotData::GetNQVariateData(const std::string& description) {
  if (!fVariateData.GetCounts().empty()) return fVariateData;
  if (fBinned) CollectCells();
  fVariateData.SetDescription(description);
  fVariateData.SetCoordinates({fX, fY, fFrequencies});
  fVariateData.AddCounts(NQXMLCounts(fSumFrequency));
  return fVariateData;
}

void NQScatterPlotData::Display() const {
  using namespace NQDisplay_940;
  const auto displayCells = [this](const char* name, double Cell::*value) {
    const auto nY = static_cast<std::size_t>(fNBinsY);
    std::vector<Doubles> rows(fvCells.size() / nY);
    for (std::size_t i = 0; i < fvCells.size(); ++i) rows[i / nY].push_back(fvCells[i].*value);
    DisplayDVV(name, rows);
  };
  DisplayText(1, "NQScatterPlotData display start");
  DisplayI("The number of bins for X", fNBinsX);
  DisplayI("The number of bins for Y", fNBinsY);
  DisplayD("The length of a bin for X", fBinLengthX);
  DisplayD("The length of a bin for Y", fBinLengthY);
  displayCells("The means for X in each bin", &Cell::meanX);
  displayCells("The means for Y in each bin", &Cell::meanY);
  displayCells("The weighted (frequency and regression weight) N cases", &Cell::weight);
  DisplayD("Minimum X value from constructor", fMinX);
  DisplayD("Maximum X value from constructor", fMaxX);
  DisplayD("Minimum Y value from constructor", fMinY);
  DisplayD("Maximum Y value from constructor", fMaxY);
  DisplayText(1, "NQScatterPlotData display end");
}

}  // namespace NQMath_940
