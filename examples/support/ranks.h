// The processes of a run on several machines.
#pragma once

#include <algorithm>
#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace support {

// Every rank calls the same operations in the same order.
class Ranks {
 public:
  // Puts the list of the run right behind another into one list.
  using Join = std::function<std::vector<char>(const std::vector<char>& left,
                                               const std::vector<char>& right)>;

  virtual ~Ranks() = default;

  virtual int Rank() const = 0;
  virtual int Count() const = 0;

  // The lists of all ranks joined in the order of the ranks; every rank has the result. No list on
  // the way is longer than `mostBytes` or than all lists together.
  virtual std::vector<char> Reduce(const std::vector<char>& list, std::uint64_t mostBytes,
                                   const Join& join) = 0;
  // The largest of the ranks' numbers.
  virtual std::uint64_t Largest(std::uint64_t number) = 0;
  // The first failure: that of the least place, kNowhere being none. Every rank has its message.
  static constexpr std::uint64_t kNowhere = ~std::uint64_t{0};
  virtual std::uint64_t FirstFailure(std::uint64_t place, std::string& message) = 0;

  // Ends all ranks, for a failure that the others cannot know of.
  virtual void Abort(int status) = 0;

  // The chunks of this rank among so many: a contiguous run.
  std::pair<std::uint64_t, std::uint64_t> RunOf(std::uint64_t chunks) const {
    const auto count = static_cast<std::uint64_t>(Count());
    const auto rank = static_cast<std::uint64_t>(Rank());
    const auto start = [&](std::uint64_t r) {
      return chunks / count * r + std::min(r, chunks % count);
    };
    return {start(rank), start(rank + 1)};
  }
};

}  // namespace support
