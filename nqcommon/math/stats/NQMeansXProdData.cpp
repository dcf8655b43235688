#include <nqcommon/math/stats/NQMeansXProdData.h>

#include <algorithm>
#include <utility>

#include <nqcommon/common/display.h>
#include <nqcommon/math/kernels/packed_triangle.h>
#include <nqcommon/math/stats/internal/case_products.h>
#include <nqcommon/math/stats/internal/merge_list.h>

namespace NQMath_940 {

using internal::RowStart;
using NQDisplay_940::DisplayB;
using NQDisplay_940::DisplayD;
using NQDisplay_940::DisplayDV;
using NQDisplay_940::DisplayI;
using NQDisplay_940::DisplayText;

// ---- Life cycle ---------------------------------------------------------------------------------

NQMeansXProdData::NQMeansXProdData(int nVars, bool intercept) : fIntercept(intercept) {
  SetNVars(nVars);
}

NQMeansXProdData::NQMeansXProdData(const NQMeansXProdData& other) { *this = other; }

NQMeansXProdData& NQMeansXProdData::operator=(const NQMeansXProdData& other) {
  if (this == &other) return *this;
  fNVars = other.fNVars;
  fIntercept = other.fIntercept;
  fNCases = other.fNCases;
  fvMeans = other.fvMeans;
  fmXProds = other.fmXProds;
  if (!fmXProds.IsValidMatrix()) SetNVars(0);  // no memory for the copy
  return *this;
}

NQMeansXProdData::~NQMeansXProdData() = default;

bool NQMeansXProdData::SetNVars(int nVars) {
  if (nVars < 0) return false;
  NQSymMatrix xProds(nVars, true);
  if (!xProds.IsValidMatrix()) return false;
  fmXProds = std::move(xProds);
  fNVars = nVars;
  fvMeans.assign(static_cast<std::size_t>(nVars), 0.0);
  fNCases = 0;
  return true;
}

void NQMeansXProdData::Clear() {
  fNCases = 0;
  std::fill(fvMeans.begin(), fvMeans.end(), 0.0);
  fmXProds.Clear();
}

bool NQMeansXProdData::SetData(bool intercept, double nCases, const std::vector<double>& means,
                               const std::vector<double>& xProds) {
  if (!(nCases >= 0) || xProds.size() != RowStart(means.size())) return false;
  // With as many variables as before the arguments may be this record's own.
  const int nVars = static_cast<int>(means.size());
  if (nVars != fNVars && !SetNVars(nVars)) return false;
  fIntercept = intercept;
  if (nCases == 0) {
    Clear();
    return true;
  }
  fNCases = nCases;
  fvMeans = means;
  return fmXProds.SetData(xProds);
}

double* NQMeansXProdData::Restart(double nCases, std::vector<double> means) {
  fNCases = nCases;
  fvMeans = std::move(means);
  fmXProds.Clear();
  return fmXProds.AsVector().data();
}

// ---- Merging ------------------------------------------------------------------------------------

bool NQMeansXProdData::Merge(const NQMeansXProdData& other) {
  if (fNVars == 0) {
    if (!SetNVars(other.fNVars)) return false;
    fIntercept = other.fIntercept;
  }
  if (fNVars != other.fNVars || fIntercept != other.fIntercept) return false;
  const double w1 = fNCases;
  const double w2 = other.fNCases;
  const double nCases = w1 + w2;
  if (nCases <= 0) return true;
  // The formulas would round what is to be copied.
  if (w1 == 0) return SetData(fIntercept, w2, other.fvMeans, other.fmXProds.AsVectorConst());

  const std::vector<double>& m1 = fvMeans;
  const std::vector<double>& m2 = other.fvMeans;
  std::vector<double> m(m1.size());
  for (std::size_t i = 0; i < m.size(); ++i) m[i] = m1[i] + (m2[i] - m1[i]) * w2 / nCases;
  if (!fIntercept) {
    fmXProds.ComputeAXpY(1.0, other.fmXProds);
  } else {
    double* s1 = fmXProds.AsVector().data();
    const double* s2 = other.fmXProds.AsVectorConst().data();
    for (std::size_t i = 0; i < m.size(); ++i) {
      const double shift1 = w1 * (m[i] - m1[i]);
      const double shift2 = w2 * (m[i] - m2[i]);
      for (std::size_t j = 0; j <= i; ++j, ++s1, ++s2)
        *s1 = *s1 + *s2 + shift1 * (m[j] - m1[j]) + shift2 * (m[j] - m2[j]);
    }
  }
  fvMeans = std::move(m);
  fNCases = nCases;
  return true;
}

bool NQMeansXProdData::Merge(const std::vector<const NQMeansXProdData*>& others) {
  return internal::MergeList(*this, others);
}

bool NQMeansXProdData::Merge(const std::vector<NQMeansXProdData*>& others) {
  return internal::MergeList(*this, others);
}

// ---- Case by case -------------------------------------------------------------------------------

bool NQMeansXProdData::AddCase(const std::vector<double>& x, double w) {
  const double nCases = fNCases + w;
  if (!HasValues(x) || !(nCases >= 0)) return false;
  if (nCases == 0) {
    Clear();
    return true;
  }
  UpdateXX(x, fIntercept ? fNCases * w / nCases : w);
  for (std::size_t i = 0; i < fvMeans.size(); ++i) fvMeans[i] += (x[i] - fvMeans[i]) * w / nCases;
  fNCases = nCases;
  return true;
}

bool NQMeansXProdData::DeleteCase(const std::vector<double>& x, double w) {
  // There is nothing to take from, and the factor of the products would divide by 0.
  if (fNCases == 0) return AddCase(x, -w);
  const double nCases = fNCases - w;
  if (!HasValues(x) || !(nCases >= 0)) return false;
  if (nCases == 0) {
    Clear();
    return true;
  }
  for (std::size_t i = 0; i < fvMeans.size(); ++i)
    fvMeans[i] = (fvMeans[i] * fNCases - x[i] * w) / nCases;
  UpdateXX(x, fIntercept ? -w * nCases / fNCases : -w);
  fNCases = nCases;
  return true;
}

bool NQMeansXProdData::UpdateXX(const std::vector<double>& x, double c) {
  if (!HasValues(x)) return false;
  double* s = fmXProds.AsVector().data();
  if (fIntercept) {
    internal::AddProducts(x.data(), c, fvMeans, s);
  } else {
    internal::AddProducts(x.data(), c, std::vector<double>(fvMeans.size()), s);
  }
  return true;
}

// ---- Diagnostic display -------------------------------------------------------------------------

void NQMeansXProdData::Display() const {
  DisplayText(1, "NQMeansXProdData display start");
  DisplayI("Number of variables", fNVars);
  DisplayB("Intercept indicator", fIntercept);
  DisplayD("Weighted number of cases", fNCases);
  DisplayDV("Vector of means", fvMeans, true);
  DisplayText(1, "Matrix of cross-products:");
  fmXProds.Display();
  DisplayText(1, "NQMeansXProdData display end");
}

}  // namespace NQMath_940
