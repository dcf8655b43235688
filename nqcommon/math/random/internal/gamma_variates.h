// Exponential and gamma variates. uniform() is the next uniform of (0, 1); a uniform of 0 or 1 does
// no harm.
#pragma once

#include <cmath>
#include <numbers>

#include <nqcommon/math/numeric/NQPower.h>
#include <nqcommon/math/random/internal/kinderman_ramage.h>

namespace NQMath_940::internal {

// -ln(1 - u): the exponential deviate that belongs to a uniform.
inline double ExponentialOf(double u) { return -std::log1p(-u); }

// Shape a < 1: J. H. Ahrens and U. Dieter, Computing 12 (1974) 223-246, algorithm GS. Two uniforms
// a trial, at most 1.39 trials on average. For tiny a most deviates underflow, to 0.
template <class Uniform>
double GammaBelowOne(double a, Uniform& uniform) {
  using std::numbers::e;
  const double c = (a + e) / e;
  for (;;) {
    double u = uniform();
    while (u == 0) u = uniform();
    const double p = c * u;
    double x = 0;
    if (p <= 1) {
      NQPower::Exponent(std::log(p) / a, x);
      if (uniform() <= std::exp(-x)) return x;
    } else {
      x = -std::log((c - p) / a);
      if (-ExponentialOf(uniform()) <= (a - 1) * std::log(x)) return x;
    }
  }
}

// Shape a > 1: G. S. Fishman, Commun. ACM 19 (1976) 407-409, rejection from an exponential of mean
// a. Two uniforms a trial; the trials grow as sqrt(a): 2.1 on average for a = 4, 1084 for a = 1e6.
template <class Uniform>
double GammaAboveOne(double a, Uniform& uniform) {
  for (;;) {
    const double x = ExponentialOf(uniform());
    if (-ExponentialOf(uniform()) <= (a - 1) * (1 - x + std::log(x))) return a * x;
  }
}

// A shape that would take a million trials a draw: E. B. Wilson and M. M. Hilferty, Proc. Nat.
// Acad. Sci. 17 (1931) 684-688, whose error is of the order 1/a. One normal deviate.
template <class Uniform>
double GammaOfHugeShape(double a, Uniform& uniform) {
  const double root = 1 - 1 / (9 * a) + KindermanRamage(uniform) / (3 * std::sqrt(a));
  return a * root * root * root;
}

// Density x^(a-1) e^(-x) / Gamma(a), a > 0. For a = 1 ExponentialOf one uniform is the shorter way.
template <class Uniform>
double StandardGamma(double a, Uniform uniform) {
  constexpr double kHugeShape = 1e12;
  if (a < 1) return GammaBelowOne(a, uniform);
  return a < kHugeShape ? GammaAboveOne(a, uniform) : GammaOfHugeShape(a, uniform);
}

}  // namespace NQMath_940::internal
