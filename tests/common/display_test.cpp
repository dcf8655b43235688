#include <climits>
#include <cmath>
#include <ctime>
#include <functional>

#include "support/testing.h"

namespace NQDisplay_940 {
namespace {

using nqtest::kMissing;

// What reached the stream: text that was not flushed is lost.
struct Flushed : std::stringbuf {
  int sync() override { return fText = str(), 0; }
  std::string fText;
};

std::string Written(const std::function<void()>& display) {
  Flushed buffer;
  std::ostream out(&buffer), &before = GetOutStream();
  out.width(40);  // a width left in the stream must not matter
  SetOutStream(out);
  display();
  SetOutStream(before);
  return buffer.fText;
}

TEST(Display, ExactBytes) {
  const double a[] = {0.1, kMissing, 1234567, -HUGE_VAL};
  const nqtest::Doubles ones(25, 1);
  const std::string ten = "\n  1 1 1 1 1 1 1 1 1 1";
  const std::pair<std::string, std::function<void()>> rows[] = {
#include "golden/common_display.inc"
  };
  for (const auto& [want, display] : rows) EXPECT_EQ(Written(display), want);
}

TEST(Display, TimeStampIsTheLocalTime) {
  const auto now = [] {
    char text[80];
    const std::time_t t = std::time(nullptr);
    return "\nt: " + std::string(text, std::strftime(text, 80, "%Y-%m-%d-%H-%M-%S", localtime(&t)));
  };
  const std::string before = now(), got = Written([] { DisplayTimeStamp("t"); }), after = now();
  EXPECT_TRUE(before <= got && got <= after) << before << got << after;
}

}  // namespace
}  // namespace NQDisplay_940
