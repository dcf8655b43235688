// One result whatever the order in which chunks are finished and runs of them are joined.
#include "support/merge_tree.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <numeric>
#include <random>
#include <string>
#include <thread>
#include <vector>

namespace {

// The merges as a formula, and a sum that depends on their order.
struct Part {
  std::string formula;
  double sum = 0;

  void Merge(Part&& right) {
    formula = "(" + formula + "+" + right.formula + ")";
    sum += right.sum;
  }
};

using Tree = support::MergeTree<Part>;

Part Leaf(std::uint64_t chunk) {
  return {std::to_string(chunk), std::exp(0.1 * static_cast<double>(chunk))};
}

// The definition: the chunks first .. first + 2^level - 1 that there are.
Part Whole(std::uint64_t first, unsigned level, std::uint64_t count) {
  if (level == 0) return Leaf(first);
  const std::uint64_t half = std::uint64_t{1} << (level - 1);
  Part part = Whole(first, level - 1, count);
  if (first + half < count) part.Merge(Whole(first + half, level - 1, count));
  return part;
}

void ExpectWhole(Tree& tree, std::uint64_t count) {
  const Part want = Whole(0, 6, count), got = *tree.Take();
  EXPECT_EQ(got.formula, want.formula) << count;
  EXPECT_EQ(got.sum, want.sum) << count;
  EXPECT_FALSE(tree.Take());
}

// Neighbouring runs of chunks are joined in random pairs until one is left.
TEST(MergeTree, AnyScheduleAndBracketingGiveOneResult) {
  std::mt19937 draw(20240601);
  for (std::uint64_t count = 1; count <= 64; ++count) {
    for (int trial = 0; trial < 8; ++trial) {
      std::vector<std::uint64_t> order(count);
      std::iota(order.begin(), order.end(), 0);
      std::shuffle(order.begin(), order.end(), draw);
      std::vector<std::uint64_t> ends = {0, count, draw() % (count + 1), draw() % (count + 1),
                                         draw() % (count + 1)};
      std::sort(ends.begin(), ends.end());
      std::vector<Tree> runs(ends.size() - 1);
      for (const std::uint64_t chunk : order) {
        const auto run = std::upper_bound(ends.begin(), ends.end(), chunk) - ends.begin() - 1;
        runs[static_cast<std::size_t>(run)].Add(chunk, Leaf(chunk));
      }
      for (Tree& run : runs) EXPECT_LE(run.Nodes().size(), 2 * 6u);
      std::vector<std::size_t> left = {0, 1, 2, 3};
      while (left.size() > 1) {
        const std::size_t at = draw() % (left.size() - 1);
        for (auto& [chunk, node] : runs[left[at + 1]].Nodes())
          runs[left[at]].AddNode(chunk, std::move(node));
        left.erase(left.begin() + static_cast<std::ptrdiff_t>(at) + 1);
      }
      ExpectWhole(runs[0], count);
    }
  }
}

TEST(MergeTree, ThreadsAddAtOnce) {
  constexpr std::uint64_t kCount = 61;
  Tree tree;
  std::atomic<std::uint64_t> next = 0;
  {
    std::vector<std::jthread> threads;
    for (int i = 0; i < 4; ++i) {
      threads.emplace_back([&] {
        for (std::uint64_t chunk; (chunk = next++) < kCount;) tree.Add(chunk, Leaf(chunk));
      });
    }
  }
  ExpectWhole(tree, kCount);
}

}  // namespace
