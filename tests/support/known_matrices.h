// Positive-definite integer matrices whose inverses are known exactly.
#pragma once

#include <algorithm>
#include <numeric>
#include <string>

#include "support/rect.h"

namespace nqtest {

struct KnownMatrix {
  std::string name;
  Dense matrix;
  Dense inverse;

  // The largest error of a computed inverse in units of n eps cond max|inverse|.
  double InverseError(const NQMath_940::INQSymMatrix& got) const {
    const double unit = static_cast<double>(matrix.size()) * std::numeric_limits<double>::epsilon();
    return Distance(ToDense(got), inverse) /
           (unit * RowNorm(matrix) * RowNorm(inverse) * RowNorm(inverse));
  }
  // The largest sum of a row's absolute values.
  static double RowNorm(const Dense& a) {
    double max = 0;
    for (const auto& row : a) {
      double sum = 0;
      for (double x : row) sum += std::fabs(x);
      max = std::max(max, sum);
    }
    return max;
  }
};

inline double Binomial(std::size_t n, std::size_t k) {
  double b = 1;
  for (std::size_t i = 1; i <= k; ++i)
    b = b * static_cast<double>(n - k + i) / static_cast<double>(i);
  return b;
}

// C(i + j, i): the product of the triangle of binomial coefficients with its transpose, whose
// inverse is the same triangle with alternating signs. All leading determinants are 1.
inline KnownMatrix Pascal(std::size_t n) {
  Dense matrix(n, Values(n)), lower = matrix;
  for (std::size_t i = 0; i < n; ++i) {
    for (std::size_t j = 0; j < n; ++j) {
      matrix[i][j] = Binomial(i + j, i);
      if (j <= i) lower[i][j] = ((i - j) % 2 ? -1 : 1) * Binomial(i, j);
    }
  }
  return {"Pascal " + std::to_string(n), matrix, Trans(lower) * lower};
}

// lcm(1 .. 2n-1) / (i + j + 1), integers; the Hilbert matrix's inverse is of integers too.
inline KnownMatrix ScaledHilbert(std::size_t n) {
  std::size_t scale = 1;
  for (std::size_t k = 2; k < 2 * n; ++k) scale = std::lcm(scale, k);
  Dense matrix(n, Values(n)), inverse = matrix;
  for (std::size_t i = 0; i < n; ++i) {
    for (std::size_t j = 0; j < n; ++j) {
      const auto sum = static_cast<double>(i + j + 1), paths = Binomial(i + j, i);
      matrix[i][j] = static_cast<double>(scale) / sum;
      inverse[i][j] = ((i + j) % 2 ? -1 : 1) * sum * Binomial(n + i, n - j - 1) *
                      Binomial(n + j, n - i - 1) * paths * paths / static_cast<double>(scale);
    }
  }
  return {"scaled Hilbert " + std::to_string(n), matrix, inverse};
}

inline std::vector<KnownMatrix> KnownMatrices() {
  return {Pascal(1),        Pascal(2),        Pascal(5),       Pascal(8),
          ScaledHilbert(2), ScaledHilbert(4), ScaledHilbert(7)};
}

}  // namespace nqtest
