#include <nqcommon/math/kernels/tridiagonal_kernels.h>

#include <nqcommon/math/kernels/packed_triangle.h>

#include <cstdint>

namespace NQMath_940::internal {
namespace {

// NOLINTNEXTLINE(bugprone-macro-parentheses): the name of a file
#define NQ_KERNELS <nqcommon/math/kernels/tridiagonal_kernels.inc>
#include <nqcommon/math/kernels/vector_targets.inc>

}  // namespace

const TridiagonalKernels& TridiagonalKernelsFor(Isa isa) {
  return ChooseKernels(isa, baseline::kKernels, avx2::kKernels, avx512::kKernels);
}

}  // namespace NQMath_940::internal
