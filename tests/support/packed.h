// Inputs for the loops over packed triangles, and the instruction sets to run them with.
#pragma once

#include <nqcommon/math/kernels/cpu_dispatch.h>
#include <nqcommon/math/kernels/packed_triangle.h>

#include <cstddef>
#include <numeric>
#include <random>
#include <span>
#include <string>
#include <vector>

namespace nqtest {

using NQMath_940::internal::Isa;
using Values = std::vector<double>;
using Indices = std::vector<int>;
using Bits = std::vector<bool>;

// The instruction sets that have kernels, and those of them that this machine runs.
inline constexpr Isa kIsas[] = {Isa::kBaseline, Isa::kAvx2, Isa::kAvx512};
inline std::span<const Isa> RunnableIsas() {
  return std::span(kIsas).first(static_cast<std::size_t>(NQMath_940::internal::BestIsa()) + 1);
}

inline std::string Label(const char* name, std::size_t n, Isa isa) {
  return name + (" of order " + std::to_string(n)) + ", kernels " +
         NQMath_940::internal::NameOf(isa);
}

// Every border of the vectors, tiles and panels, and many panels.
inline std::vector<std::size_t> PackedOrders() {
  std::vector<std::size_t> orders(130);
  std::iota(orders.begin(), orders.end(), 1);
  orders.push_back(500);
  return orders;
}

// Packed, off-diagonal elements in -1 .. 1 and a dominant diagonal.
inline Values RandomPositiveDefinite(std::size_t n) {
  std::mt19937 random(static_cast<unsigned>(n));
  Values s(NQMath_940::internal::RowStart(n));
  for (double& x : s) x = static_cast<double>(random()) / 2147483648.0 - 1.0;
  for (std::size_t i = 0; i < n; ++i)
    s[NQMath_940::internal::DiagIndex(i)] += static_cast<double>(n);
  return s;
}

// Makes row and column k a copy of another.
inline void CopyRow(Values& s, std::size_t n, std::size_t from, std::size_t k) {
  using NQMath_940::internal::SymIndex;
  for (std::size_t i = 0; i < n; ++i) s[SymIndex(i, k)] = s[SymIndex(i, from)];
  s[SymIndex(k, k)] = s[SymIndex(from, from)];
}

}  // namespace nqtest
