#pragma once

#include <nqcommon/common/NQMV.h>

namespace NQMath_940::internal {

// The status of a function that has one; other codes are named where they are used.
inline constexpr int kSuccess = 0;
inline constexpr int kInvalidArguments = 1;
inline constexpr int kNumericalFailure = 2;

// Sets the status of a function to what its arguments are, and returns whether they are invalid.
template <class Status>
bool IsRefused(bool isInvalid, Status& status) {
  status = isInvalid ? kInvalidArguments : kSuccess;
  return isInvalid;
}

// Sets the status of a function that fails and gives its value, the missing one.
template <class Status>
double Fail(int code, Status& status) {
  status = code;
  return NQCommon_940::NQMV::Missing();
}

}  // namespace NQMath_940::internal
