#include <nqcommon/xml/write_tree.h>

#include <nqcommon/xml/XMLUtil.h>
#include <nqcommon/xml/internal/OutputBuffer.h>
#include <nqcommon/xml/utf8_conversion.h>

namespace NQXML_940 {

namespace {

void WriteDocument(std::ostream& os, const XMLDocType* doctype, const XMLElement* root, bool format,
                   bool utf8) {
  if (root == nullptr) return;
  ExportFormat state;
  state.SetFormat(format);
  if (doctype == nullptr) {
    Write(os, std::string(XMLUtil::FIRST_LINE) + XMLUtil::ROWSEP);
  } else {
    doctype->ToStream(os, state, utf8);
  }
  root->ToStream(os, state, utf8);
}

}  // namespace

void WriteTree(std::ostream& os, const XMLDocType* doctype, const XMLElement* root, bool format) {
  WriteDocument(os, doctype, root, format, false);
}

void WriteTreeUTF8(std::ostream& os, const XMLDocType* doctype, const XMLElement* root,
                   bool format) {
  WriteDocument(os, doctype, root, format, true);
}

void Write(std::ostream& os, const std::string& text) { internal::WriteBytes(os, text); }

void WriteUTF(std::ostream& os, const std::string& text) { Write(os, MbToUTF8(text)); }

}  // namespace NQXML_940
