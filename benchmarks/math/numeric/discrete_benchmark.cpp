// Discrete and noncentral distributions that distributions_benchmark.cpp does not time, beside
// Boost.Math (without promotion), GSL and R's library: 4,000 arguments each, 1 to 1000 trials or
// degrees of freedom, noncentralities from 0.1 to 200 (t: 0.03 to 10), probabilities half uniform
// and half in the two tails down to 1e-10. R's noncentral t has no digits in the lower tail and
// prints a warning there, so it is left out. Before the times it prints the largest relative
// difference of every peer from ours.
#include <nqcommon/math/numeric/NQDistFun.h>

#include <benchmark/benchmark.h>
#include <gsl/gsl_cdf.h>
#include <gsl/gsl_randist.h>
#include <boost/math/distributions.hpp>
// last: it defines the short names of its functions as macros
#define MATHLIB_STANDALONE
#include <Rmath.h>

#include <algorithm>
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

using Fast =
    bm::policies::policy<bm::policies::promote_double<false>, bm::policies::promote_float<false>,
                         bm::policies::discrete_quantile<bm::policies::integer_round_up>,
                         bm::policies::domain_error<bm::policies::ignore_error>,
                         bm::policies::overflow_error<bm::policies::ignore_error>,
                         bm::policies::evaluation_error<bm::policies::ignore_error>>;
using Binomial = bm::binomial_distribution<double, Fast>;
using NegativeBinomial = bm::negative_binomial_distribution<double, Fast>;
using NonCentralF = bm::non_central_f_distribution<double, Fast>;
using NonCentralT = bm::non_central_t_distribution<double, Fast>;

// A variable or a probability, and parameters.
struct Point {
  double x, a, b, c;
};

class Source {
 public:
  double Uniform(double low, double high) {
    return std::uniform_real_distribution<>(low, high)(fRandom);
  }
  double LogUniform(double low, double high) { return low * std::pow(high / low, Uniform(0, 1)); }
  double Count(double low, double high) { return std::round(LogUniform(low, high)); }
  double Probability() {
    const double kind = Uniform(0, 1);
    if (kind < 0.5) return Uniform(1e-6, 1);
    const double tail = LogUniform(1e-10, 0.5);
    return kind < 0.75 ? tail : 1 - tail;
  }

 private:
  std::mt19937 fRandom{1};
};

Point DrawBinomialProbability(Source& source) {
  return {source.Probability(), source.Count(2, 1000), source.Uniform(0.01, 0.99), 0};
}
Point DrawBinomial(Source& source) {
  const Point q = DrawBinomialProbability(source);
  return {qbinom(q.x, q.a, q.b, 1, 0), q.a, q.b, 0};
}
Point DrawNegativeBinomial(Source& source) {
  const Point q = DrawBinomialProbability(source);
  return {qnbinom(q.x, q.a, q.b, 1, 0), q.a, q.b, 0};
}
// k of c drawn from a marked and b others.
Point DrawHypergeometric(Source& source) {
  const double marked = source.Count(2, 1000);
  const double others = source.Count(2, 1000);
  const double drawn = std::floor(source.Uniform(1, marked + others));
  return {qhyper(source.Probability(), marked, others, drawn, 1, 0), marked, others, drawn};
}
Point DrawNonCentralF(Source& source) {
  const double p = source.Probability();
  const double df1 = source.Count(1, 1000), df2 = source.Count(1, 1000);
  const double ncp = source.LogUniform(0.1, 200);
  return {bm::quantile(NonCentralF(df1, df2, ncp), p), df1, df2, ncp};
}
Point DrawNonCentralT(Source& source) {
  const double p = source.Probability();
  const double df = source.Count(1, 1000), ncp = source.LogUniform(0.03, 10);
  return {bm::quantile(NonCentralT(df, ncp), p), df, ncp, 0};
}

using Evaluate = double (*)(const Point&);

struct Work {
  const char* name;
  Point (*draw)(Source&);
  Evaluate ours, boost, gsl, r;  // null where a peer has none
};

#define NQ_CALL(call)                                                                      \
  [](const Point& q) -> double {                                                           \
    [[maybe_unused]] long status = 0;                                                      \
    [[maybe_unused]] int hypergeometric = 0;                                               \
    [[maybe_unused]] const auto count = [](double x) { return static_cast<unsigned>(x); }; \
    return call;                                                                           \
  }

const Work kWorks[] = {
    {"PdfBin", DrawBinomial, NQ_CALL(NQDistFun::PdfBin(q.x, q.a, q.b, status)),
     NQ_CALL(bm::pdf(Binomial(q.a, q.b), q.x)),
     NQ_CALL(gsl_ran_binomial_pdf(count(q.x), q.b, count(q.a))), NQ_CALL(dbinom(q.x, q.a, q.b, 0))},
    {"IdfBin", DrawBinomialProbability, NQ_CALL(NQDistFun::IdfBin(q.x, q.a, q.b, status)),
     NQ_CALL(bm::quantile(Binomial(q.a, q.b), q.x)), nullptr, NQ_CALL(qbinom(q.x, q.a, q.b, 1, 0))},
    {"PdfNegBin", DrawNegativeBinomial, NQ_CALL(NQDistFun::PdfNegBin(q.x, q.a, q.b, status)),
     NQ_CALL(bm::pdf(NegativeBinomial(q.a, q.b), q.x)),
     NQ_CALL(gsl_ran_negative_binomial_pdf(count(q.x), q.b, q.a)),
     NQ_CALL(dnbinom(q.x, q.a, q.b, 0))},
    {"CDFHyper", DrawHypergeometric,
     NQ_CALL(NQDistFun::CDFHyper(q.x, q.a + q.b, q.a, q.c, hypergeometric)), nullptr,
     NQ_CALL(gsl_cdf_hypergeometric_P(count(q.x), count(q.a), count(q.b), count(q.c))),
     NQ_CALL(phyper(q.x, q.a, q.b, q.c, 1, 0))},
    {"NcCdfF", DrawNonCentralF, NQ_CALL(NQDistFun::NonCentralCdfF(q.x, q.a, q.b, q.c, 1e-12)),
     NQ_CALL(bm::cdf(NonCentralF(q.a, q.b, q.c), q.x)), nullptr,
     NQ_CALL(pnf(q.x, q.a, q.b, q.c, 1, 0))},
    {"NcCdfT", DrawNonCentralT, NQ_CALL(NQDistFun::NonCentralCdfT(q.x, q.a, q.b, 1e-12)),
     NQ_CALL(bm::cdf(NonCentralT(q.a, q.b), q.x)), nullptr, nullptr},
    {"NcPdfT", DrawNonCentralT, NQ_CALL(NQDistFun::NonCentralPdfT(q.x, q.a, q.b, status)),
     NQ_CALL(bm::pdf(NonCentralT(q.a, q.b), q.x)), nullptr, nullptr},
};

void Run(const Work& work, const char* peer, Evaluate evaluate, const std::vector<Point>& points) {
  if (evaluate == nullptr) return;
  double worst = 0;
  for (const Point& q : points) {
    const double ours = work.ours(q);
    if (ours > 0) worst = std::max(worst, std::fabs(evaluate(q) / ours - 1));
  }
  std::printf("%-9s %-6s differs by %.1e\n", work.name, peer, worst);
  nqbench::RegisterEvaluations(work.name, peer, evaluate, points);
}

}  // namespace

int main(int argc, char** argv) {
  for (const Work& work : kWorks) {
    Source source;
    std::vector<Point> points(4000);
    for (Point& q : points) q = work.draw(source);
    Run(work, "ours", work.ours, points);
    Run(work, "boost", work.boost, points);
    Run(work, "gsl", work.gsl, points);
    Run(work, "r", work.r, points);
  }
  return nqbench::RunWithRatios(argc, argv);
}
