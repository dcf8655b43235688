// A progress bar on standard error.
#pragma once

#include <chrono>
#include <cstdint>

namespace support {

// Shown when standard error is a terminal and the work takes long enough to wonder about; wiped off
// at the end.
class Progress {
 public:
  explicit Progress(std::uint64_t total);
  ~Progress();
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  void Show(std::uint64_t done) {
    if (fOnTerminal && done >= fNext) Draw(done);
  }

 private:
  void Draw(std::uint64_t done);

  std::uint64_t fTotal;
  std::uint64_t fNext = 0;
  bool fOnTerminal;
  bool fDrawn = false;
  std::chrono::steady_clock::time_point fStart = std::chrono::steady_clock::now();
};

}  // namespace support
