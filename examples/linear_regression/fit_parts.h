// What the readings of a fit leave for its figures.
#pragma once

#include <vector>

#include <nqcommon/math/matrix/NQBitSet.h>
#include <nqcommon/math/matrix/NQSymMatrix.h>

#include "regression.h"
#include "residual_pass.h"

namespace regression {

// The cross-products before and after the columns were swept.
struct Sweep {
  NQMath_940::NQSymMatrix products;  // of all columns, the target's last
  NQMath_940::NQSymMatrix swept;
  NQMath_940::NQBitSet isIn;
  std::vector<int> kept;  // the columns swept
  double totalSumOfSquares = 0;
};

Sweep SweepColumns(const NQMath_940::NQSymMatrix& products);

// The fit of the residuals to the nearly orthonormal columns, and what it makes of the first fit.
// Scaled. With q the columns' deviations from the centre times the inverse of the first factor.
struct SecondFit {
  NQMath_940::NQSymMatrix factorOfQ;
  std::vector<double> meansOfQ;
  std::vector<double> gamma;       // coefficients of the residuals on q
  double alpha = 0;                // their constant
  NQMath_940::NQSymMatrix factor;  // L, L L' being the cross-products of the columns
  std::vector<double> b;
  double fittedSumOfSquares = 0;
  double residualSumOfSquares = 0;
};

// These throw std::bad_alloc where there is no memory, and std::runtime_error for a matrix that is
// not positive definite.
NQMath_940::NQSymMatrix Valid(NQMath_940::NQSymMatrix matrix);
NQMath_940::NQSymMatrix Submatrix(const NQMath_940::NQSymMatrix& s, const std::vector<int>& rows);
NQMath_940::NQSymMatrix CholeskyFactor(NQMath_940::NQSymMatrix s);

// Fills in the figures, and the charts where asked for.
void Describe(Regression& result, const support::ModelData& data,
              const std::vector<support::Column>& columns, const Sweep& sweep,
              const FirstFit& first, const SecondFit& second, const ResidualPart& part,
              bool charts);

}  // namespace regression
