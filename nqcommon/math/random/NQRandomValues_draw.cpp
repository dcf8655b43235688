#include <nqcommon/math/random/NQRandomValues.h>

#include <cmath>
#include <cstddef>

#include <nqcommon/common/NQMV.h>
#include <nqcommon/common/memory_guard.h>
#include <nqcommon/math/kernels/packed_algebra.h>
#include <nqcommon/math/kernels/packed_triangle.h>
#include <nqcommon/math/random/internal/gamma_variates.h>
#include <nqcommon/math/random/internal/kinderman_ramage.h>

namespace NQMath_940 {

using NQCommon_940::GuardMemory;
using NQCommon_940::NQMV;

namespace {

// A function that gives the uniforms of a source, as the methods in internal/ call it.
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
  const auto n = static_cast<std::size_t>(fDim);
  // `out` gets its capacity before the first draw: a failure then leaves it and the source alone.
  if (fKind == kWishart || !GuardMemory([&] { out.reserve(n); })) return false;
  out.resize(n);
  if (fReady) {
    out[0] = GetRandom();
  } else if (fKind == kUniform) {
    for (std::size_t i = 0; i < n; ++i)
      out[i] = fStandard ? RVUni(0, 1) : RVUni(fpArrays->low[i], fpArrays->high[i]);
  } else {
    for (double& z : out) z = RVSNor();
    if (fStandard) return true;
    // Row i reads z_0 .. z_i: from the last row up, the sums can overwrite the deviates.
    const double* factor = fpArrays->factor.AsVectorConst().data();
    for (std::size_t i = n; i-- > 0;)
      out[i] = fpArrays->low[i] +
               internal::DotProduct(i + 1, factor + internal::RowStart(i), out.data());
  }
  return true;
}

bool NQRandomValues::GetRandom(NQSymMatrix& out) {
  if (fKind != kWishart || !out.SetNRows(fDim, false)) return false;
  double* a = out.AsVector().data();
  double* element = a;
  for (int i = 0; i < fDim; ++i) {
    for (int j = 0; j < i; ++j) *element++ = RVSNor();
    *element++ = std::sqrt(RVChi(fWishartDf - i));
  }
  if (!fStandard) {
    // A <- L A. Row i reads the rows of A up to itself: from the last row up, those of L A can
    // overwrite them.
    const double* factor = fpArrays->factor.AsVectorConst().data();
    for (auto i = static_cast<std::size_t>(fDim); i-- > 0;) {
      const double* l = factor + internal::RowStart(i);
      double* row = a + internal::RowStart(i);
      for (std::size_t j = 0; j <= i; ++j) row[j] *= l[i];
      for (std::size_t k = i; k-- > 0;)
        internal::AddScaled(k + 1, l[k], a + internal::RowStart(k), row);
    }
  }
  out.LTLLTrans();
  return true;
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
