#pragma once

#include <ctime>
#include <string>

#include <nqcommon/common/GuardedCopy.h>
#include <nqcommon/export.h>

namespace NQMath_940 {

// A named stopwatch of processor time, summed over pairs of Start and Accumulate. One tick of the
// processor clock is a microsecond. Ticks and calls stay at the nearest limit of an int instead of
// leaving its range: 35 minutes of processor time. A name for which memory ends is empty.
class NQ_API NQTimeUtil {
 public:
  explicit NQTimeUtil(const std::string& name = std::string());
  NQTimeUtil(const NQTimeUtil& other) = default;
  NQTimeUtil(NQTimeUtil&& other) noexcept = default;
  NQTimeUtil& operator=(const NQTimeUtil& other) = default;
  NQTimeUtil& operator=(NQTimeUtil&& other) noexcept = default;
  virtual ~NQTimeUtil() = default;

  // Starts, with no ticks and no calls.
  void Reset();

  void Start();

  // Adds the ticks since the last start, which goes on, and counts a call.
  void Accumulate();

  // Takes ticks off what was accumulated, which may become negative.
  void Decrement(int ticks);

  void GetTime(int& ticks, double& seconds, int& calls) const;

  // Writes ticks (labelled as milliseconds) and calls through the diagnostic display.
  void Display() const;

 private:
  NQCommon_940::GuardedCopy<std::string> fName;
  std::clock_t fStartTick;
  int fTicks = 0;
  int fNCalls = 0;
};

}  // namespace NQMath_940
