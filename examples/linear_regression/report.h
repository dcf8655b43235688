// A fit as text for people.
#pragma once

#include <iosfwd>

#include "regression.h"

namespace regression {

// Aligned tables of 100 columns for names of up to 16 characters; blank where a figure is not
// finite.
void PrintReport(std::ostream& out, const support::ModelData& data, const Regression& fit);

}  // namespace regression
