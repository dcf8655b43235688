// Goodness of fit with fixed seeds. A draw x becomes u = P(X <= x), which is uniform: checked are
// the Kolmogorov-Smirnov distance, the first four Legendre polynomials of u, that is its moments,
// and the correlation of consecutive u. Vectors and matrices are checked through what determines
// their distribution: linear combinations, quadratic forms and partial variances.
//
// By the inequalities of Massart, Hoeffding and Azuma, right for every n, a correct generator fails
// a check with probability 1e-9 at most: below 3e-7 for all of them together.
#include <nqcommon/math/numeric/NQDistFun.h>
#include <nqcommon/math/random/NQRNGBeta.h>
#include <nqcommon/math/random/NQRNGBinomial.h>
#include <nqcommon/math/random/NQRNGUTwister.h>
#include <nqcommon/math/random/NQRandomValues.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

namespace NQMath_940 {
namespace {

constexpr int kDraws = 50000;
const double kLogBound = std::log(2e9);  // both tails have 1e-9

template <class Draw, class Cdf>
void ExpectDrawn(const char* name, double a, double b, int n, Draw draw, Cdf cdf) {
  SCOPED_TRACE(::testing::Message() << name << " (" << a << ", " << b << ")");
  std::vector<double> u;
  double sums[5] = {}, before = 0;  // of the polynomials, of the products of consecutive values
  for (int i = 0; i < n; ++i) {
    u.push_back(cdf(draw()));
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

auto NormalCdf(double mean, double variance) {
  return [=](double x) { return NQDistFun::CdfNorm(x, mean, std::sqrt(variance)); };
}

TEST(Distributions, NormalAndGamma) {
  NQRandomValues values;
  const auto next = [&] { return values.GetRandom(); };
  values.SetParamNormal();
  ExpectDrawn("normal", 0, 1, 1000000, next, NormalCdf(0, 1));
  values.SetParamNormal(5, 4);
  ExpectDrawn("normal", 5, 4, kDraws, next, NormalCdf(5, 4));
  for (double shape : {0.05, 0.3, 0.9, 0.999999, 1.0, 1.000001, 1.5, 4.0, 50.0, 1e4, 1e6, 1e13}) {
    const auto cdf = [shape](double x) { return NQDistFun::CdfGam(x, shape, 3); };
    values.SetParamGamma(shape, 3);
    ExpectDrawn("gamma", shape, 3, shape > 100 ? 2000 : kDraws, next, cdf);
  }
}

TEST(Distributions, Beta) {
  NQRNGUTwister twister;
  NQRNGBeta beta(1, 1);
  beta.SetURNGenerator(twister);
  const double kShapes[][2] = {{1, 1},   {0.3, 0.2}, {1.5, 1.5}, {20, 21},
                               {7, 2.5}, {1.2, 80},  {5e8, 1e8}, {1e15, 1e15}};
  for (const auto& s : kShapes) {
    const auto cdf = [&s](double x) { return NQDistFun::CdfBeta(x, s[0], s[1]); };
    ExpectDrawn(
        "beta", s[0], s[1], kDraws / 2, [&] { return beta.GetNext(s[0], s[1]); }, cdf);
  }
  // Nothing between 0 and 1 is left; the mean stays.
  double sum = 0;
  for (int i = 0; i < kDraws; ++i) sum += beta.GetNext(1e-12, 3e-12);
  EXPECT_EQ(sum, std::floor(sum));
  EXPECT_NEAR(sum / kDraws, 0.25, std::sqrt(kLogBound / (2.0 * kDraws)));
}

TEST(Distributions, Binomial) {
  NQRNGUTwister twister;
  NQRNGBinomial binomial(0, 0);
  binomial.SetURNGenerator(twister);
  std::mt19937 engine(1);
  const double kParameters[][2] = {{1, 0.3},   {40, 0.5},   {41, 0.05},     {12345, 0.99},
                                   {1e9, 0.3}, {1e9, 1e-9}, {1e9, 1 - 1e-9}};
  for (const auto& s : kParameters) {
    const auto below = [n = s[0], p = s[1]](double k) {
      return k < 0 ? 0 : k >= n ? 1 : NQDistFun::CdfBeta(1 - p, n - k, k + 1);
    };
    // P(X < k) + v P(X = k) with a uniform v of its own is uniform.
    const auto smoothed = [&](double k) {
      const double v = std::generate_canonical<double, 53>(engine);
      return below(k - 1) + v * (below(k) - below(k - 1));
    };
    const auto next = [&] { return binomial.GetNext(s[0], s[1]); };
    ExpectDrawn("binomial", s[0], s[1], kDraws / 4, next, smoothed);
  }
}

TEST(Distributions, Vectors) {
  NQRandomValues values;
  std::vector<double> x;
  const auto combination = [&](double a, double b, double c) {
    return [=, &values, &x] { return values.GetRandom(x) ? a * x[0] + b * x[1] + c * x[2] : -99; };
  };
  ASSERT_TRUE(values.SetParamUniform({-1, 5, 0}, {1, 9, 1e-3}));
  ExpectDrawn("uniform", 5, 9, kDraws, combination(0, 1, 0), [](double y) { return (y - 5) / 4; });
  // Rank 2: the third variable is the first less the second. The variances are worked out by hand.
  NQSymMatrix covariance(3, true);
  covariance.SetData({4, 1, 2, 3, -1, 4});
  ASSERT_TRUE(values.SetParamNormal({1, 2, -1}, covariance));
  for (int i = 0; i < 1000; ++i) EXPECT_NEAR(combination(1, -1, -1)(), 0, 1e-12);
  ExpectDrawn("third", -1, 4, kDraws, combination(0, 0, 1), NormalCdf(-1, 4));
  ExpectDrawn("sum", 3, 8, kDraws, combination(1, 1, 0), NormalCdf(3, 8));
  ASSERT_TRUE(values.SetParamNormal(3));
  ExpectDrawn("standard", 0, 9, kDraws, combination(1, -2, 2), NormalCdf(0, 9));
}

// A quadratic form of W over that of the scale matrix, and |W| / w11 over the same: chi-squares,
// the second with a degree of freedom less.
TEST(Distributions, Wishart) {
  NQRandomValues values;
  NQSymMatrix w, scale(2, true);
  const auto contrast = [&] { return values.GetRandom(w) ? w.ComputeVSV({1, -1}) / 3 : -1; };
  const auto partial = [&] {
    return values.GetRandom(w) ? w.GetElem(1, 1) - std::pow(w.GetElem(1, 0), 2) / w.GetElem(0, 0)
                               : -1;
  };
  const auto chi = [](double df, double s) {
    return [=](double y) { return NQDistFun::CdfChi(y / s, df); };
  };
  scale.SetData({4, 2, 3});
  ASSERT_TRUE(values.SetParamWishart(2, 4.5, scale));
  ExpectDrawn("contrast", 2, 4.5, kDraws, contrast, chi(4.5, 1));
  ExpectDrawn("partial", 2, 4.5, kDraws, partial, chi(3.5, 2));
  ASSERT_TRUE(values.SetParamWishart(2, 2));
  ExpectDrawn("partial", 2, 2, kDraws, partial, chi(1, 1));
}

}  // namespace
}  // namespace NQMath_940
