// Partial results of numbered chunks, merged in one fixed order whoever brings them when.
#pragma once

#include <cstdint>
#include <iterator>
#include <map>
#include <mutex>
#include <optional>
#include <utility>

namespace support {

// Merges the parts of chunks 0, 1, 2, ... over the binary tree on the chunk numbers: node
// (level, i) stands for the chunks i 2^level .. (i+1) 2^level - 1 and is the merge of its two
// halves, the lower one first. So floating-point sums depend on the chunks alone, not on the order
// in which they are finished, nor on who finished them: every run of chunks gives a list of nodes,
// and joining the lists of neighbouring runs is associative.
//
// Part      movable; left.Merge(std::move(right)) takes over the chunks right behind its own
// Memory    at most 2 log2(chunks) parts for a contiguous run, and one for each chunk out of turn
// Threads   Add may be called from several at once; the merges are outside the lock.
template <class Part>
class MergeTree {
 public:
  struct Node {
    unsigned level = 0;
    Part part;
  };

  void Add(std::uint64_t chunk, Part part) { AddNode(chunk, {0, std::move(part)}); }

  // Adds a node of another tree: one of its Nodes(). The first chunk tells where it stands.
  void AddNode(std::uint64_t firstChunk, Node node) {
    std::unique_lock lock(fMutex);
    while (true) {
      const std::uint64_t size = std::uint64_t{1} << node.level;
      const auto sibling = fNodes.find(firstChunk ^ size);
      if (sibling == fNodes.end() || sibling->second.level != node.level) break;
      Node other = std::move(sibling->second);
      fNodes.erase(sibling);
      lock.unlock();
      if ((firstChunk & size) != 0) std::swap(node, other);
      node.part.Merge(std::move(other.part));
      ++node.level;
      firstChunk &= ~size;
      lock.lock();
    }
    fNodes.emplace(firstChunk, std::move(node));
  }

  // The nodes that wait for their siblings, by their first chunks.
  std::map<std::uint64_t, Node>& Nodes() { return fNodes; }

  // The merge of all chunks 0 .. n-1, once they are there: a node without a sibling stands for its
  // parent. Nothing when there are no chunks. Empties the tree.
  std::optional<Part> Take() {
    if (fNodes.empty()) return std::nullopt;
    auto last = std::prev(fNodes.end());
    while (last != fNodes.begin()) {
      const auto before = std::prev(last);
      before->second.part.Merge(std::move(last->second.part));
      fNodes.erase(last);
      last = before;
    }
    std::optional<Part> whole(std::move(last->second.part));
    fNodes.clear();
    return whole;
  }

 private:
  std::mutex fMutex;
  std::map<std::uint64_t, Node> fNodes;
};

}  // namespace support
