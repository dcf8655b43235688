// A fit as JSON.
#pragma once

#include <string>

#include "logistic.h"

namespace logistic {

// Numbers as the shortest text that reads back the same; null where a figure is not finite.
std::string JsonDocument(const support::ModelData& data, const LogisticFit& fit);

}  // namespace logistic
