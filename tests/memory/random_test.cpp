#include <gtest/gtest.h>

#include <nqcommon/math/random/NQRandomValues.h>

#include "support/dense.h"
#include "support/memory_file.h"
#include "support/memory_rows.h"

namespace {

using namespace NQMath_940;
using namespace nqtest;
using Values = std::vector<double>;

// Draws by `draw` into an `Out`: all of it and as without failures, or none and the source as it
// was, with `out` still as it was made or of order -1.
template <class Out, class Draw>
MemoryCase Draws(const char* operation, NQRandomValues values, Draw draw) {
  return {operation, [=](Injection& inject) {
            NQRandomValues reference = values, tried = values;
            Out want, got;
            EXPECT_TRUE(draw(reference, want));
            bool isDrawn = false;
            inject([&] { isDrawn = draw(tried, got); });
            return Verdict{isDrawn ? got == want
                                   : inject.HasFailed() &&
                                         tried.RVUni(0, 1) == NQRandomValues(values).RVUni(0, 1)};
          }};
}

TEST(Memory, Random) {
  NQRandomValues set, normal, wishart;
  const Values low = {1, 2, 3}, high = {4, 5, 6};
  const NQSymMatrix scale = FromPacked({4, 1, 3, 0.5, -1, 2});
  EXPECT_TRUE(set.SetParamUniform(low, high));
  EXPECT_TRUE(normal.SetParamNormal(low, scale));
  EXPECT_TRUE(wishart.SetParamWishart(3, 5, scale));
  const NQURandom source(7, true, true);
  std::ostringstream text;
  source.WriteObjectXML(text, 0);
  const auto drawVector = [](NQRandomValues& v, Values& out) { return v.GetRandom(out); };
  const auto drawMatrix = [](NQRandomValues& v, Values& out) {
    NQSymMatrix matrix;
    const bool isDrawn = v.GetRandom(matrix);
    out.swap(matrix.AsVector());
    return isDrawn;
  };
  std::vector<MemoryCase> rows = {
      {"NQURandom::WriteObjectXML",
       [&](Injection& inject) {
         std::ostringstream out;
         int lines = -1;
         inject([&] { lines = source.WriteObjectXML(out, 0); });
         return Verdict{lines == 5 ? out.str() == text.str() : lines == 0 && inject.HasFailed()};
       }},
      {"NQURandom::ReadObjectXML",
       [&](Injection& inject) {
         NQURandom read(1, true, true);
         std::ifstream file = MemoryFile(text.str()).Open();
         int lines = -1;
         ::testing::internal::CaptureStderr();
         inject([&] { lines = read.ReadObjectXML(file); });
         const bool isReported = !::testing::internal::GetCapturedStderr().empty();
         return Verdict{lines == 5 ? !isReported : lines == 0 && inject.HasFailed()};
       }},
      Answers("NQRandomValues::SetParamUniform(vectors)", wishart,
              [=](auto& v) { return v.SetParamUniform(low, high); }),
      Answers("NQRandomValues::SetParamUniform(int)", wishart,
              [](auto& v) { return v.SetParamUniform(3); }),
      Answers("NQRandomValues::SetParamNormal(int)", wishart,
              [](auto& v) { return v.SetParamNormal(3); }),
      Answers("NQRandomValues::SetParamNormal(means, covariance)", wishart,
              [=](auto& v) { return v.SetParamNormal(high, scale); }),
      Answers("NQRandomValues::SetParamWishart", set,
              [](auto& v) { return v.SetParamWishart(3, 5); }),
      Answers("NQRandomValues::SetParamWishart(scale)", set,
              [=](auto& v) { return v.SetParamWishart(3, 5, scale); }),
      Draws<Values>("NQRandomValues::GetRandom(vector), uniform", set, drawVector),
      Draws<Values>("NQRandomValues::GetRandom(vector), normal", normal, drawVector),
      Draws<Values>("NQRandomValues::GetRandom(matrix)", wishart, drawMatrix),
  };
  AddObject(rows, "NQURandom", source, source);
  AddObject(rows, "NQRandomValues", wishart, wishart);
  RunMemoryCases("random numbers", rows);
}

}  // namespace
