// What the sources of the PMML exporter share.
#pragma once

#include <string>

#include <nqcommon/common/NQStatus.h>
#include <nqcommon/common/memory_guard.h>
#include <nqcommon/output/NQPMMLExporter.h>
#include <nqcommon/output/NQPMMLTags.h>
#include <nqcommon/output/internal/new_element.h>

namespace NQCommon_940::internal {

// Hands out the element that `make` returns, or null and an error where memory ends.
template <class Make>
NQStatus Export(NQXML_940::XMLElement*& out, Make make) {
  out = GuardMemory<NQXML_940::XMLElement*>(nullptr, [&] { return make().release(); });
  return out ? NQStatus() : NQStatus(NQPMMLExporter::kNoMemory, false);
}

// The extender comes last here, and first in the extensions that only the data dictionary has: both
// orders are kept.
template <class Value>
NQXML_940::internal::ElementPtr NewExtension(const std::string& name, const Value& value) {
  using namespace NQPMMLTags;
  using NQXML_940::internal::NonEmpty;
  return NQXML_940::internal::NewElement(XML_ELE_EXTENSION, XML_ATT_NAME, NonEmpty{name},
                                         XML_ATT_VALUE, value, XML_ATT_EXTENDER, XML_VAL_TARNCOM);
}

}  // namespace NQCommon_940::internal
