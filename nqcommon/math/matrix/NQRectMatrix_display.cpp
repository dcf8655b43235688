#include <nqcommon/math/matrix/NQRectMatrix.h>

#include <nqcommon/common/display.h>

namespace NQMath_940 {

using NQDisplay_940::DisplayDAS;
using NQDisplay_940::DisplayI;
using NQDisplay_940::DisplayText;

void NQRectMatrix::Display() const {
  DisplayText(1, "NQRectMatrix display start");
  DisplayI("The number of rows", fNRows);
  DisplayI("The number of columns", fNCols);
  for (int i = 0; i < fNRows; ++i) DisplayDAS(GetRowPtr(i), fNCols);
  DisplayText(1, "NQRectMatrix display end");
}

void NQRectMatrix::DisplayF() const {
  DisplayText(1, "NQRectMatrix full matrix display start");
  for (int i = 0; i < fNRows; ++i) DisplayDAS(GetRowPtr(i), fNCols);
  DisplayText(1, "NQRectMatrix full matrix display end");
}

}  // namespace NQMath_940
