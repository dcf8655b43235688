#include <gtest/gtest.h>

#include <nqcommon/math/matrix/NQBitSet.h>

#include "support/failing_new.h"

namespace {

using namespace NQMath_940;
using nqtest::Injection;
using nqtest::MemoryCase;
using nqtest::Verdict;

const std::vector<MemoryCase> kBitSet = {
    {"NQBitSet(int)",
     [](Injection& inject) {
       int size = -1;
       inject([&] { size = NQBitSet(100).Size(); });
       return Verdict{size == (inject.HasFailed() ? 0 : 100)};
     }},
    {"NQBitSet::Resize",
     [](Injection& inject) {
       NQBitSet set(3);
       inject([&] { set.Resize(1000, true); });
       return Verdict{set.Size() == (inject.HasFailed() ? 0 : 1000)};
     }},
    {"NQBitSet::Append",
     [](Injection& inject) {
       NQBitSet set(64);
       int size = 0;
       inject([&] { size = set.Append(true); });
       return Verdict{size == set.Size() && size == (inject.HasFailed() ? 64 : 65)};
     }},
    {"NQBitSet::Duplicate",
     [](Injection& inject) {
       NQBitSet set(64);
       bool done = false;
       inject([&] { done = set.Duplicate(2); });
       return Verdict{set.Size() == (done ? 192 : 64) && done != inject.HasFailed()};
     }},
    {"NQBitSet::GetSubset",
     [](Injection& inject) {
       const NQBitSet set(200);
       NQBitSet part(1);
       inject([&] { part = set.GetSubset(10, 150); });
       return Verdict{part.Size() == (inject.HasFailed() ? 0 : 141)};
     }},
    {"NQBitSet::DoOR",
     [](Injection& inject) {
       const NQBitSet a(200), b(100);
       NQBitSet set;
       inject([&] { set.DoOR(a, b); });
       return Verdict{set.Size() == (inject.HasFailed() ? 0 : 100)};
     }},
};

TEST(Memory, BitSet) { nqtest::RunMemoryCases("NQBitSet", kBitSet); }

}  // namespace
