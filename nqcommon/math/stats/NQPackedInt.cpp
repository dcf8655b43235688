#include <nqcommon/math/stats/NQPackedInt.h>

#include <algorithm>
#include <cmath>
#include <new>

#include <nqcommon/common/display.h>
#include <nqcommon/math/stats/NQHashKey.h>

namespace NQMath_940 {
namespace {

// Unchecked values may leave the range of int: what is computed with them wraps around.
unsigned Wrap(int value) { return static_cast<unsigned>(value); }

bool SetSize(std::vector<int>& values, std::size_t size) {
  try {
    values.resize(size);
  } catch (const std::bad_alloc&) {
    return false;
  }
  return true;
}

}  // namespace

NQPackedInt::NQPackedInt(int n, int lowerBound, const std::vector<int>& nDiffValues) {
  SetForSequence(n, lowerBound, nDiffValues);
}

bool NQPackedInt::SetForSequence(int n, int lowerBound, const std::vector<int>& nDiffValues) {
  const std::size_t size = n < 1 ? 0 : static_cast<std::size_t>(n);
  fLowerBound = lowerBound;
  fvNDiffValues.clear();
  if (size <= nDiffValues.size() && SetSize(fvNDiffValues, size))
    std::copy_n(nDiffValues.begin(), size, fvNDiffValues.begin());
  return Setup();
}

bool NQPackedInt::Setup() {
  const std::size_t n = fvNDiffValues.size();
  const auto isPositive = [](int number) { return number > 0; };
  if (n == 0 || !std::all_of(fvNDiffValues.begin(), fvNDiffValues.end(), isPositive) ||
      !SetSize(fvUnitIndex, n) || !SetSize(fvProduct, n)) {
    fvNDiffValues.clear();
    fvUnitIndex.clear();
    fvProduct.clear();
    return false;
  }
  const double limit = std::log(NQHashKey::GetElementUpperBound());
  double logSum = 0;
  int product = 1;
  int unit = 0;
  for (std::size_t i = 0; i < n; ++i) {
    const double logNumber = std::log(fvNDiffValues[i]);
    if (i > 0 && logSum + logNumber > limit) {
      ++unit;
      product = 1;
      logSum = 0;
    }
    product *= fvNDiffValues[i];
    logSum += logNumber;
    fvUnitIndex[i] = unit;
    fvProduct[i] = product;
  }
  return true;
}

int NQPackedInt::GetNDiffVal(int position) const {
  const auto i = static_cast<std::size_t>(position);  // a negative one is past every end
  return i < fvNDiffValues.size() ? fvNDiffValues[i] : -1;
}

bool NQPackedInt::Pack(const std::vector<int>& values, std::vector<int>& packed, bool check) const {
  const std::size_t n = fvNDiffValues.size();
  const auto nUnits = static_cast<std::size_t>(NUnits());
  if (n == 0 || values.size() < n) return false;
  for (std::size_t i = 0; check && i < n; ++i) {
    const long long code = static_cast<long long>(values[i]) - fLowerBound;
    if (code < 0 || code >= fvNDiffValues[i]) return false;
  }
  // The unit of a position has no higher index than it: one vector can be both.
  if (packed.size() < nUnits && !SetSize(packed, nUnits)) return false;
  unsigned sum = 0;
  unsigned multiplier = 1;
  for (std::size_t i = 0; i < n; ++i) {
    sum += (Wrap(values[i]) - Wrap(fLowerBound)) * multiplier;
    multiplier = Wrap(fvProduct[i]);
    if (!StartsUnit(i + 1)) continue;
    packed[static_cast<std::size_t>(fvUnitIndex[i])] = static_cast<int>(sum);
    sum = 0;
    multiplier = 1;
  }
  packed.resize(nUnits);
  return true;
}

bool NQPackedInt::Unpack(std::vector<int>& values, const std::vector<int>& packed) const {
  const std::size_t n = fvNDiffValues.size();
  if (n == 0 || packed.size() < static_cast<std::size_t>(NUnits())) return false;
  if (values.size() < n && !SetSize(values, n)) return false;
  int remaining = 0;
  for (std::size_t i = n; i-- > 0;) {
    if (StartsUnit(i + 1)) remaining = packed[static_cast<std::size_t>(fvUnitIndex[i])];
    int code = remaining;
    if (!StartsUnit(i)) {
      code = remaining / fvProduct[i - 1];
      remaining %= fvProduct[i - 1];
    }
    values[i] = static_cast<int>(Wrap(fLowerBound) + Wrap(code));
  }
  return true;
}

void NQPackedInt::Display() const {
  using namespace NQDisplay_940;
  DisplayText(1, "NQPackedInt display start");
  DisplayI("The sequence size", static_cast<int>(fvNDiffValues.size()));
  DisplayI("The lower bound", fLowerBound);
  DisplayIV("The vector of numbers of different values", fvNDiffValues);
  DisplayI("The number of packed storage units", NUnits());
  DisplayIV("The vector of packed storage unit indices", fvUnitIndex);
  DisplayIV("The vector of products", fvProduct);
  DisplayText(1, "NQPackedInt display end");
}

}  // namespace NQMath_940
