// Runs, lists and vectors as arguments of matrix operations: whether they fit, what they select.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <limits>
#include <new>
#include <utility>
#include <vector>

#include <nqcommon/common/memory_guard.h>
#include <nqcommon/math/matrix/NQBitSet.h>

namespace NQMath_940::internal {

inline bool FitsInt(long long n) { return n >= 0 && n <= std::numeric_limits<int>::max(); }

// Whether first .. first+count-1 are places of n.
inline bool IsRun(int n, int first, int count) {
  return first >= 0 && count >= 0 && count <= n - first;
}

inline bool AllBelow(int n, const std::vector<int>& indices) {
  return std::all_of(indices.begin(), indices.end(), [n](int i) { return i >= 0 && i < n; });
}

// out <- the vector that fill(vector) makes of n zeros, which may read from out. False, out
// unchanged, where there is no memory.
template <class Fill>
bool MakeVector(std::size_t n, std::vector<double>& out, Fill fill) {
  return NQCommon_940::GuardMemory([&] {
    std::vector<double> result(n);
    fill(result);
    out = std::move(result);
  });
}

// out = the vector of n values with out[indices[k]] += values[k]. False, out unchanged, where the
// lists do not make one or there is no memory.
inline bool Densify(const std::vector<int>& indices, const std::vector<double>& values, int n,
                    std::vector<double>& out) {
  if (n < 0 || indices.size() != values.size() || !AllBelow(n, indices)) return false;
  return MakeVector(static_cast<std::size_t>(n), out, [&](std::vector<double>& v) {
    for (std::size_t k = 0; k < indices.size(); ++k)
      v[static_cast<std::size_t>(indices[k])] += values[k];
  });
}

// Whether a vector of `size` values has n of them from `first` on.
inline bool HoldsRun(std::size_t size, int first, std::size_t n) {
  return first >= 0 && size >= n && static_cast<std::size_t>(first) <= size - n;
}

// Whether a vector of `size` values has n of them in steps of inc, whatever its sign.
inline bool HoldsStrided(std::size_t size, std::size_t n, int inc) {
  const std::size_t step =
      inc >= 0 ? static_cast<std::size_t>(inc) : -static_cast<std::size_t>(inc);
  return n == 0 || size >= (n - 1) * step + 1;
}

// The members of the set, ascending. It throws where memory ends, as MemberFlags does: both are for
// bodies under a guard.
inline std::vector<int> MembersOf(const NQBitSet& set) {
  std::vector<int> members;
  if (!set.GetMembers(members)) throw std::bad_alloc();
  return members;
}

// For each of 0 .. n-1 whether it is a member.
inline std::vector<bool> MemberFlags(const NQBitSet& set, std::size_t n) {
  std::vector<bool> members(n);
  for (std::size_t i = 0; i < n; ++i) members[i] = set.IsIn(static_cast<int>(i));
  return members;
}

// What is left of 0 .. n-1 when it is displaced by k: `count` places from `from` on go to `to` on.
struct Displaced {
  Displaced(int n, int k) {
    const int lost = static_cast<int>(std::min<long long>(std::abs(static_cast<long long>(k)), n));
    count = n - lost;
    (k < 0 ? from : to) = lost;
  }
  int from = 0, to = 0, count = 0;
};

}  // namespace NQMath_940::internal
