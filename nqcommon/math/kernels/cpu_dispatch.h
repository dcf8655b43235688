// What the processor offers: which form of the vector kernels runs, and how large its caches are.
#pragma once

#include <cstddef>

namespace NQMath_940::internal {

// In increasing order: each one runs everything the ones before it do.
enum class Isa { kBaseline, kAvx2, kAvx512 };

// "baseline", "avx2" or "avx512".
const char* NameOf(Isa isa);

// The newest instruction set that has kernels of its own and that both the processor and the
// operating system offer, or the one set by LimitIsa when that is less.
Isa BestIsa();

// Lowers BestIsa of the whole process to `most`, so that tests and benchmarks reach every form
// through the classes too.
void LimitIsa(Isa most);

// The form of `wanted`, or of the best instruction set of this machine when that is less.
template <class Kernels>
const Kernels& ChooseKernels(Isa wanted, const Kernels& baseline, const Kernels& avx2,
                             const Kernels& avx512) {
  switch (wanted < BestIsa() ? wanted : BestIsa()) {
    case Isa::kAvx512:
      return avx512;
    case Isa::kAvx2:
      return avx2;
    default:
      return baseline;
  }
}

// Data caches that one core can use, in bytes; what the system does not tell is taken for 32 KiB,
// 512 KiB and 4 MiB.
struct CacheSizes {
  std::size_t l1;
  std::size_t l2;
  std::size_t l3;
};
const CacheSizes& Caches();

}  // namespace NQMath_940::internal
