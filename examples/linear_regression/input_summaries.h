// What the documents tell of the inputs besides the fit, gathered case by case.
#pragma once

#include <variant>
#include <vector>

#include <nqcommon/math/stats/charts/NQBarChartData.h>
#include <nqcommon/math/stats/charts/NQHistogramData.h>
#include <nqcommon/model/NQUniStats.h>
#include <nqcommon/output/NQVariateData.h>

#include "model_data.h"

namespace regression {

// A histogram of each continuous input, a bar chart of each categorical one. Frequency and
// regression weights count as in the library's charts.
class InputSummaries {
 public:
  // Keeps `data`, which must live as long.
  explicit InputSummaries(const ModelData& data);

  void Add(const Case& taken);

  // After the last case. The statistics of a histogram are those of NQHistogramData and "minimum",
  // "maximum" and "bins", which tell where the bins are.
  NQXML_940::NQVariateData& Chart(int input);
  NQXML_940::NQUniStats Statistics(int input) const;

  // Gives the continuous inputs of the list their means, deviations and sums of weights.
  void StoreIn(NQXML_940::NQVarList& variables) const;

 private:
  using ChartData = std::variant<NQMath_940::NQHistogramData, NQMath_940::NQBarChartData>;

  const ModelData& fData;
  double fSumWeights = 0;  // of both weights' products
  int fNBins;
  std::vector<ChartData> fCharts;                 // by input
  std::vector<std::vector<double>> fFrequencies;  // by input and category
};

}  // namespace regression
