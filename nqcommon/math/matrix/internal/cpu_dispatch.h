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

}  // namespace NQMath_940::internal
