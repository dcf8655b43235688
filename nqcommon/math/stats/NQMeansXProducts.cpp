#include <nqcommon/math/stats/NQMeansXProducts.h>

#include <limits>
#include <utility>

#include <nqcommon/common/display.h>
#include <nqcommon/common/memory_guard.h>
#include <nqcommon/math/kernels/display_frame.h>
#include <nqcommon/math/stats/internal/case_products.h>

namespace NQMath_940 {

using NQCommon_940::GuardMemory;

NQMeansXProducts::NQMeansXProducts(int nVars, bool intercept, bool freqWeight, bool regWeight)
    : NQMeansXProdData(nVars, intercept), fFreqWeight(freqWeight), fRegWeight(regWeight) {}

NQMeansXProducts::NQMeansXProducts(const NQMeansXProducts& other) : NQMeansXProducts() {
  *this = other;
}

NQMeansXProducts& NQMeansXProducts::operator=(const NQMeansXProducts& other) {
  if (this == &other) return *this;
  NQMeansXProdData::operator=(other);
  fFreqWeight = other.fFreqWeight;
  fRegWeight = other.fRegWeight;
  if (GetNVars() == other.GetNVars() && fRaw.Assign(other.fRaw)) return *this;
  SetNVars(0);
  fRaw = Sums();
  // NaN marks raw sums that were lost, which FinishUpdateOnePass must not take for none.
  if (other.fRaw.nCases != 0) fRaw.nCases = std::numeric_limits<double>::quiet_NaN();
  return *this;
}

// ---- Means first --------------------------------------------------------------------------------

bool NQMeansXProducts::Compute(const NQRectMatrix& cases, int nRows) {
  return GuardMemory(false, [&] {
    internal::Cases block;
    if (!internal::TakeCases(cases, nRows, GetMeans().size(), NWeights(), block)) return false;
    double nCases = 0;
    std::vector<double> means(block.nVars);
    const std::vector<bool> constant = internal::AddSums(block, {nCases, means});
    if (!(nCases >= 0)) return false;
    for (std::size_t i = 0; i < means.size() && nCases > 0; ++i) {
      const double first = block.data[i];
      const bool exact = block.nWeights > 0 ? constant[i] : means[i] == nCases * first;
      means[i] = exact ? first : means[i] / nCases;
    }
    const std::vector<double> origin(IsIntercept() ? 0 : means.size());
    std::vector<double> deviations(means.size());  // sums that AddProducts gives as well
    Clear();
    if (nCases == 0) return true;
    double* xProds = Restart(nCases, std::move(means));
    internal::AddProducts(block, IsIntercept() ? GetMeans() : origin, {nCases, deviations}, xProds);
    return true;
  });
}

bool NQMeansXProducts::Update(const NQRectMatrix& cases, int nRows) {
  if (GetNCases() == 0) return Compute(cases, nRows);
  NQMeansXProducts block(GetNVars(), IsIntercept(), fFreqWeight, fRegWeight);
  return block.Compute(cases, nRows) && Merge(block);
}

// ---- One pass -----------------------------------------------------------------------------------

bool NQMeansXProducts::StartUpdateOnePass() { return fRaw.SetSize(GetMeans().size()); }

bool NQMeansXProducts::UpdateOnePass(const NQRectMatrix& cases, int nRows) {
  return GuardMemory(false, [&] {
    internal::Cases block;
    if (!internal::TakeCases(cases, nRows, GetMeans().size(), NWeights(), block)) return false;
    const std::vector<double> origin(block.nVars);
    // Raw sums of another number of variables are left from before SetNVars.
    const bool isUnderway = fRaw.nCases != 0 && fRaw.values.size() == block.nVars;
    if (!isUnderway && !StartUpdateOnePass()) return false;
    internal::AddProducts(block, origin, {fRaw.nCases, fRaw.values},
                          fRaw.products.AsVector().data());
    return true;
  });
}

bool NQMeansXProducts::FinishUpdateOnePass() {
  if (fRaw.nCases == 0) {
    Clear();
    return true;
  }
  if (!(fRaw.nCases > 0) || fRaw.values.size() != GetMeans().size()) return false;
  return GuardMemory(false, [&] {
    std::vector<double> means(fRaw.values);
    for (double& mean : means) mean /= fRaw.nCases;
    double* xProd = Restart(fRaw.nCases, std::move(means));
    const double* raw = fRaw.products.AsVectorConst().data();
    for (std::size_t i = 0; i < fRaw.values.size(); ++i) {
      for (std::size_t j = 0; j <= i; ++j) *xProd++ = *raw++ - fRaw.values[j] * GetMeans()[i];
    }
    return true;
  });
}

// ---- Diagnostic display -------------------------------------------------------------------------

void NQMeansXProducts::Display() const {
  using namespace NQDisplay_940;
  internal::DisplayObject("NQMeansXProducts", [&] {
    NQMeansXProdData::Display();
    DisplayB("Frequency weight indicator", fFreqWeight);
    DisplayB("Regression weight indicator", fRegWeight);
    DisplayD("Weighted number of cases accumulated by UpdateOnePass", fRaw.nCases);
    DisplayDV("Weighted sums accumulated by UpdateOnePass", fRaw.values, true);
    DisplayText(1, "Weighted sums of products accumulated by UpdateOnePass");
    fRaw.products.Display();
  });
}

}  // namespace NQMath_940
