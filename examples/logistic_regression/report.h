// A fit as text for people.
#pragma once

#include <iosfwd>

#include "logistic.h"

namespace logistic {

// Aligned tables of 100 columns for names of up to 16 characters; blank where a figure is not
// finite.
void PrintReport(std::ostream& out, const support::ModelData& data, const LogisticFit& fit);

// What the user should know of the fit though it is no error: a line each.
std::vector<std::string> Warnings(const LogisticFit& fit);

}  // namespace logistic
