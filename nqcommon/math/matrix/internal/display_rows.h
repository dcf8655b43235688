// The full-matrix display of every matrix class.
#pragma once

#include <string>
#include <vector>

#include <nqcommon/common/display.h>
#include <nqcommon/common/memory_guard.h>

namespace NQMath_940::internal {

// Every element, row by row, between lines that name the class.
template <class Matrix>
void DisplayAllRows(const char* className, const Matrix& m) {
  NQCommon_940::GuardMemory([&] {
    NQDisplay_940::DisplayText(1, std::string(className) + " full matrix display start");
    std::vector<double> row;
    for (int i = 0; i < m.GetNRows(); ++i) {
      if (!m.GetRow(i, row)) return;
      NQDisplay_940::DisplayDAS(row.data(), static_cast<int>(row.size()));
    }
    NQDisplay_940::DisplayText(1, std::string(className) + " full matrix display end");
  });
}

}  // namespace NQMath_940::internal
