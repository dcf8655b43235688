#include <nqcommon/math/stats/NQPackedInt.h>

#include <algorithm>
#include <cmath>

#include <nqcommon/common/display.h>
#include <nqcommon/math/kernels/display_frame.h>
#include <nqcommon/math/stats/NQHashKey.h>

namespace NQMath_940 {

using NQCommon_940::GuardMemory;

namespace {

// An int as an unsigned number: sums and products of unchecked values may leave the range of int,
// and wrap around.
unsigned Wrap(int value) { return static_cast<unsigned>(value); }

bool SetSize(std::vector<int>& values, std::size_t size) {
  return GuardMemory([&] { values.resize(size); });
}

}  // namespace

NQPackedInt::NQPackedInt(int n, int lowerBound, const std::vector<int>& nDiffValues) {
  SetForSequence(n, lowerBound, nDiffValues);
}

bool NQPackedInt::SetForSequence(int n, int lowerBound, const std::vector<int>& nDiffValues) {
  const std::size_t size = n < 1 ? 0 : static_cast<std::size_t>(n);
  std::vector<Position>& positions = *fvPositions;
  fLowerBound = lowerBound;
  positions.clear();
  if (size <= nDiffValues.size()) GuardMemory([&] { positions.resize(size); });
  for (std::size_t i = 0; i < positions.size(); ++i) positions[i].nDiffValues = nDiffValues[i];
  return Setup();
}

bool NQPackedInt::Setup() {
  std::vector<Position>& positions = *fvPositions;
  const auto isPositive = [](const Position& position) { return position.nDiffValues > 0; };
  if (!std::all_of(positions.begin(), positions.end(), isPositive)) positions.clear();
  if (positions.empty()) return false;
  const double limit = std::log(NQHashKey::GetElementUpperBound());
  double logSum = 0;
  int product = 1;
  int unit = 0;
  for (std::size_t i = 0; i < positions.size(); ++i) {
    Position& position = positions[i];
    const double logNumber = std::log(position.nDiffValues);
    if (i > 0 && logSum + logNumber > limit) {
      ++unit;
      product = 1;
      logSum = 0;
    }
    product *= position.nDiffValues;
    logSum += logNumber;
    position.unit = unit;
    position.product = product;
  }
  return true;
}

int NQPackedInt::GetNDiffVal(int position) const {
  const auto i = static_cast<std::size_t>(position);  // a negative position is past every end
  return i < fvPositions->size() ? (*fvPositions)[i].nDiffValues : -1;
}

bool NQPackedInt::Pack(const std::vector<int>& values, std::vector<int>& packed, bool check) const {
  const std::vector<Position>& positions = *fvPositions;
  const std::size_t n = positions.size();
  const auto nUnits = static_cast<std::size_t>(NUnits());
  if (n == 0 || values.size() < n) return false;
  for (std::size_t i = 0; check && i < n; ++i) {
    const long long code = static_cast<long long>(values[i]) - fLowerBound;
    if (code < 0 || code >= positions[i].nDiffValues) return false;
  }
  // The unit of a position has no higher index than it: one vector can be both.
  if (packed.size() < nUnits && !SetSize(packed, nUnits)) return false;
  unsigned sum = 0;
  for (std::size_t i = 0; i < n; ++i) {
    const unsigned code = Wrap(values[i]) - Wrap(fLowerBound);
    sum = StartsUnit(i) ? code : sum + code * Wrap(positions[i - 1].product);
    packed[static_cast<std::size_t>(positions[i].unit)] = static_cast<int>(sum);
  }
  packed.resize(nUnits);
  return true;
}

bool NQPackedInt::Unpack(std::vector<int>& values, const std::vector<int>& packed) const {
  const std::vector<Position>& positions = *fvPositions;
  const std::size_t n = positions.size();
  if (n == 0 || packed.size() < static_cast<std::size_t>(NUnits())) return false;
  if (values.size() < n && !SetSize(values, n)) return false;
  int remaining = 0;
  for (std::size_t i = n; i-- > 0;) {
    if (StartsUnit(i + 1)) remaining = packed[static_cast<std::size_t>(positions[i].unit)];
    int code = remaining;
    if (!StartsUnit(i)) {
      code = remaining / positions[i - 1].product;
      remaining %= positions[i - 1].product;
    }
    values[i] = static_cast<int>(Wrap(fLowerBound) + Wrap(code));
  }
  return true;
}

void NQPackedInt::Display() const {
  using namespace NQDisplay_940;
  const auto displayPositions = [this](const char* name, int Position::*value) {
    std::vector<int> values;
    for (const Position& position : *fvPositions) values.push_back(position.*value);
    DisplayIV(name, values);
  };
  internal::DisplayObject("NQPackedInt", [&] {
    DisplayI("The sequence size", static_cast<int>(fvPositions->size()));
    DisplayI("The lower bound", fLowerBound);
    displayPositions("The vector of numbers of different values", &Position::nDiffValues);
    DisplayI("The number of packed storage units", NUnits());
    displayPositions("The vector of packed storage unit indices", &Position::unit);
    displayPositions("The vector of products", &Position::product);
  });
}

}  // namespace NQMath_940
