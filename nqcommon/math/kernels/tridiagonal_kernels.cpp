#include <nqcommon/math/kernels/tridiagonal_kernels.h>

#include <nqcommon/math/kernels/packed_triangle.h>

// A fused multiply-add rounds once where two operations round twice: the forms would differ.
#if defined(__clang__)
#pragma STDC FP_CONTRACT OFF
#endif

namespace NQMath_940::internal {
namespace {

// 8 of the 16 registers hold the parts of the sums of two rows.
namespace baseline {
#define NQ_TARGET
constexpr std::size_t kLanes = 2;
constexpr std::size_t kRows = 2;
#include <nqcommon/math/kernels/tridiagonal_kernels.inc>
#undef NQ_TARGET
}  // namespace baseline

#if defined(__x86_64__)
namespace avx2 {
#define NQ_TARGET __attribute__((target("avx2")))
constexpr std::size_t kLanes = 4;
constexpr std::size_t kRows = 2;
#include <nqcommon/math/kernels/tridiagonal_kernels.inc>
#undef NQ_TARGET
}  // namespace avx2

// 32 registers: the factors of four rows stay in them too.
namespace avx512 {
#define NQ_TARGET __attribute__((target("avx512f")))
constexpr std::size_t kLanes = 8;
constexpr std::size_t kRows = 4;
#include <nqcommon/math/kernels/tridiagonal_kernels.inc>
#undef NQ_TARGET
}  // namespace avx512
#else
namespace avx2 = baseline;
namespace avx512 = baseline;
#endif

}  // namespace

const TridiagonalKernels& TridiagonalKernelsFor(Isa isa) {
  return ChooseKernels(isa, baseline::kKernels, avx2::kKernels, avx512::kKernels);
}

}  // namespace NQMath_940::internal
