#include <nqcommon/common/display.h>

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <ctime>
#include <functional>
#include <sstream>

#include <nqcommon/common/NQMV.h>

// A row of a table: the bytes wanted from a call, which is its own label.
#define WRITES(want, ...) EXPECT_EQ(Written([&] { __VA_ARGS__; }), want) << #__VA_ARGS__

namespace NQDisplay_940 {
namespace {

constexpr double kMissing = NQCommon_940::Getsysmis();

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
  const std::vector<double> ones(25, 1);
  const std::string ten = "\n  1 1 1 1 1 1 1 1 1 1";

  WRITES("\n\na", DisplayText(2, "a"));
  WRITES("a", DisplayText(-1, "a"));
  WRITES("", DisplayText(2, nullptr));
  WRITES("\nx = false", DisplayB("x", false));
  WRITES("\nx = miss", DisplayD("x", kMissing));
  WRITES("\nx = 0.10000000000000001", DisplayDF("x", 0.1));
  WRITES("\nx = miss", DisplayDF("x", kMissing));
  WRITES("\nx = 9223372036854775807", DisplayL("x", LONG_MAX));
  WRITES("\n%d = %s", DisplayS("%d", "%s"));

  WRITES("\nx (size = 4)\n  0.1 miss 1.23457e+06 -inf", DisplayDA("x", a, 4, true));
  WRITES("\nx", DisplayDA("x", nullptr, 3, false));
  WRITES("\nx (size = -1)", DisplayDA("x", a, -1, true));
  WRITES(ten + ten, DisplayDAS(ones.data(), 20));
  WRITES("\nx (size = 25)" + ten + ten + "\n  1 1 1 1 1", DisplayDV("x", ones, true));
  WRITES("\nx (size = 1)\n  4294967295", DisplayUV("x", {UINT_MAX}));
  WRITES("\nx (size = 2)\n  t f", DisplayBV("x", {true, false}));
  WRITES("\nx (size = 1)\n  0.5 miss", DisplayVPD("x", {{0.5, kMissing}}));
  WRITES("\nx (size = 1)\n  0.5 2", DisplayVPDI("x", {{0.5, 2}}));
  WRITES("\nx (size = 2)\n (1,2) (3,4) ", DisplayVPII("x", {{1, 2}, {3, 4}}));
  WRITES("\nx\nvec[0]\n  1\nvec[1]", DisplayDVV("x", {{1}, {}}));
  WRITES("\nx <none>", DisplaySVV("x", {}));
  WRITES("\nx ( number of rows =  2, number of columns =  3 )\n  f t t\n  t f f",
         DisplayBVV("x", {{false, true, true}, {true, false, false}}));
  WRITES("\nx (number of elements = 3, number of rows = 2)\nrow 0:  1 miss\nrow 1:  3",
         DisplayDVTR("x", {1, kMissing, 3}, 2));
  WRITES("\nx (number of elements = 1, number of rows = 0)", DisplayDVTR("x", {1}, 0));
  WRITES("\nrow 0:  1 1 1 1 1 1 1 1 1 1 1", DisplayDVTRS(std::vector<double>(11, 1), 11));

  WRITES("\nx <empty>", DisplayIIM("x", {}));
  WRITES("\nx\nmap size = 2\n (1,2)\n (3,4)", DisplayIIM("x", {{3, 4}, {1, 2}}));
  WRITES("\nx\n (1,2)", DisplayVIM("x", {{1, 2}}));
  WRITES("\nx\nmap size = 1\n (nan,miss)", DisplayDDM("x", {{std::nan(""), kMissing}}));
  WRITES("\nx\nMap's StringList: (size = 2)\n  \"a\"\" \"\"\nMap's double = 0.333333",
         DisplaySLDM("x", {{std::vector<std::string>{"a\"", ""}, 1.0 / 3}}));
  WRITES("\nx\nMap key (size = 1)\n  7\nMap value (size = 1)\n  0.5",
         DisplayIntVecDVecMap("x", {{{7}, {0.5}}}));
  WRITES("\nx\nMap key (size = 1)\n  -7\nMap value = -9", DisplayIntVecIntMap("x", {{{-7}, -9}}));
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
