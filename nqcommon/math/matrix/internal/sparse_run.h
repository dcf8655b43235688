// Loops over sparse vectors: the entries that are stored, and no others.
#pragma once

#include <algorithm>
#include <cstddef>

#include <nqcommon/math/kernels/packed_triangle.h>
#include <nqcommon/math/matrix/NQSparseRectMatrix.h>
#include <nqcommon/math/matrix/NQSparseVector.h>

namespace NQMath_940::internal {

// SparseRun is a list of `count` entries with strictly increasing indices, none negative.
struct SparseRun {
  const int* indices;
  const double* values;
  std::size_t count;

  // ForEach calls f(index, value) for entry after entry.
  template <class F>
  void ForEach(F f) const {
    for (std::size_t k = 0; k < count; ++k) f(static_cast<std::size_t>(indices[k]), values[k]);
  }
};

// RunOf gives the entries of v, which must be a valid view.
inline SparseRun RunOf(const NQSparseVector& v) {
  return {v.GetIndices().data(), v.GetValues().data(), v.GetIndices().size()};
}

// StoredIn gives the entries of row i, 0 <= i < m: its slots that are not empty.
inline SparseRun StoredIn(const NQSparseRectMatrix& r, int i) {
  SparseRun run{nullptr, nullptr, 0};
  r.GetRow(i, run.indices, run.values);
  const int* end = run.indices + r.GetNNZRowElements();
  const int* stored = std::find_if(run.indices, end, [](int j) { return j >= 0; });
  return {stored, run.values + (stored - run.indices), static_cast<std::size_t>(end - stored)};
}

// Whether v is valid and its indices, displaced by offset, are all below n.
inline bool FitsIn(const NQSparseVector& v, std::size_t n, int offset = 0) {
  return v.IsValid() && offset >= 0 &&
         static_cast<std::size_t>(v.GetIndices().back()) + static_cast<std::size_t>(offset) < n;
}

inline double DotProduct(const SparseRun& a, const double* dense) {
  double sum = 0;
  a.ForEach([&](std::size_t j, double x) { sum += x * dense[j]; });
  return sum;
}

inline double DotProduct(const SparseRun& a, const SparseRun& b) {
  double sum = 0;
  for (std::size_t i = 0, j = 0; i < a.count && j < b.count;) {
    const int atA = a.indices[i], atB = b.indices[j];
    if (atA == atB) sum += a.values[i] * b.values[j];
    i += atA <= atB;
    j += atB <= atA;
  }
  return sum;
}

inline void AddScaled(const SparseRun& a, double factor, double* dense) {
  a.ForEach([&](std::size_t j, double x) { dense[j] += factor * x; });
}

// ForEachOuter calls f(packed position, v[i], v[j]) for the cells (offset + i, offset + j), j <= i,
// where i and j are indices of entries.
template <class F>
void ForEachOuter(const SparseRun& v, std::size_t offset, F f) {
  for (std::size_t a = 0; a < v.count; ++a) {
    const std::size_t row = RowStart(offset + static_cast<std::size_t>(v.indices[a])) + offset;
    for (std::size_t b = 0; b <= a; ++b)
      f(row + static_cast<std::size_t>(v.indices[b]), v.values[a], v.values[b]);
  }
}

// AddOuter does as UpdateXX with the dense vector, cell for cell: s(i,j) += v[j] (v[i] w), where
// rows with v[i] = 0 are skipped.
inline void AddOuter(const SparseRun& v, std::size_t offset, double w, double* packed) {
  ForEachOuter(v, offset, [&](std::size_t at, double vi, double vj) {
    if (vi != 0) packed[at] += vj * (vi * w);
  });
}

}  // namespace NQMath_940::internal
