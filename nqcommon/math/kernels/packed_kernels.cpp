#include <nqcommon/math/kernels/packed_kernels.h>

namespace NQMath_940::internal {
namespace {

// NOLINTNEXTLINE(bugprone-macro-parentheses): the name of a file
#define NQ_KERNELS <nqcommon/math/kernels/packed_kernels.inc>
#include <nqcommon/math/kernels/vector_targets.inc>

}  // namespace

const PackedKernels& KernelsFor(Isa isa) {
  return ChooseKernels(isa, baseline::kKernels, avx2::kKernels, avx512::kKernels);
}

}  // namespace NQMath_940::internal
