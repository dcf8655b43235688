// The element types of setting lists, for explicit instantiation.
#pragma once

#include <string>
#include <utility>

#include <nqcommon/model/settings/NQSettings.h>

namespace NQXML_940::internal {

using StringStringPair = std::pair<std::string, std::string>;
using StringDoublePair = std::pair<std::string, double>;
using StringIntPair = std::pair<std::string, int>;

}  // namespace NQXML_940::internal

#define NQ_FOR_EACH_LIST_ELEMENT(X) \
  X(int)                            \
  X(double)                         \
  X(std::string)                    \
  X(NQSettings)                     \
  X(internal::StringStringPair)     \
  X(internal::StringDoublePair)     \
  X(internal::StringIntPair)
