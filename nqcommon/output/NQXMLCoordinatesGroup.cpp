#include <nqcommon/output/NQXMLCoordinatesGroup.h>

#include <nqcommon/output/NQStatXMLUtil.h>

namespace NQXML_940 {

XMLElement* NQXMLCoordinatesGroup::GetCoordinatesGroup() const {
  return NQStatXMLUtil::CreateElemCoordinatesGroup(*this);
}

}  // namespace NQXML_940
