// Bins of equal length, and the weighted means in them.
#pragma once

#include <cmath>
#include <cstddef>
#include <vector>

#include <nqcommon/common/NQMV.h>
#include <nqcommon/common/memory_guard.h>

namespace NQMath_940::internal {

// The length of nBins bins over min .. max, 0 for a single bin. nBins becomes 1 when it is below 1,
// and unless min < max and max - min is finite.
inline double FitBins(int& nBins, double min, double max) {
  if (nBins < 1 || !(min < max) || !std::isfinite(max - min)) nBins = 1;
  return nBins < 2 ? 0 : (max - min) / nBins;
}

// The bin of x; the first or the last for what lies outside the range, the first for NaN.
inline std::size_t BinOf(double x, double min, double length, int nBins) {
  if (nBins < 2) return 0;
  const double bin = (x - min) / length;
  if (!(bin >= 1)) return 0;
  // The double is compared before it is converted, because no integer holds every double.
  return static_cast<std::size_t>(bin < nBins ? static_cast<int>(bin) : nBins - 1);
}

// Where bin i of nBins begins, and the last one ends for i = nBins; missing for another i. A single
// bin reaches from min to max.
inline double BinLimit(int i, int nBins, double min, double max, double length) {
  if (i < 0 || i > nBins) return NQCommon_940::NQMV::Missing();
  return i == nBins ? max : min + i * length;
}

// Sets `cells` to n cells as they are at first. False, and no cells, where memory ends.
template <class Cell>
bool MakeCells(std::vector<Cell>& cells, std::size_t n) {
  return NQCommon_940::GuardMemory([&] { cells.resize(n); });
}

// Moves a mean by a case of weight w, where `sum` is the sum of the weights with w. A mean that is
// missing starts from 0. A weight of 0 does nothing, because cases of weight 0 have no mean.
inline void MoveMean(double& mean, double x, double w, double sum) {
  if (w == 0) return;
  if (NQCommon_940::NQMV::IsMissing(mean)) mean = 0;
  mean += (x - mean) * w / sum;
}

}  // namespace NQMath_940::internal
