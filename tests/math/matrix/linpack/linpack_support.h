// Matrices as LINPACK wants them, the schoolbook's operations on them, and comparisons.
#pragma once

#include <algorithm>
#include <cmath>
#include <limits>

#include "support/dense.h"
#include "support/testing.h"

namespace nqtest {

inline constexpr double kEps = std::numeric_limits<double>::epsilon();

// Column-major, m x n, with a spare row of NaN below: what is read beside the matrix shows in the
// result, and what is written there makes matrices differ.
struct Mat {
  template <class F>
  Mat(int rows, int columns, F element)
      : m(rows), n(columns), ld(m + 1), data(static_cast<std::size_t>(ld * n), kNaN) {
    for (int j = 0; j < n; ++j) {
      for (int i = 0; i < m; ++i) (*this)(i, j) = static_cast<double>(element(i, j));
    }
  }
  Mat(int rows, int columns) : Mat(rows, columns, [](int, int) { return 0; }) {}
  Mat(const Dense& rows)
      : Mat(static_cast<int>(rows.size()), rows.empty() ? 0 : static_cast<int>(rows[0].size()),
            [row = rows.data()](int i, int j) { return row[i][static_cast<std::size_t>(j)]; }) {}

  double& operator()(int i, int j) { return data.data()[i + j * ld]; }
  double operator()(int i, int j) const { return data.data()[i + j * ld]; }
  operator double*() { return data.data(); }

  int m, n, ld;
  Values data;
};

inline Mat Identity(int n) {
  return Mat(n, n, [](int i, int j) { return i == j; });
}
inline Mat Trans(const Mat& a) {
  return Mat(a.n, a.m, [&](int i, int j) { return a(j, i); });
}
// The upper triangle of the leading rows, over zeros.
inline Mat Upper(const Mat& a, int rows) {
  return Mat(rows, a.n, [&](int i, int j) { return i <= j ? a(i, j) : 0; });
}
// Integers in -9 .. 9.
inline Mat Random(int m, int n, std::mt19937& random) {
  return Mat(m, n, [&](int, int) { return static_cast<int>(random() % 19) - 9; });
}
inline Mat operator*(const Mat& a, const Mat& b) {
  return Mat(a.m, b.n, [&](int i, int j) {
    double sum = 0;
    for (int k = 0; k < a.n; ++k) sum += a(i, k) * b(k, j);
    return sum;
  });
}
inline Mat operator+(const Mat& a, const Mat& b) {
  return Mat(a.m, a.n, [&](int i, int j) { return a(i, j) + b(i, j); });
}

// The 1-norm; NaN when any element is.
inline double Norm(const Mat& a) {
  double norm = 0;
  for (int j = 0; j < a.n && !std::isnan(norm); ++j) {
    double sum = 0;
    for (int i = 0; i < a.m; ++i) sum += std::fabs(a(i, j));
    if (!(sum <= norm)) norm = sum;
  }
  return norm;
}

// |got - want| <= 10 m eps scale, the scale being |want| at least.
inline ::testing::AssertionResult IsNear(const Mat& got, const Mat& want, double scale = 0) {
  const auto difference = [&](int i, int j) { return got(i, j) - want(i, j); };
  const double error = Norm(Mat(want.m, want.n, difference));
  const double unit = kEps * std::max(scale, Norm(want)) * want.m;
  if (error <= 10 * unit) return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure() << "error " << error << ", " << error / unit << " units";
}

// By expansion along the first row, for small orders.
inline long double Determinant(const Mat& a) {
  long double sum = a.n == 0 ? 1 : 0;
  for (int k = 0; k < a.n; ++k) {
    const auto rest = [&](int i, int j) { return a(i + 1, j < k ? j : j + 1); };
    sum += (k % 2 ? -1 : 1) * a(0, k) * Determinant(Mat(a.n - 1, a.n - 1, rest));
  }
  return sum;
}

}  // namespace nqtest
