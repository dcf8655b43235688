// What nearly every test uses: the framework, comparisons, special values, short names.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "support/compare.h"
#include "support/displayed.h"
#include "support/each.h"
#include "support/special_values.h"

namespace nqtest {

using Doubles = std::vector<double>;
using Ints = std::vector<int>;
using Texts = std::vector<std::string>;

}  // namespace nqtest
