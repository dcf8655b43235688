// A pass over the chunks of a file by several threads, with one result.
#pragma once

#include <atomic>
#include <cstdint>
#include <exception>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include <nqcommon/common/NQCancelInfo.h>

#include "csv_file.h"
#include "interrupt.h"
#include "merge_tree.h"
#include "progress.h"

namespace support {

// The threads of a run, and what all of them must hear of: the user's wish to end, progress.
//
// Results   depend on the file and not on the number of threads: see MergeTree.
// Failure   Chunks are begun in order and those before one that failed are finished, so that the
//           first bad line of the file is the one that is named, however many threads there are.
class Team {
 public:
  // `query` is asked before each chunk whether to go on; it may be null. `passes` is the number of
  // passes that the progress bar shows as one.
  Team(int threads, NQCommon_940::NQQueryCancel* query, int passes = 1)
      : fThreads(threads < 1 ? 1 : threads), fQuery(query), fPasses(passes) {}

  // Calls work(chunk number, worker) for each chunk, at most once at a time for each worker, who
  // are numbered from 0 to Threads() - 1.
  void ForEachChunk(const CsvFile& file,
                    const std::function<void(std::uint64_t chunk, int worker)>& work);

  // Makes a Part of each chunk by make(reader's chunk) and merges them. Nothing for an empty file.
  template <class Part, class Make>
  Part Gather(const CsvFile& file, const Make& make) {
    MergeTree<Part> tree;
    std::vector<Chunk> chunks(static_cast<std::size_t>(fThreads));
    ForEachChunk(file, [&](std::uint64_t number, int worker) {
      Chunk& chunk = chunks[static_cast<std::size_t>(worker)];
      file.Load(number, chunk);
      tree.Add(number, make(chunk));
    });
    file.CheckUnchanged();
    return std::move(*tree.Take());
  }

  // Counts the quotes of the file, without which its chunks cannot be loaded.
  void FindQuotes(CsvFile& file);

  int Threads() const { return fThreads; }
  NQCommon_940::NQQueryCancel* Query() const { return fQuery; }

 private:
  int fThreads;
  NQCommon_940::NQQueryCancel* fQuery;
  int fPasses;
  int fPassesDone = 0;
  std::optional<Progress> fProgress;
};

}  // namespace support
