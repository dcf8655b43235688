// The coefficients of this file are those of tests/reference/kernel_coefficients.py.
#include <nqcommon/math/kernels/log_gamma.h>

#include <array>
#include <cmath>
#include <cstddef>

#include <nqcommon/math/kernels/polynomial.h>

namespace NQMath_940::internal {

namespace {

// From here on the eight terms of Stirling's series leave less than 1e-17.
constexpr double kSeriesFrom = 10;

// ln Gamma(2 + z) = sum of c(k) z^(k+1), |z| <= 1/2: c(0) = 1 - Euler's constant,
// c(k-1) = (-1)^k (zeta(k) - 1)/k (Abramowitz and Stegun 1964, 6.1.33 and table 23.3). The first
// term left out is below 1e-18.
constexpr std::array<double, 26> kAboutTwo = {
    0.42278433509846713,     0.3224670334241132,     -0.0673523010531981,
    0.020580808427784546,    -0.007385551028673986,  0.0028905103307415234,
    -0.001192753911703261,   0.0005096695247430425,  -0.00022315475845357939,
    9.945751278180853e-05,   -4.492623673813314e-05, 2.050721277567069e-05,
    -9.439488275268397e-06,  4.374866789907488e-06,  -2.039215753801366e-06,
    9.55141213040742e-07,    -4.492469198764566e-07, 2.1207184805554665e-07,
    -1.0043224823968099e-07, 4.7698101693639804e-08, -2.2711094608943164e-08,
    1.0838659214896955e-08,  -5.183475041970047e-09, 2.4836745438024785e-09,
    -1.1921401405860912e-09, 5.731367241678862e-10};

// B(2k)/(2k (2k-1)), k = 1 .. 8: in odd powers of 1/x (Abramowitz and Stegun 1964, 6.1.41).
constexpr std::array<double, 8> kStirling = {
    0.08333333333333333,   -0.002777777777777778,  0.0007936507936507937, -0.0005952380952380953,
    0.0008417508417508417, -0.0019175269175269176, 0.00641025641025641,   -0.029550653594771242};

// What Stirling's formula leaves on [1, 2], [2, 4] and [4, 10], in powers of s in [-1, 1], linear
// in 1/x: Chebyshev fits, error below 2e-17.
constexpr std::array<std::array<double, 13>, 3> kStirlingMiddle = {{
    {0.061468098011833866, 0.019873712210038943, -0.0002692990895592188, -1.3149160320387232e-05,
     2.2801122820489825e-06, -1.796983123538072e-07, 2.8022491757187605e-09, 2.0052356151483073e-09,
     -4.5620418712685327e-10, 6.361071046165885e-11, -5.440858969044309e-12,
     -2.9353110946679483e-13, 2.074509007904944e-13},
    {0.03110887607527028, 0.010278816709613075, -4.3394465192541895e-05, -3.805540227534924e-06,
     2.0345321085988936e-07, 6.645264581787732e-10, -1.0320912397706741e-09, 9.26371650026042e-11,
     -1.7352448128748899e-12, -7.172239349167513e-13, 1.2525195113133055e-13, -9.83815188719944e-15,
     -1.7335387645616672e-16},
    {0.01456857357252482, 0.0062311299948443755, -7.97463095618564e-06, -1.0768225979806767e-06,
     1.890775383926774e-08, 1.1636837470400026e-09, -8.117729877214309e-11, -7.063641613304036e-13,
     4.2015426003406496e-13, -2.298100971357289e-14, -1.3291841189680925e-15,
     3.1444365178679975e-16, -1.7428331778192933e-17},
}};

// Gamma(b + 1/2)/(Gamma(b) sqrt(b)) for b >= 10, in powers of 1/b: a Chebyshev fit, error below
// 1e-17.
constexpr std::array<double, 9> kHalfSeries = {1,
                                               -0.1249999999999854,
                                               0.007812499996089835,
                                               0.004882812904687563,
                                               -0.000640890219382785,
                                               -0.0015214435409986154,
                                               0.0001963470472579739,
                                               0.0012840775335532953,
                                               -0.0008008137498072758};

// (artanh(r) - r)/r^3 for |r| <= 1/3, in powers of r^2: a Chebyshev fit, error below 2e-18.
constexpr std::array<double, 11> kArtanh = {
    0.3333333333333333,  0.19999999999999762, 0.1428571428580005,  0.11111111099118386,
    0.09090909948981357, 0.07692271982430275, 0.06667589315724629, 0.05867139530651599,
    0.05422589197440007, 0.03746071897775383, 0.07815288900461426};

// ln Gamma(2 + z), |z| <= 1/2.
double LogGammaAboutTwo(double z) { return z * Polynomial(kAboutTwo, z); }

double StirlingSeries(double x) {
  const double inverse = 1 / x;
  return inverse * Polynomial(kStirling, inverse * inverse);
}

// (B(2k) terms of 1/(b + a)) - (those of 1/b), each difference of powers through its factor
// 1/(b + a) - 1/b, so that nothing cancels for a small.
double StirlingSeriesStep(double a, double b) {
  const double u = 1 / b;
  const double v = 1 / (b + a);
  double geometric = 1;  // the sum of v^i u^(m-1-i), i < m, for the odd power m
  double power = v;      // v^m
  double sum = 0;
  for (const double coef : kStirling) {
    sum += coef * geometric;
    geometric = u * (u * geometric + power) + power * v;
    power *= v * v;
  }
  return -a * u * v * sum;
}

}  // namespace

double LogGamma(double x) {
  if (std::isinf(x)) return x;
  if (x >= kSeriesFrom) return (x - 0.5) * std::log(x) - x + (kLogSqrt2Pi + StirlingSeries(x));
  if (x < 0.5) return LogGamma1p(x) - std::log(x);
  if (x < 1.5) return LogGammaAboutTwo(x - 1) - std::log(x);
  double factor = 1;  // Gamma of the first x is Gamma(x) * factor; the differences are exact
  while (x >= 2.5) {
    x -= 1;
    factor *= x;
  }
  return LogGammaAboutTwo(x - 2) + std::log(factor);
}

double LogGamma1p(double a) {
  return a < 0.5 ? LogGammaAboutTwo(a) - std::log1p(a) : LogGammaAboutTwo(a - 1);
}

double StirlingError(double x) {
  if (x >= kSeriesFrom) return StirlingSeries(x);
  if (x < 1) return StirlingError(x + 1) + ((x + 0.5) * std::log1p(1 / x) - 1);
  if (x < 2) return Polynomial(kStirlingMiddle[0], 4 / x - 3);
  if (x < 4) return Polynomial(kStirlingMiddle[1], 8 / x - 3);
  return Polynomial(kStirlingMiddle[2], (40 / x - 7) / 3);
}

double LogDefect(double d, double a, double whole) {
  if (std::isinf(d)) return d;
  // ln(1 + d/a) = 2 artanh(r), r = d/(2a + d); d - 2 a r = d r
  const double r = d / (a + whole);
  if (std::fabs(r) <= 1.0 / 3) {
    const double square = r * r;
    return r * (d - 2 * a * (square * Polynomial(kArtanh, square)));
  }
  return d - a * (d > 0 ? std::log1p(d / a) : std::log(whole / a));
}

double LogGammaRatio(double a, double b) {
  double excess = 0;  // of the product of 1 + a/b over the steps of b to where the series holds
  while (b < kSeriesFrom) {
    excess += (1 + excess) * (a / b);
    b += 1;
  }
  const double e = a / b;
  const double up = a * std::log(b + a) - LogDefect(a, b, b + a) - 0.5 * std::log1p(e);
  return up + StirlingSeriesStep(a, b) - std::log1p(excess);
}

double GammaRatioOfHalf(double b) {
  double numerator = 1;
  double denominator = 1;
  while (b < kSeriesFrom) {
    numerator *= b;
    denominator *= b + 0.5;
    b += 1;
  }
  return numerator / denominator * std::sqrt(b) * Polynomial(kHalfSeries, 1 / b);
}

}  // namespace NQMath_940::internal
