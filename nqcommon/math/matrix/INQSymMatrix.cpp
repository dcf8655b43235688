#include <nqcommon/math/matrix/INQSymMatrix.h>

namespace NQMath_940 {

INQSymMatrix::~INQSymMatrix() = default;

}  // namespace NQMath_940
