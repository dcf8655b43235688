#pragma once

#include <string>

namespace NQCommon_940::internal {

// `name` in the folder for extensions beside `directory` when it is there, otherwise in `directory`
// itself. The directory ends with '/' or is empty, which leaves the name as it is.
std::string LibraryPathFrom(const std::string& directory, const std::string& name);

}  // namespace NQCommon_940::internal
