#include "input_summaries.h"

#include <cmath>
#include <string>

#include <nqcommon/common/NQMV.h>
#include <nqcommon/math/stats/charts/NQBarChartData.h>
#include <nqcommon/math/stats/charts/NQHistogramData.h>
#include <nqcommon/model/NQContVar.h>

using NQCommon_940::NQMV;
using NQMath_940::NQBarChartData;
using NQMath_940::NQHistogramData;
using NQXML_940::NQContVar;
using NQXML_940::NQUniStats;
using NQXML_940::NQVariateData;
using NQXML_940::NQVarList;

namespace support {
namespace {

double StdDeviation(const Bin& whole) {
  return whole.weight > 1 ? std::sqrt(whole.moment / (whole.weight - 1)) : 0;
}

double Known(double x) { return std::isfinite(x) ? x : NQMV::Missing(); }

}  // namespace

// Chan, Golub and LeVeque 1983.
void Bin::Merge(const Bin& right) {
  if (right.weight == 0) return;
  if (weight == 0) {
    *this = right;
    return;
  }
  const double sum = weight + right.weight;
  const double d = right.mean - mean;
  moment += right.moment + d * d * (weight * (right.weight / sum));
  mean += d * (right.weight / sum);
  weight = sum;
  frequency += right.frequency;
}

InputSummaries::InputSummaries(const ModelData& data) {
  const int nBins =
      1 + static_cast<int>(std::ceil(std::log2(static_cast<double>(data.Counts().used))));
  for (int i = 0; i <= data.TargetPosition(); ++i) {
    Axis& axis = fAxes.emplace_back();
    axis.categorical = data.IsCategorical(i);
    if (axis.categorical) {
      axis.bins.resize(static_cast<std::size_t>(data.NCategories(i)));
      continue;
    }
    const Range& range = data.RangeOf(i);
    axis.min = range.min;
    axis.width = (range.max - range.min) / nBins;
    axis.bins.resize(static_cast<std::size_t>(range.min < range.max ? nBins : 1));
  }
}

void InputSummaries::Add(const CaseReader& taken) {
  const double* x = taken.Values();
  for (Axis& axis : fAxes) {
    const double place = axis.categorical       ? *x
                         : axis.bins.size() > 1 ? (*x - axis.min) / axis.width
                                                : 0;
    const std::size_t last = axis.bins.size() - 1;
    const std::size_t k = !(place >= 0)                       ? 0
                          : place < static_cast<double>(last) ? static_cast<std::size_t>(place)
                                                              : last;
    axis.bins[k].Add(taken.Frequency(), taken.Frequency() * taken.Weight(), *x++);
  }
}

void InputSummaries::Merge(const InputSummaries& right) {
  for (std::size_t i = 0; i < fAxes.size(); ++i) {
    for (std::size_t k = 0; k < fAxes[i].bins.size(); ++k)
      fAxes[i].bins[k].Merge(right.fAxes[i].bins[k]);
  }
}

Bin InputSummaries::Whole(int position) const {
  Bin whole;
  for (const Bin& bin : fAxes[static_cast<std::size_t>(position)].bins) whole.Merge(bin);
  return whole;
}

// The library's charts take the bins for cases; what they say of the spread is not theirs then.
NQVariateData InputSummaries::Chart(const ModelData& data, int position) const {
  const std::string& name = data.NameOf(position);
  const Axis& axis = fAxes[static_cast<std::size_t>(position)];
  if (axis.categorical) {
    NQBarChartData chart(data.NCategories(position), false);
    for (std::size_t code = 0; code < axis.bins.size(); ++code)
      chart.UpdateData(axis.bins[code].frequency, static_cast<double>(code));
    NQVariateData result = chart.GenerateNQVariateData(name, data.CategoriesOf(position));
    result.SetDescription(name);
    return result;
  }
  const Range& range = data.RangeOf(position);
  NQHistogramData chart(static_cast<int>(axis.bins.size()), range.min, range.max, false);
  for (const Bin& bin : axis.bins) {
    if (bin.frequency > 0) chart.UpdateData(bin.frequency, bin.weight / bin.frequency, bin.mean);
  }
  NQVariateData result = chart.GenerateNQVariateData(name);
  result.SetDescription(name);
  result.AddStatistic("stdDeviation", Known(StdDeviation(Whole(position))));
  result.AddStatistic("minimum", range.min);
  result.AddStatistic("maximum", range.max);
  result.AddStatistic("bins", static_cast<double>(axis.bins.size()));
  return result;
}

NQUniStats InputSummaries::Statistics(const ModelData& data, int position) const {
  const std::string& name = data.NameOf(position);
  const double nCases = data.Counts().sumFrequency;
  if (data.IsCategorical(position)) {
    std::vector<double> frequencies;
    for (const Bin& bin : fAxes[static_cast<std::size_t>(position)].bins)
      frequencies.push_back(bin.frequency);
    return NQUniStats(name, nCases, frequencies);
  }
  const Range& range = data.RangeOf(position);
  const Bin whole = Whole(position);
  return NQUniStats(name, nCases, {}, {}, false,
                    {range.min, range.max, Known(whole.mean), Known(StdDeviation(whole))});
}

void InputSummaries::StoreIn(const ModelData& data, NQVarList& variables) const {
  for (int i = 0; i < data.NInputs(); ++i) {
    auto* variable = dynamic_cast<NQContVar*>(variables.GetVarAt(i));
    if (!variable) continue;
    const NQUniStats statistics = Statistics(data, i);
    variable->SetMean(statistics.GetSummary().fMean);
    variable->SetStdDev(statistics.GetSummary().fStdDev);
    variable->SetSumFreqWts(statistics.GetNCases());
    variable->SetSumCompWts(Whole(i).weight);
  }
}

}  // namespace support
