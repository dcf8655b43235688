// The variables of a fit in the library's save format.
#pragma once

#include <string>

#include "input_summaries.h"
#include "model_data.h"

namespace support {

// Gives the variables of `data` what the fit knows of them, and writes them. Throws
// std::runtime_error when a name or a category is too long to be read back.
std::string SavedVariables(ModelData& data, const InputSummaries& summaries);

}  // namespace support
