#include <nqcommon/math/stats/charts/NQHistogramData.h>

#include <cmath>
#include <limits>

#include <nqcommon/common/display.h>
#include <nqcommon/math/kernels/display_frame.h>
#include <nqcommon/math/stats/charts/internal/chart_bins.h>
#include <nqcommon/output/NQStatXMLTags.h>

namespace NQMath_940 {

using NQCommon_940::GuardMemory;
using NQCommon_940::NQMV;
using NQXML_940::NQVariateData;
using NQXML_940::NQXMLCounts;

NQHistogramData::NQHistogramData(int nBins, double min, double max, bool computeSpread)
    : fNBins(nBins),
      fBinLength(internal::FitBins(fNBins, min, max)),
      fMin(min),
      fMax(max),
      fComputeSpread(computeSpread) {
  if (internal::MakeCells(*fvBins, static_cast<std::size_t>(fNBins))) return;
  fNBins = internal::MakeCells(*fvBins, 1) ? 1 : 0;
  fBinLength = 0;
}

bool NQHistogramData::UpdateData(double f, double r, double x) {
  const double w = f * r;
  const double oldSum = fSumWeight;
  fSumWeight += w;
  fSumFrequency += f;
  fNCases += 1;
  if (w != 0) {
    const double step = (x - fMean) * w / fSumWeight;
    const double noise = 2 * std::fabs(fMean) * std::numeric_limits<double>::epsilon();
    fMean = std::fabs(fMean + step) < noise ? 0 : fMean + step;
    if (fComputeSpread) {
      if (NQMV::IsMissing(fSecondMoment)) fSecondMoment = 0;
      fSecondMoment = oldSum / fSumWeight * fSecondMoment + oldSum / w * (step * step);
    }
  }
  const std::size_t index = internal::BinOf(x, fMin, fBinLength, fNBins);
  if (index >= fvBins->size()) return true;
  Bin& bin = (*fvBins)[index];
  bin.weight += w;
  bin.frequency += f;
  internal::MoveMean(bin.mean, x, w, bin.weight);
  return true;
}

double NQHistogramData::GetStdDev() const {
  if (!fComputeSpread || !(fSumWeight > 1)) return 0;
  return std::sqrt(fSecondMoment * fSumWeight / (fSumWeight - 1));
}

double NQHistogramData::GetBinLimit(int i) const {
  return internal::BinLimit(i, fNBins, fMin, fMax, fBinLength);
}

double NQHistogramData::BinValue(int i, double Bin::*value) const {
  const auto at = static_cast<std::size_t>(i);  // a negative index is past every end
  return at < fvBins->size() ? (*fvBins)[at].*value : NQMV::Missing();
}

double NQHistogramData::GetBinMean(int i) const { return BinValue(i, &Bin::mean); }

double NQHistogramData::GetBinFrequency(int i) const { return BinValue(i, &Bin::frequency); }

NQVariateData& NQHistogramData::GenerateNQVariateData(const std::string& description) {
  if (!fVariateData->GetCounts().empty()) return *fVariateData;
  GuardMemory([&] {
    std::vector<double> means, frequencies;
    for (const Bin& bin : *fvBins) {
      if (!(bin.frequency > 0)) continue;
      means.push_back(bin.mean);
      frequencies.push_back(bin.frequency);
    }
    using namespace NQStatXMLTags;
    NQVariateData data;
    data.AddCoordinates(
        {description.empty() ? "" : XML_VAL_OBSERVED, description, "", std::move(means)});
    data.AddCoordinates({XML_VAL_frequency, "", "", std::move(frequencies)});
    data.AddStatistic("mean", fMean);
    if (fComputeSpread) data.AddStatistic("stdDeviation", GetStdDev());
    data.AddCounts(NQXMLCounts(fSumFrequency));
    *fVariateData = std::move(data);
  });
  return *fVariateData;
}

void NQHistogramData::Display() const {
  using namespace NQDisplay_940;
  const auto displayBins = [this](const char* name, double Bin::*value) {
    std::vector<double> values;
    for (const Bin& bin : *fvBins) values.push_back(bin.*value);
    DisplayDV(name, values, true);
  };
  internal::DisplayObject("NQHistogramData", [&] {
    DisplayI("The number of bins", fNBins);
    DisplayD("The length of a bin", fBinLength);
    displayBins("The means of each bin", &Bin::mean);
    displayBins("N cases of each bin considering frequency weight only", &Bin::frequency);
    displayBins("The weighted (both frequency and regression weight) N cases", &Bin::weight);
    DisplayD("Minimum value from constructor", fMin);
    DisplayD("Maximum value from constructor", fMax);
    DisplayD("Weighted number of cases including both weights", fSumWeight);
    DisplayD("The total unweighted number of cases", fNCases);
    DisplayD("The mean of all cases", fMean);
    DisplayD("The second moment around mean", fSecondMoment);
  });
}

}  // namespace NQMath_940
