// The numeric columns that a linear model makes of its variables.
#pragma once

#include <vector>

#include "model_data.h"

namespace support {

// A column of the design, the target's last: x 2^-exponent - origin of a continuous variable, 1 or
// 0 for a category.
struct Column {
  int variable = 0;
  int category = -1;  // its code; -1: continuous
  int exponent = 0;
  double scale = 1;   // 2^-exponent
  double origin = 0;  // scaled
};

// A continuous input has one column; a categorical input one for each category but the reference.
// Without an intercept the first categorical input has all; so has one of a single category, a
// constant. Continuous columns are in units of a power of two, so that squares neither overflow nor
// underflow, and with an intercept taken about their first value: neither their place nor their
// unit matters.
std::vector<Column> DesignColumns(const ModelData& data, bool intercept);

// What a case has in a column.
inline double Scaled(const Column& column, const double* values) {
  const double x = values[column.variable];
  return column.category < 0 ? x * column.scale - column.origin : x == column.category ? 1 : 0;
}

// The row of a case.
inline void FillRow(const std::vector<Column>& columns, const double* values, double* row) {
  for (const Column& column : columns) *row++ = Scaled(column, values);
}

}  // namespace support
