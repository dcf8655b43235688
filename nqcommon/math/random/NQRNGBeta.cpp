#include <nqcommon/math/random/NQRNGBeta.h>

#include <algorithm>
#include <cmath>

#include <nqcommon/math/kernels/log_gamma.h>
#include <nqcommon/math/numeric/NQDistFun.h>
#include <nqcommon/math/random/internal/kinderman_ramage.h>

namespace NQMath_940 {

namespace {

// Whether DrawByNormal accepts half of its points or more, so that it is faster than the inverse.
// It accepts about 2 sqrt(mode (1 - mode)) of them for large shapes, and few for shapes near 1.
bool SuitsNormal(double a, double b) {
  const double total = (a - 1) + (b - 1);
  const double mode = (a - 1) / total;
  return total >= 1 && 16 * mode * (1 - mode) >= 1;
}

}  // namespace

// Algorithm BN of J. H. Ahrens and U. Dieter, "Computer methods for sampling from gamma, beta,
// Poisson and binomial distributions", Computing 12 (1974) 223-246. The logarithm of the density
// relative to the mode, A ln(x / mode) + B ln((1 - x) / (1 - mode)), is written with
// e - ln(1 + e): its linear terms cancel, which for large shapes would take all digits.
double NQRNGBeta::DrawByNormal(double a, double b) {
  const auto uniform = internal::UniformsOf(GetURNGenerator());
  const double powerX = a - 1, powerY = b - 1;
  const double total = powerX + powerY;
  const double root = std::sqrt(total);
  for (;;) {
    const double s = internal::KindermanRamage(uniform);
    const double up = s * root / (2 * powerX);     // up is (x - mode) / mode
    const double down = -s * root / (2 * powerY);  // down is the same of 1 - x
    if (!(up > -1 && down > -1)) continue;
    const double defect =
        powerX * internal::LogDefect(up, 1 + up) + powerY * internal::LogDefect(down, 1 + down);
    if (std::log(uniform()) <= s * s / 2 - defect) return powerX / total * (1 + up);
  }
}

bool NQRNGBeta::SetParameters(double a, double b) {
  fA = a;
  fB = b;
  return a <= 0;
}

double NQRNGBeta::GetNext(double a, double b) {
  if (!(a > 0 && b > 0)) a = b = 1;
  a = std::min(a, internal::kLargestShape);
  b = std::min(b, internal::kLargestShape);
  if (SuitsNormal(a, b)) return DrawByNormal(a, b);
  return NQDistFun::IdfBeta(GetURNGenerator().GetNext(), a, b);
}

}  // namespace NQMath_940
