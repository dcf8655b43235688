#include <nqcommon/math/random/NQRandomValues.h>

#include <cmath>
#include <cstddef>

#include <nqcommon/common/NQMV.h>
#include <nqcommon/math/random/internal/gamma_variates.h>
#include <nqcommon/math/random/internal/kinderman_ramage.h>

namespace NQMath_940 {

namespace {

using NQCommon_940::NQMV;

// The source as the kernels call it.
auto UniformsOf(NQURandom* source) {
  return [source] { return source->GetRandom(); };
}

}  // namespace

double NQRandomValues::GetRandom() {
  if (!fReady) return NQMV::Missing();
  switch (fKind) {
    case kUniform:
      return RVUni(fLower, fUpper);
    case kNormal:
      return RVNor(fMean, fSd);
    case kChi:
      return RVChi(fChiDf);
    case kGamma:
      return RVGam(fShape, fRate);
    case kWishart:
      break;
  }
  return NQMV::Missing();
}

bool NQRandomValues::GetRandom(std::vector<double>& out) {
  if (fKind == kWishart) return false;
  const auto n = static_cast<std::size_t>(fDim);
  if (fReady) {
    out.assign(1, GetRandom());
    return true;
  }
  if (fKind == kUniform) {
    out.resize(n);
    for (std::size_t i = 0; i < n; ++i) out[i] = RVUni(fvLower[i], fvUpper[i]);
    return true;
  }
  for (double& z : fvWork) z = RVSNor();
  if (fStandard) {
    out = fvWork;
    return true;
  }
  if (!fmFactor.ComputeLV(fvWork, out)) return false;
  for (std::size_t i = 0; i < n; ++i) out[i] += fvMean[i];
  return true;
}

bool NQRandomValues::GetRandom(NQSymMatrix& out) {
  if (fKind != kWishart || !fmBartlett.SetNRows(fWishartDim, true)) return false;
  double* element = fmBartlett.AsVector().data();
  for (int i = 0; i < fWishartDim; ++i) {
    for (int j = 0; j < i; ++j) *element++ = RVSNor();
    *element++ = std::sqrt(RVChi(fWishartDf - i));
  }
  fmBartlett.LTLLTrans();
  if (!fStandard) return fmBartlett.ComputeLSLTrans(fmFactor, out);
  out = fmBartlett;
  return out.IsValidMatrix();
}

double NQRandomValues::RVUni(double lo, double hi) {
  if (hi < lo) return NQMV::Missing();
  return lo + (hi - lo) * GetURNGPtr()->GetRandom();
}

double NQRandomValues::RVNor(double mean, double sd) {
  if (sd == 0) return mean;
  if (sd < 0) return NQMV::Missing();
  return mean + sd * RVSNor();
}

double NQRandomValues::RVSNor() { return internal::KindermanRamage(UniformsOf(GetURNGPtr())); }

double NQRandomValues::RVChi(double df) { return RVGam(df / 2, 0.5); }

double NQRandomValues::RVGam(double shape, double rate) {
  if (!(shape > 0 && rate > 0)) return NQMV::Missing();
  if (shape == 1) return RVExp(rate);
  return internal::StandardGamma(shape, UniformsOf(GetURNGPtr())) / rate;
}

double NQRandomValues::RVExp(double rate) {
  if (!(rate > 0)) return NQMV::Missing();
  const double u = GetURNGPtr()->GetRandom();
  return u >= 1 ? NQMV::Missing() : internal::ExponentialOf(u) / rate;
}

double NQRandomValues::RVAuxF(double t) const { return internal::NormalOverTriangle(t); }

}  // namespace NQMath_940
