#include <nqcommon/math/random/NQRNGBinomial.h>

#include <cmath>

#include <nqcommon/math/random/NQRNGBeta.h>

namespace NQMath_940 {

namespace {

// The number of trials up to which counting costs no more than one beta variate.
constexpr double kSimpleTrials = 40;

bool IsValid(double n, double p) {
  return n >= 0 && std::isfinite(n) && n == std::floor(n) && p >= 0 && p <= 1;
}

}  // namespace

bool NQRNGBinomial::SetParameters(double n, double p) {
  fN = n;
  fP = p;
  return IsValid(n, p);
}

// The method is that of D. A. Relles, "A simple algorithm for generating binomial random variables
// when N is large", JASA 67 (1972) 612-613, and of J. H. Ahrens and U. Dieter, Computing 12 (1974)
// 223-246.
double NQRNGBinomial::GetNext(double n, double p) {
  if (!IsValid(n, p)) return 0;
  NQRNGBeta beta(1, 1);
  beta.SetURNGenerator(GetURNGenerator());
  double count = 0;
  while (n > kSimpleTrials && p > 0 && p < 1) {
    const double middle = std::floor((n + 1) / 2);
    const double x = beta.GetNext(middle, n + 1 - middle);
    if (x <= p) {
      count += middle;
      n -= middle;
      p = (p - x) / (1 - x);
    } else {
      n = middle - 1;
      p = p / x;
    }
  }
  return count + SimpleMethod(n, p);
}

double NQRNGBinomial::SimpleMethod(double n, double p) {
  if (!IsValid(n, p) || p == 0) return 0;
  if (p == 1) return n;
  NQRNGenerator& uniforms = GetURNGenerator();
  double count = 0;
  while (n-- > 0) {
    if (uniforms.GetNext() <= p) ++count;
  }
  return count;
}

}  // namespace NQMath_940
