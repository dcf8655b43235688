#include <nqcommon/common/NQCancelInfo.h>

#include <gtest/gtest.h>

#include <utility>

namespace {

// Says yes once to each question.
struct OneYes : NQCommon_940::NQQueryCancel {
  bool QueryCancel() override { return std::exchange(fCancel, false); }
  bool QueryWillCancel() override { return std::exchange(fWillCancel, false); }
  bool fCancel = true, fWillCancel = true;
};

}  // namespace

TEST(NQCancelInfo, AnAnswerStaysAndAForecastDoesNot) {
  OneYes query;
  NQMath_940::NQCancelInfo info(nullptr), forced(nullptr);
  EXPECT_FALSE(info.IsCancel());
  EXPECT_FALSE(info.WillCancel());
  info.SetCancelPtr(&query);
  EXPECT_TRUE(info.WillCancel());
  EXPECT_FALSE(info.WillCancel());
  EXPECT_TRUE(info.IsCancel());
  EXPECT_TRUE(info.IsCancel());
  EXPECT_TRUE(info.WillCancel());
  forced.SetCancel();
  EXPECT_TRUE(forced.IsCancel());
  EXPECT_TRUE(forced.WillCancel());
}
