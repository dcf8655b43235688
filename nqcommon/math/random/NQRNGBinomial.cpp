#include <nqcommon/math/random/NQRNGBinomial.h>

#include <cmath>

#include <nqcommon/math/random/NQRNGBeta.h>
#include <nqcommon/math/random/internal/uniform_link.h>

namespace NQMath_940 {

namespace {

// Up to here counting costs no more than one beta variate.
constexpr double kSimpleTrials = 40;

bool IsValid(double n, double p) {
  return n >= 0 && std::isfinite(n) && n == std::floor(n) && p >= 0 && p <= 1;
}

}  // namespace

struct NQRNGBinomial::Impl {
  internal::UniformLink fUniforms;
  NQRNGBeta fBeta{1, 1};
  double fN = 0;
  double fP = 0;
};

NQRNGBinomial::NQRNGBinomial(double n, double p) : fpImpl(std::make_unique<Impl>()) {
  SetParameters(n, p);
}

NQRNGBinomial::NQRNGBinomial(const NQRNGBinomial& other)
    : NQRNGenerator(other), fpImpl(std::make_unique<Impl>(*other.fpImpl)) {}

NQRNGBinomial& NQRNGBinomial::operator=(const NQRNGBinomial& other) {
  *fpImpl = *other.fpImpl;
  return *this;
}

NQRNGBinomial::~NQRNGBinomial() = default;

void NQRNGBinomial::SetURNGenerator(NQRNGenerator& uniforms) { fpImpl->fUniforms.Set(uniforms); }

void NQRNGBinomial::SetSeed(double seed) { fpImpl->fUniforms.Get().SetSeed(seed); }

bool NQRNGBinomial::SetParameters(double n, double p) {
  const bool valid = IsValid(n, p);
  fpImpl->fN = valid ? n : 0;
  fpImpl->fP = valid ? p : 0;
  return valid;
}

double NQRNGBinomial::GetNext() { return GetNext(fpImpl->fN, fpImpl->fP); }

// D. A. Relles, "A simple algorithm for generating binomial random variables when N is large", JASA
// 67 (1972) 612-613; J. H. Ahrens and U. Dieter, Computing 12 (1974) 223-246.
double NQRNGBinomial::GetNext(double n, double p) {
  if (!IsValid(n, p)) return 0;
  fpImpl->fBeta.SetURNGenerator(fpImpl->fUniforms.Get());
  double count = 0;
  while (n > kSimpleTrials && p > 0 && p < 1) {
    const double middle = std::floor((n + 1) / 2);
    const double x = fpImpl->fBeta.GetNext(middle, n + 1 - middle);
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
  NQRNGenerator& uniforms = fpImpl->fUniforms.Get();
  double count = 0;
  while (n-- > 0) {
    if (uniforms.GetNext() <= p) ++count;
  }
  return count;
}

}  // namespace NQMath_940
