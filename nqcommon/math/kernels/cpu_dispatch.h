// Which form of the vector kernels runs: chosen once from what the processor and the operating
// system offer, and lowered on request so that tests reach every form.
#pragma once

namespace NQMath_940::internal {

// In increasing order: each one runs everything the ones before it do.
enum class Isa { kBaseline, kAvx2, kAvx512 };

// The newest instruction set of this machine that has kernels of its own.
Isa BestIsa();

// `wanted`, or the best this machine has when that is less.
Isa UsableIsa(Isa wanted);

// The form of that instruction set.
template <class Kernels>
const Kernels& ChooseKernels(Isa wanted, const Kernels& baseline, const Kernels& avx2,
                             const Kernels& avx512) {
  switch (UsableIsa(wanted)) {
    case Isa::kAvx512:
      return avx512;
    case Isa::kAvx2:
      return avx2;
    default:
      return baseline;
  }
}

}  // namespace NQMath_940::internal
