#pragma once

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
// is added.
class NQ_API XMLElement final : public XMLInterface {
 public:
  static XMLElement* Create(std::string name);
  ~XMLElement() override;

  void ToString(std::string& out, ExportFormat& format) const override;
  void ToStream(std::ostream& os, ExportFormat& format, bool utf8) const override;
  XMLElement* Clone() const override;

  virtual void AddElement(XMLElement* element);
  void AddElement(XMLString* text);

  // The other forms add what the XMLAttribute::Create of the same arguments makes.
  void AddAttribute(XMLAttribute* attribute);
  void AddAttribute(std::string name, const std::string& value);
  void AddAttribute(std::string name, double value);
  void AddAttribute(std::string name, double value, bool replaceSeparator);

 private:
  friend class internal::TreeWriter;

  using Child = std::variant<std::unique_ptr<XMLElement>, std::unique_ptr<XMLString>>;

  explicit XMLElement(std::string name);

  std::vector<std::unique_ptr<XMLAttribute>> fvAttributes;
  std::string fName;
  std::vector<Child> fvChildren;
};

}  // namespace NQXML_940
