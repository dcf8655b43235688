// Warnings and their parameters, and the answers of the application that cancels.
#include <nqcommon/common/NQCancelInfo.h>
#include <nqcommon/common/NQWarnings.h>

#include "support/testing.h"

using namespace NQCommon_940;

// Says yes once to each question.
struct OneYes : NQQueryCancel {
  bool QueryCancel() override { return std::exchange(fCancel, false); }
  bool QueryWillCancel() override { return std::exchange(fWillCancel, false); }
  bool fCancel = true, fWillCancel = true;
};

TEST(NQCancelInfo, AnAnswerStaysAndAForecastDoesNot) {
  OneYes query;
  NQMath_940::NQCancelInfo info(nullptr), forced(nullptr);
  EXPECT_EACH(false, info.IsCancel(), info.WillCancel());
  info.SetCancelPtr(&query);
  EXPECT_TRUE(info.WillCancel());
  EXPECT_FALSE(info.WillCancel());
  forced.SetCancel();
  EXPECT_EACH(true, info.IsCancel(), info.IsCancel(), info.WillCancel(), forced.IsCancel());
}

static NQStatus Warning(long code, double datum = 0) {
  NQStatus status(code, true);
  status.SetScaleDatum(2, datum);
  return status;
}

// The codes of the current list, a bar, and those of the accumulated list.
static std::string Codes(const NQWarnings& warnings) {
  std::string codes;
  for (const auto& s : warnings.GetWarnings(true)) codes += std::to_string(s.GetErrorCode());
  codes += '|';
  for (const auto& s : warnings.GetWarnings(false)) codes += std::to_string(s.GetErrorCode());
  return codes;
}

// Type, integer, double and text of each parameter.
static std::string Parameters(const std::vector<NQWarnings::NQParameterValue>& parameters) {
  std::ostringstream text;
  for (const auto& p : parameters)
    text << p.GetType() << ' ' << p.ToInteger() << ' ' << p.ToDouble() << ' ' << p.ToString()
         << ';';
  return text.str();
}

TEST(NQWarnings, KeepsEachWarningOnceInTheListsNamed) {
  NQStatus discrete(5, true);
  discrete.SetDiscreteDatum(2, 1);
  NQWarnings warnings;
  warnings.AddWarning(Warning(1), NQWarnings::ToCurrent);
  warnings.AddWarning(Warning(2), NQWarnings::ToAccumulated);
  warnings.AddWarning(Warning(2), NQWarnings::ToBoth);
  warnings.AddWarning(Warning(7), static_cast<NQWarnings::Destination>(7));
  warnings.AddWarning(NQStatus(9, false), NQWarnings::ToBoth);
  EXPECT_EQ(NQStatus().GetErrorCode(), 0);
  warnings.AddWarnings({Warning(2, 0.5), NQStatus(), Warning(5), discrete, Warning(1, -0.0)});
  EXPECT_EQ(Codes(warnings), "127255|27");
  warnings.ClearWarnings();
  EXPECT_EQ(Codes(warnings), "|27");
  warnings.AddWarnings({Warning(3, nqtest::kNaN)});  // NaN equals nothing
  warnings.AddWarning(warnings.GetWarnings(true)[0], NQWarnings::ToBoth);
  warnings.AddWarnings(warnings.GetWarnings(true));
  EXPECT_EQ(Codes(warnings), "3333|273");
}

TEST(NQWarnings, MergeKeepsItsOwnParameters) {
  NQWarnings mine, other;
  mine.AddWarning(Warning(1), NQWarnings::ToBoth);
  mine.AddParameter(Warning(1), 11);
  other.AddWarnings({Warning(1), Warning(2)});
  other.AddWarning(Warning(3), NQWarnings::ToAccumulated);
  other.AddParameter(Warning(2), "a");
  other.AddParameter(Warning(1), 99);
  other.AddParameter(Warning(2, 7), 2.5);
  mine.AddWarnings(other);
  mine.AddWarnings(mine);
  EXPECT_EQ(Codes(mine), "12|13");
  const auto& buffer = mine.GetParameters(Warning(1));
  EXPECT_EQ(Parameters(buffer), "0 11 0 ;");
  mine.GetParameters(Warning(2));
  EXPECT_EQ(Parameters(buffer), "2 0 0 a;1 0 2.5 ;") << "one buffer serves every call";
  auto text = buffer.at(0);
  text.SetValue(4);
  EXPECT_EQ(Parameters({text}), "0 4 0 a;") << "one field for each type";
  EXPECT_EQ(Parameters(mine.GetParameters(Warning(3))), "");
  EXPECT_TRUE(mine.HasParameter(Warning(2)));
  EXPECT_FALSE(mine.HasParameter(Warning(3)));
}
