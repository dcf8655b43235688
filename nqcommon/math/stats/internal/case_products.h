// Weighted sums and cross-products of cases, the loops below the accumulators of means. Every sum
// is added up in the order of the rows, whichever form runs.
#pragma once

#include <cstddef>
#include <vector>

#include <nqcommon/math/kernels/cpu_dispatch.h>
#include <nqcommon/math/matrix/NQRectMatrix.h>

namespace NQMath_940::internal {

// Cases one a row: nVars values and then nWeights (0, 1 or 2) weights, whose product is the weight
// of the case; 1 where there are none.
struct Cases {
  const double* data;
  std::size_t rows;
  std::size_t nVars;
  std::size_t nWeights;

  std::size_t Step() const { return nVars + nWeights; }
  const double* Row(std::size_t i) const { return data + i * Step(); }
  double Weight(std::size_t i) const {
    const double* w = Row(i) + nVars;
    return nWeights == 0 ? 1.0 : nWeights == 1 ? w[0] : w[0] * w[1];
  }
};

// Sets `cases` to the first nRows rows of a matrix, as they lie there, or to all when nRows < 1 or
// more than there are. False, nothing changed, for a matrix of another width.
bool TakeCases(const NQRectMatrix& matrix, int nRows, std::size_t nVars, std::size_t nWeights,
               Cases& cases);

// Where cases are added to: W, and a sum for each variable.
struct CaseSums {
  double& weight;
  std::vector<double>& sums;
};

// Adds w to W and w x to the sums. Returns, for each variable, whether all values equal the first.
std::vector<bool> AddSums(const Cases& cases, CaseSums to, Isa isa = BestIsa());

// Adds w to W, w (x_i - center_i) to the sums and, for j <= i, w (x_i - center_i) (x_j - center_j)
// to element (i, j) of the packed triangle s. In blocks of cases, with work memory for one; without
// that case by case.
void AddProducts(const Cases& cases, const std::vector<double>& center, CaseSums to, double* s,
                 Isa isa = BestIsa());

// The products alone, of one case of weight w.
void AddProducts(const double* x, double w, const std::vector<double>& center, double* s,
                 Isa isa = BestIsa());

// The plain loops: their order of operations is what the fast forms keep to the bit.
std::vector<bool> AddSumsPlain(const Cases& cases, CaseSums to);
void AddProductsPlain(const Cases& cases, const std::vector<double>& center, CaseSums to,
                      double* s);
void AddProductsPlain(const double* x, double w, const std::vector<double>& center, double* s);

}  // namespace NQMath_940::internal
