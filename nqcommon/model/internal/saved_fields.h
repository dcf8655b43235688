// What the saved objects of this folder have in common beyond single values.
#pragma once

#include <cstddef>
#include <exception>
#include <fstream>
#include <string>

#include <nqcommon/model/UserMissing.h>
#include <nqcommon/xml/saved_object.h>

namespace NQXML_940::internal {

// Reads one object, its values by fields(reader), and returns its lines. Whatever goes wrong, a
// stream set to throw or memory that runs out included, is a read failure of `reportedName`; those
// of objects inside have been reported and pass through.
template <class Fields>
int ReadObject(std::ifstream& in, const std::string& className, const std::string& reportedName,
               Fields fields) {
  try {
    ObjectReader reader(in, className, reportedName);
    fields(reader);
    return reader.End();
  } catch (const std::exception&) {
    ThrowReadFailure(reportedName);
  }
}
template <class Fields>
int ReadObject(std::ifstream& in, const std::string& className, Fields fields) {
  return ReadObject(in, className, className, fields);
}

// Any code is accepted: those outside the table have their meaning too ("unrecognized").
template <class Enum>
void ReadCode(ObjectReader& reader, Enum& code) {
  int value = 0;
  reader.Value(value);
  code = static_cast<Enum>(value);
}

// A negative count is a read failure, and changes nothing.
inline void ReadCount(ObjectReader& reader, int& count) {
  int value = 0;
  reader.Value(value);
  reader.Require(value >= 0);
  count = value;
}

// Hands over the values of a saved list one by one, so that the count in the file decides nothing.
template <class T, class Take>
void ReadEach(ObjectReader& reader, Take take) {
  int count = 0;
  ReadCount(reader, count);
  for (int i = 0; i < count; ++i) {
    T value{};
    reader.Value(value);
    take(value);
  }
}

// The number of values, the values, then one label for each.
template <class T>
void WriteUserMissing(ObjectWriter& writer, const UserMissing<T>& missing) {
  writer.List(missing.GetValues());
  writer.Values(missing.GetLabels());
}
template <class T>
void ReadUserMissing(ObjectReader& reader, UserMissing<T>& missing) {
  missing.Clear();
  ReadEach<T>(reader, [&missing](const T& value) { missing.Append(value); });
  for (std::size_t i = 0; i < missing.GetValues().size(); ++i) {
    std::string label;
    reader.Value(label);
    missing.SetLabel(i, label);
  }
}

}  // namespace NQXML_940::internal
