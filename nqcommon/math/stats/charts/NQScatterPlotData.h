#pragma once

#include <string>
#include <vector>

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
//           outside; one cell when there is no memory for the grid. No case is dropped: remove
//           missing values first.
// Memory    binned four numbers a cell, else three a case, and twice that once asked for.
// Threads   one object, one thread at a time.
class NQ_API NQScatterPlotData {
 public:
  // Every point.
  NQScatterPlotData() : NQScatterPlotData(1, 1, 0, 0, 0, 0, false) {}
  NQScatterPlotData(int nBinsX, int nBinsY, double minX, double minY, double maxX, double maxY,
                    bool binned);

  // Adds a case. Changes no variate data that has been asked for.
  void UpdateData(double f, double r, double x, double y);

  // The sum of f of all cases.
  double GetTotalWeight() const { return fSumFrequency; }

  // x, y and f of the points, of which features are "x", "y" and "frequency". Binned they are empty
  // until asked for the variate data, and then of the cells.
  const NQXML_940::NQXMLCoordinates& GetXCoordinates() const { return fX; }
  const NQXML_940::NQXMLCoordinates& GetYCoordinates() const { return fY; }
  const NQXML_940::NQXMLCoordinates& GetFrequencies() const { return fFrequencies; }

  // The data for CreateElemVarData, put together by the first call; later calls return the same.
  //   description   the one given
  //   counts        the sum of f
  //   coordinates   the three above. Binned they hold the mean of x, the mean of y and the sum of f
  //                 of each cell where that sum is above 0, the cells of the first X bin first. The
  //                 means are missing where all f r are 0.
  NQXML_940::NQVariateData& GetNQVariateData(const std::string& description);
  // What was put together, empty before.
  const NQXML_940::NQVariateData& GetNQVariateData() const { return fVariateData; }

  void Display() const;

 private:
  struct Cell {
    double meanX = NQCommon_940::NQMV::Missing();
    double meanY = NQCommon_940::NQMV::Missing();
    double frequency = 0;
    double weight = 0;
  };

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
  std::vector<Cell> fvCells;  // by X bin, then by Y bin
  double fSumFrequency = 0;
  NQXML_940::NQXMLCoordinates fX;
  NQXML_940::NQXMLCoordinates fY;
  NQXML_940::NQXMLCoordinates fFrequencies;
  NQXML_940::NQVariateData fVariateData;
};

}  // namespace NQMath_940
