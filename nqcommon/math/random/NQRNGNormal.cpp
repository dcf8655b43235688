#include <nqcommon/math/random/NQRNGNormal.h>

#include <nqcommon/math/random/internal/kinderman_ramage.h>

namespace NQMath_940 {

bool NQRNGNormal::SetParameters(double mean, double sd) {
  fMean = mean;
  fSd = sd;
  return sd >= 0;
}

double NQRNGNormal::GetNext(double mean, double sd) {
  const double z = internal::KindermanRamage(internal::UniformsOf(GetURNGenerator()));
  return sd >= 0 ? mean + sd * z : z;
}

}  // namespace NQMath_940
