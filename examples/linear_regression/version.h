// How the program names itself in documents.
#pragma once

namespace regression {

inline constexpr const char* kProgramName = "linear_regression";
inline constexpr const char* kProgramVersion = "9.4.0";

}  // namespace regression
