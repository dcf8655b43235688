// The reader of variable lists on any bytes.
#include "seeded_mutator.h"
#include "support/variable_list_checks.h"

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t maxSize, unsigned random) {
  static const std::vector<std::string> seeds = nqtest::VariableListSeeds();
  return nqtest::MutateOrSeed(seeds, data, size, maxSize, random);
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  nqtest::CheckVariableListReader(std::string(reinterpret_cast<const char*>(data), size));
  return 0;
}
