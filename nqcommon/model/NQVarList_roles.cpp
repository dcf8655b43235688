#include <nqcommon/model/NQVarList.h>

#include <nqcommon/model/NQCatVar.h>
#include <nqcommon/model/NQContVar.h>
#include <nqcommon/model/internal/variables.h>

namespace NQXML_940 {

using internal::CountVariables;
using internal::HasRole;

std::vector<std::string> NQVarList::GetVarNames(INQVariable::VariableRole role) const {
  std::vector<std::string> names;
  for (const auto& variable : fOwned.fvVariables) {
    if (variable && HasRole(role)(*variable)) names.push_back(variable->GetVariableName());
  }
  return names;
}

int NQVarList::GetNumInputVars() const {
  return CountVariables(fOwned.fvVariables, HasRole(INQVariable::RoleInput));
}

int NQVarList::GetNumPossibleInputVars() const {
  return CountVariables(fOwned.fvVariables, HasRole(INQVariable::RolePossibleInput));
}

INQVariable::VariableRole NQVarList::GetVariableRole(int i) const {
  const INQVariable* variable = GetVarAt(i);
  return variable ? variable->GetVariableRole() : INQVariable::RoleUndefined;
}

bool NQVarList::SetVariableRole(int i, INQVariable::VariableRole role) {
  INQVariable* variable = GetVarAt(i);
  return variable && variable->SetVariableRole(role);
}

bool NQVarList::ChangeRole(int i, INQVariable::VariableRole from, INQVariable::VariableRole to) {
  const INQVariable::VariableRole role = GetVariableRole(i);
  return (role == from || role == to) && SetVariableRole(i, to);
}

bool NQVarList::ChangeVariableRole(bool isInput, int i) {
  return isInput ? ChangeRole(i, INQVariable::RolePossibleInput, INQVariable::RoleInput)
                 : ChangeRole(i, INQVariable::RoleInput, INQVariable::RolePossibleInput);
}

bool NQVarList::AddResponseVariable(int i) {
  return SetVariableRole(i, INQVariable::RoleTargetResponse);
}

bool NQVarList::RemoveResponseVariable(int i) {
  return GetVariableRole(i) == INQVariable::RoleTargetResponse &&
         SetVariableRole(i, INQVariable::RoleUnused);
}

bool NQVarList::ChangeTargetEncoder(INQEncoder* encoder) {
  if (!encoder) return false;
  const internal::Variables& variables = fOwned.fvVariables;
  int target = internal::FindVariable(variables, HasRole(INQVariable::RoleTarget));
  if (target < 0)
    target = internal::FindVariable(variables, HasRole(INQVariable::RoleTargetResponse));
  INQVariable* variable = GetVarAt(target);
  if (auto* categorical = dynamic_cast<NQCatVar*>(variable)) {
    categorical->ChangeEncoder(encoder);
  } else if (auto* continuous = dynamic_cast<NQContVar*>(variable)) {
    continuous->ChangeEncoder(encoder);
  } else {
    return false;
  }
  return true;
}

}  // namespace NQXML_940
