#include "design.h"

#include <algorithm>
#include <cmath>

namespace support {
namespace {

Column ContinuousColumn(const ModelData& data, int variable, bool intercept) {
  constexpr int kMostScaled = 1000;  // 2^-1000 and 2^1000 are normal numbers
  const Range& range = data.RangeOf(variable);
  const double largest = std::max(std::fabs(range.min), std::fabs(range.max));
  Column column{variable, -1};
  if (largest > 0) column.exponent = std::clamp(std::ilogb(largest), -kMostScaled, kMostScaled);
  column.scale = std::ldexp(1.0, -column.exponent);
  if (intercept) column.origin = range.first * column.scale;
  return column;
}

}  // namespace

std::vector<Column> DesignColumns(const ModelData& data, bool intercept) {
  std::vector<Column> columns;
  bool allCategories = !intercept;
  for (int i = 0; i < data.NInputs(); ++i) {
    if (!data.IsCategorical(i)) {
      columns.push_back(ContinuousColumn(data, i, intercept));
      continue;
    }
    const int nCategories = data.NCategories(i);
    for (int code = 0; code < nCategories; ++code) {
      if (allCategories || nCategories == 1 || code != data.ReferenceOf(i))
        columns.push_back({i, code});
    }
    allCategories = false;
  }
  columns.push_back(ContinuousColumn(data, data.TargetPosition(), intercept));
  return columns;
}

}  // namespace support
