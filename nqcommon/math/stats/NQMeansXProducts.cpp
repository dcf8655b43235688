#include <nqcommon/math/stats/NQMeansXProducts.h>

#include <algorithm>
#include <utility>

#include <nqcommon/common/display.h>
#include <nqcommon/math/matrix/NQRectMatrix.h>
#include <nqcommon/math/stats/internal/case_products.h>

namespace NQMath_940 {

using NQDisplay_940::DisplayB;
using NQDisplay_940::DisplayD;
using NQDisplay_940::DisplayDV;
using NQDisplay_940::DisplayText;

NQMeansXProducts::NQMeansXProducts(int nVars, bool intercept, bool freqWeight, bool regWeight)
    : NQMeansXProdData(nVars, intercept), fFreqWeight(freqWeight), fRegWeight(regWeight) {}

NQMeansXProducts::~NQMeansXProducts() = default;

// The rows to be used, as they lie. False for a matrix of another width.
bool NQMeansXProducts::TakeCases(const NQRectMatrix& cases, int nRows,
                                 internal::Cases& block) const {
  const int nWeights = int{fFreqWeight} + int{fRegWeight};
  if (!cases.IsValidMatrix() || cases.GetNCols() - nWeights != GetNVars()) return false;
  const int used = nRows < 1 ? cases.GetNRows() : std::min(nRows, cases.GetNRows());
  block = {cases.GetRowPtr(0), static_cast<std::size_t>(used), GetMeans().size(),
           static_cast<std::size_t>(nWeights)};
  return true;
}

// ---- Means first --------------------------------------------------------------------------------

bool NQMeansXProducts::Compute(const NQRectMatrix& cases, int nRows) {
  internal::Cases block;
  if (!TakeCases(cases, nRows, block)) return false;
  double nCases = 0;
  std::vector<double> means(block.nVars);
  const std::vector<bool> constant = internal::AddSums(block, {nCases, means});
  if (!(nCases >= 0)) return false;
  Clear();
  if (nCases == 0) return true;

  for (std::size_t i = 0; i < means.size(); ++i) {
    const double first = block.data[i];
    const bool exact = block.nWeights > 0 ? constant[i] : means[i] == nCases * first;
    means[i] = exact ? first : means[i] / nCases;
  }
  double* xProds = Restart(nCases, means);
  if (!IsIntercept()) std::fill(means.begin(), means.end(), 0.0);
  // Sums about the means are not needed.
  std::vector<double> deviations(means.size());
  internal::AddProducts(block, means, {nCases, deviations}, xProds);
  return true;
}

bool NQMeansXProducts::Update(const NQRectMatrix& cases, int nRows) {
  if (GetNCases() == 0) return Compute(cases, nRows);
  NQMeansXProducts block(GetNVars(), IsIntercept(), fFreqWeight, fRegWeight);
  return block.Compute(cases, nRows) && Merge(block);
}

// ---- One pass -----------------------------------------------------------------------------------

bool NQMeansXProducts::StartUpdateOnePass() {
  fNCasesOnePass = 0;
  fvSums.assign(GetMeans().size(), 0.0);
  return fmRawXProds.SetNRows(GetNVars(), true);
}

// Sums of another number of variables are left from before it was changed.
bool NQMeansXProducts::HasOnePass() const {
  return fNCasesOnePass != 0 && fvSums.size() == GetMeans().size() &&
         fmRawXProds.GetNRows() == GetNVars();
}

bool NQMeansXProducts::UpdateOnePass(const NQRectMatrix& cases, int nRows) {
  internal::Cases block;
  if (!TakeCases(cases, nRows, block)) return false;
  if (!HasOnePass() && !StartUpdateOnePass()) return false;
  const std::vector<double> origin(block.nVars);
  internal::AddProducts(block, origin, {fNCasesOnePass, fvSums}, fmRawXProds.AsVector().data());
  return true;
}

bool NQMeansXProducts::FinishUpdateOnePass() {
  if (!HasOnePass()) {
    Clear();
    return true;
  }
  if (!(fNCasesOnePass > 0)) return false;
  std::vector<double> means(fvSums);
  for (double& mean : means) mean /= fNCasesOnePass;
  double* xProd = Restart(fNCasesOnePass, std::move(means));
  const double* raw = fmRawXProds.AsVectorConst().data();
  for (std::size_t i = 0; i < fvSums.size(); ++i) {
    for (std::size_t j = 0; j <= i; ++j) *xProd++ = *raw++ - fvSums[j] * GetMeans()[i];
  }
  return true;
}

// ---- Diagnostic display -------------------------------------------------------------------------

void NQMeansXProducts::Display() const {
  DisplayText(1, "NQMeansXProducts display start");
  NQMeansXProdData::Display();
  DisplayB("Frequency weight indicator", fFreqWeight);
  DisplayB("Regression weight indicator", fRegWeight);
  DisplayD("Weighted number of cases accumulated by UpdateOnePass", fNCasesOnePass);
  DisplayDV("Weighted sums accumulated by UpdateOnePass", fvSums, true);
  DisplayText(1, "Weighted sums of products accumulated by UpdateOnePass");
  fmRawXProds.Display();
  DisplayText(1, "NQMeansXProducts display end");
}

}  // namespace NQMath_940
