// Seeded generators against published streams, an independent engine, and streams computed apart
// (reference/random_streams.py): the methods, their constants and the uniforms that each draw
// takes.
#include <nqcommon/math/random/NQRNGBeta.h>
#include <nqcommon/math/random/NQRNGBinomial.h>
#include <nqcommon/math/random/NQRNGNormal.h>
#include <nqcommon/math/random/NQRNGUCongruential.h>
#include <nqcommon/math/random/NQRNGUTwister.h>
#include <nqcommon/math/random/NQRandomValues.h>

#include <map>
#include <random>
#include <sstream>

#include <support/compare.h>
#include <support/dense.h>

namespace NQMath_940 {
namespace {

using Numbers = std::vector<double>;

// The outputs published with the reference code for the key {0x123, 0x234, 0x345, 0x456}: the first
// integers, and after a thousand of them the reals of [0, 1), to 8 decimals.
TEST(RandomStreams, PublishedOutputs) {
  const unsigned long key[] = {0x123, 0x234, 0x345, 0x456};
  NQRandomTwister twister;
  twister.InitByArray(key, 4);
  for (const unsigned long want : {1067595299u, 955945823u, 477289528u, 4107218783u, 4228976476u})
    EXPECT_EQ(twister.GetInteger32(), want);
  for (int i = 5; i < 1000; ++i) twister.GetInteger32();
  for (const double want : {0.76275443, 0.99000644, 0.98670464, 0.10143112, 0.27933125})
    EXPECT_NEAR(twister.GetRealClosedOpen(), want, 5e-9);
  // One key, and none for a single 0, by an independent engine.
  twister.InitByArray(key, 1);
  EXPECT_EQ(twister.GetInteger32(), 2827967569u);
  NQRandomTwister copy = twister;
  const unsigned long high = copy.GetInteger32() >> 5, low = copy.GetInteger32() >> 6;
  EXPECT_EQ(twister.GetRealRes53(),
            (static_cast<double>(high) * 0x1p26 + static_cast<double>(low)) * 0x1p-53);
  twister.InitByArray(nullptr, 0);
  EXPECT_EQ(twister.GetInteger32(), 3626764237u);
}

// A twister that was never seeded counts as seeded with 5489; copies go on from where they are
// taken.
TEST(RandomStreams, ConversionsOfTheStandardEngine) {
  for (const unsigned long seed : {5489ul, 0ul, 0x100000002ul}) {
    std::mt19937 engine(static_cast<std::uint32_t>(seed));
    const auto next = [&engine] { return static_cast<double>(engine()); };
    NQRandomTwister twister;
    if (seed != 5489) twister.Initialize(seed);
    for (int i = 0; i < 300; ++i) {
      ASSERT_EQ(twister.GetInteger31(), engine() / 2) << "seed " << seed << ", round " << i;
      ASSERT_EQ(twister.GetRealClosed(), next() / 4294967295.0);
      NQRandomTwister copy(twister);
      ASSERT_EQ(twister.GetInteger32(), copy.GetInteger32());
      ASSERT_EQ(copy.GetRealOpen(), (static_cast<void>(engine()), std::ldexp(2 * next() + 1, -33)));
      twister = copy;
    }
    // Gone on from where another stands, a real being two words.
    NQRNGUTwister::Data state;
    init_genrand(state, static_cast<std::uint32_t>(seed));
    genrand_int32(state);
    genrand_int32(state);
    NQRNGUTwister kept, resumed, seeded;
    kept.SetState(state);
    resumed.SetState(kept.GetState());
    seeded.SetSeed(static_cast<double>(seed & 0xffffffffu));
    seeded.GetNext();
    ASSERT_EQ(resumed.GetNext(), seeded.GetNext()) << seed;
  }
}

// The values of one row: those drawn first, or of a sparse row the last of each ten thousand.
// Arguments that it does not give are 0.
Numbers Drawn(std::size_t count, const std::string& name, const Numbers& a,
              const std::string& uniforms) {
  const bool useTwister = uniforms == "twister", isSource = name == "NQURandom";
  NQRNGUTwister twister;
  NQRNGUCongruential congruential;
  NQRNGNormal normal(a[0], a[1]);
  NQRNGBeta beta(a[0], a[1]);
  NQRNGBinomial binomial(a[0], a[1]);
  twister.SetSeed(useTwister ? 42 : a[0]);
  congruential.SetSeed(a[0]);
  for (NQRNGVariate* variate : std::initializer_list<NQRNGVariate*>{&normal, &beta, &binomial})
    if (useTwister) variate->SetURNGenerator(twister);
  const std::map<std::string, NQRNGenerator*> generators = {{"NQRNGUTwister", &twister},
                                                            {"NQRNGUCongruential", &congruential},
                                                            {"NQRNGNormal", &normal},
                                                            {"NQRNGBeta", &beta},
                                                            {"NQRNGBinomial", &binomial}};
  NQURandom source(isSource ? static_cast<unsigned long>(a[0]) : 34567, true,
                   !isSource || a[1] == 1);
  const NQSymMatrix covariance = nqtest::FromPacked({4, 2, 3});
  const NQSymMatrix dependent = nqtest::FromPacked({4, 1, 2, 3, -1, 4});
  NQSymMatrix matrix;
  NQRandomValues values;
  values.SetURNGPtr(&source);
  if (name == "RVUni") values.SetParamUniform(a[0], a[1]);
  if (name == "RVNor") values.SetParamNormal(a[0], a[1]);
  if (name == "RVChi") values.SetParamChi(a[0]);
  if (name == "RVGam") values.SetParamGamma(a[0], a[1]);
  if (name == "UniformVector") values.SetParamUniform({-1, 5, 0}, {1, 9, 1e-3});
  if (name == "StandardUniform") values.SetParamUniform(3);
  if (name == "StandardNormal") values.SetParamNormal(3);
  if (name == "NormalVector") values.SetParamNormal({1, -1}, covariance);
  if (name == "DegenerateNormal") values.SetParamNormal({1, 2, -1}, dependent);
  if (name == "Wishart") values.SetParamWishart(3, 3.5, nqtest::FromPacked({4, 2, 2, 2, 3, 6}));
  if (name == "StandardWishart") values.SetParamWishart(2, 2);
  Numbers drawn, out(1);
  while (drawn.size() < count) {
    for (int k = 1; k < 10000 && uniforms == "sparse"; ++k) values.RVSNor();
    if (generators.count(name))
      out[0] = generators.at(name)->GetNext();
    else if (!values.GetRandom(out)) {
      EXPECT_TRUE(values.GetRandom(matrix));
      out = matrix.AsVector();
    }
    drawn.insert(drawn.end(), out.begin(), out.end());
  }
  return drawn;
}

TEST(RandomStreams, Values) {
  const std::pair<std::string, Numbers> rows[] = {
#include <reference/random_streams.inc>
  };
  for (const auto& [name, want] : rows) {  // generator, arguments, uniforms
    std::istringstream text(name);
    std::string generator, word;
    Numbers arguments;
    for (text >> generator; text >> word;) arguments.push_back(std::strtod(word.c_str(), nullptr));
    arguments.resize(2);
    const Numbers got = Drawn(want.size(), generator, arguments, word);
    for (std::size_t i = 0; i < got.size(); ++i)  // a few ulp of the mathematical functions
      EXPECT_CLOSE(got[i], want[i], 2e-15) << name << ", value " << i;
  }
}

}  // namespace
}  // namespace NQMath_940
