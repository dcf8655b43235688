// The columns that a pivoting decomposition may choose from.
#pragma once

#include <utility>

namespace NQMath_940::internal {

// FreeColumns are the positions first .. last-1, 0-based.
struct FreeColumns {
  int first = 0;
  int last = 0;

  bool Contains(int j) const { return first <= j && j < last; }
};

// ArrangeColumns brings the columns with jpvt > 0 to the front, in order, and those with jpvt < 0
// to the end, by calling exchange(i, j), i < j. jpvt becomes the 1-based permutation. The columns
// between them are the result.
template <class Exchange>
FreeColumns ArrangeColumns(int p, int* jpvt, Exchange exchange) {
  FreeColumns free{0, p};
  for (int j = 0; j < p; ++j) {
    const bool front = jpvt[j] > 0;
    const bool end = jpvt[j] < 0;
    jpvt[j] = end ? -(j + 1) : j + 1;
    if (!front) continue;
    if (j != free.first) exchange(free.first, j);
    std::swap(jpvt[free.first++], jpvt[j]);
  }
  for (int j = p - 1; j >= free.first; --j) {
    if (jpvt[j] > 0) continue;
    jpvt[j] = -jpvt[j];
    if (j != --free.last) exchange(j, free.last);
    std::swap(jpvt[j], jpvt[free.last]);
  }
  return free;
}

}  // namespace NQMath_940::internal
