// Standard normal deviates by the method of A. J. Kinderman and J. G. Ramage, "Computer generation
// of normal random variables", JASA 71 (1976) 893-896: most of the density is a triangle, the sum
// of two uniforms; what is left over it is drawn by rejection from three wedges on either side and
// the tails. A point of the first wedge below 0 is rejected: without that the mixture is not normal
// (G. Tirler, P. Dalgaard, W. Hoermann and J. Leydold, Comput. Stat. Data Anal. 47 (2004) 433-440).
#pragma once

#include <algorithm>
#include <cmath>

#include <nqcommon/math/kernels/log_gamma.h>
#include <nqcommon/math/random/NQRNGenerator.h>

namespace NQMath_940::internal {

// The half-width of the triangle.
constexpr double kTriangleEnd = 2.216035867166471;

// The normal density less the triangle. Its value at 0 is exactly 0, which is kept on purpose: no
// draw depends on a single point.
inline double NormalOverTriangle(double t) {
  if (t == 0) return 0;
  const double triangle = 0.180025191068563 * std::max(0.0, kTriangleEnd - std::fabs(t));
  return std::max(0.0, kInverseSqrt2Pi * std::exp(-t * t / 2) - triangle);
}

// A part of the range that the smaller of two uniforms covers linearly. The point is accepted
// outright when the larger is at most `certain`, else when height x their difference is at most
// the density over the triangle.
struct NormalWedge {
  double below;  // the wedge for a first uniform below this
  double start;
  double slope;
  double certain;
  double height;
};

inline constexpr NormalWedge kNormalWedges[] = {
    {0.911312780288703, 0.479727404222441, -0.59550713801594, 0.805577924423817, 0.053377549506886},
    {0.958720824790463, 0.479727404222441, 1.10547366102207, 0.87283497667179, 0.049264496373128},
    {0.973310954173898, kTriangleEnd, -0.63083480192196, 0.755591531667601, 0.034240503750111},
};

template <class Uniform>
double DrawFromWedge(const NormalWedge& wedge, Uniform& uniform) {
  for (;;) {
    const double u = uniform();
    const double v = uniform();
    const double t = wedge.start + wedge.slope * std::min(u, v);
    if (t < 0) continue;
    if (std::max(u, v) <= wedge.certain || wedge.height * std::fabs(u - v) <= NormalOverTriangle(t))
      return u < v ? t : -t;
  }
}

// G. Marsaglia's method for |z| > kTriangleEnd: z^2 / 2 is exponential beyond its start.
template <class Uniform>
double DrawFromTail(bool positive, Uniform& uniform) {
  constexpr double kStart = 2.455407482284127;  // kTriangleEnd^2 / 2
  for (;;) {
    const double u = uniform();
    const double t = kStart - std::log(uniform());
    if (u * u * t < kStart) return positive ? std::sqrt(2 * t) : -std::sqrt(2 * t);
  }
}

// The uniforms of a generator as the draws below take them.
inline auto UniformsOf(NQRNGenerator& generator) {
  return [&generator] { return generator.GetNext(); };
}

// uniform() is the next uniform of (0, 1); 0 and 1 do no harm.
// Draws     two uniforms for 88% of the deviates; the others one, and two for every trial, of which
//           the least favourable part takes 1.5 on average.
template <class Uniform>
double KindermanRamage(Uniform uniform) {
  const double u = uniform();
  if (u < 0.884070402298758) return kTriangleEnd * (1.13113163544418 * u + uniform() - 1);
  for (const NormalWedge& wedge : kNormalWedges) {
    if (u < wedge.below) return DrawFromWedge(wedge, uniform);
  }
  return DrawFromTail(u < 0.986655477086949, uniform);
}

}  // namespace NQMath_940::internal
