#include "progress.h"

#include <unistd.h>

#include <algorithm>
#include <iostream>
#include <string>

namespace support {

Progress::Progress(std::uint64_t total)
    : fTotal(std::max<std::uint64_t>(total, 1)), fOnTerminal(isatty(STDERR_FILENO) == 1) {}

Progress::~Progress() {
  if (fDrawn) std::cerr << "\r\033[K" << std::flush;
}

void Progress::Draw(std::uint64_t done) {
  constexpr std::size_t kWidth = 40;
  fNext = done + fTotal / 200;
  if (std::chrono::steady_clock::now() - fStart < std::chrono::milliseconds(300)) return;
  fDrawn = true;
  const double share = std::min(1.0, static_cast<double>(done) / static_cast<double>(fTotal));
  std::string bar(kWidth, ' ');
  std::fill_n(bar.begin(), static_cast<int>(share * kWidth), '#');
  std::cerr << '\r' << '[' << bar << "] " << static_cast<int>(100 * share) << '%' << std::flush;
}

}  // namespace support
