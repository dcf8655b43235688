#pragma once

#include <cstddef>
#include <vector>

#include <nqcommon/export.h>
#include <nqcommon/math/matrix/NQSymMatrix.h>

namespace NQMath_940 {

class NQMeansXProdData;
class NQRectMatrix;

// Means and cross-products of v variables and c factors without the indicator columns of the
// factors: what NQMeansXProducts gives for the expanded cases, to rounding, at the cost of the
// cases as they are. A cross-product of two indicators is a weighted count, one of an indicator
// with a variable the sum of the variable by category.
//
// Columns   of the results, p = v + the sum of the numbers of levels: the variables, then for each
//           factor an indicator of each level, in order.
// Cases     one a row: v values, c codes, then the frequency weight and the regression weight, as
//           far as there are any. The weight of a case is their product, 1 without weight columns.
//           A code is 0 .. levels - 1, its fraction is dropped. Of the rows the first nRows are
//           used, all when nRows < 1 or more than there are.
// Numerics  Counts are exact while they are whole numbers below 2^53. Variables are summed about a
//           centre, the mean at the last time that the sum of weights had doubled: that loses one
//           bit at most against the mean itself. Without an intercept the centre is the origin.
// Cost      v^2 / 2 + (v + c / 2) c multiply-adds a case; p(p+1)/2 numbers of memory in all.
// Failure   false, nothing changed: another number of columns, a code that is no level, weights
//           that add up to less than 0 or to NaN, memory that ends. A copy for which memory ends
//           has no columns.
// Threads   one object, one thread at a time.
class NQ_API NQCategoryXProducts {
 public:
  // No columns.
  NQCategoryXProducts() = default;
  // No columns for nVars < 0, for a factor of less than one level and when memory ends.
  NQCategoryXProducts(int nVars, const std::vector<int>& nLevels, bool intercept, bool freqWeight,
                      bool regWeight);
  NQCategoryXProducts(const NQCategoryXProducts& other);
  NQCategoryXProducts(NQCategoryXProducts&& other) noexcept;
  NQCategoryXProducts& operator=(const NQCategoryXProducts& other);
  NQCategoryXProducts& operator=(NQCategoryXProducts&& other) noexcept;
  ~NQCategoryXProducts() = default;

  // Everything <- 0.
  void Clear();

  // The cases alone, and in addition to those so far.
  bool Compute(const NQRectMatrix& cases, int nRows);
  bool Update(const NQRectMatrix& cases, int nRows);
  // One case, v values and c codes, w >= 0.
  bool AddCase(const std::vector<double>& x, const std::vector<int>& codes, double w);

  // Adds the cases of another accumulator, this one included. One without columns takes those of
  // the other first. False, nothing changed, unless variables, levels and intercept are the same.
  bool Merge(const NQCategoryXProducts& other);

  int GetNVars() const { return static_cast<int>(fState.centre.size()); }
  const std::vector<int>& GetNLevels() const { return fState.levels; }
  int GetNColumns() const { return fState.table.GetNRows(); }
  bool IsIntercept() const { return fState.intercept; }
  double GetNCases() const { return fState.nCases; }

  // The record of all columns: W, p means, and the p(p+1)/2 cross-products, about the means with an
  // intercept. False, `record` unchanged, when memory ends.
  bool GetRecord(NQMeansXProdData& record) const;

  void Display() const;

 private:
  struct State {
    bool intercept = true;
    std::size_t nWeights = 0;
    std::vector<int> levels;
    double nCases = 0;
    double centredAt = 0;            // nCases when the centre became what it is
    std::vector<double> centre;      // v
    std::vector<double> deviations;  // v sums of w (x - centre)
    std::vector<double> shift;       // v, work memory
    // A row for each column of the results. That of variable i: sums of w (x_i - centre_i)
    // (x_j - centre_j) for j <= i. That of an indicator: v sums of w (x_j - centre_j) over its
    // cases, then the counts of its cases by the indicators up to itself.
    NQSymMatrix table;

    void Clear();
    void MoveCentre();
  };

  bool AddRows(const NQRectMatrix& cases, int nRows, bool isAnew);
  template <class AddDeviations>
  void FollowMean(double w, const double* first, AddDeviations addDeviations);
  void AddCategories(const double* x, const int* codes, double w);

  State fState;
};

}  // namespace NQMath_940
