// A pass over the chunks of a source by several threads and processes, with one result.
#pragma once

#include <algorithm>
#include <bit>
#include <cstdint>
#include <functional>
#include <optional>
#include <utility>
#include <vector>

#include <nqcommon/common/NQCancelInfo.h>

#include "interrupt.h"
#include "merge_tree.h"
#include "pack.h"
#include "progress.h"
#include "ranks.h"
#include "source.h"

namespace support {

class CsvFile;

// The threads of a run and its ranks, and what all of them must hear of: the user's wish to end, a
// failure, progress.
//
// Results   depend on the source and not on the number of threads or ranks: see MergeTree.
// Failure   Chunks are begun in order and those before one that failed are finished, so that the
//           first bad line of the source is the one that is named, however many there are at work.
//           All ranks throw the same.
class Team {
 public:
  // `query` is asked before each chunk whether to go on; it may be null, as `ranks` where there is
  // one process. `passes` is the number of passes that the progress bar shows as one.
  explicit Team(int threads, NQCommon_940::NQQueryCancel* query = nullptr, int passes = 1,
                Ranks* ranks = nullptr)
      : fThreads(std::max(threads, 1)), fQuery(query), fPasses(passes), fRanks(ranks) {}

  // Calls load(chunk number, worker), and work with the same arguments where that is true, for each
  // chunk of this rank, at most once at a time for each worker, who are numbered from 0 to
  // Threads() - 1. Chunks of a source that is read in order are loaded one after the other.
  using Step = std::function<bool(std::uint64_t chunk, int worker)>;
  void ForEachChunk(Source& source, const Step& load,
                    const std::function<void(std::uint64_t chunk, int worker)>& work);

  // Makes a Part of each chunk by make(chunk) and merges them. The source has a chunk at least.
  template <class Part, class Make>
  Part Gather(Source& source, const Make& make) {
    MergeTree<Part> tree;
    std::vector<Chunk> chunks(static_cast<std::size_t>(fThreads));
    const auto of = [&](int worker) -> Chunk& { return chunks[static_cast<std::size_t>(worker)]; };
    ForEachChunk(
        source, [&](std::uint64_t number, int worker) { return source.Load(number, of(worker)); },
        [&](std::uint64_t number, int worker) { tree.Add(number, make(of(worker))); });
    if (fRanks) Join(tree, *source.ChunkCount());
    return std::move(*tree.Take());
  }

  // Counts the quotes of the file, without which its chunks cannot be loaded.
  void FindQuotes(CsvFile& file);

  int Threads() const { return fThreads; }
  NQCommon_940::NQQueryCancel* Query() const { return fQuery; }

 private:
  template <class Part>
  static std::vector<char> Packed(MergeTree<Part>& tree) {
    Packer packer;
    std::size_t size = tree.Nodes().size();
    packer(size);
    for (auto& [first, node] : tree.Nodes()) {
      std::uint64_t chunk = first;
      packer(chunk);
      packer(node.level);
      packer(node.part);
    }
    return packer.Result();
  }

  template <class Part>
  static void AddPacked(const std::vector<char>& list, MergeTree<Part>& tree) {
    Unpacker unpacker(list.data());
    std::size_t size = 0;
    unpacker(size);
    for (; size > 0; --size) {
      std::uint64_t chunk = 0;
      typename MergeTree<Part>::Node node;
      unpacker(chunk);
      unpacker(node.level);
      unpacker(node.part);
      tree.AddNode(chunk, std::move(node));
    }
  }

  // A list of n chunks has 2 log2(n) nodes at most. Where all parts are of one length, that tells
  // how long the longest list will be.
  template <class Part>
  void Join(MergeTree<Part>& tree, std::uint64_t chunks) {
    const std::vector<char> list = Packed(tree);
    std::uint64_t most = ~std::uint64_t{0};
    if constexpr (Part::kIsOfOneLength) {
      const std::uint64_t nodes = std::max<std::uint64_t>(tree.Nodes().size(), 1);
      most = fRanks->Largest((list.size() + nodes - 1) / nodes) *
             (2 * static_cast<std::uint64_t>(std::bit_width(chunks)) + 1);
    }
    tree.Nodes().clear();
    AddPacked(fRanks->Reduce(list, most,
                             [](const std::vector<char>& left, const std::vector<char>& right) {
                               MergeTree<Part> joined;
                               AddPacked(left, joined);
                               AddPacked(right, joined);
                               return Packed(joined);
                             }),
              tree);
  }

  int fThreads;
  NQCommon_940::NQQueryCancel* fQuery;
  int fPasses;
  Ranks* fRanks;
  int fPassesDone = 0;
  std::optional<Progress> fProgress;
};

}  // namespace support
