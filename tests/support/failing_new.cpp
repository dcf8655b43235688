#include "support/failing_new.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <new>

namespace {

// One thread at a time; zero-initialised, since operator new runs before any constructor.
std::size_t countdown = 0;
bool isCounting = false;
bool failsOn = false;
bool hasFailed = false;

bool MustFail() {
  if (!isCounting) return false;
  if (hasFailed) return failsOn;
  if (--countdown > 0) return false;
  hasFailed = true;
  return true;
}

void* Allocate(std::size_t size, std::size_t alignment) noexcept {
  if (MustFail()) return nullptr;
  if (size == 0) size = 1;
  if (alignment <= __STDCPP_DEFAULT_NEW_ALIGNMENT__) return std::malloc(size);
  return std::aligned_alloc(alignment, (size + alignment - 1) / alignment * alignment);
}

void* AllocateOrThrow(std::size_t size, std::size_t alignment) {
  if (void* const memory = Allocate(size, alignment)) return memory;
  throw std::bad_alloc();
}

}  // namespace

// All forms are here: those that a sanitizer brings would not call the plain ones.
void* operator new(std::size_t size) { return AllocateOrThrow(size, 1); }
void* operator new[](std::size_t size) { return AllocateOrThrow(size, 1); }
void* operator new(std::size_t size, std::align_val_t alignment) {
  return AllocateOrThrow(size, static_cast<std::size_t>(alignment));
}
void* operator new[](std::size_t size, std::align_val_t alignment) {
  return AllocateOrThrow(size, static_cast<std::size_t>(alignment));
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return Allocate(size, 1); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return Allocate(size, 1); }
void* operator new(std::size_t size, std::align_val_t alignment, const std::nothrow_t&) noexcept {
  return Allocate(size, static_cast<std::size_t>(alignment));
}
void* operator new[](std::size_t size, std::align_val_t alignment, const std::nothrow_t&) noexcept {
  return Allocate(size, static_cast<std::size_t>(alignment));
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete(void* memory, std::align_val_t) noexcept { std::free(memory); }
void operator delete[](void* memory, std::align_val_t) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t, std::align_val_t) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t, std::align_val_t) noexcept { std::free(memory); }

namespace nqtest {

void Injection::Start() {
  countdown = fAllocation;
  failsOn = fMode == Failing::kFromThenOn;
  hasFailed = false;
  isCounting = true;
}

void Injection::Stop() {
  isCounting = false;
  fFailed = hasFailed;
}

void RunMemoryCases(const std::string& title, const std::vector<MemoryCase>& cases) {
  std::size_t injected = 0;
  std::size_t findings = 0;
  for (const MemoryCase& row : cases) {
    for (const Failing mode : {Failing::kOnce, Failing::kFromThenOn}) {
      bool reached = true;
      for (std::size_t k = 1; reached; ++k) {
        Injection inject(k, mode);
        const Verdict verdict = row.run(inject);
        reached = inject.HasFailed();
        injected += reached ? 1 : 0;
        const bool escaped = inject.Threw() && !(row.mayThrow && reached);
        if (verdict.isRight && !escaped) continue;
        ++findings;
        ADD_FAILURE() << row.operation << ": allocation " << k
                      << (mode == Failing::kOnce ? " fails once" : " and all after it fail")
                      << (reached ? "" : " (not reached)") << (escaped ? ": throws" : ": wrong")
                      << (verdict.got.empty() ? "" : ": got ") << verdict.got;
        if (findings >= 200) return;
      }
    }
  }
  std::printf("%s: %zu operations, %zu failed allocations, %zu findings\n", title.c_str(),
              cases.size(), injected, findings);
}

}  // namespace nqtest
