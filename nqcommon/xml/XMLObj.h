#pragma once

#include <iosfwd>
#include <string>

#include <nqcommon/common/truncate.h>
#include <nqcommon/export.h>

namespace NQXML_940 {

// Writes one object of a file of saved objects: its start line, a line for each value, its end
// line. Each line begins with its line feed, so that blocks nest by being written in turn; the
// block of an owned object has one tab more. docs/save_format.md shows a whole file.
//
//   <Obj name="NQWeightVar">              the tabs given; the name as it stands, not escaped
//   	<String value="a &lt; b"/>           one tab more; escaped by XMLUtil::Escape
//   	<Int value="3"/>                     int, unsigned and bool (1 or 0)
//   	<Long value="12"/>
//   	<Double value="0.1"/>                the system-missing value is the word Missing
//   </Obj>
//
// A number is written as a double with 15 significant digits in the classic locale, a long too: one
// of 1e15 or more is in exponent form, of which ParseValue reads the first digits only.
//
// Failure  The operations return 0; a stream that fails shows it in its state.
class NQ_API XMLObj {
 public:
  // The name is the class name of the object. A tab count below 0 writes no tabs.
  XMLObj(std::string name, int nTabs);

  const std::string& GetName() const { return fName; }
  int GetNTabs() const { return fNTabs; }

  int StartObj(std::ostream& os) const;
  int EndObj(std::ostream& os) const;

  int WriteSubElement(std::ostream& os, int value) const;
  int WriteSubElement(std::ostream& os, unsigned int value) const;
  int WriteSubElement(std::ostream& os, bool value) const;
  int WriteSubElement(std::ostream& os, long value) const;
  // Any integer of the size of long is written as one.
  template <class Integer, NQCommon_940::IfOtherInteger<Integer> = 0>
  int WriteSubElement(std::ostream& os, Integer value) const {
    return WriteSubElement(os, static_cast<long>(NQCommon_940::ToLongLong(value)));
  }

  int WriteSubElement(std::ostream& os, double value) const;
  int WriteSubElement(std::ostream& os, const std::string& value) const;
  // Without this form a string literal would be a bool. A null pointer counts as "".
  int WriteSubElement(std::ostream& os, const char* value) const;

 private:
  std::string fName;
  int fNTabs;
};

}  // namespace NQXML_940
