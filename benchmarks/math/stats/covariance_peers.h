// Means and products about them of weighted cases, as others compute them. The source is compiled
// for the processor it runs on, which the peers need to be at their best.
#pragma once

#include <cstddef>
#include <vector>

namespace nqbench {

// Cases one a row, p variables and a weight.
struct WeightedCases {
  const double* data;
  std::size_t n;
  std::size_t p;
};

// The full square of order p; its lower triangle counts, and it is symmetric as to layout.
using Square = std::vector<double>;

// OpenBLAS's dsyrk, fed in chunks of 512 cases that are centred and multiplied by the root of the
// weight with as much care as our own are.
Square WithBlas(const WeightedCases& cases);
// As a user of the library would write it.
Square WithEigen(const WeightedCases& cases);
Square WithArmadillo(const WeightedCases& cases);

}  // namespace nqbench
