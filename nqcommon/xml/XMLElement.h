#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <variant>
#include <vector>

#include <nqcommon/export.h>
#include <nqcommon/xml/XMLAttribute.h>
#include <nqcommon/xml/XMLInterface.h>
#include <nqcommon/xml/XMLString.h>

namespace NQXML_940 {

// A name, attributes and children, both in the order in which they were added.
//
//   format off                    <e a="1" b="2"><f/>text</e>
//   format on                     a line feed before each start and end tag; but none from a text
//                                 node on, until an element ends
//   format and indentation on     one tab for each level before each start tag, and before each end
//                                 tag that begins a line; one more, after the blank, before each
//                                 attribute
//
// A node is added once, and never below itself. Null, and the element itself, are refused: nothing
// is added. An element is written as before after std::bad_alloc; the node that was to be added is
// deleted, with the element at the latest.
class NQ_API XMLElement final : public XMLInterface {
 public:
  static XMLElement* Create(std::string name);
  ~XMLElement() override;

  void ToString(std::string& out, ExportFormat& format) const override;
  void ToStream(std::ostream& os, ExportFormat& format, bool utf8) const override;
  XMLElement* Clone() const override;

  virtual void AddElement(XMLElement* element);
  void AddElement(XMLString* text);

  void AddAttribute(XMLAttribute* attribute);
  // These add the text of what the XMLAttribute::Create of the same arguments makes, without that
  // object.
  void AddAttribute(const std::string& name, const std::string& value);
  void AddAttribute(const std::string& name, double value);
  void AddAttribute(const std::string& name, double value, bool replaceSeparator);

 private:
  friend class internal::TreeWriter;

  using Child = std::variant<std::unique_ptr<XMLElement>, std::unique_ptr<XMLString>>;

  // Stands in the tag before the text name="value" of an attribute.
  struct AttributeHead {
    std::size_t fNameLength;
    std::size_t fLength;  // of the text
  };

  explicit XMLElement(std::string name);

  // Adds one attribute, of which `append` appends name="value" to the tag.
  template <class Append>
  void AddText(std::size_t nameLength, Append append);

  // The name, and for each attribute its head, byte by byte, and its text: one block of memory.
  // What stands behind fTagEnd is left from an attribute that failed.
  std::string fTag;
  std::size_t fNameLength;
  std::size_t fTagEnd;
  std::vector<std::unique_ptr<XMLAttribute>> fvAdded;  // attributes that came as objects
  std::vector<Child> fvChildren;
};

}  // namespace NQXML_940
