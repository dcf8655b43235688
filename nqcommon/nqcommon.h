// Every public header.
#pragma once

#include <nqcommon/common/NQCancelInfo.h>
#include <nqcommon/common/NQException.h>
#include <nqcommon/common/NQMV.h>
#include <nqcommon/common/NQQueryCancel.h>
#include <nqcommon/common/NQStatus.h>
#include <nqcommon/common/NQWarnings.h>
#include <nqcommon/common/ProgressReport.h>
#include <nqcommon/common/Value.h>
#include <nqcommon/common/display.h>
#include <nqcommon/common/text_conversion.h>
#include <nqcommon/math/matrix/Blas1.h>
#include <nqcommon/math/matrix/INQRectMatrix.h>
#include <nqcommon/math/matrix/INQSymMatrix.h>
#include <nqcommon/math/matrix/Linpack.h>
#include <nqcommon/math/matrix/NQBitSet.h>
#include <nqcommon/math/matrix/NQDiagMatrix.h>
#include <nqcommon/math/matrix/NQRectMatrix.h>
#include <nqcommon/math/matrix/NQSymMatrix.h>
#include <nqcommon/math/numeric/BoundsList.h>
#include <nqcommon/math/numeric/IIntegrand.h>
#include <nqcommon/math/numeric/INumIntegration.h>
#include <nqcommon/math/numeric/LobattoQuad.h>
#include <nqcommon/math/numeric/NQExtremeNum.h>
#include <nqcommon/math/numeric/NQMathFun.h>
#include <nqcommon/math/numeric/NQPower.h>
