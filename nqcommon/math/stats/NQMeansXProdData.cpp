#include <nqcommon/math/stats/NQMeansXProdData.h>

#include <algorithm>
#include <utility>

#include <nqcommon/common/display.h>
#include <nqcommon/common/memory_guard.h>
#include <nqcommon/math/kernels/display_frame.h>
#include <nqcommon/math/kernels/packed_triangle.h>
#include <nqcommon/math/kernels/strided.h>
#include <nqcommon/math/stats/internal/case_products.h>
#include <nqcommon/math/stats/internal/correlation.h>
#include <nqcommon/math/stats/internal/merge_list.h>

namespace NQMath_940 {

using internal::DiagIndex;
using internal::RowStart;
using NQCommon_940::GuardMemory;

// ---- Life cycle ---------------------------------------------------------------------------------

bool NQMeansXProdData::Sums::SetSize(std::size_t n) {
  return GuardMemory(false, [&] {
    Sums sums;
    sums.values.resize(n);
    if (!sums.products.SetNRows(static_cast<int>(n), true)) return false;
    *this = std::move(sums);
    return true;
  });
}

bool NQMeansXProdData::Sums::Assign(const Sums& other) {
  return GuardMemory(false, [&] {
    Sums sums = other;
    if (sums.products.GetNRows() != other.products.GetNRows()) return false;
    *this = std::move(sums);
    return true;
  });
}

void NQMeansXProdData::Sums::Clear() {
  nCases = 0;
  std::fill(values.begin(), values.end(), 0.0);
  products.Clear();
}

NQMeansXProdData::NQMeansXProdData(int nVars, bool intercept) : fIntercept(intercept) {
  SetNVars(nVars);
}

NQMeansXProdData::NQMeansXProdData(const NQMeansXProdData& other) { *this = other; }

NQMeansXProdData::NQMeansXProdData(NQMeansXProdData&& other) noexcept { *this = std::move(other); }

NQMeansXProdData& NQMeansXProdData::operator=(const NQMeansXProdData& other) {
  if (this == &other) return *this;
  fIntercept = other.fIntercept;
  if (!fSums.Assign(other.fSums)) fSums = Sums();
  return *this;
}

NQMeansXProdData& NQMeansXProdData::operator=(NQMeansXProdData&& other) noexcept {
  std::swap(fIntercept, other.fIntercept);
  std::swap(fSums, other.fSums);
  return *this;
}

NQMeansXProdData::~NQMeansXProdData() = default;

bool NQMeansXProdData::SetNVars(int nVars) {
  return nVars >= 0 && fSums.SetSize(static_cast<std::size_t>(nVars));
}

void NQMeansXProdData::Clear() { fSums.Clear(); }

bool NQMeansXProdData::SetData(bool intercept, double nCases, const std::vector<double>& means,
                               const std::vector<double>& xProds) {
  return GuardMemory(false, [&] {
    if (!(nCases >= 0) || xProds.size() != RowStart(means.size())) return false;
    Sums sums{nCases, means, {}};
    if (!sums.products.SetNRows(static_cast<int>(means.size()), true)) return false;
    std::copy(xProds.begin(), xProds.end(), sums.products.AsVector().begin());
    if (nCases == 0) sums.Clear();
    fSums = std::move(sums);
    fIntercept = intercept;
    return true;
  });
}

double* NQMeansXProdData::Restart(double nCases, std::vector<double> means) {
  fSums.nCases = nCases;
  fSums.values = std::move(means);
  fSums.products.Clear();
  return fSums.products.AsVector().data();
}

// ---- Covariances --------------------------------------------------------------------------------

bool NQMeansXProdData::GetCovariances(NQSymMatrix& out) const {
  if (!(fSums.nCases > 1)) return false;
  NQSymMatrix covariances(fSums.products);
  if (covariances.GetNRows() != GetNVars()) return false;
  for (double& element : covariances.AsVector()) element /= fSums.nCases - 1;
  out = std::move(covariances);
  return true;
}

bool NQMeansXProdData::GetCorrelations(NQSymMatrix& out) const {
  NQSymMatrix correlations(fSums.products);
  if (!(fSums.nCases > 0) || correlations.GetNRows() != GetNVars()) return false;
  const double* products = fSums.products.AsVectorConst().data();
  double* element = correlations.AsVector().data();
  for (std::size_t i = 0; i < fSums.values.size(); ++i) {
    for (std::size_t j = 0; j <= i; ++j, ++element)
      *element = internal::Correlation(*element, products[DiagIndex(i)], products[DiagIndex(j)]);
    if (products[DiagIndex(i)] > 0) element[-1] = 1;
  }
  out = std::move(correlations);
  return true;
}

// ---- Merging ------------------------------------------------------------------------------------

bool NQMeansXProdData::Merge(const NQMeansXProdData& other) {
  const bool adopts = GetNVars() == 0;
  if (!adopts && (GetNVars() != other.GetNVars() || fIntercept != other.fIntercept)) return false;
  const double w1 = fSums.nCases;
  const double w2 = other.fSums.nCases;
  const double nCases = w1 + w2;
  // Into an empty record the other one is copied, because the formulas would round it.
  if (adopts || (w1 == 0 && w2 > 0))
    return SetData(other.fIntercept, w2, other.GetMeans(), other.GetXProds().AsVectorConst());
  if (nCases <= 0) return true;

  return GuardMemory(false, [&] {
    const std::vector<double>& m1 = fSums.values;
    const std::vector<double>& m2 = other.fSums.values;
    std::vector<double> m(m1.size());
    for (std::size_t i = 0; i < m.size(); ++i) m[i] = m1[i] + (m2[i] - m1[i]) * w2 / nCases;
    if (!fIntercept) {
      fSums.products.ComputeAXpY(1.0, other.fSums.products);
    } else {
      double* s1 = fSums.products.AsVector().data();
      const double* s2 = other.fSums.products.AsVectorConst().data();
      for (std::size_t i = 0; i < m.size(); ++i) {
        const double shift1 = w1 * (m[i] - m1[i]);
        const double shift2 = w2 * (m[i] - m2[i]);
        for (std::size_t j = 0; j <= i; ++j, ++s1, ++s2)
          *s1 = *s1 + *s2 + shift1 * (m[j] - m1[j]) + shift2 * (m[j] - m2[j]);
      }
    }
    fSums.values = std::move(m);
    fSums.nCases = nCases;
    return true;
  });
}

bool NQMeansXProdData::Merge(const std::vector<const NQMeansXProdData*>& others) {
  return internal::MergeList(*this, others);
}

bool NQMeansXProdData::Merge(const std::vector<NQMeansXProdData*>& others) {
  return internal::MergeList(*this, others);
}

// ---- Case by case -------------------------------------------------------------------------------

bool NQMeansXProdData::AddCase(const std::vector<double>& x, double w) {
  const double nCases = fSums.nCases + w;
  if (!HasValues(x) || !(nCases >= 0)) return false;
  if (nCases == 0) {
    Clear();
    return true;
  }
  UpdateXX(x, fIntercept ? fSums.nCases * w / nCases : w);
  for (std::size_t i = 0; i < fSums.values.size(); ++i)
    fSums.values[i] += (x[i] - fSums.values[i]) * w / nCases;
  fSums.nCases = nCases;
  return true;
}

bool NQMeansXProdData::DeleteCase(const std::vector<double>& x, double w) {
  // An empty record has no case to delete, and the factor of the products would divide by 0.
  if (fSums.nCases == 0) return AddCase(x, -w);
  const double nCases = fSums.nCases - w;
  if (!HasValues(x) || !(nCases >= 0)) return false;
  if (nCases == 0) {
    Clear();
    return true;
  }
  for (std::size_t i = 0; i < fSums.values.size(); ++i)
    fSums.values[i] = (fSums.values[i] * fSums.nCases - x[i] * w) / nCases;
  UpdateXX(x, fIntercept ? -w * nCases / fSums.nCases : -w);
  fSums.nCases = nCases;
  return true;
}

bool NQMeansXProdData::UpdateXX(const std::vector<double>& x, double c) {
  if (!HasValues(x)) return false;
  double* s = fSums.products.AsVector().data();
  if (fIntercept) {
    internal::AddProducts(x.data(), c, fSums.values, s);
  } else {
    for (std::size_t i = 0; i < fSums.values.size(); ++i)
      internal::AddScaled(i + 1, c * x[i], x.data(), s + RowStart(i));
  }
  return true;
}

// ---- Diagnostic display -------------------------------------------------------------------------

void NQMeansXProdData::Display() const {
  using namespace NQDisplay_940;
  internal::DisplayObject("NQMeansXProdData", [&] {
    DisplayI("Number of variables", GetNVars());
    DisplayB("Intercept indicator", fIntercept);
    DisplayD("Weighted number of cases", GetNCases());
    DisplayDV("Vector of means", GetMeans(), true);
    DisplayText(1, "Matrix of cross-products:");
    GetXProds().Display();
  });
}

}  // namespace NQMath_940
