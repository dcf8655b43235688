#include <nqcommon/model/NQStringEncoder.h>

namespace NQXML_940 {

NQStringEncoder* NQStringEncoder::Clone() const { return new NQStringEncoder(*this); }

}  // namespace NQXML_940
