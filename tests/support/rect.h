// Rectangular matrices to and from plain nested vectors (dense.h).
#pragma once

#include <nqcommon/math/matrix/NQRectMatrix.h>

#include <cmath>
#include <limits>

#include "support/dense.h"

namespace nqtest {

inline Dense ToDense(const NQMath_940::INQRectMatrix& r) {
  Dense d;
  for (int i = 0; i < r.GetNRows(); ++i) r.GetRow(i, d.emplace_back());
  return d;
}

inline NQMath_940::NQRectMatrix ToRect(const Dense& d) {
  const auto columns = d.empty() ? 0 : d[0].size();
  NQMath_940::NQRectMatrix r(static_cast<int>(d.size()), static_cast<int>(columns), true);
  for (std::size_t i = 0; i < d.size(); ++i) {
    for (std::size_t j = 0; j < columns; ++j)
      r.SetElem(static_cast<int>(i), static_cast<int>(j), d[i][j]);
  }
  return r;
}

// Integer entries in -9 .. 9.
inline NQMath_940::NQRectMatrix RandomRect(int m, int n, std::mt19937& random) {
  Dense d(static_cast<std::size_t>(m));
  for (auto& row : d) row = RandomVector(static_cast<std::size_t>(n), random);
  return ToRect(d);
}

// The largest difference of two elements; infinite where shapes differ or a difference is NaN.
inline double Distance(const Dense& a, const Dense& b) {
  double max = a.size() == b.size() ? 0 : std::numeric_limits<double>::infinity();
  for (std::size_t i = 0; i < a.size() && std::isfinite(max); ++i) {
    if (a[i].size() != b[i].size()) return std::numeric_limits<double>::infinity();
    for (std::size_t j = 0; j < a[i].size(); ++j) {
      const double difference = std::fabs(a[i][j] - b[i][j]);
      if (std::isnan(difference)) return std::numeric_limits<double>::infinity();
      max = std::fmax(max, difference);
    }
  }
  return max;
}

}  // namespace nqtest
