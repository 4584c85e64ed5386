#include "larkstone/core/iof_texts.hpp"

#include <gtest/gtest.h>

namespace larkstone {
namespace {

TEST(IofTextsTest, EveryStatusIsReadBackInAnyCase) {
  for (int i = estaOK; i <= estaUnknown; ++i) {
    const auto status = static_cast<enmStatus>(i);
    EXPECT_EQ(statusFromIof(iofStatusText(status)), status);
  }
  EXPECT_EQ(statusFromIof("missingPUNCH"), estaMisPunch);
  EXPECT_EQ(statusFromIof("DidNotEnter"), estaDidNotStart);
  EXPECT_EQ(statusFromIof("SportingWithdrawal"), estaSportWithdr);
  EXPECT_EQ(statusFromIof("gone home"), estaOK);
  EXPECT_EQ(iofStatusText(static_cast<enmStatus>(99)), "");
}

TEST(IofTextsTest, OtherWords) {
  EXPECT_EQ(eventFormFromIof("teammultiday"), eefmTeamMultiDay);
  EXPECT_EQ(idTypeFromIof("Reg"), eidtReg);
  EXPECT_EQ(resultListStatusFromIof("Delta"), erlsDelta);
  EXPECT_EQ(genderFromIof("F"), egndFemale);
  EXPECT_EQ(genderFromIof("B", egndMixed), egndMixed);
  EXPECT_EQ(punchingUnitFromIof("EMIT"), "Emit");
  EXPECT_EQ(punchingUnitFromIof(""), "other");
}

}  // namespace
}  // namespace larkstone
