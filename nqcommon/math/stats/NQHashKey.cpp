#include <nqcommon/math/stats/NQHashKey.h>

#include <limits>
#include <string>

#include <nqcommon/common/display.h>

namespace NQMath_940 {

using NQCommon_940::GuardMemory;

namespace {

constexpr int kElementLimit = 9377657;

// The term of element i in the hash.
unsigned Term(std::size_t i, int value, int offset) {
  constexpr auto& kPrimes = NQHashKey::PRIME_FACTOR;
  if (i == 0) return 0;
  return (static_cast<unsigned>(value) + static_cast<unsigned>(offset)) *
         static_cast<unsigned>(kPrimes[i % kPrimes.size()]);
}

unsigned Hash(const std::vector<int>& elements, int offset) {
  unsigned hash = 0;
  for (std::size_t i = 0; i < elements.size(); ++i) hash ^= Term(i, elements[i], offset);
  return hash;
}

}  // namespace

int NQHashKey::ADD_LOWER_BOUND = 0;

NQHashKey::NQHashKey(int size) : fOffset(ADD_LOWER_BOUND) {
  if (size > 0) GuardMemory([&] { fvElement->resize(static_cast<std::size_t>(size)); });
  fHash = Hash(*fvElement, fOffset);
}

void NQHashKey::Set(std::size_t i, int value) {
  if (fOffset != ADD_LOWER_BOUND) {
    fOffset = ADD_LOWER_BOUND;
    fHash = Hash(*fvElement, fOffset);
  }
  int& element = (*fvElement)[i];
  fHash ^= Term(i, element, fOffset) ^ Term(i, value, fOffset);
  element = value;
}

int NQHashKey::GetHash() const {
  const bool isCurrent = fOffset == ADD_LOWER_BOUND && !fvElement->empty();
  return static_cast<int>(isCurrent ? fHash : Hash(*fvElement, ADD_LOWER_BOUND));
}

bool NQHashKey::SetElementOffset(int offset) {
  const long long upperBound = static_cast<long long>(kElementLimit) - offset;
  if (upperBound < 1 || upperBound > std::numeric_limits<int>::max()) return false;
  ADD_LOWER_BOUND = offset;
  return true;
}

int NQHashKey::GetElementUpperBound() { return kElementLimit - ADD_LOWER_BOUND; }

void NQHashKey::Display() const {
  GuardMemory([&] {
    std::string line = "\t Key: ";
    for (const int element : *fvElement) line += "  " + std::to_string(element);
    NQDisplay_940::DisplayText(1, line);
  });
}

}  // namespace NQMath_940
