#include <nqcommon/math/stats/NQTimeUtil.h>

#include <algorithm>
#include <limits>

#include <nqcommon/common/display.h>

namespace NQMath_940 {
namespace {

constexpr double kTicksPerSecond = 1e6;

// The sum of a count and a number, or the nearest limit of an int.
int Sum(int count, long long added) {
  constexpr long long kLowest = std::numeric_limits<int>::min();
  constexpr long long kLargest = std::numeric_limits<int>::max();
  // The summand is bounded first, to a range in which no sum overflows and any count can still
  // reach its limit.
  const long long bounded = std::clamp(added, 2 * kLowest, 2 * kLargest);
  return static_cast<int>(std::clamp(count + bounded, kLowest, kLargest));
}

}  // namespace

NQTimeUtil::NQTimeUtil(const std::string& name) : fName(name), fStartTick(std::clock()) {}

void NQTimeUtil::Reset() {
  fTicks = 0;
  fNCalls = 0;
  Start();
}

void NQTimeUtil::Start() { fStartTick = std::clock(); }

void NQTimeUtil::Accumulate() {
  fTicks = Sum(fTicks, std::clock() - fStartTick);
  fNCalls = Sum(fNCalls, 1);
}

void NQTimeUtil::Decrement(int ticks) { fTicks = Sum(fTicks, -static_cast<long long>(ticks)); }

void NQTimeUtil::GetTime(int& ticks, double& seconds, int& calls) const {
  ticks = fTicks;
  seconds = fTicks / kTicksPerSecond;
  calls = fNCalls;
}

void NQTimeUtil::Display() const {
  using namespace NQDisplay_940;
  NQCommon_940::GuardMemory([&] {
    DisplayText(1, "NQTimeUtil display start " + *fName);
    DisplayI("Accumulated int milliseconds", fTicks);
    DisplayI("Number of calls", fNCalls);
    DisplayText(1, "NQTimeUtil display end");
  });
}

}  // namespace NQMath_940
