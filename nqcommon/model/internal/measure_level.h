#pragma once

#include <nqcommon/model/INQVariable.h>

namespace NQXML_940::internal {

inline bool IsCategorical(INQVariable::MeasureLevel level) {
  return level == INQVariable::LevelNumericCategorical ||
         level == INQVariable::LevelStringCategorical;
}

}  // namespace NQXML_940::internal
