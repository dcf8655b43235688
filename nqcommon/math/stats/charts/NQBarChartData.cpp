#include <nqcommon/math/stats/charts/NQBarChartData.h>

#include <algorithm>
#include <cstddef>

#include <nqcommon/common/display.h>
#include <nqcommon/math/kernels/display_frame.h>
#include <nqcommon/math/stats/charts/internal/chart_bins.h>
#include <nqcommon/output/NQStatXMLTags.h>

namespace NQMath_940 {

using NQCommon_940::GuardMemory;
using NQXML_940::NQVariateData;
using NQXML_940::NQXMLCounts;

NQBarChartData::NQBarChartData(int nCategories, bool proportions) : fProportions(proportions) {
  internal::MakeCells(*fvWeights, static_cast<std::size_t>(std::max(nCategories, 0)));
}

bool NQBarChartData::UpdateData(double w, double category) {
  if (!(category >= 0 && category < static_cast<double>(fvWeights->size()))) return false;
  (*fvWeights)[static_cast<std::size_t>(category)] += w;
  fTotalWeight += w;
  return true;
}

NQVariateData& NQBarChartData::GenerateNQVariateData(
    const std::string& description, const std::vector<std::string>& categoryLabels) {
  if (!fVariateData->GetCounts().empty()) return *fVariateData;
  const double divisor = fProportions && fTotalWeight != 0 ? fTotalWeight : 1;
  const bool isDone = GuardMemory([&] {
    std::vector<std::string> labels;
    std::vector<double> frequencies;
    for (std::size_t i = 0; i < fvWeights->size(); ++i) {
      const double frequency = (*fvWeights)[i] / divisor;
      if (!(frequency > 0)) continue;
      labels.push_back(i < categoryLabels.size() ? categoryLabels[i] : std::to_string(i));
      frequencies.push_back(frequency);
    }
    using namespace NQStatXMLTags;
    NQVariateData data;
    data.AddCoordinates(
        {description.empty() ? "" : XML_VAL_OBSERVED, description, "", std::move(labels)});
    data.AddCoordinates({XML_VAL_frequency, "", "", std::move(frequencies)});
    data.AddCounts(NQXMLCounts(fTotalWeight));
    *fVariateData = std::move(data);
  });
  for (double& weight : *fvWeights) weight /= isDone ? divisor : 1;
  return *fVariateData;
}

void NQBarChartData::Display() const {
  using namespace NQDisplay_940;
  internal::DisplayObject("NQBarChartData", [&] {
    DisplayI("The number of categories", static_cast<int>(fvWeights->size()));
    DisplayDV("N cases of each category considering frequency weight", *fvWeights, true);
    DisplayD("Total frequency weight", fTotalWeight);
  });
}

}  // namespace NQMath_940
