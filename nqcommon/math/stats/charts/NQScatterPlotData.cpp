#include <nqcommon/math/stats/charts/NQScatterPlotData.h>

#include <algorithm>
#include <cstddef>
#include <utility>

#include <nqcommon/common/display.h>
#include <nqcommon/math/kernels/display_frame.h>
#include <nqcommon/math/stats/charts/internal/chart_bins.h>
#include <nqcommon/output/NQStatXMLTags.h>

namespace NQMath_940 {

using NQCommon_940::GuardMemory;
using NQXML_940::NQVariateData;
using NQXML_940::NQXMLCoordinates;
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
      fBinned(binned) {
  *fCoordinates = {{{"x", "", "", Doubles()},
                    {"y", "", "", Doubles()},
                    {NQStatXMLTags::XML_VAL_frequency, "", "", Doubles()}}};
  const auto nCells = static_cast<std::size_t>(fNBinsX) * static_cast<std::size_t>(fNBinsY);
  if (!fBinned || internal::MakeCells(*fvCells, nCells)) return;
  fNBinsX = fNBinsY = internal::MakeCells(*fvCells, 1) ? 1 : 0;
  fBinLengthX = fBinLengthY = 0;
}

bool NQScatterPlotData::UpdateData(double f, double r, double x, double y) {
  if (!fBinned && !IsAskedFor() && !AddPoint(x, y, f)) return false;
  fSumFrequency += f;
  if (fvCells->empty()) return true;
  const std::size_t binX = internal::BinOf(x, fMinX, fBinLengthX, fNBinsX);
  const std::size_t binY = internal::BinOf(y, fMinY, fBinLengthY, fNBinsY);
  Cell& cell = (*fvCells)[binX * static_cast<std::size_t>(fNBinsY) + binY];
  const double w = f * r;
  cell.weight += w;
  cell.frequency += f;
  internal::MoveMean(cell.meanX, x, w, cell.weight);
  internal::MoveMean(cell.meanY, y, w, cell.weight);
  return true;
}

// Adds all three values, or none. A copy that lost its points has no lists, and takes no more.
bool NQScatterPlotData::AddPoint(double x, double y, double f) {
  Doubles* const lists[] = {(*fCoordinates)[0].GetDoubles(), (*fCoordinates)[1].GetDoubles(),
                            (*fCoordinates)[2].GetDoubles()};
  if (lists[0] == nullptr) return false;
  const std::size_t n = lists[2]->size();
  const bool isAdded = GuardMemory([&] {
    lists[0]->push_back(x);
    lists[1]->push_back(y);
    lists[2]->push_back(f);
  });
  if (isAdded) return true;
  for (Doubles* list : lists) list->resize(n);
  return false;
}

const NQXMLCoordinates& NQScatterPlotData::Coordinates(std::size_t axis) const {
  const std::vector<NQXMLCoordinates>& given = fVariateData->GetCoordinates();
  return axis < given.size() ? given[axis] : (*fCoordinates)[axis];
}

double NQScatterPlotData::GetBinLimitX(int i) const {
  return internal::BinLimit(i, fNBinsX, fMinX, fMaxX, fBinLengthX);
}

double NQScatterPlotData::GetBinLimitY(int i) const {
  return internal::BinLimit(i, fNBinsY, fMinY, fMaxY, fBinLengthY);
}

double NQScatterPlotData::GetCellFrequency(int binX, int binY) const {
  if (fvCells->empty() || binX < 0 || binX >= fNBinsX || binY < 0 || binY >= fNBinsY)
    return NQCommon_940::NQMV::Missing();
  const auto row = static_cast<std::size_t>(binX) * static_cast<std::size_t>(fNBinsY);
  return (*fvCells)[row + static_cast<std::size_t>(binY)].frequency;
}

void NQScatterPlotData::CollectCells() {
  Doubles x, y, frequencies;
  for (const Cell& cell : *fvCells) {
    if (!(cell.frequency > 0)) continue;
    x.push_back(cell.meanX);
    y.push_back(cell.meanY);
    frequencies.push_back(cell.frequency);
  }
  (*fCoordinates)[0].SetValues(std::move(x));
  (*fCoordinates)[1].SetValues(std::move(y));
  (*fCoordinates)[2].SetValues(std::move(frequencies));
}

NQVariateData& NQScatterPlotData::GetNQVariateData(const std::string& description) {
  if (IsAskedFor()) return *fVariateData;
  GuardMemory([&] {
    NQVariateData data;
    data.SetDescription(description);
    data.AddCounts(NQXMLCounts(fSumFrequency));
    std::vector<NQXMLCoordinates> coordinates;
    coordinates.reserve(fCoordinates->size());
    if (fBinned) CollectCells();
    // The points are moved last, when nothing can fail any more.
    for (NQXMLCoordinates& axis : *fCoordinates) coordinates.push_back(std::move(axis));
    data.SetCoordinates(std::move(coordinates));
    *fVariateData = std::move(data);
  });
  return *fVariateData;
}

void NQScatterPlotData::Display() const {
  using namespace NQDisplay_940;
  const auto displayCells = [this](const char* name, double Cell::*value) {
    const auto nY = static_cast<std::size_t>(std::max(fNBinsY, 1));
    std::vector<Doubles> rows(fvCells->size() / nY);
    for (std::size_t i = 0; i < fvCells->size(); ++i) rows[i / nY].push_back((*fvCells)[i].*value);
    DisplayDVV(name, rows);
  };
  internal::DisplayObject("NQScatterPlotData", [&] {
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
  });
}

}  // namespace NQMath_940
