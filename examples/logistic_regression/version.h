// How the program names itself in documents.
#pragma once

namespace logistic {

inline constexpr const char* kProgramName = "logistic_regression";
inline constexpr const char* kProgramVersion = "9.4.0";

}  // namespace logistic
