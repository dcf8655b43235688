#pragma once

#include <array>

#include <nqcommon/export.h>

namespace NQCommon_940 {

// The outcome of a long computation: an error or warning code, whose meaning belongs to the
// component that raises it, with a few numbers that a caller turns into a message.
class NQ_API NQStatus {
 public:
  // OK: code 0, all data zero.
  NQStatus() = default;
  // An error, or a warning, with all data zero.
  NQStatus(long code, bool isWarning) : fErrorCode(code), fSeverity(isWarning ? 1 : -1) {}

  long GetErrorCode() const { return fErrorCode; }
  bool IsOK() const { return fSeverity == 0; }
  bool IsError() const { return fSeverity < 0; }
  bool IsWarning() const { return fSeverity > 0; }

  // The index i is 0, 1 or 2, and not checked.
  long GetDiscreteDatum(unsigned i) const { return fDiscreteData[i]; }
  void SetDiscreteDatum(unsigned i, long v) { fDiscreteData[i] = v; }
  double GetScaleDatum(unsigned i) const { return fScaleData[i]; }
  void SetScaleDatum(unsigned i, double v) { fScaleData[i] = v; }

  // Every field is equal; a status with a NaN datum equals nothing, itself included.
  bool operator==(const NQStatus& other) const {
    return fErrorCode == other.fErrorCode && fSeverity == other.fSeverity &&
           fDiscreteData == other.fDiscreteData && fScaleData == other.fScaleData;
  }
  bool operator!=(const NQStatus& other) const { return !(*this == other); }

 private:
  long fErrorCode = 0;
  short fSeverity = 0;
  std::array<long, 3> fDiscreteData{};
  std::array<double, 3> fScaleData{};
};

}  // namespace NQCommon_940
