#include <nqcommon/math/matrix/NQBitSet.h>

#include <algorithm>
#include <functional>
#include <limits>
#include <utility>

#include <nqcommon/common/display.h>
#include <nqcommon/common/memory_guard.h>

namespace NQMath_940 {
namespace {

using Bits = std::vector<bool>;

constexpr std::size_t kMaxSize = std::numeric_limits<int>::max();

Bits::difference_type Offset(int i) { return i; }

int CountTrue(Bits::const_iterator first, Bits::const_iterator last) {
  return static_cast<int>(std::count(first, last, true));
}

}  // namespace

NQBitSet& NQBitSet::operator=(const NQBitSet& other) noexcept {
  if (!NQCommon_940::GuardMemory([&] { fbVec = other.fbVec; })) fbVec.clear();
  return *this;
}

bool NQBitSet::SetSize(std::size_t n, bool b) {
  return n <= kMaxSize && NQCommon_940::GuardMemory([&] { fbVec.resize(n, b); });
}

void NQBitSet::Resize(int n, bool b) {
  fbVec.clear();
  if (n > 0) SetSize(static_cast<std::size_t>(n), b);
}

int NQBitSet::Append(bool b) {
  SetSize(fbVec.size() + 1, b);
  return Size();
}

bool NQBitSet::Duplicate(int k) {
  const std::size_t n = fbVec.size();
  if (k < 0 || !SetSize(n * (static_cast<std::size_t>(k) + 1), false)) return false;
  for (std::size_t i = n; i < fbVec.size(); ++i) fbVec[i] = fbVec[i - n];
  return true;
}

bool NQBitSet::SetRange(int from, int to, bool b) {
  if (!IsRange(from, to)) return false;
  std::fill(fbVec.begin() + from, fbVec.begin() + Offset(to) + 1, b);
  return true;
}

bool NQBitSet::SetSubset(std::vector<int> indices, bool b) {
  const auto isIndex = [this](int i) { return IsIndex(i); };
  if (!std::all_of(indices.begin(), indices.end(), isIndex)) return false;
  for (const int i : indices) Set(i, b);
  return true;
}

bool NQBitSet::Set(std::vector<bool> bits) {
  if (bits.size() > kMaxSize) return false;
  fbVec = std::move(bits);
  return true;
}

void NQBitSet::Clear() { std::fill(fbVec.begin(), fbVec.end(), false); }

int NQBitSet::InSet() const { return CountTrue(fbVec.begin(), fbVec.end()); }

int NQBitSet::InRange(int from, int to) const {
  return IsRange(from, to) ? InRangeS(from, to - from + 1) : -1;
}

int NQBitSet::InRangeS(int start, int count) const {
  if (start < 0 || count < 0 || start > Size() - count) return -1;
  const auto first = fbVec.begin() + start;
  return CountTrue(first, first + count);
}

bool NQBitSet::GetMembers(std::vector<int>& out) const {
  return NQCommon_940::GuardMemory([&] {
    std::vector<int> members;
    members.reserve(static_cast<std::size_t>(InSet()));
    for (int i = 0; i < Size(); ++i) {
      if (IsIn(i)) members.push_back(i);
    }
    out = std::move(members);
  });
}

NQBitSet NQBitSet::GetSubset(int from, int to) const {
  const int first = std::max(from, 0);
  const int last = std::min(to, Size() - 1);
  NQBitSet subset;
  if (first <= last && subset.SetSize(static_cast<std::size_t>(last - first) + 1, false))
    std::copy(fbVec.begin() + first, fbVec.begin() + Offset(last) + 1, subset.fbVec.begin());
  return subset;
}

template <class Op>
void NQBitSet::Combine(const NQBitSet& a, const NQBitSet& b, Op op) {
  const std::size_t n = std::min(a.fbVec.size(), b.fbVec.size());
  // An operand that is this set is at least n long, so it can only shrink here.
  if (!SetSize(n, false)) return fbVec.clear();
  std::transform(a.fbVec.begin(), a.fbVec.begin() + static_cast<Bits::difference_type>(n),
                 b.fbVec.begin(), fbVec.begin(), op);
}

void NQBitSet::DoAND(const NQBitSet& a, const NQBitSet& b) { Combine(a, b, std::logical_and<>()); }

void NQBitSet::DoOR(const NQBitSet& a, const NQBitSet& b) { Combine(a, b, std::logical_or<>()); }

bool NQBitSet::IsNewFalse(const NQBitSet& other, int n) const {
  const int end = std::min(n, Size());
  for (int i = 0; i < end; ++i)
    if (IsIn(i) && !other.IsIn(i)) return true;
  return false;
}

void NQBitSet::Display() const {
  NQCommon_940::GuardMemory([this] {
    NQDisplay_940::DisplayText(1, "NQBitSet display start");
    NQDisplay_940::DisplayBV("fbVec", fbVec);
    NQDisplay_940::DisplayText(1, "NQBitSet display end");
  });
}

}  // namespace NQMath_940
