#pragma once

#include <vector>

#include <nqcommon/export.h>

namespace NQXML_940 {

// Numbers to bins 0 .. n - 1 by n - 1 ascending cut points; bins are closed on the right.
//
//   n = 5 over 0 .. 10:   x <= 2 | 2 < x <= 4 | 4 < x <= 6 | 6 < x <= 8 | 8 < x
//
// Equal-width cut points are computed where they are needed, not kept: any number of bins takes the
// same memory.
class NQ_API NQBinningEncoder {
 public:
  // No bins.
  NQBinningEncoder() = default;

  // As ComputeCutpoints.
  NQBinningEncoder(double min, double max, int n) { ComputeCutpoints(min, max, n); }

  // Bins between the cut points given, one more than these. They are put in order, each once;
  // NaN are left out.
  explicit NQBinningEncoder(std::vector<double> cutPoints);

  // 0 without bins, else 2 or more.
  int GetNumberOfBins() const { return fNBins; }

  // Of the cut points that exist: n - 1, or none.
  int GetNumberOfCutPoints() const;
  double GetCutPoint(int i) const;  // 0 <= i < GetNumberOfCutPoints()
  std::vector<double> GetCutPoints() const;
  // Whether the cut points were given; otherwise the bins have one width.
  bool HasGivenCutPoints() const { return !fvCutPoints.empty(); }

  // The bin of x: the position of the first cut point >= x, n - 1 when there is none.
  //   -1 when x is the system-missing value or NaN.
  //   Without cut points 1 for x >= 0 and 0 for x < 0, whatever n is; builders rely on it.
  // Cost  log2(n) comparisons.
  double Encode(double x) const;

  // n bins of equal width: the cut points become min + i (max - min) / n, i = 1 .. n - 1. No bins
  // when n < 2. Where min .. max is no range (min > max, or an end infinite, NaN or missing) there
  // are n bins, but no cut points yet.
  void ComputeCutpoints(double min, double max, int n);

  // Joins bins until each holds at least minCount of the counts, one count per bin: from the left,
  // a bin takes in its right neighbours as long as it is short, and what is left over on the right
  // goes to the last full bin. Counts that are negative, missing or NaN count as 0.
  // Returns the number of bins now; -1, nothing changed, where fewer than two bins would be left,
  // without one count for each bin, or without cut points.
  int AdjustBinning(const std::vector<double>& counts, double minCount);

  // An encoder of 2 to n bins, with about the same total of counts in each: its cut points are
  // those of this one where the running total first reaches 1/n, 2/n, ... of the whole, or the last
  // one where it never does. A copy of this one where n is not below the number of bins, n < 2, the
  // total is not positive and finite, there is not one count for each bin, or no cut point.
  NQBinningEncoder CreateRebinned(const std::vector<double>& counts, int n) const;

  // Writes the state through the diagnostic display; of the cut points the first thousand.
  void Display() const;

 private:
  bool FitsCounts(const std::vector<double>& counts) const;

  int fNBins = 0;
  // Equal width where fHasRange, else the cut points given, if any.
  bool fHasRange = false;
  double fMin = 0;
  double fMax = 0;
  std::vector<double> fvCutPoints;
};

}  // namespace NQXML_940
