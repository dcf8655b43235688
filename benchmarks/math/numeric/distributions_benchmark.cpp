// Distribution functions and quantiles beside Boost.Math (without promotion), GSL and R's library,
// over 4,000 arguments typical of statistics: 1 to 1000 degrees of freedom, half of the
// probabilities uniform, half in the two tails down to 1e-10. Before the times it prints the worst
// relative error of everyone on these arguments, against Boost.Math in quadruple precision: only
// the peers that meet the accuracy asked of us count.
#include <nqcommon/math/numeric/NQDistFun.h>

#include <benchmark/benchmark.h>
#include <gsl/gsl_cdf.h>
#include <gsl/gsl_errno.h>
#include <boost/math/distributions.hpp>
#include <boost/multiprecision/cpp_bin_float.hpp>
// last: it defines the short names of its functions as macros
#define MATHLIB_STANDALONE
#include <Rmath.h>

#include <cmath>
#include <cstdio>
#include <random>
#include <string>
#include <vector>

#include "math/numeric/evaluations.h"
#include "support/ratio_reporter.h"

namespace {

namespace bm = boost::math;
using NQMath_940::NQDistFun;
using Quad = boost::multiprecision::cpp_bin_float_quad;

constexpr int kArguments = 4000;

using Fast =
    bm::policies::policy<bm::policies::promote_double<false>, bm::policies::promote_float<false>,
                         bm::policies::domain_error<bm::policies::ignore_error>,
                         bm::policies::overflow_error<bm::policies::ignore_error>,
                         bm::policies::evaluation_error<bm::policies::ignore_error>>;

// x is the variable, or the probability of a quantile; a and b are parameters.
struct Point {
  double x, a, b;
};
using Points = std::vector<Point>;

// Boost's distributions in the given precision.
template <class Real>
struct Peer {
  using Number = Real;
  using Normal = bm::normal_distribution<Real, Fast>;
  using Chi = bm::chi_squared_distribution<Real, Fast>;
  using Gamma = bm::gamma_distribution<Real, Fast>;
  using Beta = bm::beta_distribution<Real, Fast>;
  using T = bm::students_t_distribution<Real, Fast>;
  using F = bm::fisher_f_distribution<Real, Fast>;
  using Binomial = bm::binomial_distribution<Real, Fast>;
  using NonCentralChi = bm::non_central_chi_squared_distribution<Real, Fast>;
};
using B = Peer<double>;

double LogUniform(std::mt19937& random, double low, double high) {
  return low * std::pow(high / low, std::uniform_real_distribution<>()(random));
}

// Draw the parameters of a point.
void DrawNothing(std::mt19937&, Point&) {}
void DrawDegrees(std::mt19937& random, Point& q) {
  q.a = std::round(LogUniform(random, 1, 1000));
  q.b = std::round(LogUniform(random, 1, 1000));
}
void DrawShapes(std::mt19937& random, Point& q) {
  q.a = LogUniform(random, 0.5, 500);
  q.b = LogUniform(random, 0.5, 500);
}
void DrawTrials(std::mt19937& random, Point& q) {
  q.a = std::round(LogUniform(random, 2, 1000));
  q.b = std::uniform_real_distribution<>(0.01, 0.99)(random);
}
void DrawNonCentral(std::mt19937& random, Point& q) {
  q.a = std::round(LogUniform(random, 1, 1000));
  q.b = LogUniform(random, 0.1, 200);
}

enum class Kind { kLower, kUpper, kQuantile };

template <class Value>
using Evaluate = Value (*)(const Point&);

// A quantile that places the arguments, and trusted values.
struct Trusted {
  Evaluate<double> quantile;
  Evaluate<Quad> lower, upper, density;
};

// make(peer, q) gives the distribution of a point.
template <auto make, class Real = Quad>
constexpr Trusted kTrusted = {
    [](const Point& q) {
      return static_cast<double>(bm::quantile(make(Peer<long double>(), q), q.x));
    },
    [](const Point& q) -> Quad { return bm::cdf(make(Peer<Real>(), q), q.x); },
    [](const Point& q) -> Quad { return bm::cdf(bm::complement(make(Peer<Real>(), q), q.x)); },
    [](const Point& q) -> Quad { return bm::pdf(make(Peer<Real>(), q), q.x); }};

#define NQ_MAKE(type, ...) \
  []<class P>(P, [[maybe_unused]] const Point& q) { return typename P::type(__VA_ARGS__); }

constexpr Trusted kNormal = kTrusted<NQ_MAKE(Normal)>;
constexpr Trusted kChi = kTrusted<NQ_MAKE(Chi, q.a)>;
constexpr Trusted kGamma = kTrusted<NQ_MAKE(Gamma, q.a, 1 / typename P::Number(q.b))>;
constexpr Trusted kBeta = kTrusted<NQ_MAKE(Beta, q.a, q.b)>;
constexpr Trusted kT = kTrusted<NQ_MAKE(T, q.a)>;
constexpr Trusted kF = kTrusted<NQ_MAKE(F, q.a, q.b)>;
constexpr Trusted kBinomial = kTrusted<NQ_MAKE(Binomial, q.a, q.b)>;
constexpr Trusted kNonCentralChi = kTrusted<NQ_MAKE(NonCentralChi, q.a, q.b), long double>;

constexpr double kCentral = 1e-13;
constexpr double kNonCentral = 1e-9;
constexpr double kQuantile = 1e-12;

double BinomialLower(double k, double n, double p) {
  long status = 0;
  return NQDistFun::CdfBin(k, n, p, status);
}

struct Work {
  const char* name;
  Kind kind;
  double accuracy;
  void (*draw)(std::mt19937& random, Point& q);
  const Trusted& trusted;
  Evaluate<double> ours, boost, gsl, r;  // null where a peer has none
};

#define NQ_CALL(call) [](const Point& q) -> double { return call; }

const Work kWorks[] = {
    {"CdfNorm", Kind::kLower, kCentral, DrawNothing, kNormal, NQ_CALL(NQDistFun::CdfStdNorm(q.x)),
     NQ_CALL(bm::cdf(B::Normal(), q.x)), NQ_CALL(gsl_cdf_ugaussian_P(q.x)),
     NQ_CALL(pnorm(q.x, 0, 1, 1, 0))},
    {"CdfChi", Kind::kLower, kCentral, DrawDegrees, kChi, NQ_CALL(NQDistFun::CdfChi(q.x, q.a)),
     NQ_CALL(bm::cdf(B::Chi(q.a), q.x)), NQ_CALL(gsl_cdf_chisq_P(q.x, q.a)),
     NQ_CALL(pchisq(q.x, q.a, 1, 0))},
    {"SigChi", Kind::kUpper, kCentral, DrawDegrees, kChi, NQ_CALL(NQDistFun::SigChi(q.x, q.a)),
     NQ_CALL(bm::cdf(bm::complement(B::Chi(q.a), q.x))), NQ_CALL(gsl_cdf_chisq_Q(q.x, q.a)),
     NQ_CALL(pchisq(q.x, q.a, 0, 0))},
    {"CdfGam", Kind::kLower, kCentral, DrawShapes, kGamma,
     NQ_CALL(NQDistFun::CdfGam(q.x, q.a, q.b)), NQ_CALL(bm::cdf(B::Gamma(q.a, 1 / q.b), q.x)),
     NQ_CALL(gsl_cdf_gamma_P(q.x, q.a, 1 / q.b)), NQ_CALL(pgamma(q.x, q.a, 1 / q.b, 1, 0))},
    {"CdfBin", Kind::kLower, kCentral, DrawTrials, kBinomial, NQ_CALL(BinomialLower(q.x, q.a, q.b)),
     NQ_CALL(bm::cdf(B::Binomial(q.a, q.b), q.x)),
     NQ_CALL(gsl_cdf_binomial_P(static_cast<unsigned>(q.x), q.b, static_cast<unsigned>(q.a))),
     NQ_CALL(pbinom(q.x, q.a, q.b, 1, 0))},
    {"CdfT", Kind::kLower, kCentral, DrawDegrees, kT, NQ_CALL(NQDistFun::CdfT(q.x, q.a)),
     NQ_CALL(bm::cdf(B::T(q.a), q.x)), NQ_CALL(gsl_cdf_tdist_P(q.x, q.a)),
     NQ_CALL(pt(q.x, q.a, 1, 0))},
    {"CdfF", Kind::kLower, kCentral, DrawDegrees, kF, NQ_CALL(NQDistFun::CdfF(q.x, q.a, q.b)),
     NQ_CALL(bm::cdf(B::F(q.a, q.b), q.x)), NQ_CALL(gsl_cdf_fdist_P(q.x, q.a, q.b)),
     NQ_CALL(pf(q.x, q.a, q.b, 1, 0))},
    {"SigF", Kind::kUpper, kCentral, DrawDegrees, kF, NQ_CALL(NQDistFun::SigF(q.x, q.a, q.b)),
     NQ_CALL(bm::cdf(bm::complement(B::F(q.a, q.b), q.x))), NQ_CALL(gsl_cdf_fdist_Q(q.x, q.a, q.b)),
     NQ_CALL(pf(q.x, q.a, q.b, 0, 0))},
    {"CdfBeta", Kind::kLower, kCentral, DrawShapes, kBeta,
     NQ_CALL(NQDistFun::CdfBeta(q.x, q.a, q.b)), NQ_CALL(bm::cdf(B::Beta(q.a, q.b), q.x)),
     NQ_CALL(gsl_cdf_beta_P(q.x, q.a, q.b)), NQ_CALL(pbeta(q.x, q.a, q.b, 1, 0))},
    {"NcCdfChi", Kind::kLower, kNonCentral, DrawNonCentral, kNonCentralChi,
     NQ_CALL(NQDistFun::NonCentralCdfChi(q.x, q.a, q.b)),
     NQ_CALL(bm::cdf(B::NonCentralChi(q.a, q.b), q.x)), nullptr,
     NQ_CALL(pnchisq(q.x, q.a, q.b, 1, 0))},
    {"IdfNorm", Kind::kQuantile, kQuantile, DrawNothing, kNormal,
     NQ_CALL(NQDistFun::IdfStdNorm(q.x)), NQ_CALL(bm::quantile(B::Normal(), q.x)),
     NQ_CALL(gsl_cdf_ugaussian_Pinv(q.x)), NQ_CALL(qnorm(q.x, 0, 1, 1, 0))},
    {"IdfChi", Kind::kQuantile, kQuantile, DrawDegrees, kChi, NQ_CALL(NQDistFun::IdfChi(q.x, q.a)),
     NQ_CALL(bm::quantile(B::Chi(q.a), q.x)), NQ_CALL(gsl_cdf_chisq_Pinv(q.x, q.a)),
     NQ_CALL(qchisq(q.x, q.a, 1, 0))},
    {"IdfGam", Kind::kQuantile, kQuantile, DrawShapes, kGamma,
     NQ_CALL(NQDistFun::IdfGam(q.x, q.a, q.b)), NQ_CALL(bm::quantile(B::Gamma(q.a, 1 / q.b), q.x)),
     NQ_CALL(gsl_cdf_gamma_Pinv(q.x, q.a, 1 / q.b)), NQ_CALL(qgamma(q.x, q.a, 1 / q.b, 1, 0))},
    {"IdfT", Kind::kQuantile, kQuantile, DrawDegrees, kT,
     NQ_CALL(NQDistFun::IdfT(q.x, q.a, 1e-20, 1e-12)), NQ_CALL(bm::quantile(B::T(q.a), q.x)),
     NQ_CALL(gsl_cdf_tdist_Pinv(q.x, q.a)), NQ_CALL(qt(q.x, q.a, 1, 0))},
    {"IdfF", Kind::kQuantile, kQuantile, DrawDegrees, kF, NQ_CALL(NQDistFun::IdfF(q.x, q.a, q.b)),
     NQ_CALL(bm::quantile(B::F(q.a, q.b), q.x)), NQ_CALL(gsl_cdf_fdist_Pinv(q.x, q.a, q.b)),
     NQ_CALL(qf(q.x, q.a, q.b, 1, 0))},
    {"IdfBeta", Kind::kQuantile, kQuantile, DrawShapes, kBeta,
     NQ_CALL(NQDistFun::IdfBeta(q.x, q.a, q.b)), NQ_CALL(bm::quantile(B::Beta(q.a, q.b), q.x)),
     NQ_CALL(gsl_cdf_beta_Pinv(q.x, q.a, q.b)), NQ_CALL(qbeta(q.x, q.a, q.b, 1, 0))},
};

Points Draws(const Work& work) {
  std::mt19937 random(1);
  Points points(kArguments);
  for (int i = 0; i < kArguments; ++i) {
    Point& q = points[static_cast<std::size_t>(i)];
    q = {0, 0, 0};
    work.draw(random, q);
    const double tail = LogUniform(random, 1e-10, 0.5);
    const double uniform = std::uniform_real_distribution<>(1e-6, 1)(random);
    q.x = i % 2 == 0 ? uniform : i % 4 == 1 ? tail : 1 - tail;
    if (work.kind != Kind::kQuantile) q.x = work.trusted.quantile(q);
  }
  return points;
}

// The error of a quantile x is taken as (F(x) - p)/(x f(x)): no quantile need be trusted.
double Error(const Work& work, const Point& q, double got) {
  const Trusted& trusted = work.trusted;
  if (!std::isfinite(got)) return INFINITY;
  if (work.kind == Kind::kQuantile) {
    const Point at = {got, q.a, q.b};
    const Quad miss = trusted.lower(at) - q.x;
    return std::fabs(static_cast<double>(miss / (trusted.density(at) * got)));
  }
  const Quad want = work.kind == Kind::kLower ? trusted.lower(q) : trusted.upper(q);
  return std::fabs(static_cast<double>(got / want - 1));
}

void PrintAccuracy(const Work& work, const Points& points) {
  const auto print = [&](const char* name, Evaluate<double> evaluate) {
    if (evaluate == nullptr) return;
    double worst = 0;
    Point at{};
    for (const Point& q : points) {
      const double error = Error(work, q, evaluate(q));
      if (error > worst) {
        worst = error;
        at = q;
      }
    }
    std::printf("%-8s %-6s %8.1e %-6s at %.17g, %.17g, %.17g\n", work.name, name, worst,
                worst <= work.accuracy ? "meets" : "misses", at.x, at.a, at.b);
  };
  print("ours", work.ours);
  print("boost", work.boost);
  print("gsl", work.gsl);
  print("r", work.r);
}

}  // namespace

int main(int argc, char** argv) {
  gsl_set_error_handler_off();
  for (const Work& work : kWorks) {
    const Points points = Draws(work);
    PrintAccuracy(work, points);
    nqbench::RegisterEvaluations(work.name, "ours", work.ours, points);
    nqbench::RegisterEvaluations(work.name, "boost", work.boost, points);
    nqbench::RegisterEvaluations(work.name, "gsl", work.gsl, points);
    nqbench::RegisterEvaluations(work.name, "r", work.r, points);
  }
  return nqbench::RunWithRatios(argc, argv);
}
