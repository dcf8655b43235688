#include <nqcommon/xml/XMLDocType.h>

#include <memory>
#include <utility>

#include <nqcommon/xml/XMLUtil.h>
#include <nqcommon/xml/internal/TreeWriter.h>

namespace NQXML_940 {

XMLDocType::XMLDocType(std::string name, std::string systemId, std::int64_t number)
    : fName(std::move(name)), fSystemId(std::move(systemId)), fNumber(number) {}

XMLDocType* XMLDocType::Create(std::string name, std::string systemId, std::int64_t number) {
  return new XMLDocType(std::move(name), std::move(systemId), number);
}

std::size_t XMLDocType::AddExtension(const std::string& text) {
  return fExtension.append(XMLUtil::ROWSEP).append(text).size();
}

void XMLDocType::ToString(std::string& out, ExportFormat& format) const {
  internal::TreeWriter(out).Write(*this, format);
}

void XMLDocType::ToStream(std::ostream& os, ExportFormat& format, bool utf8) const {
  internal::TreeWriter(os, utf8).Write(*this, format);
}

XMLDocType* XMLDocType::Clone() const {
  std::unique_ptr<XMLDocType> copy(Create(fName, fSystemId, fNumber));
  copy->fExtension = fExtension;
  return copy.release();
}

}  // namespace NQXML_940
