#include <gtest/gtest.h>

#include <nqcommon/math/random/NQRandomValues.h>

#include "support/dense.h"
#include "support/memory_file.h"
#include "support/memory_rows.h"

namespace {

using namespace NQMath_940;
using namespace nqtest;
using Values = std::vector<double>;

// What a draw changes: its output, and where the source stands, which the next uniform shows.
struct Draw {
  mutable NQRandomValues values;
  Values vector{};
  NQSymMatrix matrix{};
  void Display() const {
    NQDisplay_940::DisplayDV("", vector, true);
    NQDisplay_940::DisplayDV("", matrix.AsVectorConst(), true);
    NQDisplay_940::DisplayDF("", values.RVUni(0, 1));
  }
};

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
      NQ_ANSWERS(wishart, r.SetParamUniform(low, high)),
      NQ_ANSWERS(wishart, r.SetParamUniform(3)),
      NQ_ANSWERS(wishart, r.SetParamNormal(3)),
      NQ_ANSWERS(wishart, r.SetParamNormal(high, scale)),
      NQ_ANSWERS(set, r.SetParamWishart(3, 5)),
      NQ_ANSWERS(set, r.SetParamWishart(3, 5, scale)),
      NQ_ANSWERS(Draw{set}, r.values.GetRandom(r.vector)),
      NQ_ANSWERS(Draw{normal}, r.values.GetRandom(r.vector)),
      NQ_ANSWERS(Draw{wishart}, r.values.GetRandom(r.matrix)),
  };
  AddObject(rows, "NQURandom", source, source);
  AddObject(rows, "NQRandomValues", wishart, wishart);
  RunMemoryCases("random numbers", rows);
}

}  // namespace
