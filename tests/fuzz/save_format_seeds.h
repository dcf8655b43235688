// The fuzzer of the save format begins with the table of seeds.
#pragma once

#include "seeded_mutator.h"
#include "support/save_format_checks.h"

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t maxSize, unsigned random) {
  return nqtest::MutateOrSeed(nqtest::kSaveFormatSeeds, data, size, maxSize, random);
}
