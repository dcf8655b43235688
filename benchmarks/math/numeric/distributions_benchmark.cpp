// Distribution functions and quantiles beside Boost.Math (without promotion), GSL and R's library,
// over 4,000 arguments typical of statistics: 1 to 1000 degrees of freedom, half of the
// probabilities uniform, half in the two tails down to 1e-10. Before the times it prints the worst
// relative error of everyone on these arguments, against Boost.Math in long double: a peer that
// misses the accuracy is no measure.
#include <nqcommon/math/numeric/NQDistFun.h>

#include <benchmark/benchmark.h>
#include <gsl/gsl_cdf.h>
#include <gsl/gsl_errno.h>
#include <boost/math/distributions.hpp>
// last: it defines the short names of its functions as macros
#define MATHLIB_STANDALONE
#include <Rmath.h>

#include <cmath>
#include <cstdio>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "support/ratio_reporter.h"

namespace {

namespace bm = boost::math;
using NQMath_940::NQDistFun;

constexpr int kArguments = 4000;

using Fast = bm::policies::policy<bm::policies::promote_double<false>,
                                  bm::policies::promote_float<false>,
                                  bm::policies::domain_error<bm::policies::ignore_error>,
                                  bm::policies::overflow_error<bm::policies::ignore_error>,
                                  bm::policies::evaluation_error<bm::policies::ignore_error>>;
using Long = bm::policies::policy<bm::policies::promote_double<false>>;

// x is the variable, or the probability of a quantile; a, b, c are parameters.
struct Point {
  double x, a, b, c;
};
using Points = std::vector<Point>;

template <class Real, class Policy>
struct Peer {
  using Normal = bm::normal_distribution<Real, Policy>;
  using Chi = bm::chi_squared_distribution<Real, Policy>;
  using Gamma = bm::gamma_distribution<Real, Policy>;
  using Beta = bm::beta_distribution<Real, Policy>;
  using T = bm::students_t_distribution<Real, Policy>;
  using F = bm::fisher_f_distribution<Real, Policy>;
  using Binomial = bm::binomial_distribution<Real, Policy>;
  using NonCentralChi = bm::non_central_chi_squared_distribution<Real, Policy>;
};

// Draws the parameters of a point.
using Draw = void (*)(std::mt19937& random, Point& point);

double LogUniform(std::mt19937& random, double low, double high) {
  return low * std::pow(high / low, std::uniform_real_distribution<>()(random));
}

void DrawNothing(std::mt19937&, Point&) {}
void DrawDegrees(std::mt19937& random, Point& point) {
  point.a = std::round(LogUniform(random, 1, 1000));
  point.b = std::round(LogUniform(random, 1, 1000));
}
void DrawShapes(std::mt19937& random, Point& point) {
  point.a = LogUniform(random, 0.5, 500);
  point.b = LogUniform(random, 0.5, 500);
}
void DrawTrials(std::mt19937& random, Point& point) {
  point.a = std::round(LogUniform(random, 2, 1000));
  point.b = std::uniform_real_distribution<>(0.01, 0.99)(random);
}
void DrawNonCentral(std::mt19937& random, Point& point) {
  DrawDegrees(random, point);
  point.b = LogUniform(random, 0.1, 200);
}

template <class Value>
using Evaluate = Value (*)(const Point&);

struct Work {
  const char* name;
  double accuracy;  // relative
  Draw draw;
  Evaluate<long double> quantile;  // places x for a probability; null where x is the probability
  Evaluate<long double> trusted;
  Evaluate<double> ours, boost, gsl, r;  // null where a peer has none
};

using B = Peer<double, Fast>;
using L = Peer<long double, Long>;

#define NQ_CDF(type, ...)                                                                 \
  [](const Point& q) -> long double { return bm::quantile(L::type(__VA_ARGS__), q.x); },  \
      [](const Point& q) -> long double { return bm::cdf(L::type(__VA_ARGS__), q.x); }
#define NQ_SIG(type, ...)                                                                 \
  [](const Point& q) -> long double { return bm::quantile(L::type(__VA_ARGS__), q.x); },  \
      [](const Point& q) -> long double {                                                 \
        return bm::cdf(bm::complement(L::type(__VA_ARGS__), q.x));                        \
      }
#define NQ_IDF(type, ...) \
  nullptr, [](const Point& q) -> long double { return bm::quantile(L::type(__VA_ARGS__), q.x); }
#define NQ_CALL(call) [](const Point& q) -> double { return call; }

constexpr double kCdf = 1e-13;
constexpr double kIdf = 1e-12;
constexpr double kNonCentral = 1e-9;

const Work kWorks[] = {
    {"CdfNorm", kCdf, DrawNothing, NQ_CDF(Normal), NQ_CALL(NQDistFun::CdfStdNorm(q.x)),
     NQ_CALL(bm::cdf(B::Normal(), q.x)), NQ_CALL(gsl_cdf_ugaussian_P(q.x)),
     NQ_CALL(pnorm(q.x, 0, 1, 1, 0))},
    {"CdfChi", kCdf, DrawDegrees, NQ_CDF(Chi, q.a), NQ_CALL(NQDistFun::CdfChi(q.x, q.a)),
     NQ_CALL(bm::cdf(B::Chi(q.a), q.x)), NQ_CALL(gsl_cdf_chisq_P(q.x, q.a)),
     NQ_CALL(pchisq(q.x, q.a, 1, 0))},
    {"SigChi", kCdf, DrawDegrees, NQ_SIG(Chi, q.a), NQ_CALL(NQDistFun::SigChi(q.x, q.a)),
     NQ_CALL(bm::cdf(bm::complement(B::Chi(q.a), q.x))), NQ_CALL(gsl_cdf_chisq_Q(q.x, q.a)),
     NQ_CALL(pchisq(q.x, q.a, 0, 0))},
    {"CdfGam", kCdf, DrawShapes, NQ_CDF(Gamma, q.a, 1 / static_cast<long double>(q.b)),
     NQ_CALL(NQDistFun::CdfGam(q.x, q.a, q.b)), NQ_CALL(bm::cdf(B::Gamma(q.a, 1 / q.b), q.x)),
     NQ_CALL(gsl_cdf_gamma_P(q.x, q.a, 1 / q.b)), NQ_CALL(pgamma(q.x, q.a, 1 / q.b, 1, 0))},
    {"CdfBeta", kCdf, DrawShapes, NQ_CDF(Beta, q.a, q.b),
     NQ_CALL(NQDistFun::CdfBeta(q.x, q.a, q.b)), NQ_CALL(bm::cdf(B::Beta(q.a, q.b), q.x)),
     NQ_CALL(gsl_cdf_beta_P(q.x, q.a, q.b)), NQ_CALL(pbeta(q.x, q.a, q.b, 1, 0))},
    {"CdfT", kCdf, DrawDegrees, NQ_CDF(T, q.a), NQ_CALL(NQDistFun::CdfT(q.x, q.a)),
     NQ_CALL(bm::cdf(B::T(q.a), q.x)), NQ_CALL(gsl_cdf_tdist_P(q.x, q.a)),
     NQ_CALL(pt(q.x, q.a, 1, 0))},
    {"CdfF", kCdf, DrawDegrees, NQ_CDF(F, q.a, q.b), NQ_CALL(NQDistFun::CdfF(q.x, q.a, q.b)),
     NQ_CALL(bm::cdf(B::F(q.a, q.b), q.x)), NQ_CALL(gsl_cdf_fdist_P(q.x, q.a, q.b)),
     NQ_CALL(pf(q.x, q.a, q.b, 1, 0))},
    {"SigF", kCdf, DrawDegrees, NQ_SIG(F, q.a, q.b), NQ_CALL(NQDistFun::SigF(q.x, q.a, q.b)),
     NQ_CALL(bm::cdf(bm::complement(B::F(q.a, q.b), q.x))),
     NQ_CALL(gsl_cdf_fdist_Q(q.x, q.a, q.b)), NQ_CALL(pf(q.x, q.a, q.b, 0, 0))},
    {"IdfNorm", kIdf, DrawNothing, NQ_IDF(Normal), NQ_CALL(NQDistFun::IdfStdNorm(q.x)),
     NQ_CALL(bm::quantile(B::Normal(), q.x)), NQ_CALL(gsl_cdf_ugaussian_Pinv(q.x)),
     NQ_CALL(qnorm(q.x, 0, 1, 1, 0))},
    {"IdfChi", kIdf, DrawDegrees, NQ_IDF(Chi, q.a), NQ_CALL(NQDistFun::IdfChi(q.x, q.a)),
     NQ_CALL(bm::quantile(B::Chi(q.a), q.x)), NQ_CALL(gsl_cdf_chisq_Pinv(q.x, q.a)),
     NQ_CALL(qchisq(q.x, q.a, 1, 0))},
    {"IdfGam", kIdf, DrawShapes, NQ_IDF(Gamma, q.a, 1 / static_cast<long double>(q.b)),
     NQ_CALL(NQDistFun::IdfGam(q.x, q.a, q.b)), NQ_CALL(bm::quantile(B::Gamma(q.a, 1 / q.b), q.x)),
     NQ_CALL(gsl_cdf_gamma_Pinv(q.x, q.a, 1 / q.b)), NQ_CALL(qgamma(q.x, q.a, 1 / q.b, 1, 0))},
    {"IdfBeta", kIdf, DrawShapes, NQ_IDF(Beta, q.a, q.b),
     NQ_CALL(NQDistFun::IdfBeta(q.x, q.a, q.b)), NQ_CALL(bm::quantile(B::Beta(q.a, q.b), q.x)),
     nullptr, NQ_CALL(qbeta(q.x, q.a, q.b, 1, 0))},
    {"IdfT", kIdf, DrawDegrees, NQ_IDF(T, q.a), NQ_CALL(NQDistFun::IdfT(q.x, q.a, 1e-20, 1e-12)),
     NQ_CALL(bm::quantile(B::T(q.a), q.x)), NQ_CALL(gsl_cdf_tdist_Pinv(q.x, q.a)),
     NQ_CALL(qt(q.x, q.a, 1, 0))},
    {"IdfF", kIdf, DrawDegrees, NQ_IDF(F, q.a, q.b), NQ_CALL(NQDistFun::IdfF(q.x, q.a, q.b)),
     NQ_CALL(bm::quantile(B::F(q.a, q.b), q.x)), NQ_CALL(gsl_cdf_fdist_Pinv(q.x, q.a, q.b)),
     NQ_CALL(qf(q.x, q.a, q.b, 1, 0))},
};

Points Draws(const Work& work) {
  std::mt19937 random(1);
  Points points(kArguments);
  for (int i = 0; i < kArguments; ++i) {
    Point& q = points[static_cast<std::size_t>(i)];
    q = {0, 0, 0, 0};
    work.draw(random, q);
    const double tail = LogUniform(random, 1e-10, 0.5);
    q.x = i % 2 == 0 ? std::uniform_real_distribution<>(1e-6, 1)(random)
                     : i % 4 == 1 ? tail : 1 - tail;
    if (work.quantile != nullptr) q.x = static_cast<double>(work.quantile(q));
  }
  return points;
}

void PrintAccuracy(const Work& work, const Points& points) {
  const auto print = [&](const char* name, Evaluate<double> evaluate) {
    if (evaluate == nullptr) return;
    long double worst = 0;
    Point at{};
    for (const Point& q : points) {
      const long double want = work.trusted(q);
      const long double error = std::fabs(evaluate(q) - want) / std::fabs(want);
      if (!(error <= worst)) {
        worst = error;
        at = q;
      }
    }
    std::printf("%-8s %-6s %8.1Le %-6s at %.17g, %.17g, %.17g\n", work.name, name, worst,
                worst <= work.accuracy ? "meets" : "misses", at.x, at.a, at.b);
  };
  print("ours", work.ours);
  print("boost", work.boost);
  print("gsl", work.gsl);
  print("r", work.r);
}

void Register(const Work& work, const char* peer, Evaluate<double> evaluate, const Points& points) {
  if (evaluate == nullptr) return;
  const std::string name =
      std::string(work.name) + "/" + peer + "/" + std::to_string(points.size());
  benchmark::RegisterBenchmark(name.c_str(),
                               [evaluate, points](benchmark::State& state) {
                                 for (auto _ : state) {
                                   for (const Point& q : points)
                                     benchmark::DoNotOptimize(evaluate(q));
                                 }
                               })
      ->Unit(benchmark::kMicrosecond)
      ->MinTime(0.05)
      ->Repetitions(3);
}

}  // namespace

int main(int argc, char** argv) {
  gsl_set_error_handler_off();
  for (const Work& work : kWorks) {
    const Points points = Draws(work);
    PrintAccuracy(work, points);
    Register(work, "ours", work.ours, points);
    Register(work, "boost", work.boost, points);
    Register(work, "gsl", work.gsl, points);
    Register(work, "r", work.r, points);
  }
  return nqbench::RunWithRatios(argc, argv);
}
