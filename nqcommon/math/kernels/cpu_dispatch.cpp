#include <nqcommon/math/kernels/cpu_dispatch.h>

namespace NQMath_940::internal {
namespace {

Isa DetectIsa() {
#if defined(__x86_64__)
  // The compiler's runtime answers for the operating system too: registers that it does not save
  // are reported as missing.
  __builtin_cpu_init();
  if (__builtin_cpu_supports("avx512f")) return Isa::kAvx512;
  if (__builtin_cpu_supports("avx2")) return Isa::kAvx2;
#endif
  return Isa::kBaseline;
}

}  // namespace

Isa BestIsa() {
  static const Isa best = DetectIsa();
  return best;
}

Isa UsableIsa(Isa wanted) { return wanted < BestIsa() ? wanted : BestIsa(); }

}  // namespace NQMath_940::internal
