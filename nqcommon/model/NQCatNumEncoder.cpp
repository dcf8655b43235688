#include <nqcommon/model/NQCatNumEncoder.h>

namespace NQXML_940 {

NQCatNumEncoder* NQCatNumEncoder::Clone() const { return new NQCatNumEncoder(*this); }

}  // namespace NQXML_940
