#include <nqcommon/model/INQVariable.h>

#include <string_view>

#include <nqcommon/model/internal/code_words.h>

namespace NQXML_940 {

namespace {

constexpr std::string_view kLevelWords[] = {" = Unknown measure level", " = Continuous",
                                            " = Numeric Categorical", " = String Categorical",
                                            " = Frequency weight"};
constexpr std::string_view kRoleWords[] = {" = Undefined variable role",
                                           " = Target",
                                           " = Target Response",
                                           " = Frequency weight",
                                           " = Input",
                                           " = Possible Input",
                                           " = Unused variable",
                                           " = Record ID variable"};
constexpr std::string_view kStorageWords[] = {" = Undefined variable storage",
                                              " = Integer",
                                              " = Real",
                                              " = String",
                                              " = Date",
                                              " = Time",
                                              " = Timestamp"};
constexpr std::string_view kRoundingWords[] = {" = Truncate to smaller int",
                                               " = Round to closest int", " = As is - no change"};
constexpr std::string_view kStatusWords[] = {" = OK", " = Constant", " = Invalid"};

constexpr std::string_view kUnrecognized = " = unrecognized";

}  // namespace

INQVariable::~INQVariable() = default;

void INQVariable::DisplayCode(const std::string& label, MeasureLevel level) {
  internal::DisplayCodeWord(label, level, kLevelWords, kUnrecognized);
}
void INQVariable::DisplayCode(const std::string& label, VariableRole role) {
  internal::DisplayCodeWord(label, role, kRoleWords, kUnrecognized);
}
void INQVariable::DisplayCode(const std::string& label, VariableStorage storage) {
  internal::DisplayCodeWord(label, storage, kStorageWords, kUnrecognized);
}
void INQVariable::DisplayCode(const std::string& label, WRoundingOption option) {
  internal::DisplayCodeWord(label, option, kRoundingWords, kUnrecognized);
}
void INQVariable::DisplayCode(const std::string& label, VarStatus status) {
  internal::DisplayCodeWord(label, status, kStatusWords, kUnrecognized);
}

}  // namespace NQXML_940
