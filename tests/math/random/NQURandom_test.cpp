#include <nqcommon/math/random/NQRandomValues.h>

#include <cstdlib>
#include <cstring>
#include <sstream>
#include <tuple>

#include <support/compare.h>
#include <support/memory_file.h>
#include <support/special_values.h>

namespace NQMath_940 {
namespace {

using Values = std::vector<double>;

template <class Source>
Values Draw(Source&& source, int n) {
  Values values;
  while (n-- > 0) values.push_back(source.GetRandom());
  return values;
}

struct BinaryStream : std::fstream {
  explicit BinaryStream(const std::string& bytes) : fBuffer(bytes) { std::ios::rdbuf(&fBuffer); }
  std::stringbuf fBuffer;
};

// The layout of the record, byte for byte.
std::string Record(double seed, int portable, int twister) {
  char bytes[] = "NQUR....SEED....INT.";
  std::memcpy(bytes + 4, &seed, 8);
  std::memcpy(bytes + 12, &portable, 4);
  std::memcpy(bytes + 16, &twister, 4);
  return std::string(bytes, 20);
}

std::string Written(const NQURandom& source) {
  BinaryStream file("");
  EXPECT_EQ(source.WriteObject(file), 20);
  return file.fBuffer.str();
}

int ReadText(NQURandom& source, const std::string& text) {
  std::ifstream file = nqtest::MemoryFile(text).Open();
  ::testing::internal::CaptureStderr();
  const int read = source.ReadObjectXML(file);
  const std::string message = ::testing::internal::GetCapturedStderr();
  EXPECT_EQ(message, read == 0 ? "Failure reading NQURandom!\n" : "") << text;
  return read;
}

TEST(NQURandom, BinaryRecords) {
  const std::string before = Record(7, 1, 0), whole = Record(34567, 1, 1);
  std::vector<std::pair<std::string, std::string>> rows = {
#include "math/random/binary_record_cases.inc"
  };
  for (std::size_t n = 0; n < whole.size(); ++n) rows.push_back({whole.substr(0, n), before});
  for (const auto& [bytes, after] : rows) {
    NQURandom source(7, true, false);
    BinaryStream file(bytes);
    EXPECT_EQ(source.ReadObject(file), after == before ? 0 : 20) << bytes;
    EXPECT_EQ(Written(NQURandom(source)), after) << bytes;
  }
  const NQURandom source((1ul << 53) + 1, true, true);
  EXPECT_EQ(Written(source), Record(0x1p53, 1, 1));
  BinaryStream failed(whole);
  failed.setstate(std::ios::failbit);
  EXPECT_EQ(source.WriteObject(failed), 0);
  EXPECT_EQ(NQURandom(source).ReadObject(failed), 0);
}

TEST(NQURandom, TextRecords) {
  const std::tuple<const char*, const char*, int, std::string> rows[] = {
#include "math/random/text_record_cases.inc"
  };
  const std::string text =
      "\n\t<Obj name=\"NQURandom\">\n\t\t<Double value=\"1234567\"/>"
      "\n\t\t<Int value=\"1\"/>\n\t\t<Int value=\"1\"/>\n\t</Obj>";
  for (const auto& [good, bad, read, after] : rows) {
    NQURandom source(7, true, false);
    std::string changed = text;
    changed.replace(changed.find(good), std::strlen(good), bad);
    EXPECT_EQ(ReadText(source, changed), read) << changed;
    EXPECT_EQ(Written(source), after) << changed;
  }
  NQURandom source(1234567, true, true);
  std::ostringstream out;
  EXPECT_EQ(source.WriteObjectXML(out, 1), 5);
  EXPECT_EQ(out.str(), text);
  out.setstate(std::ios::failbit);
  EXPECT_EQ(source.WriteObjectXML(out, 0), 0);
  for (std::size_t n = 0; n + 4 < text.size(); ++n)
    EXPECT_EQ(ReadText(source, text.substr(0, n)), 0);
}

TEST(NQURandom, Streams) {
  NQURandom source(99, true, true), copy(11, true, true), congruential(5, true, false);
  const Values fromSeed = Draw(NQURandom(source), 6), fromOther = Draw(NQURandom(copy), 3);
  Draw(source, 2);
  copy = NQURandom(source);
  EXPECT_EQ(Draw(copy, 6), fromSeed);

  // A stream in progress goes on when its object moves, is assigned to itself, and over a restored
  // record; where there is none, it starts at the seed.
  NQURandom moved(std::move(source));
  const NQURandom& same = moved;
  moved = same;
  BinaryStream file(Record(11, 1, 1) + Record(11, 1, 1));
  moved.ReadObject(file);
  EXPECT_EQ(Draw(moved, 4), Values(fromSeed.begin() + 2, fromSeed.end()));
  congruential.ReadObject(file);
  EXPECT_EQ(Draw(congruential, 3), fromOther);
  moved.SetSeed(11);
  moved.SetUsePortable(true);  // as it is
  EXPECT_EQ(Draw(moved, 3), fromOther);
  moved.SetUsePortable(false);
  moved.SetUsePortable(true);
  EXPECT_EQ(Draw(moved, 3), Draw(NQURandom(11, true, false), 3));

  struct : NQCommon_940::NQRandom {
    double GetNext() override { return 1; }
  } user;
  NQURandom given(5, false, true, &user), platform(5, false, true);
  EXPECT_EQ(NQURandom(given).GetRandom(), 1);
  NQRandomValues values;
  values.SetURNGPtr(&given);
  EXPECT_EQ(values.RVExp(1), nqtest::kMissing);
  std::srand(77);
  const double want = std::rand() / 2147483647.0;
  platform.SetSeed((1ul << 32) + 77);
  EXPECT_EQ(platform.GetRandom(), want);
}

}  // namespace
}  // namespace NQMath_940
