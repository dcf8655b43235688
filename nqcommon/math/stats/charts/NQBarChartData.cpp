#include <nqcommon/math/stats/charts/NQBarChartData.h>

#include <algorithm>
#include <cstddef>

#include <nqcommon/common/display.h>
#include <nqcommon/math/stats/charts/internal/chart_bins.h>
#include <nqcommon/output/NQStatXMLTags.h>

namespace NQMath_940 {

using NQXML_940::NQVariateData;
using NQXML_940::NQXMLCounts;

NQBarChartData::NQBarChartData(int nCategories, bool proportions)
    : fNCategories(std::max(nCategories, 0)), fProportions(proportions) {
  if (!internal::MakeCells(fvWeights, static_cast<std::size_t>(fNCategories))) fNCategories = 0;
}

bool NQBarChartData::UpdateData(double w, double category) {
  if (!(category >= 0 && category < fNCategories)) return false;
  fvWeights[static_cast<std::size_t>(category)] += w;
  fTotalWeight += w;
  return true;
}

NQVariateData& NQBarChartData::GenerateNQVariateData(
    const std::string& description, const std::vector<std::string>& categoryLabels) {
  if (!fVariateData.GetCounts().empty()) return fVariateData;
  if (fProportions && fTotalWeight != 0) {
    for (double& weight : fvWeights) weight /= fTotalWeight;
  }
  std::vector<std::string> labels;
  std::vector<double> frequencies;
  for (std::size_t i = 0; i < fvWeights.size(); ++i) {
    if (!(fvWeights[i] > 0)) continue;
    labels.push_back(i < categoryLabels.size() ? categoryLabels[i] : std::to_string(i));
    frequencies.push_back(fvWeights[i]);
  }
  using namespace NQStatXMLTags;
  fVariateData.AddCoordinates(
      {description.empty() ? "" : XML_VAL_OBSERVED, description, "", std::move(labels)});
  fVariateData.AddCoordinates({XML_VAL_frequency, "", "", std::move(frequencies)});
  fVariateData.AddCounts(NQXMLCounts(fTotalWeight));
  return fVariateData;
}

void NQBarChartData::Display() const {
  using namespace NQDisplay_940;
  DisplayText(1, "NQBarChartData display start");
  DisplayI("The number of categories", fNCategories);
  DisplayDV("N cases of each category considering frequency weight", fvWeights, true);
  DisplayD("Total frequency weight", fTotalWeight);
  DisplayText(1, "NQBarChartData display end");
}

}  // namespace NQMath_940
