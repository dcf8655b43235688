#include "input_summaries.h"

#include <algorithm>
#include <cmath>
#include <string>

#include <nqcommon/common/NQMV.h>
#include <nqcommon/model/NQContVar.h>

using NQCommon_940::NQMV;
using NQMath_940::NQBarChartData;
using NQMath_940::NQHistogramData;
using NQXML_940::NQContVar;
using NQXML_940::NQUniStats;
using NQXML_940::NQVariateData;
using NQXML_940::NQVarList;

namespace regression {

// Bins by the rule of Sturges (1926, The choice of a class interval).
InputSummaries::InputSummaries(const ModelData& data)
    : fData(data),
      fNBins(1 + static_cast<int>(std::ceil(std::log2(static_cast<double>(data.Counts().used))))),
      fFrequencies(static_cast<std::size_t>(data.NInputs())) {
  for (int i = 0; i < data.NInputs(); ++i) {
    if (data.IsCategorical(i)) {
      const int nCategories = data.Variables().GetVarAt(i)->GetNumberOfCategories();
      fCharts.emplace_back(NQBarChartData(nCategories, false));
      fFrequencies[static_cast<std::size_t>(i)].resize(static_cast<std::size_t>(nCategories));
    } else {
      const Range& range = data.RangeOf(i);
      fCharts.emplace_back(NQHistogramData(fNBins, range.min, range.max, true));
    }
  }
}

void InputSummaries::Add(const Case& taken) {
  fSumWeights += taken.frequency * taken.weight;
  for (std::size_t i = 0; i < fCharts.size(); ++i) {
    const double x = taken.values[i];
    if (auto* histogram = std::get_if<NQHistogramData>(&fCharts[i])) {
      histogram->UpdateData(taken.frequency, taken.weight, x);
    } else {
      std::get<NQBarChartData>(fCharts[i]).UpdateData(taken.frequency, x);
      fFrequencies[i][static_cast<std::size_t>(x)] += taken.frequency;
    }
  }
}

NQVariateData& InputSummaries::Chart(int input) {
  const std::string& name = fData.Variables().GetVarAt(input)->GetVariableName();
  ChartData& chart = fCharts[static_cast<std::size_t>(input)];
  auto* histogram = std::get_if<NQHistogramData>(&chart);
  NQVariateData& data = histogram ? histogram->GenerateNQVariateData(name)
                                  : std::get<NQBarChartData>(chart).GenerateNQVariateData(
                                        name, fData.Categories(input));
  const bool isNew = data.GetDescription().empty();
  data.SetDescription(name);
  if (histogram && isNew) {
    const Range& range = fData.RangeOf(input);
    data.AddStatistic("minimum", range.min);
    data.AddStatistic("maximum", range.max);
    data.AddStatistic("bins", range.min < range.max ? fNBins : 1);
  }
  return data;
}

NQUniStats InputSummaries::Statistics(int input) const {
  const std::string& name = fData.Variables().GetVarAt(input)->GetVariableName();
  const auto i = static_cast<std::size_t>(input);
  const double nCases = fData.Counts().sumFrequency;
  if (fData.IsCategorical(input)) return NQUniStats(name, nCases, fFrequencies[i]);
  const auto& histogram = std::get<NQHistogramData>(fCharts[i]);
  const auto known = [](double x) { return std::isfinite(x) ? x : NQMV::Missing(); };
  const Range& range = fData.RangeOf(input);
  return NQUniStats(
      name, nCases, {}, {}, false,
      {range.min, range.max, known(histogram.GetMean()), known(histogram.GetStdDev())});
}

void InputSummaries::StoreIn(NQVarList& variables) const {
  for (int i = 0; i < fData.NInputs(); ++i) {
    auto* variable = dynamic_cast<NQContVar*>(variables.GetVarAt(i));
    if (!variable) continue;
    const NQUniStats statistics = Statistics(i);
    variable->SetMean(statistics.GetSummary().fMean);
    variable->SetStdDev(statistics.GetSummary().fStdDev);
    variable->SetSumFreqWts(statistics.GetNCases());
    variable->SetSumCompWts(fSumWeights);
  }
}

}  // namespace regression
