#include <nqcommon/math/random/NQRNGNormal.h>

#include <nqcommon/math/random/internal/kinderman_ramage.h>
#include <nqcommon/math/random/internal/uniform_link.h>

namespace NQMath_940 {

struct NQRNGNormal::Impl {
  internal::UniformLink fUniforms;
  double fMean = 0;
  double fSd = 1;
};

NQRNGNormal::NQRNGNormal(double mean, double sd) : fpImpl(std::make_unique<Impl>()) {
  SetParameters(mean, sd);
}

NQRNGNormal::NQRNGNormal(const NQRNGNormal& other)
    : NQRNGenerator(other), fpImpl(std::make_unique<Impl>(*other.fpImpl)) {}

NQRNGNormal& NQRNGNormal::operator=(const NQRNGNormal& other) {
  *fpImpl = *other.fpImpl;
  return *this;
}

NQRNGNormal::~NQRNGNormal() = default;

void NQRNGNormal::SetURNGenerator(NQRNGenerator& uniforms) { fpImpl->fUniforms.Set(uniforms); }

void NQRNGNormal::SetSeed(double seed) { fpImpl->fUniforms.Get().SetSeed(seed); }

bool NQRNGNormal::SetParameters(double mean, double sd) {
  const bool valid = sd >= 0;
  fpImpl->fMean = valid ? mean : 0;
  fpImpl->fSd = valid ? sd : 1;
  return valid;
}

double NQRNGNormal::GetNext() { return GetNext(fpImpl->fMean, fpImpl->fSd); }

double NQRNGNormal::GetNext(double mean, double sd) {
  NQRNGenerator& uniforms = fpImpl->fUniforms.Get();
  const double z = internal::KindermanRamage([&] { return uniforms.GetNext(); });
  return sd >= 0 ? mean + sd * z : z;
}

}  // namespace NQMath_940
