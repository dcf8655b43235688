// Goodness of fit with fixed seeds. A draw x becomes u = P(X <= x), which is uniform: checked are
// the Kolmogorov-Smirnov distance, the first four Legendre polynomials of u, that is its moments,
// and the correlation of consecutive u. Vectors and matrices are made of such draws: streams
// computed apart check how.
//
// By the inequalities of Massart, Hoeffding and Azuma, right for every n, a correct generator fails
// a check with probability 1e-9 at most: below 3e-7 for all of them together.
#include <nqcommon/math/numeric/NQDistFun.h>
#include <nqcommon/math/random/NQRNGBeta.h>
#include <nqcommon/math/random/NQRNGBinomial.h>
#include <nqcommon/math/random/NQRNGUTwister.h>
#include <nqcommon/math/random/NQRandomValues.h>

#include <map>
#include <random>

#include <support/compare.h>

namespace NQMath_940 {
namespace {

constexpr int kDraws = 50000;
const double kLogBound = std::log(2e9);  // both tails have 1e-9

using Parameters = std::vector<std::pair<double, double>>;
const std::map<std::string, Parameters> kParameters = {
#include <math/random/parameter_cases.inc>
};

// n values of draw(a, b), of which cdf(x, a, b) is P(X <= x), for each pair of parameters.
template <class Draw, class Cdf>
void ExpectDrawn(const char* name, int n, const Parameters& parameters, Draw draw, Cdf cdf) {
  for (const auto& [a, b] : parameters) {
    SCOPED_TRACE(::testing::Message() << name << " (" << a << ", " << b << ")");
    std::vector<double> u;
    double sums[5] = {}, before = 0;  // of the polynomials, of the products of consecutive values
    for (int i = 0; i < n; ++i) {
      u.push_back(cdf(draw(a, b), a, b));
      const double t = 2 * u.back() - 1;
      ASSERT_LE(std::fabs(t), 1);
      for (unsigned k = 0; k < 4; ++k) sums[k] += std::legendre(k + 1, t);
      sums[4] += t * before;
      before = t;
    }
    for (int k = 0; k < 5; ++k)
      EXPECT_LT(std::fabs(sums[k]), std::sqrt(2 * kLogBound * n)) << "order " << k + 1;
    std::sort(u.begin(), u.end());
    double distance = 0, rank = 0;
    for (double x : u) {
      distance = std::max({distance, x - rank / n, (rank + 1) / n - x});
      ++rank;
    }
    EXPECT_LT(distance, std::sqrt(kLogBound / (2 * n)));
  }
}

double NormalCdf(double x, double mean, double variance) {
  return NQDistFun::CdfNorm(x, mean, std::sqrt(variance));
}

TEST(Distributions, NormalAndGamma) {
  NQRandomValues values;
  const auto normal = [&](auto... p) { return values.SetParamNormal(p...), values.GetRandom(); };
  const auto gamma = [&](auto... p) { return values.SetParamGamma(p...), values.GetRandom(); };
  ExpectDrawn("normal", 1000000, {{0, 1}}, normal, NormalCdf);
  ExpectDrawn("normal", kDraws, {{5, 4}}, normal, NormalCdf);
  ExpectDrawn("gamma", kDraws, kParameters.at("gamma"), gamma, NQDistFun::CdfGam);
  ExpectDrawn("gamma", 2000, {{1e4, 3}, {1e6, 3}, {1e13, 3}}, gamma, NQDistFun::CdfGam);
}

TEST(Distributions, BetaAndBinomial) {
  NQRNGUTwister twister;
  NQRNGBeta beta(1, 1);
  NQRNGBinomial binomial(0, 0);
  beta.SetURNGenerator(twister);
  binomial.SetURNGenerator(twister);
  const auto drawBeta = [&](double a, double b) { return beta.GetNext(a, b); };
  ExpectDrawn("beta", kDraws / 2, kParameters.at("beta"), drawBeta, NQDistFun::CdfBeta);

  std::mt19937 engine(1);
  const auto below = [](double k, double n, double p) {
    return k < 0 ? 0 : k >= n ? 1 : NQDistFun::CdfBeta(1 - p, n - k, k + 1);
  };
  // P(X < k) + v P(X = k) with a uniform v of its own is uniform.
  const auto smoothed = [&](double k, double n, double p) {
    const double v = std::generate_canonical<double, 53>(engine);
    return below(k - 1, n, p) + v * (below(k, n, p) - below(k - 1, n, p));
  };
  const auto next = [&](double n, double p) { return binomial.GetNext(n, p); };
  ExpectDrawn("binomial", kDraws / 4, kParameters.at("binomial"), next, smoothed);
}

}  // namespace
}  // namespace NQMath_940
