// Square and rectangular matrices as plain nested vectors, multiplied by the schoolbook: what the
// matrix classes are compared with. Integer entries keep the comparison exact.
#pragma once

#include <nqcommon/math/matrix/NQSymMatrix.h>

#include <random>
#include <vector>

namespace nqtest {

using Values = std::vector<double>;
using Indices = std::vector<int>;
using Bits = std::vector<bool>;

// A type of its own, so that its operators are found.
struct Dense : std::vector<std::vector<double>> {
  using vector::vector;
};

inline Dense ToDense(const NQMath_940::INQSymMatrix& s) {
  const auto n = static_cast<std::size_t>(s.GetNRows());
  Dense d(n, Values(n));
  for (std::size_t i = 0; i < n; ++i) {
    for (std::size_t j = 0; j < n; ++j)
      d[i][j] = s.GetElem(static_cast<int>(i), static_cast<int>(j));
  }
  return d;
}

// From the lower triangle packed by rows: three values make order 2.
inline NQMath_940::NQSymMatrix FromPacked(const Values& packed) {
  NQMath_940::NQSymMatrix s;
  while (s.AsVector().size() < packed.size()) s.Resize(s.GetNRows() + 1);
  s.SetData(packed);
  return s;
}

inline NQMath_940::NQSymMatrix ToSym(const Dense& d) {
  Values packed;
  for (std::size_t i = 0; i < d.size(); ++i) {
    for (std::size_t j = 0; j <= i; ++j) packed.push_back(d[i][j]);
  }
  return FromPacked(packed);
}

inline Dense Lower(Dense d) {
  for (std::size_t i = 0; i < d.size(); ++i) {
    for (std::size_t j = i + 1; j < d.size(); ++j) d[i][j] = 0;
  }
  return d;
}

inline Dense Trans(const Dense& a) {
  Dense t(a.empty() ? 0 : a[0].size(), Values(a.size()));
  for (std::size_t i = 0; i < a.size(); ++i) {
    for (std::size_t j = 0; j < a[i].size(); ++j) t[j][i] = a[i][j];
  }
  return t;
}

inline Dense operator*(const Dense& a, const Dense& b) {
  Dense c(a.size(), Values(b.empty() ? 0 : b[0].size()));
  for (std::size_t i = 0; i < a.size(); ++i) {
    for (std::size_t k = 0; k < b.size(); ++k) {
      for (std::size_t j = 0; j < b[k].size(); ++j) c[i][j] += a[i][k] * b[k][j];
    }
  }
  return c;
}

inline Dense Column(const Values& v) { return Trans(Dense{v}); }

inline std::vector<double> RandomVector(std::size_t n, std::mt19937& random) {
  std::vector<double> v(n);
  for (double& x : v) x = static_cast<double>(random() % 19) - 9;
  return v;
}

// Symmetric, with integer entries.
inline NQMath_940::NQSymMatrix RandomSym(int n, std::mt19937& random) {
  return FromPacked(RandomVector(static_cast<std::size_t>(n * (n + 1) / 2), random));
}

}  // namespace nqtest
