// The values that arithmetic does not reach by itself, under the names that the reference tables
// use.
#pragma once

#include <limits>

#include <nqcommon/common/NQMV.h>

namespace nqtest {

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kMax = std::numeric_limits<double>::max();
constexpr double kMissing = NQCommon_940::NQMV::Missing();

}  // namespace nqtest
