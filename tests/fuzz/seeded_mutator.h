// Lets a fuzzer begin with seeds that the program makes, without a folder of files: now and then an
// input is replaced by a seed instead of being mutated.
#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t maxSize);

namespace nqtest {

// For LLVMFuzzerCustomMutator.
inline std::size_t MutateOrSeed(const std::vector<std::string>& seeds, std::uint8_t* data,
                                std::size_t size, std::size_t maxSize, unsigned random) {
  if (random % 256 != 0) return LLVMFuzzerMutate(data, size, maxSize);
  const std::string& seed = seeds[random / 256 % seeds.size()];
  const std::size_t length = std::min(seed.size(), maxSize);
  std::copy_n(seed.begin(), length, data);
  return length;
}

}  // namespace nqtest
