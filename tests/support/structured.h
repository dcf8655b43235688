// Sparse and block-diagonal matrices of chosen structure. Entries keep products, factors and
// inverses exact: small integers, and the pivots of the blocks powers of 2 or 0.
#pragma once

#include <nqcommon/math/matrix/NQSparseRectMatrix.h>
#include <nqcommon/math/matrix/NQSparseVector.h>
#include <nqcommon/math/matrix/NQSymBlockDiagMatrix.h>

#include <algorithm>
#include <cstdlib>
#include <random>
#include <vector>

#include "support/rect.h"

namespace nqtest {

// Zeros; a negative size makes a diagonal block.
inline NQMath_940::NQSymBlockDiagMatrix MakeBlocks(Indices sizes) {
  NQMath_940::NQBitSet isDiagonal(static_cast<int>(sizes.size()));
  for (std::size_t b = 0; b < sizes.size(); ++b) {
    isDiagonal.Set(static_cast<int>(b), sizes[b] < 0);
    sizes[b] = std::abs(sizes[b]);
  }
  return {sizes, isDiagonal};
}

// L L' for a random L of this structure, some of its columns 0.
inline NQMath_940::NQSymBlockDiagMatrix RandomBlocks(const Indices& sizes, std::mt19937& random) {
  NQMath_940::NQSymBlockDiagMatrix s = MakeBlocks(sizes);
  for (int j = 0; j < s.GetNRows(); ++j) {
    const double pivots[] = {0, 1, 2, 4, 1, 2};
    s.SetElem(j, j, pivots[random() % 6]);
    for (int i = j + 1; i < s.GetNRows() && s.GetElem(j, j) > 0; ++i)
      s.SetElem(i, j, static_cast<double>(random() % 3) - 1);
  }
  s.LTLLTrans();
  return s;
}

// Up to k entries a row, their columns chosen at random: some slots are empty, some entries 0.
inline NQMath_940::NQSparseRectMatrix RandomSparse(int m, int n, int k, std::mt19937& random) {
  NQMath_940::NQSparseRectMatrix r(m, n, k);
  for (int i = 0; i < m; ++i) {
    Indices columns;
    for (int j = 0; j < n; ++j) columns.push_back(j);
    std::shuffle(columns.begin(), columns.end(), random);
    columns.resize(random() % static_cast<unsigned>(k + 1));
    std::sort(columns.begin(), columns.end());
    r.AddRow();
    const Values values = RandomVector(columns.size(), random);
    r.SetRow(i, NQMath_940::NQSparseVector(columns, values));
  }
  return r;
}

}  // namespace nqtest
