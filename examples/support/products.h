// Means and cross-products of a part of the cases: how they are collected, and how they travel
// between processes.
#pragma once

#include <new>
#include <vector>

#include <nqcommon/math/stats/NQMeansXProducts.h>

namespace support {

// The rows that a pass collects before an accumulator takes them.
inline constexpr int kBlockRows = 256;

// See Packer.
template <class A>
void TransferProducts(A& a, NQMath_940::NQMeansXProducts& products) {
  bool intercept = products.IsIntercept();
  double nCases = products.GetNCases();
  std::vector<double> means = products.GetMeans();
  std::vector<double> xProds = products.GetXProds().AsVectorConst();
  a(intercept);
  a(nCases);
  a(means);
  a(xProds);
  if constexpr (A::kReads) {
    if (!products.SetData(intercept, nCases, means, xProds)) throw std::bad_alloc();
  }
}

}  // namespace support
