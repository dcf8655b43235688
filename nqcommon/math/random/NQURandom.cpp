#include <nqcommon/math/random/NQURandom.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include <nqcommon/common/display.h>
#include <nqcommon/common/memory_guard.h>
#include <nqcommon/math/kernels/display_frame.h>
#include <nqcommon/math/random/internal/congruential.h>
#include <nqcommon/xml/save_format.h>
#include <nqcommon/xml/saved_object.h>

namespace NQMath_940 {

using NQCommon_940::GuardMemory;

namespace {

constexpr char kClassName[] = "NQURandom";
constexpr int kNLines = 5;

constexpr char kTag[] = {'N', 'Q', 'U', 'R'};

// The binary record without its tag.
struct Record {
  double seed;
  std::int32_t usePortable;
  std::int32_t useTwister;
};
static_assert(sizeof(Record) == 16, "the record has no padding");
constexpr int kRecordSize = sizeof(kTag) + sizeof(Record);

unsigned long ToSeed(double x) {
  constexpr double kEnd = 0x1p64;
  if (!(x > 0)) return 0;
  return x < kEnd ? static_cast<unsigned long>(x) : ~0ul;
}

}  // namespace

NQURandom::NQURandom(unsigned long seed, bool usePortable, bool useTwister,
                     NQCommon_940::NQRandom* userRNG)
    : fSeed(seed),
      fUsePortable(usePortable),
      fUseTwister(usePortable && useTwister && userRNG == nullptr),
      fpUserRNG(userRNG) {
  if (fUseTwister) StartTwister();
}

NQURandom::NQURandom(const NQURandom& other) : NQURandom(other.fSeed, true, false) {
  *this = other;
}

NQURandom& NQURandom::operator=(const NQURandom& other) {
  if (this == &other) return *this;
  fSeed = other.fSeed;
  fUsePortable = other.fUsePortable;
  fUseTwister = other.fUseTwister;
  fpUserRNG = other.fpUserRNG;
  fTwister.reset();
  if (fUseTwister) StartTwister();
  return *this;
}

NQRandomTwister& NQURandom::StartTwister() {
  if (!fTwister) fTwister.emplace();
  fTwister->Initialize(fSeed);
  return *fTwister;
}

void NQURandom::SetSeed(unsigned long s) {
  fSeed = s;
  if (!fUsePortable) {
    std::srand(static_cast<unsigned>(s));
  } else if (fUseTwister) {
    StartTwister();
  }
}

void NQURandom::SetUsePortable(bool b) {
  fUsePortable = b;
  if (b) return;
  fUseTwister = false;
  fTwister.reset();
}

double NQURandom::GetRandom() {
  if (fpUserRNG != nullptr) return fpUserRNG->GetNext();
  if (!fUsePortable) return std::rand() / 2147483647.0;
  if (fUseTwister) return (fTwister ? *fTwister : StartTwister()).GetRealOpen();
  std::uint64_t state = fSeed;
  internal::CongruentialStep(state);
  fSeed = state;
  return internal::CongruentialUniform(state);
}

// ---- Saving -------------------------------------------------------------------------------------

int NQURandom::WriteObject(std::fstream& file) const {
  if (!file) return 0;
  const Record record{static_cast<double>(fSeed), fUsePortable, fUseTwister};
  char bytes[kRecordSize];
  std::memcpy(bytes, kTag, sizeof kTag);
  std::memcpy(bytes + sizeof kTag, &record, sizeof record);
  file.write(bytes, kRecordSize);
  return file ? kRecordSize : 0;
}

int NQURandom::ReadObject(std::fstream& file) {
  char tag[sizeof kTag];
  if (!file.read(tag, sizeof tag) || std::memcmp(tag, kTag, sizeof tag) != 0) return 0;
  char bytes[sizeof(Record)];
  if (!file.read(bytes, sizeof bytes)) return 0;
  Record record;
  std::memcpy(&record, bytes, sizeof record);
  fSeed = ToSeed(record.seed);
  fUsePortable = record.usePortable == 1;
  fUseTwister = record.useTwister == 1;
  return kRecordSize;
}

int NQURandom::WriteObjectXML(std::ostream& out, int indent) const {
  if (!out) return 0;
  return GuardMemory(0, [&] {
    NQXML_940::ObjectWriter writer(out, kClassName, indent);
    writer.Value(static_cast<double>(fSeed));
    writer.Value(fUsePortable);
    writer.Value(fUseTwister);
    const int nLines = writer.End();
    return out ? nLines : 0;
  });
}

int NQURandom::ReadObjectXML(std::ifstream& file) {
  const bool isRead = GuardMemory(false, [&] {
    double seed = 0;
    int value = 0;
    if (!NQXML_940::ParseStartObj(file, kClassName) || !NQXML_940::ParseValue(file, seed))
      return false;
    fSeed = ToSeed(seed);
    for (bool* flag : {&fUsePortable, &fUseTwister}) {
      if (!NQXML_940::ParseValue(file, value)) return false;
      *flag = value == 1;
    }
    return NQXML_940::ParseEndObj(file);
  });
  if (isRead) return kNLines;
  NQXML_940::ReportReadFailure(kClassName);
  return 0;
}

void NQURandom::Display() const {
  using namespace NQDisplay_940;
  internal::DisplayObject("NQURandom", [&] {
    DisplayS("Seed", std::to_string(fSeed));
    DisplayB("Use portable", fUsePortable);
    DisplayB("Use twister", fUseTwister);
    DisplayB("User generator", fpUserRNG != nullptr);
  });
}

}  // namespace NQMath_940
