#include <nqcommon/math/random/NQRandomValues.h>

#include <cmath>
#include <cstddef>
#include <string>
#include <utility>

#include <nqcommon/common/display.h>
#include <nqcommon/common/memory_guard.h>
#include <nqcommon/math/kernels/display_frame.h>
#include <nqcommon/math/random/internal/covariance_factor.h>

namespace NQMath_940 {

using NQCommon_940::GuardMemory;

// ---- Uniform source -----------------------------------------------------------------------------

void NQRandomValues::SetSeed(unsigned long s) {
  fSeed = s;
  // The stated behaviour does not ask for ownership: whoever sets a source and then a seed gives
  // the source up.
  delete fpShared;
  fpShared = nullptr;
  fOwn = NQURandom(s, true, true);
}

bool NQRandomValues::SetURNGPtr(NQURandom* p) {
  if (p == nullptr) return false;
  if (!fOwnsURNG || p == &fOwn) return true;
  fpShared = p;
  fOwnsURNG = false;
  return true;
}

// ---- Distribution -------------------------------------------------------------------------------

bool NQRandomValues::SetTolerance(double tolerance) {
  if (!(tolerance >= 0)) return false;
  fTolerance = tolerance;
  return true;
}

void NQRandomValues::SetKind(Kind kind, int dim, bool ready, bool standard) {
  fKind = kind;
  fDim = dim;
  fReady = ready;
  fStandard = standard;
}

bool NQRandomValues::SetArrays(const std::vector<double>& low, const std::vector<double>& high,
                               const NQSymMatrix* factored) {
  return GuardMemory(false, [&] {
    auto arrays = std::make_shared<Arrays>();
    if (factored != nullptr && !internal::FactorCovariance(*factored, fTolerance, arrays->factor))
      return false;
    arrays->low = low;
    arrays->high = high;
    fpArrays = std::move(arrays);
    return true;
  });
}

bool NQRandomValues::SetParamUniform() { return SetParamUniform(1); }

bool NQRandomValues::SetParamUniform(double lo, double hi) {
  if (!(hi > lo)) return false;
  fLower = lo;
  fUpper = hi;
  SetKind(kUniform, 1, true, lo == 0 && hi == 1);
  return true;
}

bool NQRandomValues::SetParamUniform(int dim) {
  if (dim < 1) return false;
  if (dim == 1) return SetParamUniform(0, 1);
  SetKind(kUniform, dim, false, true);
  return true;
}

bool NQRandomValues::SetParamUniform(const std::vector<double>& lo, const std::vector<double>& hi) {
  if (lo.empty() || lo.size() != hi.size()) return false;
  for (std::size_t i = 0; i < lo.size(); ++i) {
    if (!(lo[i] < hi[i])) return false;
  }
  if (lo.size() == 1) return SetParamUniform(lo[0], hi[0]);
  if (!SetArrays(lo, hi, nullptr)) return false;
  SetKind(kUniform, static_cast<int>(lo.size()), false, false);
  return true;
}

bool NQRandomValues::SetParamNormal() { return SetParamNormal(1); }

bool NQRandomValues::SetParamNormal(double mean, double variance) {
  if (!(variance > 0)) return false;
  fMean = mean;
  fVariance = variance;
  fSd = std::sqrt(variance);
  SetKind(kNormal, 1, true, mean == 0 && variance == 1);
  return true;
}

bool NQRandomValues::SetParamNormal(int dim) {
  if (dim < 1) return false;
  if (dim == 1) return SetParamNormal(0, 1);
  fVariance = fSd = 1;
  SetKind(kNormal, dim, false, true);
  return true;
}

bool NQRandomValues::SetParamNormal(const std::vector<double>& means,
                                    const NQSymMatrix& covariance) {
  if (means.size() != static_cast<std::size_t>(covariance.GetNRows()) ||
      !SetArrays(means, {}, &covariance))
    return false;
  if (means.size() == 1) {
    fMean = means[0];
    fVariance = covariance.GetElem(0, 0);
    fSd = std::sqrt(fVariance);
  }
  SetKind(kNormal, covariance.GetNRows(), means.size() == 1, false);
  return true;
}

bool NQRandomValues::SetParamChi(double df) {
  if (!(df > 0)) return false;
  fChiDf = df;
  SetKind(kChi, 1, true, false);
  return true;
}

bool NQRandomValues::SetParamGamma(double shape, double rate) {
  if (!(shape > 0 && rate > 0)) return false;
  fShape = shape;
  fRate = rate;
  SetKind(kGamma, 1, true, false);
  return true;
}

bool NQRandomValues::SetParamWishart(int dim, double df) {
  if (dim < 1 || !(df >= dim)) return false;
  fWishartDf = df;
  SetKind(kWishart, dim, false, true);
  return true;
}

bool NQRandomValues::SetParamWishart(int dim, double df, const NQSymMatrix& scale) {
  if (dim < 1 || !(df >= dim) || scale.GetNRows() != dim || !SetArrays({}, {}, &scale))
    return false;
  fWishartDf = df;
  SetKind(kWishart, dim, false, false);
  return true;
}

// ---- Diagnostic display -------------------------------------------------------------------------

void NQRandomValues::Display() const {
  using namespace NQDisplay_940;
  internal::DisplayObject("NQRandomValues", [&] {
    DisplayS("Seed", std::to_string(fSeed));
    DisplayD("Tolerance", fTolerance);
    DisplayB("Owns the uniform source", fOwnsURNG);
    GetURNGPtr()->Display();
    DisplayI("Distribution", fKind);
    DisplayB("Ready for a scalar draw", fReady);
    DisplayI("Dimension", fDim);
    DisplayB("Standard form", fStandard);
    DisplayD("Lower bound", fLower);
    DisplayD("Upper bound", fUpper);
    DisplayD("Mean", fMean);
    DisplayD("Variance", fVariance);
    DisplayD("Standard deviation", fSd);
    DisplayD("Chi-square degrees of freedom", fChiDf);
    DisplayD("Gamma shape", fShape);
    DisplayD("Gamma rate", fRate);
    DisplayD("Wishart degrees of freedom", fWishartDf);
    if (fpArrays != nullptr) {
      DisplayDV("Lower bounds or means", fpArrays->low, true);
      DisplayDV("Upper bounds", fpArrays->high, true);
      DisplayText(1, "Cholesky factor of the covariance or scale matrix:");
      fpArrays->factor.Display();
    }
  });
}

}  // namespace NQMath_940
