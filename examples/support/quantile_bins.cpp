#include "quantile_bins.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>

namespace support {
namespace {

// Sign, exponent and 7 bits of the fraction: neighbouring values are 1/128 apart at most.
long LeadingBits(double x) { return static_cast<long>(std::bit_cast<std::uint64_t>(x) >> 45); }

}  // namespace

QuantileBins::QuantileBins(double smallest, double largest)
    : fFirst(LeadingBits(smallest)),
      fBins(static_cast<std::size_t>(2 * (LeadingBits(largest) - fFirst + 1) + 1)) {}

void QuantileBins::Add(double x, double frequency) {
  const long middle = static_cast<long>(fBins.size() / 2);
  const long bits = std::clamp(LeadingBits(std::fabs(x)) - fFirst + 1, 0L, middle);
  Bin& bin = fBins[static_cast<std::size_t>(x < 0 ? middle - bits : middle + bits)];
  bin.count += frequency;
  bin.sum += frequency * x;
}

void QuantileBins::Merge(const QuantileBins& right) {
  for (std::size_t i = 0; i < fBins.size(); ++i) {
    fBins[i].count += right.fBins[i].count;
    fBins[i].sum += right.fBins[i].sum;
  }
}

double QuantileBins::Count() const {
  double count = 0;
  for (const Bin& bin : fBins) count += bin.count;
  return count;
}

// The number that covers the places from `place` on.
double QuantileBins::ValueAt(double place) const {
  double before = 0, value = std::numeric_limits<double>::quiet_NaN();
  for (const Bin& bin : fBins) {
    if (bin.count == 0) continue;
    value = bin.sum / bin.count;
    before += bin.count;
    if (place < before) break;
  }
  return value;
}

double QuantileBins::Quantile(double p) const {
  const double place = std::max(0.0, (Count() - 1) * p);
  const double low = std::floor(place);
  const double value = ValueAt(low);
  return place == low ? value : value + (place - low) * (ValueAt(low + 1) - value);
}

}  // namespace support
