// The full-matrix display of every matrix class.
#pragma once

#include <string>
#include <vector>

#include <nqcommon/common/display.h>

namespace NQMath_940::internal {

// Every element, row by row, between lines that name the class.
template <class Matrix>
void DisplayAllRows(const std::string& className, const Matrix& m) {
  NQDisplay_940::DisplayText(1, className + " full matrix display start");
  std::vector<double> row;
  for (int i = 0; m.GetRow(i, row); ++i)
    NQDisplay_940::DisplayDAS(row.data(), static_cast<int>(row.size()));
  NQDisplay_940::DisplayText(1, className + " full matrix display end");
}

}  // namespace NQMath_940::internal
