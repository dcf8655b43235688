// Files of saved objects: the root's tags, and the readers of single lines. XMLObj writes the
// objects; docs/save_format.md shows a whole file.
#pragma once

#include <fstream>
#include <iosfwd>
#include <string>

#include <nqcommon/export.h>

namespace NQXML_940 {

// ---- Writing ------------------------------------------------------------------------------------

// Writes <NQXMLRoot copyright="..."> with the value escaped by XMLUtil::Escape, and no line feed.
// The declaration and the document type, two lines before it, are written by the program that owns
// the file: the ToStream of an XMLDocType of SaveXMLTags::XML_ELE_ROOT and SAVEXML_DTD_LOC.
//
// All four return 0; a stream that fails shows it in its state.
NQ_API int StartRoot(std::ostream& os, std::string copyright);
NQ_API int WriteHeader(std::ostream& os, std::string copyright);  // the same

// Writes a line feed and </NQXMLRoot>, and no line feed after it.
NQ_API int EndRoot(std::ostream& os);
NQ_API int EndHeader(std::ostream& os);  // the same

// ---- Reading ------------------------------------------------------------------------------------
//
// Each function takes its line off the stream and is true when that line is the one wanted. They
// are no XML parser: they accept what the writer writes, and what has the same tokens.
//
// Lines     at most 255 characters before the line feed. A longer line, and the end of the file,
//           put the stream in its fail state, in which every further read fails. The last line
//           needs no line feed. A carriage return before the line feed does no harm. A NUL ends the
//           line's text.
// Failure   false, and the value that was to be read is as before. Nothing is printed; nothing is
//           thrown, unless the stream has been told to throw.

// The three header lines, of which the first words are compared: ?xml, !DOCTYPE, NQXMLRoot.
NQ_API bool ParseStartXML(std::ifstream& is);

// The start line of an object of exactly this name. Before it, and nowhere else, one empty line may
// stand.
NQ_API bool ParseStartObj(std::ifstream& is, const std::string& name);

// A value line of the kind of the argument.
//
//   int, long     as NQCommon_940::ReadNumber reads it: 0 from text that starts with no number, and
//                 beyond the type's range the nearest limit.
//   unsigned      a decimal number in the classic locale, up to the first other character, cut to
//                 an integer; negative, NaN and no number give 0, beyond the range and inf the
//                 largest.
//   double        Missing is the system-missing value, other text as NQCommon_940::ReadNumber reads
//                 it: nan and inf are no numbers and so 0.
//   bool          1 or 0, read as an int; any other number is a failure.
//   string        the text between the quotes as it stands: what XMLUtil::Escape wrote for < > & "
//                 tabs, line ends and outer or double blanks stays so (a saved & is read as &amp;).
NQ_API bool ParseValue(std::ifstream& is, int& value);
NQ_API bool ParseValue(std::ifstream& is, unsigned int& value);
NQ_API bool ParseValue(std::ifstream& is, long& value);
NQ_API bool ParseValue(std::ifstream& is, double& value);
NQ_API bool ParseValue(std::ifstream& is, std::string& value);
NQ_API bool ParseValue(std::ifstream& is, bool& value);

// Marks a stream: from then on ParseValue gives each string that it reads there as
// XMLUtil::Unescape has it, so that names, labels and levels of all objects read from the stream
// are those that were saved. A file of an older program, whose texts were escaped once more with
// every save, loses one such layer.
NQ_API void UnescapeStrings(std::ifstream& is);

// Whether ParseValue reads the line of this string in an object of so many tabs, and to its end:
// what it reads is then XMLUtil::Escape(value), of which XMLUtil::Unescape makes the value. The
// line must not be longer than 255 characters, which is about 230 of the escaped value, and have no
// NUL in it. Writing succeeds at any rate.
NQ_API bool CanBeReadBack(const std::string& value, int nTabs);

// The end line of an object.
NQ_API bool ParseEndObj(std::ifstream& is);

}  // namespace NQXML_940
