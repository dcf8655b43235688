#pragma once

#include <string>
#include <vector>

#include <nqcommon/common/GuardedCopy.h>
#include <nqcommon/common/NQMV.h>
#include <nqcommon/export.h>
#include <nqcommon/output/NQVariateData.h>

namespace NQMath_940 {

// One continuous field in bins of equal length, case by case, for a histogram.
//
// Weights   A case has a frequency weight f and a regression weight r. It counts as f cases; means
//           and spread weight it with w = f r. Weights are 0 or more.
// Bins      of a case: (x - min) / length without its fraction, the first or the last for what lies
//           outside the range, the first for NaN. No case is dropped: remove missing values first.
// Numerics  The mean is a running one (West 1979). The result of a step that cancels it to less
//           than 2 * 2.220446049250313e-16 of what it was, is 0.
// Failure   where memory ends: fewer bins, as said of the constructor; no bins in a copy; variate
//           data without counts, which the next call tries again to put together.
// Threads   one object, one thread at a time.
class NQ_API NQHistogramData {
 public:
  // One bin, no spread.
  NQHistogramData() : NQHistogramData(1, 0, 0, false) {}
  // nBins bins over min .. max, their length (max - min) / nBins; a single bin for nBins < 1, and
  // unless min < max and max - min is finite; also for more bins than there is memory for, and none
  // where there is none for one.
  NQHistogramData(int nBins, double min, double max, bool computeSpread);

  // Adds a case; true. With w = 0 it counts in the frequencies, and its value is not used but for
  // the bin. Changes no variate data that has been asked for.
  bool UpdateData(double f, double r, double x);

  // Of all cases: the sum of f, and the mean, 0 without weights.
  double GetTotalWeight() const { return fSumFrequency; }
  double GetMean() const { return fMean; }
  // sqrt(M W / (W - 1)) of the second moment M and the sum W of w. 0 without spread and for W <= 1.
  double GetStdDev() const;

  // The bins, for whoever draws them. Bin i of 0 .. GetNBins() - 1 reaches from GetBinLimit(i) to
  // GetBinLimit(i + 1), a single bin from the minimum to the maximum given; it has the mean of its
  // cases, which may lie outside of the first and the last bin, and their sum of f. Missing without
  // such a bin, the mean also without weights.
  int GetNBins() const { return fNBins; }
  double GetBinLimit(int i) const;
  double GetBinMean(int i) const;
  double GetBinFrequency(int i) const;

  // The data for CreateElemVarData, put together by the first call; later calls return the same.
  //   counts        the sum of f
  //   coordinates   the mean, and under "frequency" the sum of f, of each bin where that is not 0;
  //                 the mean is missing where all w are 0. With a description that of the means is
  //                 "observed" and their field the description.
  //   statistics    "mean", and with spread "stdDeviation"
  NQXML_940::NQVariateData& GenerateNQVariateData(const std::string& description);

  void Display() const;

 private:
  struct Bin {
    double mean = NQCommon_940::NQMV::Missing();
    double frequency = 0;
    double weight = 0;
  };

  double BinValue(int i, double Bin::*value) const;

  int fNBins;
  double fBinLength;
  NQCommon_940::GuardedCopy<std::vector<Bin>> fvBins;
  double fMin;
  double fMax;
  bool fComputeSpread;
  double fSumWeight = 0;
  double fSumFrequency = 0;
  double fNCases = 0;
  double fMean = 0;
  double fSecondMoment = NQCommon_940::NQMV::Missing();  // about the mean, divisor W
  NQCommon_940::GuardedCopy<NQXML_940::NQVariateData> fVariateData;
};

}  // namespace NQMath_940
