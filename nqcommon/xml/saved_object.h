// How a class saves itself: its values and owned objects in one order, written and read alike.
// Writer and reader have the same operations, so that one list of the fields serves both.
//
//   template <class Thing, class Archive>
//   void Fields(Thing& thing, Archive& archive) {
//     archive.Value(thing.fName);
//     archive.List(thing.fvBounds);
//     archive.Object(*thing.fEncoder);
//   }
//
//   int NQThing::WriteObjectXML(std::ostream& os, int nTabs) const {
//     NQXML_940::ObjectWriter writer(os, "NQThing", nTabs);
//     Fields(*this, writer);
//     return writer.End();
//   }
//
//   int NQThing::ReadObjectXML(std::ifstream& is) {
//     NQXML_940::ObjectReader reader(is, "NQThing");
//     Fields(*this, reader);
//     return reader.End();
//   }
#pragma once

#include <fstream>
#include <ostream>
#include <string>
#include <type_traits>
#include <vector>

#include <nqcommon/export.h>
#include <nqcommon/xml/XMLObj.h>
#include <nqcommon/xml/save_format.h>

namespace NQXML_940 {

// Writes "Failure reading <what>!" and a line feed to the standard error stream.
NQ_API void ReportReadFailure(const std::string& what);

// Reports it and throws a new IOException, which the catcher deletes.
[[noreturn]] NQ_API void ThrowReadFailure(const std::string& what);

// Writes one object and counts its lines, those of the objects in it included.
class ObjectWriter {
 public:
  ObjectWriter(std::ostream& os, const std::string& className, int nTabs)
      : fStream(os), fObject(className, nTabs) {
    fObject.StartObj(fStream);
  }

  // A code of an enumeration is an int.
  template <class T>
  void Value(const T& value) {
    if constexpr (std::is_enum_v<T>) {
      Value(static_cast<int>(value));
    } else {
      fObject.WriteSubElement(fStream, value);
      ++fNLines;
    }
  }

  void Count(int count) { Value(count); }

  template <class T>
  void Values(const std::vector<T>& values) {
    for (const T& value : values) Value(value);
  }
  template <class T>
  void Values(const std::vector<T>& values, int /*count*/) {
    Values(values);
  }

  // The number of values, an int, and the values.
  template <class T>
  void List(const std::vector<T>& values) {
    Value(static_cast<int>(values.size()));
    Values(values);
  }

  // An object with WriteObjectXML, one tab deeper.
  template <class T>
  void Object(const T& object) {
    fNLines += object.WriteObjectXML(fStream, fObject.GetNTabs() + 1);
  }

  // What is written needs no check.
  void Require(bool /*condition*/) const {}

  // Writes the end line; the number of lines.
  int End() {
    fObject.EndObj(fStream);
    return ++fNLines;
  }

 private:
  std::ostream& fStream;
  XMLObj fObject;
  int fNLines = 1;
};

// Reads what ObjectWriter writes, and counts the lines. A line that does not match ends the reading
// by ThrowReadFailure; what was read before stays read.
class ObjectReader {
 public:
  // A failure names `reportedName`, or the class where that is empty.
  ObjectReader(std::ifstream& is, const std::string& className,
               const std::string& reportedName = std::string())
      : fStream(is), fReportedName(reportedName.empty() ? className : reportedName) {
    Require(ParseStartObj(fStream, className));
  }

  // For a value that makes no sense where it stands, too.
  void Require(bool condition) const {
    if (!condition) ThrowReadFailure(fReportedName);
  }

  // Any code of an enumeration is read, those that it does not name too.
  template <class T>
  void Value(T& value) {
    if constexpr (std::is_enum_v<T>) {
      int code = 0;
      Value(code);
      value = static_cast<T>(code);
    } else {
      Require(ParseValue(fStream, value));
      ++fNLines;
    }
  }

  // An int that must not be negative; `count` changes only when it is read.
  void Count(int& count) {
    int value = 0;
    Value(value);
    Require(value >= 0);
    count = value;
  }

  // `count` values. One by one: a count that a file made up must not decide how much is allocated.
  template <class T>
  void Values(std::vector<T>& values, int count) {
    values.clear();
    for (int i = 0; i < count; ++i) {
      T value{};
      Value(value);
      values.push_back(value);
    }
  }

  // The number of values, which must not be negative, and the values.
  template <class T>
  void List(std::vector<T>& values) {
    int count = 0;
    Count(count);
    Values(values, count);
  }

  // An object with ReadObjectXML.
  template <class T>
  void Object(T& object) {
    fNLines += object.ReadObjectXML(fStream);
  }

  // Reads the end line; the number of lines.
  int End() {
    Require(ParseEndObj(fStream));
    return ++fNLines;
  }

 private:
  std::ifstream& fStream;
  std::string fReportedName;
  int fNLines = 1;
};

}  // namespace NQXML_940
