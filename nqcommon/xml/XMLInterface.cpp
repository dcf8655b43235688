#include <nqcommon/xml/XMLInterface.h>

namespace NQXML_940 {

XMLInterface::~XMLInterface() = default;

}  // namespace NQXML_940
