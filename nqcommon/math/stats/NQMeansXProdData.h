#pragma once

#include <cstddef>
#include <vector>

#include <nqcommon/export.h>
#include <nqcommon/math/matrix/NQSymMatrix.h>

namespace NQMath_940 {

// Weighted means and cross-products of p variables, and the ways to put cases and other such
// records into it.
//
//   W            sum of the case weights, which need not be whole; 0 means empty
//   mean(i)      sum of w x_i / W
//   XP(i,j)      with intercept:     sum of w (x_i - mean_i) (x_j - mean_j)
//                without intercept:  sum of w x_i x_j
//
// Layout    p means; the lower triangle of XP packed by rows (NQSymMatrix).
// Values    Missing values are the caller's to remove. A case of weight 0 adds 0 times its values:
//           finite ones count for nothing, a NaN, an infinity or a deviation that overflows makes
//           its variables NaN.
// Failure   by false, the record then being as it was: for what an operation refuses, and where
//           memory ends. A copy for which memory ends has no variables. Nothing is divided by a W
//           of 0.
// Copies    are deep. Moves exchange the contents, and never allocate.
// Threads   one object, one thread at a time.
class NQ_API NQMeansXProdData {
 public:
  // No variables, with intercept.
  NQMeansXProdData() = default;
  // nVars < 0, or too many for the memory: no variables.
  NQMeansXProdData(int nVars, bool intercept);
  NQMeansXProdData(const NQMeansXProdData& other);
  NQMeansXProdData(NQMeansXProdData&& other) noexcept;
  NQMeansXProdData& operator=(const NQMeansXProdData& other);
  NQMeansXProdData& operator=(NQMeansXProdData&& other) noexcept;
  virtual ~NQMeansXProdData();

  virtual void Display() const;

  // Sets p and clears. False, nothing changed, for nVars < 0.
  bool SetNVars(int nVars);
  // Changes the meaning of the products, not their values: set it before the first case.
  void SetIntercept(bool intercept) { fIntercept = intercept; }
  // W, means and products <- 0.
  void Clear();
  // Rebuilds a record from its parts, as another process has sent them: p = means.size(), W, and
  // the p(p+1)/2 products. W = 0 gives an empty record. False unless W >= 0 and the lengths agree.
  bool SetData(bool intercept, double nCases, const std::vector<double>& means,
               const std::vector<double>& xProds);

  int GetNVars() const { return static_cast<int>(fSums.values.size()); }
  bool IsIntercept() const { return fIntercept; }
  double GetNCases() const { return fSums.nCases; }
  const std::vector<double>& GetMeans() const { return fSums.values; }
  const NQSymMatrix& GetXProds() const { return fSums.products; }

  // XP / (W - 1): covariances, where the products are about the means. False, `out` unchanged,
  // unless W > 1.
  bool GetCovariances(NQSymMatrix& out) const;
  // XP(i,j) / sqrt(XP(i,i)) / sqrt(XP(j,j)), at most 1 in magnitude and 1 on the diagonal; the
  // missing value where XP(i,i) or XP(j,j) is not positive. False, `out` unchanged, unless W > 0.
  bool GetCorrelations(NQSymMatrix& out) const;

  // Adds another record, this one included:
  //   W' = W1 + W2,  m = m1 + (m2 - m1) W2 / W'
  //   XP1 + XP2 + W1 (m_i - m1_i) (m_j - m1_j) + W2 (m_i - m2_i) (m_j - m2_j)    with intercept
  //   XP1 + XP2                                                                  without
  // (Chan, Golub and LeVeque 1983). The means count as exact: digits that they have more than the
  // deviations are lost (docs/numerics.md). Into an empty record it is an exact copy. A record
  // without variables takes p and the intercept flag of the other first. True, nothing changed,
  // when W' <= 0. False unless p and the flags agree.
  bool Merge(const NQMeansXProdData& other);
  // Merges the entries in order, passing over null ones, up to the first that fails. False, too,
  // unless the first entry has variables, as many as this record or this record none.
  bool Merge(const std::vector<const NQMeansXProdData*>& others);
  bool Merge(const std::vector<NQMeansXProdData*>& others);

  // One case in or out (Welford 1962; West 1979), p(p+1)/2 multiply-adds. x has at least p values.
  // A W that reaches exactly 0 clears. False when x is shorter, and when W would become negative or
  // NaN.
  bool AddCase(const std::vector<double>& x, double w);
  bool DeleteCase(const std::vector<double>& x, double w);
  // XP(i,j) += c (x_i - mean_i) (x_j - mean_j), or c x_i x_j without intercept; W and the means
  // stay. False when x has fewer than p values.
  bool UpdateXX(const std::vector<double>& x, double c);

 protected:
  // W, a value for each variable, and p(p+1)/2 products.
  struct Sums {
    double nCases = 0;
    std::vector<double> values;
    NQSymMatrix products;

    // Zeros for n variables, and a copy of others. False, nothing changed, when memory ends.
    bool SetSize(std::size_t n);
    bool Assign(const Sums& other);
    void Clear();
  };

  // The record of W and these means with products of 0, which are returned to be added to.
  double* Restart(double nCases, std::vector<double> means);
  bool HasValues(const std::vector<double>& x) const { return x.size() >= fSums.values.size(); }

 private:
  bool fIntercept = true;
  Sums fSums;
};

}  // namespace NQMath_940
