// The coefficients of a model that is linear in the columns of a design.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include <nqcommon/math/matrix/NQSymMatrix.h>

#include "design.h"
#include "json_text.h"
#include "model_data.h"

namespace support {

// Undefined figures are NaN.
struct Coefficient {
  std::string name;   // "(Intercept)", the variable, or variable=category; no two are the same
  int variable = -1;  // its position; -1 for the intercept
  int category = -1;  // its code; -1 for a continuous variable
  double estimate = 0;
  double stdError = 0;
  double sig = 0;  // both tails
  // A linear combination of those before it: estimate 0, the rest undefined.
  bool redundant = false;
};

inline constexpr const char* kInterceptName = "(Intercept)";

// The names of the columns' coefficients. One that another column, or the intercept, has already
// stands in quotes, in as many as it takes.
std::vector<std::string> CoefficientNames(const ModelData& data, const std::vector<Column>& columns,
                                          bool intercept);

// The covariances of the estimates, in the units of the data, by the delta method from those of the
// scaled columns, which are `variance` times `inverse`. The target's unit is 2^unit. With an
// intercept, whose standard error is told, it is first; its estimate is a part that is uncorrelated
// with the others less their sum over the columns' centre, origins included.
NQMath_940::NQSymMatrix Covariances(const NQMath_940::NQSymMatrix& inverse, double variance,
                                    const std::vector<Column>& columns, int unit,
                                    const std::vector<double>& centre,
                                    std::optional<double> interceptStdError);

// What the JSON objects of all coefficients begin with: name, variable, category, estimate and
// stdError.
JsonMembers JsonOfCoefficient(const ModelData& data, const Coefficient& c);

}  // namespace support
