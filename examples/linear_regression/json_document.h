// A fit as JSON for programs.
#pragma once

#include <string>

#include "regression.h"

namespace regression {

// One object, described in README.md; null where a figure is not finite.
std::string JsonDocument(const support::ModelData& data, const Regression& fit);

}  // namespace regression
