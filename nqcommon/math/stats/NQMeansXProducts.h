#pragma once

#include <cstddef>
#include <vector>

#include <nqcommon/export.h>
#include <nqcommon/math/matrix/NQSymMatrix.h>
#include <nqcommon/math/stats/NQMeansXProdData.h>

namespace NQMath_940 {

class NQRectMatrix;

// Means and cross-products from blocks of cases.
//
// Cases     one a row: columns 0 .. p-1 are the variables, then come the frequency weight and the
//           regression weight, as far as there are any. The weight of a case is their product, 1
//           without weight columns. Of the rows the first nRows are used, all when nRows < 1 or
//           more than there are.
// Failure   false, nothing changed, for another number of columns, where memory ends, and where the
//           weights of the cases add up to less than 0 or to NaN: for Compute and Update those of
//           the block, for FinishUpdateOnePass those of all blocks. A copy for which memory ends
//           has no variables, and FinishUpdateOnePass refuses it when there were raw sums to copy.
// Memory    a block of 64 cases, centred; the cases are not copied.
//
// Two ways, not to be mixed within a record:
//   Compute, Update    means first and then products about them, as good as it gets
//   ...OnePass         raw sums, centred at the end: reads each case once, and loses the digits
//                      that the means have more than the deviations (all of them for a spread of 1
//                      about 1e9)
class NQ_API NQMeansXProducts : public NQMeansXProdData {
 public:
  // A frequency weight, no regression weight.
  NQMeansXProducts() = default;
  NQMeansXProducts(int nVars, bool intercept, bool freqWeight, bool regWeight);
  NQMeansXProducts(const NQMeansXProducts& other);
  NQMeansXProducts(NQMeansXProducts&& other) noexcept = default;
  NQMeansXProducts& operator=(const NQMeansXProducts& other);
  NQMeansXProducts& operator=(NQMeansXProducts&& other) noexcept = default;

  void Display() const override;

  // The record of these cases alone. The mean of a column is its first value, exactly, when all
  // values are equal (without weight columns: when their sum is that of n first values). Cases
  // whose weights add up to 0 leave the record empty.
  bool Compute(const NQRectMatrix& cases, int nRows);
  // Merges the record of these cases into this one; the first block is Compute.
  bool Update(const NQRectMatrix& cases, int nRows);
  // The two passes are within each block: nothing to be done.
  bool StartUpdate() { return true; }
  bool FinishUpdate() { return true; }

  // Raw sums of w, w x_i and w x_i x_j <- 0.
  bool StartUpdateOnePass();
  // Adds the cases to the raw sums, which start anew when their sum of weights is 0.
  bool UpdateOnePass(const NQRectMatrix& cases, int nRows);
  // W, means and products from the raw sums, which stay. The products are centred whether there is
  // an intercept or not. A sum of weights of 0 clears the record. False, too, for raw sums of
  // another number of variables.
  bool FinishUpdateOnePass();

 private:
  std::size_t NWeights() const { return std::size_t{fFreqWeight} + std::size_t{fRegWeight}; }

  bool fFreqWeight = true;
  bool fRegWeight = false;
  Sums fRaw;
};

}  // namespace NQMath_940
