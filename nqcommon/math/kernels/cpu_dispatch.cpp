#include <nqcommon/math/kernels/cpu_dispatch.h>

#include <unistd.h>

#include <atomic>

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

std::atomic<Isa>& Best() {
  static std::atomic<Isa> best = DetectIsa();
  return best;
}

CacheSizes DetectCaches() {
  CacheSizes sizes{32 << 10, 512 << 10, 4 << 20};
#if defined(_SC_LEVEL1_DCACHE_SIZE)
  const auto ask = [](int what, std::size_t& size) {
    if (const long bytes = sysconf(what); bytes > 0) size = static_cast<std::size_t>(bytes);
  };
  ask(_SC_LEVEL1_DCACHE_SIZE, sizes.l1);
  ask(_SC_LEVEL2_CACHE_SIZE, sizes.l2);
  ask(_SC_LEVEL3_CACHE_SIZE, sizes.l3);
#endif
  return sizes;
}

}  // namespace

const char* NameOf(Isa isa) {
  return isa == Isa::kAvx512 ? "avx512" : isa == Isa::kAvx2 ? "avx2" : "baseline";
}

Isa BestIsa() { return Best().load(std::memory_order_relaxed); }

void LimitIsa(Isa most) {
  if (most < BestIsa()) Best().store(most, std::memory_order_relaxed);
}

const CacheSizes& Caches() {
  static const CacheSizes sizes = DetectCaches();
  return sizes;
}

}  // namespace NQMath_940::internal
