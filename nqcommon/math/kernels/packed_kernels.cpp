#include <nqcommon/math/kernels/packed_kernels.h>

// A fused multiply-add rounds once where two operations round twice: the forms would differ.
#if defined(__clang__)
#pragma STDC FP_CONTRACT OFF
#endif

namespace NQMath_940::internal {
namespace {

// Vectors of 128 bits, which every 64-bit processor of today has; 8 registers hold the tile.
namespace baseline {
#define NQ_TARGET
constexpr std::size_t kLanes = 2;
constexpr std::size_t kRows = 4;
#include <nqcommon/math/kernels/packed_kernels.inc>
#undef NQ_TARGET
}  // namespace baseline

#if defined(__x86_64__)
// 8 of the 16 registers hold the tile.
namespace avx2 {
#define NQ_TARGET __attribute__((target("avx2")))
constexpr std::size_t kLanes = 4;
constexpr std::size_t kRows = 4;
#include <nqcommon/math/kernels/packed_kernels.inc>
#undef NQ_TARGET
}  // namespace avx2

// 16 of the 32 registers hold the tile.
namespace avx512 {
#define NQ_TARGET __attribute__((target("avx512f")))
constexpr std::size_t kLanes = 8;
constexpr std::size_t kRows = 8;
#include <nqcommon/math/kernels/packed_kernels.inc>
#undef NQ_TARGET
}  // namespace avx512
#else
namespace avx2 = baseline;
namespace avx512 = baseline;
#endif

}  // namespace

const PackedKernels& KernelsFor(Isa isa) {
  return ChooseKernels(isa, baseline::kKernels, avx2::kKernels, avx512::kKernels);
}

}  // namespace NQMath_940::internal
