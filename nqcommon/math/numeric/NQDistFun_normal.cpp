#include <nqcommon/math/numeric/NQDistFun.h>

#include <array>
#include <cmath>

#include <nqcommon/common/NQMV.h>
#include <nqcommon/math/kernels/polynomial.h>
#include <nqcommon/math/numeric/internal/normal_tail.h>
#include <nqcommon/math/numeric/internal/tails.h>

namespace NQMath_940 {

using namespace internal;
using NQCommon_940::NQMV;

namespace {

// Wichura 1988, algorithm AS 241 (PPND16): numerator and denominator of each rational function,
// lowest power first.
struct Rational {
  std::array<double, 8> numerator;
  std::array<double, 8> denominator;
};

// kCentral is in powers of 0.425^2 - q^2, for |q| = |p - 1/2| up to 0.425.
constexpr Rational kCentral = {
    {3.3871328727963666080, 1.3314166789178437745e+2, 1.9715909503065514427e+3,
     1.3731693765509461125e+4, 4.5921953931549871457e+4, 6.7265770927008700853e+4,
     3.3430575583588128105e+4, 2.5090809287301226727e+3},
    {1, 4.2313330701600911252e+1, 6.8718700749205790830e+2, 5.3941960214247511077e+3,
     2.1213794301586595867e+4, 3.9307895800092710610e+4, 2.8729085735721942674e+4,
     5.2264952788528545610e+3}};
// kMiddle is in powers of r - 1.6, for r = sqrt(-ln(tail)) up to 5.
constexpr Rational kMiddle = {
    {1.42343711074968357734, 4.63033784615654529590, 5.76949722146069140550, 3.64784832476320460504,
     1.27045825245236838258, 2.41780725177450611770e-1, 2.27238449892691845833e-2,
     7.74545014278341407640e-4},
    {1, 2.05319162663775882187, 1.67638483018380384940, 6.89767334985100004550e-1,
     1.48103976427480074590e-1, 1.51986665636164571966e-2, 5.47593808499534494600e-4,
     1.05075007164441684324e-9}};
// kFar is in powers of r - 5, for r from 5 to 27.
constexpr Rational kFar = {
    {6.65790464350110377720, 5.46378491116411436990, 1.78482653991729133580,
     2.96560571828504891230e-1, 2.65321895265761230930e-2, 1.24266094738807843860e-3,
     2.71155556874348757815e-5, 2.01033439929228813265e-7},
    {1, 5.99832206555887937690e-1, 1.36929880922735805310e-1, 1.48753612908506148525e-2,
     7.86869131145613259100e-4, 1.84631831751005468180e-5, 1.42151175831644588870e-7,
     2.04426310338993978564e-15}};

double Evaluate(const Rational& rational, double x) {
  return Polynomial(rational.numerator, x) / Polynomial(rational.denominator, x);
}

}  // namespace

double NQDistFun::derf(const double& x) { return std::erf(x); }

double NQDistFun::derfc(const double& x) { return ZeroOrMore(std::erfc(x)); }

double NQDistFun::prbnrm(const double& z) { return NormalLower(z); }

double NQDistFun::probit(const double& p) {
  if (!(p > 0 && p < 1)) return NQMV::Missing();
  const double q = p - 0.5;
  if (std::fabs(q) <= 0.425) return q * Evaluate(kCentral, 0.180625 - q * q);
  const double r = std::sqrt(-std::log(q < 0 ? p : 1 - p));
  return std::copysign(r <= 5 ? Evaluate(kMiddle, r - 1.6) : Evaluate(kFar, r - 5), q);
}

double NQDistFun::CdfStdNorm(double z) { return NormalLower(z); }

double NQDistFun::CdfNorm(double x, double mean, double sd) {
  return sd <= 0 ? NQMV::Missing() : NormalLower((x - mean) / sd);
}

double NQDistFun::PdfNormalStandard(double z) { return NormalExponential(z) * kInverseSqrt2Pi; }

double NQDistFun::PdfNormal(double x, double mean, double sd) {
  return sd == 0 ? NQMV::Missing() : PdfNormalStandard((x - mean) / sd) / sd;
}

double NQDistFun::IdfStdNorm(double p) { return probit(p); }

double NQDistFun::IdfNorm(double p, double mean, double sd) {
  if (!(p > 0 && p < 1 && sd > 0)) return NQMV::Missing();
  return NQMV::MissingIfNaN(p == 0.5 ? mean : mean + sd * probit(p));
}

}  // namespace NQMath_940
