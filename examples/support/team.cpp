#include "team.h"

#include <atomic>
#include <exception>
#include <mutex>
#include <stdexcept>
#include <string>
#include <thread>

#include "csv_file.h"
#include "text.h"

namespace support {
namespace {

constexpr std::uint64_t kUnknown = ~std::uint64_t{0};

// The failure of a chunk as a message, a bad line by its place in the source.
std::string MessageOf(const std::exception_ptr& failure, Source& source, std::uint64_t chunk) {
  try {
    std::rethrow_exception(failure);
  } catch (const DataError& error) {
    const std::string column = error.column.empty() ? "" : ", column " + Quoted(error.column);
    return source.PlaceOf(chunk, error.line) + column + ": " + error.message;
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

void Team::ForEachChunk(Source& source, const Step& load,
                        const std::function<void(std::uint64_t chunk, int worker)>& work) {
  const bool inOrder = source.IsReadInOrder();
  if (fRanks && inOrder)
    throw std::runtime_error("ranks cannot share a database; one process can read it");
  const std::optional<std::uint64_t> known = source.ChunkCount();
  const std::uint64_t count = known.value_or(kUnknown);
  const auto [begin, end] = fRanks ? fRanks->RunOf(count) : std::pair{std::uint64_t{0}, count};
  const std::uint64_t size = end - begin;
  const auto passes = static_cast<std::uint64_t>(fPasses),
             pass = static_cast<std::uint64_t>(fPassesDone++);
  if (!fProgress && known) fProgress.emplace(size * passes);
  std::mutex mutex, turn;
  std::atomic<std::uint64_t> next = begin, done = 0;
  std::atomic<std::uint64_t> stop = end;  // this chunk and those behind it need not be begun
  std::exception_ptr failure;
  const auto stopAt = [&](std::uint64_t chunk, const std::exception_ptr& reason = nullptr) {
    const std::lock_guard lock(mutex);
    if (chunk >= stop) return;
    stop = chunk;
    failure = reason;
  };
  const auto run = [&](int worker) {
    NQMath_940::NQCancelInfo cancel(fQuery);
    while (true) {
      std::unique_lock order(turn, std::defer_lock);
      if (inOrder) order.lock();
      const std::uint64_t chunk = next++;
      if (chunk >= stop) return;
      try {
        if (cancel.IsCancel()) Interrupt::Check();
        if (!load(chunk, worker)) {
          stopAt(chunk);
          return;
        }
        if (inOrder) order.unlock();
        work(chunk, worker);
        ++done;
        if (worker == 0 && fProgress) fProgress->Show(size * pass + done);
      } catch (...) {
        stopAt(chunk, std::current_exception());
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
      message = MessageOf(failure, source, stop);
    else
      source.CheckUnchanged();
  } catch (const std::runtime_error& error) {
    message = error.what();
    failure = std::current_exception();
  }
  std::uint64_t place = failure ? stop.load() : Ranks::kNowhere;
  if (fRanks) place = fRanks->FirstFailure(place, message);
  if (place != Ranks::kNowhere) throw std::runtime_error(message);
}

void Team::FindQuotes(CsvFile& file) {
  std::vector<std::vector<char>> buffers(static_cast<std::size_t>(fThreads));
  const int passesDone = fPassesDone;
  MergeTree<QuotesPart> tree;
  ForEachChunk(
      file, [](std::uint64_t, int) { return true; },
      [&](std::uint64_t chunk, int worker) {
        const bool odd = file.CountQuotes(chunk, buffers[static_cast<std::size_t>(worker)]);
        tree.Add(chunk, {{static_cast<char>(odd)}});
      });
  fPassesDone = passesDone;
  if (fRanks) Join(tree, *file.ChunkCount());
  const QuotesPart all = std::move(*tree.Take());
  file.SetQuotes({all.odd.begin(), all.odd.end()});
}

}  // namespace support
