// Whole documents, and pieces of text, to a stream.
#pragma once

#include <iosfwd>
#include <string>

#include <nqcommon/export.h>
#include <nqcommon/xml/XMLDocType.h>
#include <nqcommon/xml/XMLElement.h>

namespace NQXML_940 {

// Writes the document type, or the declaration line XMLUtil::FIRST_LINE alone where that is null,
// and the tree below `root`. With `format` each element starts a line, the root too: an empty line
// stands before it. Without, the tree is one line. There is no indentation, and no final line feed.
//
// Both nodes stay the caller's. A null root writes nothing.
NQ_API void WriteTree(std::ostream& os, const XMLDocType* doctype, const XMLElement* root,
                      bool format);

// The same with names and text converted to UTF-8 by MbToUTF8, each on its own.
NQ_API void WriteTreeUTF8(std::ostream& os, const XMLDocType* doctype, const XMLElement* root,
                          bool format);

// Writes the bytes of `text`. They, and the state of the stream afterwards, are those of one put
// for each byte.
NQ_API void Write(std::ostream& os, const std::string& text);

// Write of MbToUTF8(text).
NQ_API void WriteUTF(std::ostream& os, const std::string& text);

}  // namespace NQXML_940
