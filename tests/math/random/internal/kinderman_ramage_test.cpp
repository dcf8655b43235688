// The density that the code draws from, by quadrature of the code itself. Within a region one
// uniform places the deviate, and of the other an interval is accepted: bisection finds its end,
// and the sum over the first uniform what a single one must be divided by.
//
// So every constant that decides the density is held to about 1e-8. Of a million draws, goodness of
// fit sees the triangle's slope when it is off by 1%, but not 1% of its height, 2% of the tail's
// start, 4% of a wedge's slope, a factor of 2 in a wedge's height, a region's share that is off by
// 0.002, or the missing rejection of t < 0; the first values of a stream see what touches one of
// them.
#include <nqcommon/math/random/internal/kinderman_ramage.h>

#include <functional>

#include <support/compare.h>

namespace NQMath_940::internal {
namespace {

struct Trial {
  // What the three uniforms give, or, when they are rejected, those that follow: they are accepted
  // in every region.
  Trial(double u, double v, double w) {
    const double uniforms[] = {u, v, w, 0.25, 0.5};
    fDeviate = KindermanRamage([&] {
      const int i = fUsed++;
      return uniforms[i < 3 ? i : 3 + i % 2];
    });
  }
  int fUsed = 0;
  double fDeviate;
};

// Where `holds` changes to false between low and high: high where it never does, low where it does
// not hold at all.
double Boundary(double low, double high, const std::function<bool(double)>& holds) {
  if (holds(high)) return high;
  for (int i = 0; i < 60; ++i) {
    const double middle = (low + high) / 2;
    (holds(middle) ? low : high) = middle;
  }
  return low;
}

TEST(KindermanRamage, RegionsAddUpToTheNormalDensity) {
  double edge = Boundary(0, 1, [](double u) { return Trial(u, 0.25, 0.5).fUsed == 2; });
  // start + c (a u + v), 0 < u < edge, 0 < v < 1.
  const double start = Trial(0, 0, 0).fDeviate, c = Trial(0, 1, 0).fDeviate - start;
  const double a = (Trial(edge / 2, 0, 0).fDeviate - start) / (c * edge / 2);
  const auto triangle = [=, share = edge](double t) {
    const double sum = (t - start) / c;
    return std::max(0.0, std::min(share, sum / a) - std::max(0.0, (sum - 1) / a)) / c;
  };
  int nRegions = 0;
  for (double next = 0; edge < 1; edge = next, ++nRegions) {
    const double u = edge + 1e-9, d = Trial(u, 0.25, 0.5).fDeviate;
    next = Boundary(u, 1, [d](double x) { return Trial(x, 0.25, 0.5).fDeviate == d; });
    // Three wedges, of which half the points are below 0, then tails: e^-y places the point.
    const bool isTail = nRegions >= 3;
    const auto place = [isTail](double y) { return isTail ? std::exp(-y) : y; };
    const auto trial = [&](double x, double other) {
      return isTail ? Trial(u, other, x) : Trial(u, x, other);
    };
    const auto weight = [&](double y) {
      const double x = place(y), low = isTail ? 0 : x;
      const auto isAccepted = [&](double other) { return trial(x, other).fUsed <= 3; };
      return (Boundary(low, 1, isAccepted) - low) * (isTail ? x : 1);
    };
    // Where the point lies: the densities there, proportional to the weight and `share` in all, and
    // those of the triangle under them make the normal density.
    const auto z = [&](double y) { return trial(place(y), isTail ? 1e-9 : y).fDeviate; };
    constexpr int kSteps = 8000;
    const double share = (next - edge) / (isTail ? 1 : 2), step = (isTail ? 40.0 : 1.0) / kSteps;
    double sum = 0;  // by Simpson's rule
    for (int i = 0; i <= kSteps; ++i)
      sum += weight(i * step) * (i % 2 ? 4 : i % kSteps ? 2 : 1) * step / 3;
    for (int i = 1; i < kSteps; i += 7) {
      const double y = i * step, t = z(y);
      if (weight(y) <= 0) continue;
      const double slope = std::fabs(z(y + 1e-4) - z(y - 1e-4)) / 2e-4;
      const double density = triangle(t) + share * weight(y) / sum / slope;
      const double normal = std::exp(-t * t / 2) / std::sqrt(2 * std::acos(-1));
      ASSERT_TRUE(nqtest::IsClose(density, normal, 1e-8)) << "at " << t << ", region " << nRegions;
    }
    EXPECT_TRUE(isTail || Trial(u, 0.5, 0.25).fDeviate == -d);
  }
  EXPECT_EQ(nRegions, 5);
}

}  // namespace
}  // namespace NQMath_940::internal
