#include <nqcommon/math/random/NQRNGBeta.h>
#include <nqcommon/math/random/NQRNGBinomial.h>
#include <nqcommon/math/random/NQRNGNormal.h>
#include <nqcommon/math/random/NQRandomValues.h>

#include <support/compare.h>
#include <support/dense.h>
#include <support/displayed.h>
#include <support/each.h>
#include <support/special_values.h>

namespace NQMath_940 {
namespace {

using namespace nqtest;
using Values = std::vector<double>;

// None of these changes what is set or takes a uniform.
TEST(NQRandomValues, Refusals) {
  NQRandomValues v, untouched;
  NQSymMatrix matrix;
  Values two = {0, 0};
  v.SetParamGamma(2, 3);
  const std::string before = Displayed(v);
  EXPECT_EACH(false, v.SetParamUniform(1, 1), v.SetParamUniform(0, kNaN), v.SetParamUniform(0),
              v.SetParamUniform({}, {}), v.SetParamUniform({0}, {1, 1}),
              v.SetParamUniform({0, 1}, {1, 1}), v.SetParamUniform({1, 0}, {1, 1}),
              v.SetParamNormal(0, 0), v.SetParamNormal(0, kNaN), v.SetParamNormal(0),
              v.SetParamNormal({}, NQSymMatrix()), v.SetParamNormal({0}, FromPacked({1, 0, 1})),
              v.SetParamChi(0), v.SetParamChi(kNaN), v.SetParamGamma(1, 0), v.SetParamGamma(0, 1),
              v.SetParamGamma(kNaN, 1), v.SetParamWishart(0, 1), v.SetParamWishart(3, 2.9),
              v.SetParamWishart(2, kNaN), v.SetParamWishart(3, 5, FromPacked({1, 0, 1})),
              v.SetTolerance(-1), v.SetURNGPtr(nullptr), v.GetRandom(matrix));
  for (const auto& no : {Values{1, 2, 1}, Values{1, 0.5, 0}, Values{-1, 0, 1}, Values{1, kNaN, 1}})
    EXPECT_EACH(false, v.SetParamNormal(two, FromPacked(no)),
                v.SetParamWishart(2, 5, FromPacked(no)));
  EXPECT_EQ((Values{v.RVUni(1, 0), v.RVNor(0, -1), v.RVChi(0), v.RVGam(0, 1), v.RVGam(2, 0),
                    v.RVExp(0), v.RVExp(kNaN)}),
            Values(7, kMissing));
  EXPECT_EQ(v.RVNor(7, 0), 7);
  EXPECT_EQ(Displayed(v), before);
  EXPECT_EQ(v.GetRandom(), untouched.RVGam(2, 3));
  EXPECT_TRUE(v.SetParamNormal());
  EXPECT_EQ(v.GetRandom(), untouched.RVSNor());
  EXPECT_TRUE(v.SetParamNormal({7}, FromPacked({0.25})));
  EXPECT_EQ(v.GetRandom(), 7 + 0.5 * untouched.RVSNor());
  EXPECT_EACH(true, v.SetParamUniform(1), v.GetRandom() == untouched.RVUni(0, 1),
              v.SetParamUniform(3), v.GetRandom() == kMissing, v.SetParamWishart(1, 2),
              v.GetRandom() == kMissing, !v.GetRandom(two), v.SetParamUniform(two, Values{1, 2}),
              v.SetParamUniform(Values{3}, Values{5}), v.GetRandom() == untouched.RVUni(3, 5),
              v.RVUni(3, 3) == 3, v.SetTolerance(0), v.SetParamChi(0.5), v.SetParamGamma(0.5, 0.5),
              v.SetParamNormal(two, FromPacked({1, 0, 0})),
              v.SetParamWishart(1, 1, FromPacked({3})));
  // A new object shows the standard forms.
  NQRandomValues again;
  EXPECT_EACH(true, again.SetParamNormal(7, 4), again.SetParamNormal(0, 9), again.SetParamNormal(3),
              again.SetParamUniform(0, 1), Displayed(again) == Displayed(NQRandomValues()));
}

// Refused parameters are the standard ones; beta answers whether its first shape is not positive.
TEST(Variates, Parameters) {
  NQRNGNormal normal(3, 4), standard(0, 1);
  NQRNGBeta beta(2, 3), uniform(1, 1);
  NQRNGBinomial binomial(5, 0.5);
  EXPECT_EACH(true, normal.SetParameters(7, 0), beta.SetParameters(0, 3),
              binomial.SetParameters(0, 0), NQRNGNormal(7, 0).GetNext() == 7,
              beta.GetNext() == uniform.GetNext());
  EXPECT_EACH(false, beta.SetParameters(0.5, 3), beta.SetParameters(2, 0),
              normal.SetParameters(3, kNaN), normal.SetParameters(3, -1),
              binomial.SetParameters(1.5, 0.5), binomial.SetParameters(-1, 0.5),
              binomial.SetParameters(kInf, 0.5), binomial.SetParameters(5, 1.5));
  EXPECT_EQ((Values{normal.GetNext(), beta.GetNext(), binomial.GetNext()}),
            (Values{standard.GetNext(), uniform.GetNext(), 0}));
  // A certain count takes no uniform; the first uniform of all is 0x1.7acda7ep-3.
  EXPECT_EQ((Values{binomial.GetNext(100, 1), binomial.GetNext(100, 0),
                    binomial.GetNext(1, 0x1.7acda7ep-3)}),
            (Values{100, 0, 1}));
  // The density over the triangle, by 50-digit arithmetic; 0 at 0 itself.
  EXPECT_EQ(NQRandomValues().RVAuxF(0), 0);
  EXPECT_NEAR(NQRandomValues().RVAuxF(0.4), 0.041337936329315943, 1e-16);
  EXPECT_NEAR(NQRandomValues().RVAuxF(-3), 0.0044318484119380075, 1e-16);
}

// The sanitizers watch that each source is deleted once.
TEST(NQRandomValues, Sources) {
  NQRandomValues values, fresh;
  NQURandom mine(8, true, true), same(8, true, true), seeded(9, true, true);
  values.RVSNor();
  NQRandomValues copy(values);                      // starts again
  EXPECT_TRUE(copy.SetURNGPtr(copy.GetURNGPtr()));  // its own: nothing happens
  EXPECT_EQ(copy.RVUni(0, 1), fresh.RVUni(0, 1));
  EXPECT_TRUE(fresh.SetURNGPtr(&mine));
  copy = NQRandomValues(fresh);  // shares
  EXPECT_EQ(fresh.RVUni(0, 1), same.GetRandom());
  EXPECT_EQ(copy.RVUni(0, 1), same.GetRandom());
  EXPECT_TRUE(values.SetURNGPtr(new NQURandom(1, true, true)));
  values.SetSeed(9);
  EXPECT_TRUE(values.SetURNGPtr(&mine));  // not the owner, officially: nothing is replaced
  copy = values;
  values.SetSeed(1);
  EXPECT_EQ(copy.RVUni(0, 1), seeded.GetRandom());
}

}  // namespace
}  // namespace NQMath_940
