#pragma once

#include <nqcommon/common/NQMV.h>

namespace NQMath_940::internal {

// Sets the status of a function that fails and gives its value, the missing one.
template <class Status>
double Fail(Status code, Status& status) {
  status = code;
  return NQCommon_940::NQMV::Missing();
}

}  // namespace NQMath_940::internal
