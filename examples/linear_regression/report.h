// A fit as text for people and as JSON for programs.
#pragma once

#include <iosfwd>
#include <string>

#include "regression.h"

namespace regression {

// An aligned table, blank where a figure is not finite.
void PrintReport(std::ostream& out, const Regression& fit);

// One object, described in README.md; null where a figure is not finite.
std::string ToJson(const Regression& fit);

}  // namespace regression
