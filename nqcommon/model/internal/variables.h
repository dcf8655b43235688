// Searches in the variables of a list, whose empty slots are null.
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include <nqcommon/model/INQVariable.h>

namespace NQXML_940::internal {

using Variables = std::vector<std::unique_ptr<INQVariable>>;

// The position of the first variable that meets the condition, or -1.
template <class Condition>
int FindVariable(const Variables& variables, Condition meets) {
  for (std::size_t i = 0; i < variables.size(); ++i) {
    if (variables[i] && meets(*variables[i])) return static_cast<int>(i);
  }
  return -1;
}

// The number of variables that meet the condition.
template <class Condition>
int CountVariables(const Variables& variables, Condition meets) {
  int count = 0;
  for (const auto& variable : variables) count += variable && meets(*variable);
  return count;
}

inline auto HasRole(INQVariable::VariableRole role) {
  return [role](const INQVariable& variable) { return variable.GetVariableRole() == role; };
}

inline auto HasLevel(INQVariable::MeasureLevel level) {
  return [level](const INQVariable& variable) { return variable.GetMeasureLevel() == level; };
}

}  // namespace NQXML_940::internal
