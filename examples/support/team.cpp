#include "team.h"

#include <algorithm>
#include <stdexcept>

#include "text.h"

namespace support {

void Team::ForEachChunk(const CsvFile& file,
                        const std::function<void(std::uint64_t chunk, int worker)>& work) {
  const std::uint64_t count = file.ChunkCount();
  if (!fProgress) fProgress.emplace(count * static_cast<std::uint64_t>(fPasses));
  const std::uint64_t doneBefore = count * static_cast<std::uint64_t>(fPassesDone++);
  std::mutex mutex;
  std::atomic<std::uint64_t> next = 0, done = 0;
  std::atomic<std::uint64_t> firstFailed = count;  // chunks behind it need not be begun
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
  const int helpers =
      static_cast<int>(std::min<std::uint64_t>(static_cast<std::uint64_t>(fThreads), count)) - 1;
  {
    std::vector<std::jthread> threads;
    for (int i = 1; i <= helpers; ++i) threads.emplace_back(run, i);
    run(0);
  }
  if (fPassesDone >= fPasses || failure) fProgress.reset();
  if (!failure) return;
  try {
    std::rethrow_exception(failure);
  } catch (const DataError& error) {
    const std::int64_t line = file.LineInFile(firstFailed, error.line);
    const std::string column = error.column.empty() ? "" : ", column " + Quoted(error.column);
    throw std::runtime_error("line " + std::to_string(line) + column + ": " + error.message);
  }
}

void Team::FindQuotes(CsvFile& file) {
  std::vector<char> odd(file.ChunkCount());  // not bits, which threads cannot write side by side
  std::vector<std::vector<char>> buffers(static_cast<std::size_t>(fThreads));
  const int passesDone = fPassesDone;
  ForEachChunk(file, [&](std::uint64_t chunk, int worker) {
    odd[chunk] = file.CountQuotes(chunk, buffers[static_cast<std::size_t>(worker)]);
  });
  fPassesDone = passesDone;
  file.SetQuotes({odd.begin(), odd.end()});
}

}  // namespace support
