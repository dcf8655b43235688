// How the classes of this folder save themselves. Each has one list of its fields, in the order of
// the file: Saved::Fields(object, archive), with an ObjectWriter or an ObjectReader for the
// archive.
#pragma once

#include <exception>
#include <fstream>
#include <string>
#include <type_traits>
#include <utility>

#include <nqcommon/xml/saved_object.h>

namespace NQXML_940::internal {

template <class Saved, class T>
int WriteObject(const T& object, std::ostream& os, int indent) {
  ObjectWriter writer(os, Saved::kName, indent);
  Saved::Fields(object, writer);
  return writer.End();
}

// Whatever goes wrong, a stream set to throw or memory that runs out included, is a read failure of
// `reportedName`; those of objects inside have been reported and pass through.
template <class Saved, class T>
int ReadObject(T& object, std::ifstream& in, const char* reportedName = Saved::kName) {
  try {
    ObjectReader reader(in, Saved::kName, reportedName);
    Saved::Fields(object, reader);
    return reader.End();
  } catch (const std::exception&) {
    ThrowReadFailure(reportedName);
  }
}

// The number of values declared missing, the values, then one label for each. The lists change when
// both are read, so that no value is ever without a label.
template <class Values, class Labels, class Archive>
void UserMissingFields(Values& values, Labels& labels, Archive& archive) {
  if constexpr (std::is_const_v<Values>) {
    archive.List(values);
    archive.Values(labels, static_cast<int>(values.size()));
  } else {
    Values itsValues;
    Labels itsLabels;
    archive.List(itsValues);
    archive.Values(itsLabels, static_cast<int>(itsValues.size()));
    values = std::move(itsValues);
    labels = std::move(itsLabels);
  }
}

}  // namespace NQXML_940::internal
