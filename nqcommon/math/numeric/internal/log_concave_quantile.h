#pragma once

#include <algorithm>
#include <cmath>
#include <limits>

#include <nqcommon/math/numeric/internal/tails.h>

namespace NQMath_940::internal {

// The v > 0 whose tails are `target`, for a variable whose logarithm has a log-concave density, as
// those of the gamma and F distributions have. The logarithm of a tail is then concave too, so
// Halley's steps on it, taken in ln v and on the smaller tail, are safe; a bracket guards them.
// evaluate(v) gives TailsAndSlope. Returns 0 or infinity for a v out of the range of doubles.
template <class Evaluate>
double FindLogConcaveQuantile(double start, const Tails& target, Evaluate evaluate) {
  using Limits = std::numeric_limits<double>;
  constexpr int kMaxSteps = 200;
  const bool byLower = target.lower <= target.upper;
  const double goal = byLower ? target.lower : target.upper;
  double low = 0;
  double high = Limits::infinity();
  // The first step from a flat end of the tail may be far too long.
  double longest = 4;
  double v = std::clamp(start > 0 ? start : 1, Limits::denorm_min(), Limits::max());
  for (int i = 0; i < kMaxSteps; ++i) {
    const TailsAndSlope at = evaluate(v);
    const double value = byLower ? at.tails.lower : at.tails.upper;
    if (value == goal) return v;
    const bool below = (value < goal) == byLower;
    if (below && v == Limits::max()) return Limits::infinity();
    if (!below && v == Limits::denorm_min()) return 0;
    (below ? low : high) = v;

    double step = below ? longest : -longest;
    bool last = false;
    if (value > 0 && at.slope > 0) {                              // else underflown
      const double rate = at.slope / value * (byLower ? 1 : -1);  // of the logarithm of the tail
      // near the goal the logarithm of a ratio close to 1, without its rounding
      const double miss = std::log1p((goal - value) / value);
      const double newton = miss / rate;
      const double halley = newton / std::max(0.5, 1 + 0.5 * newton * (at.bend - rate));
      if (std::fabs(halley) <= longest) step = halley;
      // a step of third order leaves about its cube in units of the curvature
      const double curved = halley * (std::fabs(at.bend) + std::fabs(rate));
      last = std::fabs(halley) * curved * curved <= Limits::epsilon() ||
             std::fabs(miss) <= 2 * Limits::epsilon();
    }
    if (std::fabs(step) == longest) longest *= 2;
    double next = std::clamp(v * std::exp(step), Limits::denorm_min(), Limits::max());
    if (last) return next;
    if (!(low < next && next < high)) next = std::sqrt(low) * std::sqrt(high);
    if (next == low || next == high) return v;
    v = next;
  }
  return v;
}

}  // namespace NQMath_940::internal
