#include <nqcommon/math/matrix/NQSymMatrix.h>

#include <nqcommon/math/matrix/internal/display_rows.h>

namespace NQMath_940 {

using NQDisplay_940::DisplayDAS;
using NQDisplay_940::DisplayI;
using NQDisplay_940::DisplayText;

void NQSymMatrix::Display() const {
  NQCommon_940::GuardMemory([this] {
    DisplayText(1, "NQSymMatrix display start");
    DisplayI("The number of rows", fNRows);
    DisplayI("The number of blocks", fNBlocks);
    DisplayI("The block size", fBlockSize);
    DisplayText(1, "Lower triangular");
    const double* row = fvData.data();
    for (int i = 0; i < fNRows; row += ++i) DisplayDAS(row, i + 1);
    DisplayText(1, "NQSymMatrix display end");
  });
}

void NQSymMatrix::DisplayF() const { internal::DisplayAllRows("NQSymMatrix", *this); }

}  // namespace NQMath_940
