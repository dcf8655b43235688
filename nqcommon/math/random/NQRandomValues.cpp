#include <nqcommon/math/random/NQRandomValues.h>

#include <cmath>
#include <cstddef>
#include <string>
#include <utility>

#include <nqcommon/common/display.h>
#include <nqcommon/math/random/internal/covariance_factor.h>

namespace NQMath_940 {

namespace {

// Order -1 when there is no memory for it.
NQSymMatrix Identity(int n) {
  NQSymMatrix identity(n, true);
  identity.AddToDiagonal(1);
  return identity;
}

}  // namespace

// ---- Uniform source -----------------------------------------------------------------------------

NQRandomValues::Source::Source(unsigned long seed)
    : fpOwn(std::make_unique<NQURandom>(seed, true, true)) {}

NQRandomValues::Source::Source(const Source& other)
    : fpOwn(other.fpOwn != nullptr ? std::make_unique<NQURandom>(*other.fpOwn) : nullptr),
      fpShared(other.fpShared),
      fOwnsURNG(other.fOwnsURNG) {}

NQRandomValues::Source& NQRandomValues::Source::operator=(const Source& other) {
  Source copy(other);
  fpOwn.swap(copy.fpOwn);
  fpShared = copy.fpShared;
  fOwnsURNG = copy.fOwnsURNG;
  return *this;
}

void NQRandomValues::SetSeed(unsigned long s) {
  fSeed = s;
  // Ownership is not asked for: whoever sets a source and then a seed gives the source up.
  if (fSource.fpShared != nullptr) fSource.fpOwn.reset(fSource.fpShared);
  fSource.fpShared = nullptr;
  fSource.fpOwn = std::make_unique<NQURandom>(s, true, true);
}

bool NQRandomValues::SetURNGPtr(NQURandom* p) {
  if (p == nullptr) return false;
  if (!fSource.fOwnsURNG || p == fSource.fpOwn.get()) return true;
  fSource.fpShared = p;
  fSource.fpOwn.reset();
  fSource.fOwnsURNG = false;
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
  const auto n = static_cast<std::size_t>(dim);
  SetParamUniform(std::vector<double>(n, 0.0), std::vector<double>(n, 1.0));
  fStandard = true;
  return true;
}

bool NQRandomValues::SetParamUniform(const std::vector<double>& lo, const std::vector<double>& hi) {
  if (lo.empty() || lo.size() != hi.size()) return false;
  for (std::size_t i = 0; i < lo.size(); ++i) {
    if (!(lo[i] < hi[i])) return false;
  }
  if (lo.size() == 1) {
    fLower = lo[0];
    fUpper = hi[0];
  }
  fvLower = lo;
  fvUpper = hi;
  SetKind(kUniform, static_cast<int>(lo.size()), lo.size() == 1, false);
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
  NQSymMatrix covariance = Identity(dim);
  if (!covariance.IsValidMatrix()) return false;
  fmCovariance = std::move(covariance);
  fvWork.assign(static_cast<std::size_t>(dim), 1.0);
  fVariance = 1;
  fSd = 1;
  if (dim == 1) fMean = 0;
  SetKind(kNormal, dim, dim == 1, true);
  return true;
}

bool NQRandomValues::SetParamNormal(const std::vector<double>& means,
                                    const NQSymMatrix& covariance) {
  NQSymMatrix factor;
  if (means.size() != static_cast<std::size_t>(covariance.GetNRows()) ||
      !internal::FactorCovariance(covariance, fTolerance, factor))
    return false;
  fvMean = means;
  fmCovariance = covariance;
  fmFactor = std::move(factor);
  fvWork.resize(means.size());
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
  NQSymMatrix scale = Identity(dim);
  if (!scale.IsValidMatrix()) return false;
  fmScale = std::move(scale);
  fWishartDim = dim;
  fWishartDf = df;
  SetKind(kWishart, dim, false, true);
  return true;
}

bool NQRandomValues::SetParamWishart(int dim, double df, const NQSymMatrix& scale) {
  NQSymMatrix factor;
  if (dim < 1 || !(df >= dim) || scale.GetNRows() != dim ||
      !internal::FactorCovariance(scale, fTolerance, factor))
    return false;
  fmScale = scale;
  fmFactor = std::move(factor);
  fWishartDim = dim;
  fWishartDf = df;
  SetKind(kWishart, dim, false, false);
  return true;
}

// ---- Diagnostic display -------------------------------------------------------------------------

void NQRandomValues::Display() const {
  using namespace NQDisplay_940;
  DisplayText(1, "NQRandomValues display start");
  DisplayS("Seed", std::to_string(fSeed));
  DisplayD("Tolerance", fTolerance);
  DisplayB("Owns the uniform source", fSource.fOwnsURNG);
  GetURNGPtr()->Display();
  DisplayI("Distribution", fKind);
  DisplayB("Ready for a scalar draw", fReady);
  DisplayI("Dimension", fDim);
  DisplayB("Standard form", fStandard);
  DisplayD("Lower bound", fLower);
  DisplayD("Upper bound", fUpper);
  DisplayDV("Lower bounds", fvLower, true);
  DisplayDV("Upper bounds", fvUpper, true);
  DisplayD("Mean", fMean);
  DisplayDV("Means", fvMean, true);
  DisplayD("Variance", fVariance);
  DisplayText(1, "Covariance matrix:");
  fmCovariance.Display();
  DisplayD("Standard deviation", fSd);
  DisplayD("Chi-square degrees of freedom", fChiDf);
  DisplayD("Gamma shape", fShape);
  DisplayD("Gamma rate", fRate);
  DisplayI("Wishart dimension", fWishartDim);
  DisplayD("Wishart degrees of freedom", fWishartDf);
  DisplayText(1, "Scale matrix:");
  fmScale.Display();
  DisplayText(1, "NQRandomValues display end");
}

}  // namespace NQMath_940
