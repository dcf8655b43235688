#pragma once

namespace NQCommon_940 {

// -1 for a < b, 1 for b < a, 0 for neither.
template <typename T>
int Sign(const T& a, const T& b) {
  return static_cast<int>(b < a) - static_cast<int>(a < b);
}

// The lexicographic order of two containers, -1, 0 or 1, from that of two items. Each pair of items
// is visited once: with `<` tried in both directions the cost would double at every level of
// nesting.
template <typename Items, typename OrderItem>
int OrderItems(const Items& a, const Items& b, OrderItem orderItem) {
  auto p = a.begin(), q = b.begin();
  for (; p != a.end() && q != b.end(); ++p, ++q) {
    if (const int order = orderItem(*p, *q)) return order;
  }
  return Sign(a.size(), b.size());
}

}  // namespace NQCommon_940
