#include "team.h"

#include <atomic>
#include <exception>
#include <mutex>
#include <stdexcept>
#include <string>
#include <thread>

#include "text.h"

namespace support {
namespace {

// The failure of a chunk as a message, a bad line by its number in the file.
std::string MessageOf(const std::exception_ptr& failure, const CsvFile& file, std::uint64_t chunk) {
  try {
    std::rethrow_exception(failure);
  } catch (const DataError& error) {
    const std::string column = error.column.empty() ? "" : ", column " + Quoted(error.column);
    return "line " + std::to_string(file.LineInFile(chunk, error.line)) + column + ": " +
           error.message;
  } catch (const std::exception& error) {
    return error.what();
  }
}

// The quotes of a run of chunks: those that have an odd number.
struct QuotesPart {
  static constexpr bool kIsOfOneLength = false;
  std::vector<char> odd;

  void Merge(QuotesPart&& right) { odd.insert(odd.end(), right.odd.begin(), right.odd.end()); }
  template <class A>
  void Transfer(A& a) {
    a(odd);
  }
};

}  // namespace

void Team::ForEachChunk(const CsvFile& file,
                        const std::function<void(std::uint64_t chunk, int worker)>& work) {
  const std::uint64_t count = file.ChunkCount();
  const auto [begin, end] = fRanks ? fRanks->RunOf(count) : std::pair{std::uint64_t{0}, count};
  const std::uint64_t size = end - begin;
  if (!fProgress) fProgress.emplace(size * static_cast<std::uint64_t>(fPasses));
  const std::uint64_t doneBefore = size * static_cast<std::uint64_t>(fPassesDone++);
  std::mutex mutex;
  std::atomic<std::uint64_t> next = begin, done = 0;
  std::atomic<std::uint64_t> firstFailed = end;  // chunks behind it need not be begun
  std::exception_ptr failure;
  const auto run = [&](int worker) {
    NQMath_940::NQCancelInfo cancel(fQuery);
    while (true) {
      const std::uint64_t chunk = next++;
      if (chunk >= firstFailed) return;
      try {
        if (cancel.IsCancel()) Interrupt::Check();
        work(chunk, worker);
        ++done;
        if (worker == 0) fProgress->Show(doneBefore + done);
      } catch (...) {
        const std::lock_guard lock(mutex);
        if (chunk >= firstFailed) continue;
        firstFailed = chunk;
        failure = std::current_exception();
      }
    }
  };
  {
    const auto most = std::min<std::uint64_t>(static_cast<std::uint64_t>(fThreads), size);
    std::vector<std::jthread> helpers;
    for (int i = 1; i < static_cast<int>(most); ++i) helpers.emplace_back(run, i);
    run(0);
  }
  if (fPassesDone >= fPasses || failure) fProgress.reset();
  if (failure && !fRanks) Interrupt::Check();
  std::string message;
  try {
    if (failure)
      message = MessageOf(failure, file, firstFailed);
    else
      file.CheckUnchanged();
  } catch (const std::runtime_error& error) {
    message = error.what();
    failure = std::current_exception();
  }
  std::uint64_t place = failure ? firstFailed.load() : Ranks::kNowhere;
  if (fRanks) place = fRanks->FirstFailure(place, message);
  if (place != Ranks::kNowhere) throw std::runtime_error(message);
}

void Team::FindQuotes(CsvFile& file) {
  std::vector<std::vector<char>> buffers(static_cast<std::size_t>(fThreads));
  const int passesDone = fPassesDone;
  MergeTree<QuotesPart> tree;
  ForEachChunk(file, [&](std::uint64_t chunk, int worker) {
    const bool odd = file.CountQuotes(chunk, buffers[static_cast<std::size_t>(worker)]);
    tree.Add(chunk, {{static_cast<char>(odd)}});
  });
  fPassesDone = passesDone;
  if (fRanks) Join(tree, file.ChunkCount());
  const QuotesPart all = std::move(*tree.Take());
  file.SetQuotes({all.odd.begin(), all.odd.end()});
}

}  // namespace support
