#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include <nqcommon/common/GuardedCopy.h>
#include <nqcommon/common/NQMV.h>
#include <nqcommon/export.h>
#include <nqcommon/output/NQVariateData.h>

namespace NQMath_940 {

// Two continuous fields, case by case, for a scatter plot: every point as it is, or binned, the
// means of the points in each cell of a grid.
//
// Weights   A case has a frequency weight f and a regression weight r. It counts as f cases; the
//           means of a cell weight it with f r. Weights are 0 or more.
// Bins      on each axis those of NQHistogramData, with its rules for bad ranges and for values
//           outside. No case is dropped: remove missing values first.
// Memory    binned four numbers a cell, else three a case.
// Failure   where memory ends: one cell when there is none for the grid, and no cell when there is
//           none for that; no points or cells in a copy; variate data without counts, which the
//           next call tries again to put together.
// Threads   one object, one thread at a time.
class NQ_API NQScatterPlotData {
 public:
  // Every point.
  NQScatterPlotData() : NQScatterPlotData(1, 1, 0, 0, 0, 0, false) {}

  NQScatterPlotData(int nBinsX, int nBinsY, double minX, double minY, double maxX, double maxY,
                    bool binned);

  // Adds a case. Changes no variate data that has been asked for: from then on no points are kept.
  // False, nothing changed, when memory ends.
  bool UpdateData(double f, double r, double x, double y);

  // The sum of f of all cases.
  double GetTotalWeight() const { return fSumFrequency; }

  // x, y and f of the points, of which features are "x", "y" and "frequency". Binned they are empty
  // until asked for the variate data, and then of the cells. They are part of the variate data.
  const NQXML_940::NQXMLCoordinates& GetXCoordinates() const { return Coordinates(0); }
  const NQXML_940::NQXMLCoordinates& GetYCoordinates() const { return Coordinates(1); }
  const NQXML_940::NQXMLCoordinates& GetFrequencies() const { return Coordinates(2); }

  // The grid, for whoever draws it. The bins of X are 0 .. GetNBinsX() - 1, and bin i reaches from
  // GetBinLimitX(i) to GetBinLimitX(i + 1); those of Y are likewise. A single bin reaches from the
  // minimum to the maximum given. Missing without such a bin.
  int GetNBinsX() const { return fNBinsX; }
  int GetNBinsY() const { return fNBinsY; }
  double GetBinLimitX(int i) const;
  double GetBinLimitY(int i) const;
  // The sum of f in a cell; missing unless binned and for a cell that does not exist.
  double GetCellFrequency(int binX, int binY) const;

  // The data for CreateElemVarData, put together by the first call; later calls return the same.
  //   description   the one given
  //   counts        the sum of f
  //   coordinates   the three above. Binned they hold the mean of x, the mean of y and the sum of f
  //                 of each cell where that sum is above 0, the cells of the first X bin first. The
  //                 means are missing where all f r are 0.
  NQXML_940::NQVariateData& GetNQVariateData(const std::string& description);
  // What was put together, empty before.
  const NQXML_940::NQVariateData& GetNQVariateData() const { return *fVariateData; }

  void Display() const;

 private:
  struct Cell {
    double meanX = NQCommon_940::NQMV::Missing();
    double meanY = NQCommon_940::NQMV::Missing();
    double frequency = 0;
    double weight = 0;
  };

  bool IsAskedFor() const { return !fVariateData->GetCounts().empty(); }
  const NQXML_940::NQXMLCoordinates& Coordinates(std::size_t axis) const;
  bool AddPoint(double x, double y, double f);
  void CollectCells();

  int fNBinsX;
  int fNBinsY;
  double fBinLengthX;
  double fBinLengthY;
  double fMinX;
  double fMaxX;
  double fMinY;
  double fMaxY;
  bool fBinned;
  NQCommon_940::GuardedCopy<std::vector<Cell>> fvCells;  // by X bin, then by Y bin
  double fSumFrequency = 0;
  // x, y and the frequencies, until they become the variate data's.
  NQCommon_940::GuardedCopy<std::array<NQXML_940::NQXMLCoordinates, 3>> fCoordinates;
  NQCommon_940::GuardedCopy<NQXML_940::NQVariateData> fVariateData;
};

}  // namespace NQMath_940
