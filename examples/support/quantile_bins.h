// Quantiles of numbers that pass by, in little memory.
#pragma once

#include <cstddef>
#include <vector>

namespace support {

// Counts numbers in bins whose width is at most 1/128 of their distance from zero: a quantile is
// off by less than that, and exact where its bin holds equal numbers. Numbers smaller than
// `smallest` share a bin, and so do those beyond `largest` on either side.
class QuantileBins {
 public:
  // No bins.
  QuantileBins() = default;
  // 0 < smallest <= largest, both finite.
  QuantileBins(double smallest, double largest);

  void Add(double x, double frequency);
  void Merge(const QuantileBins& right);
  template <class A>
  void Transfer(A& a) {
    a(fFirst);
    a(fBins);
  }

  double Count() const;
  // The numbers in order have the places 0 .. n-1, each as many as its frequency; the quantile is
  // that at (n-1) p, interpolated (type 7 of Hyndman and Fan, Sample quantiles in statistical
  // packages, 1996). NaN when there are none.
  double Quantile(double p) const;

 private:
  struct Bin {
    double count = 0;
    double sum = 0;
  };

  double ValueAt(double place) const;

  long fFirst = 0;         // the leading bits of the smallest number
  std::vector<Bin> fBins;  // from the most negative up; the smallest numbers in the middle
};

}  // namespace support
