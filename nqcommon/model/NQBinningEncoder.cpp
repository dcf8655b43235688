#include <nqcommon/model/NQBinningEncoder.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numeric>
#include <utility>

#include <nqcommon/common/NQMV.h>
#include <nqcommon/common/display.h>

namespace NQXML_940 {

using NQCommon_940::NQMV;

namespace {

bool IsRange(double min, double max) {
  return min <= max && std::isfinite(min) && std::isfinite(max) && !NQMV::IsMissing(min);
}

double Count(double count) { return count > 0 ? count : 0; }

}  // namespace

NQBinningEncoder::NQBinningEncoder(std::vector<double> cutPoints)
    : fvCutPoints(std::move(cutPoints)) {
  const auto isNaN = [](double x) { return std::isnan(x); };
  fvCutPoints.erase(std::remove_if(fvCutPoints.begin(), fvCutPoints.end(), isNaN),
                    fvCutPoints.end());
  std::sort(fvCutPoints.begin(), fvCutPoints.end());
  fvCutPoints.erase(std::unique(fvCutPoints.begin(), fvCutPoints.end()), fvCutPoints.end());
  if (!fvCutPoints.empty()) fNBins = static_cast<int>(fvCutPoints.size()) + 1;
}

int NQBinningEncoder::GetNumberOfCutPoints() const {
  return fHasRange ? fNBins - 1 : static_cast<int>(fvCutPoints.size());
}

double NQBinningEncoder::GetCutPoint(int i) const {
  if (!fHasRange) return fvCutPoints[static_cast<std::size_t>(i)];
  const double n = fNBins, k = i + 1, range = fMax - fMin;
  // One form for all cut points of the encoder, so that they ascend.
  if (std::isfinite(n * range)) return fMin + k * range / n;
  const double half = (fMax / 2 - fMin / 2) * (k / n);
  return fMin + half + half;
}

std::vector<double> NQBinningEncoder::GetCutPoints() const {
  std::vector<double> cutPoints;
  cutPoints.reserve(static_cast<std::size_t>(GetNumberOfCutPoints()));
  for (int i = 0; i < GetNumberOfCutPoints(); ++i) cutPoints.push_back(GetCutPoint(i));
  return cutPoints;
}

double NQBinningEncoder::Encode(double x) const {
  if (NQMV::IsMissing(x) || std::isnan(x)) return -1;
  int first = 0, last = GetNumberOfCutPoints();
  if (last == 0) return x >= 0 ? 1 : 0;
  while (first < last) {
    const int middle = first + (last - first) / 2;
    if (GetCutPoint(middle) < x)
      first = middle + 1;
    else
      last = middle;
  }
  return first;
}

void NQBinningEncoder::ComputeCutpoints(double min, double max, int n) {
  fNBins = n >= 2 ? n : 0;
  fHasRange = n >= 2 && IsRange(min, max);
  fMin = min;
  fMax = max;
  fvCutPoints.clear();
}

int NQBinningEncoder::AdjustBinning(const std::vector<double>& counts, double minCount) {
  if (!FitsCounts(counts)) return -1;
  std::vector<double> kept;
  double inBin = 0;
  for (int i = 0; i < GetNumberOfCutPoints(); ++i) {
    inBin += Count(counts[static_cast<std::size_t>(i)]);
    if (inBin < minCount) continue;
    kept.push_back(GetCutPoint(i));
    inBin = 0;
  }
  inBin += Count(counts.back());
  if (inBin < minCount && !kept.empty()) kept.pop_back();
  if (kept.empty()) return -1;
  *this = NQBinningEncoder(std::move(kept));
  return fNBins;
}

NQBinningEncoder NQBinningEncoder::CreateRebinned(const std::vector<double>& counts, int n) const {
  if (n < 2 || n >= fNBins || !FitsCounts(counts)) return *this;
  const double total = std::accumulate(counts.begin(), counts.end(), 0.0,
                                       [](double sum, double count) { return sum + Count(count); });
  if (!(total > 0) || !std::isfinite(total)) return *this;
  std::vector<double> chosen;
  double running = 0, bin = 1;  // the bin that is being filled, 1 .. n
  for (int i = 0; i < GetNumberOfCutPoints() && bin < n; ++i) {
    running += Count(counts[static_cast<std::size_t>(i)]);
    if (running / total < bin / n) continue;
    chosen.push_back(GetCutPoint(i));
    while (bin < n && running / total >= bin / n) ++bin;
  }
  if (chosen.empty()) chosen.push_back(GetCutPoint(GetNumberOfCutPoints() - 1));
  return NQBinningEncoder(std::move(chosen));
}

bool NQBinningEncoder::FitsCounts(const std::vector<double>& counts) const {
  return GetNumberOfCutPoints() > 0 && counts.size() == static_cast<std::size_t>(fNBins);
}

void NQBinningEncoder::Display() const {
  using namespace NQDisplay_940;
  constexpr int most = 1000;
  DisplayText(1, "NQBinningEncoder display start");
  DisplayI("Number of bins", fNBins);
  std::vector<double> cutPoints;
  for (int i = 0; i < std::min(GetNumberOfCutPoints(), most); ++i)
    cutPoints.push_back(GetCutPoint(i));
  DisplayDV("Cut points", cutPoints, false);
  DisplayText(1, "NQBinningEncoder display end");
}

}  // namespace NQXML_940
