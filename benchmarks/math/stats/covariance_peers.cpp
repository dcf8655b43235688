#include "math/stats/covariance_peers.h"

#define ARMA_DONT_USE_WRAPPER
#include <Eigen/Dense>
#include <armadillo>

#include <algorithm>
#include <cmath>

namespace nqbench {
namespace {

// Sums of 8 lanes of a row at a time stay in registers over a block of cases that the cache holds.
std::vector<double> Means(const WeightedCases& cases) {
  constexpr std::size_t kBlock = 64;
  const std::size_t step = cases.p + 1;
  std::vector<double> sums(cases.p);
  double weight = 0;
  for (std::size_t first = 0; first < cases.n; first += kBlock) {
    const std::size_t end = std::min(cases.n, first + kBlock);
    const auto addStrip = [&](std::size_t j, std::size_t width) {
      double strip[16] = {};
      for (std::size_t i = first; i < end; ++i) {
        const double* x = cases.data + i * step;
        const double w = x[cases.p];
        if (width == 16) {
          for (std::size_t k = 0; k < 16; ++k) strip[k] += w * x[j + k];
        } else {
          for (std::size_t k = 0; k < width; ++k) strip[k] += w * x[j + k];
        }
      }
      for (std::size_t k = 0; k < width; ++k) sums[j + k] += strip[k];
    };
    for (std::size_t j = 0; j < cases.p; j += 16)
      addStrip(j, std::min<std::size_t>(16, cases.p - j));
    for (std::size_t i = first; i < end; ++i) weight += cases.data[i * step + cases.p];
  }
  for (double& mean : sums) mean /= weight;
  return sums;
}

}  // namespace

Square WithBlas(const WeightedCases& cases) {
  constexpr std::size_t kChunk = 512;
  const std::size_t p = cases.p;
  const arma::blas_int order = static_cast<arma::blas_int>(p);
  const std::vector<double> means = Means(cases);
  Square c(p * p);
  std::vector<double> chunk(kChunk * p);
  for (std::size_t first = 0; first < cases.n; first += kChunk) {
    const std::size_t count = std::min(kChunk, cases.n - first);
    for (std::size_t i = 0; i < count; ++i) {
      const double* x = cases.data + (first + i) * (p + 1);
      double* to = chunk.data() + i * p;
      const double root = std::sqrt(x[p]);
      for (std::size_t j = 0; j < p; ++j) to[j] = root * (x[j] - means[j]);
    }
    const auto depth = static_cast<arma::blas_int>(count);
    const double one = 1;
    arma::blas::syrk("L", "N", &order, &depth, &one, chunk.data(), &order, &one, c.data(), &order);
  }
  return c;
}

Square WithEigen(const WeightedCases& cases) {
  using Rows = Eigen::Matrix<double, Eigen::Dynamic, Eigen::Dynamic, Eigen::RowMajor>;
  const auto n = static_cast<Eigen::Index>(cases.n);
  const auto p = static_cast<Eigen::Index>(cases.p);
  const Eigen::Map<const Rows> all(cases.data, n, p + 1);
  const auto x = all.leftCols(p);
  const Eigen::VectorXd w = all.col(p);
  const Eigen::RowVectorXd mean = (w.transpose() * x) / w.sum();
  const Rows centred = w.cwiseSqrt().asDiagonal() * (x.rowwise() - mean);
  Square c(cases.p * cases.p);
  Eigen::Map<Eigen::MatrixXd> out(c.data(), p, p);
  out.selfadjointView<Eigen::Lower>().rankUpdate(centred.transpose());
  return c;
}

Square WithArmadillo(const WeightedCases& cases) {
  // Armadillo is column by column: a case is a column.
  const arma::mat all(const_cast<double*>(cases.data), cases.p + 1, cases.n, false, true);
  const arma::rowvec w = all.row(cases.p);
  arma::mat centred = all.head_rows(cases.p);
  const arma::vec mean = centred * w.t() / arma::accu(w);
  centred.each_col() -= mean;
  centred.each_row() %= arma::sqrt(w);
  const arma::mat c = centred * centred.t();
  return Square(c.begin(), c.end());
}

}  // namespace nqbench
