#pragma once

#include <iosfwd>
#include <string>

#include <nqcommon/export.h>
#include <nqcommon/xml/ExportFormat.h>

namespace NQXML_940 {

// A node of a tree that is built to be written: XMLElement, XMLAttribute, XMLString, XMLDocType.
//
// Ownership  A node comes from the Create of its class and belongs to the caller, until it is added
//            to an element; the element deletes it then.
// Text       Names and text are in the character set of the C locale, and are not checked: what
//            has no place in XML, such as a name of two words or a control character, is written.
// Failure    A stream that fails shows it in its state only.
// Depth      Writing, cloning and deleting recurse: a tree of 10,000 levels needs less than a
//            stack of 8 MiB in an optimised build.
class NQ_API XMLInterface {
 public:
  virtual ~XMLInterface();
  XMLInterface(const XMLInterface&) = delete;
  XMLInterface& operator=(const XMLInterface&) = delete;

  // Appends the text of the node to `out`.
  virtual void ToString(std::string& out, ExportFormat& format) const = 0;

  // Writes the bytes of ToString to `os`. With `utf8` each name, identifier, escaped value and
  // escaped text goes through MbToUTF8 on its own; markup is ASCII in every locale.
  virtual void ToStream(std::ostream& os, ExportFormat& format, bool utf8) const = 0;

  // A deep copy, which the caller owns.
  virtual XMLInterface* Clone() const = 0;

 protected:
  XMLInterface() = default;
};

}  // namespace NQXML_940
