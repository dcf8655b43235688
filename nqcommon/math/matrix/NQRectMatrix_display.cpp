#include <nqcommon/math/matrix/NQRectMatrix.h>

#include <nqcommon/common/memory_guard.h>
#include <nqcommon/math/matrix/internal/display_rows.h>

namespace NQMath_940 {

using NQCommon_940::GuardMemory;
using NQDisplay_940::DisplayDAS;
using NQDisplay_940::DisplayI;
using NQDisplay_940::DisplayText;

void NQRectMatrix::Display() const {
  GuardMemory([&] {
    DisplayText(1, "NQRectMatrix display start");
    DisplayI("The number of rows", fNRows);
    DisplayI("The number of columns", fNCols);
    for (int i = 0; i < fNRows; ++i) DisplayDAS(GetRowPtr(i), fNCols);
    DisplayText(1, "NQRectMatrix display end");
  });
}

void NQRectMatrix::DisplayF() const {
  GuardMemory([&] { internal::DisplayAllRows("NQRectMatrix", *this); });
}

}  // namespace NQMath_940
