// The normal distribution function, in line: it is called most, and the tails of others are made of
// it.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

#include <nqcommon/math/kernels/polynomial.h>
#include <nqcommon/math/numeric/internal/tails.h>

namespace NQMath_940::internal {

// (z + 4) times Mills' ratio on [k/8, (k+1)/8] of t = 4/(z + 4), in powers of s in [-1, 1]:
// Chebyshev fits by tests/reference/kernel_coefficients.py, error below 1e-17.
inline constexpr std::array<std::array<double, 11>, 8> kMillsPieces = {{
    {{1.0663706169416802, 0.07046032700617408, 0.00431984572684072, 0.00024165015058908977,
      1.200161877469097e-05, 5.0251496782031e-07, 1.5571854795015915e-08, 1.7089526966090857e-10,
      -1.7897236212944538e-11, -1.4140424433571392e-12, -4.1000092429430884e-14}},
    {{1.2267129745727068, 0.09106680929175712, 0.006101799735295567, 0.0003603106463379157,
      1.798269275439871e-05, 6.925806650669282e-07, 1.4898895570938867e-08, -3.474459677096994e-10,
      -4.7530619268248306e-11, -1.5729422658351713e-12, 4.392591517444656e-14}},
    {{1.436447059067625, 0.12043124151101849, 0.008753905138023705, 0.0005339718990626822,
      2.5646368526270814e-05, 8.182284143791292e-07, 3.885838976582031e-09, -1.260672835977911e-09,
      -5.977907041764551e-11, 6.735125539755201e-13, 1.6816179689106206e-13}},
    {{1.7170335355828603, 0.16274078942719947, 0.012638691024859061, 0.0007716868659165709,
      3.364688247203881e-05, 7.349239398310933e-07, -1.9429150248437602e-08, -1.956049994017073e-09,
      -1.7450290540287924e-11, 3.787163970893314e-12, 1.0135757118853897e-13}},
    {{2.0998037448766684, 0.22368667468587108, 0.018129141046189096, 0.0010660452153113138,
      3.927947630016938e-05, 3.378780674142461e-07, -4.6002844650679575e-08,
      -1.6383206484164316e-09, 5.691822241851274e-11, 3.7092148061034936e-12,
      -1.0751093031665674e-13}},
    {{2.6288581663406085, 0.31027025466326613, 0.025483126107325702, 0.0013856383147240108,
      3.951639238172107e-05, -3.1983069702988397e-07, -6.051912168382308e-08,
      -3.2761366325936736e-10, 9.689369603758873e-11, 4.644746522694178e-13,
      -1.8212050776222911e-13}},
    {{3.36303442400971, 0.43005768989663273, 0.03470519192341732, 0.0016792830987182109,
      3.2703224387085324e-05, -1.0306459577659188e-06, -5.4520634223143516e-08,
      1.1280725455363827e-09, 7.63172706819645e-11, -2.407326200006043e-12,
      -8.891188154070665e-14}},
    {{4.375891780497789, 0.5899840158757225, 0.045471114080024494, 0.0018917140950592392,
      1.9516145252725003e-05, -1.5613758554539957e-06, -3.2022142504601025e-08,
      1.9449725420020706e-09, 2.4135489144276016e-11, -2.9816444081709203e-12,
      2.3982445105257222e-14}},
}};

// Mills' ratio of the normal tail to its density, (1 - Phi(z))/phi(z), z >= 0.
inline double MillsRatio(double z) {
  const double t = 4 / (z + 4);
  const double scaled = 8 * t;
  const int piece = std::min(static_cast<int>(scaled), 7);
  const auto& c = kMillsPieces[static_cast<std::size_t>(piece)];
  return Polynomial(c, 2 * (scaled - piece) - 1) * (0.25 * t);
}

// exp(-z^2/2), 0 where that is below exp(-708).
inline double NormalExponential(double z) {
  const double square = z * z;
  const double exponent = -0.5 * square;
  if (exponent < kMinExponent) return 0;
  // What the square rounds away is z^2/2 epsilons of the result; the square of `head` is exact.
  const double head = static_cast<float>(z);
  const double rest = (z - head) * (head + z) + (head * head - square);
  return std::exp(exponent) * (1 - 0.5 * rest);
}

// Phi(z), 0.5 for NaN. There is no branch on the sign, which no processor could predict.
inline double NormalLower(double z) {
  const double size = std::fabs(z);
  if (!(size > 0)) return 0.5;
  const double tail = kInverseSqrt2Pi * NormalExponential(z) * MillsRatio(size);
  const double end = z > 0 ? 1 : 0;
  if (2 * tail < kMinProbability) return end;
  return std::fabs(end - tail);
}

}  // namespace NQMath_940::internal
