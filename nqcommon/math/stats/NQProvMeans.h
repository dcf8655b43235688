#pragma once

#include <vector>

#include <nqcommon/export.h>
#include <nqcommon/math/stats/NQMeansXProdData.h>

namespace NQMath_940 {

// Provisional means: a record that takes one case at a time, in or out.
class NQ_API NQProvMeans : public NQMeansXProdData {
 public:
  NQProvMeans() = default;
  NQProvMeans(int nVars, bool intercept) : NQMeansXProdData(nVars, intercept) {}

  void Display() const override;

  // Adds the case when w > 0, removes a case of weight -w when w < 0; w = 0 does nothing. A W that
  // reaches exactly 0 clears. False, nothing changed, when x has fewer than p values and when W
  // would become negative or NaN.
  bool Update(const std::vector<double>& x, double w);
};

}  // namespace NQMath_940
