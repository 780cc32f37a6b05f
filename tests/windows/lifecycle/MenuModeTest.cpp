// Alt with a letter, or with an arrow, that the control has used up: the host's window does not go
// into its menu, whichever key goes up first.
#include "tests/windows/lifecycle/PagesTest.h"

namespace lifecycle {
namespace {

class MenuMode : public PagesTest {
 protected:
  int menus() { return hosted_->window.menus(); }
  // Alt goes up before the letter does.
  void altFirst(wchar_t letter) {
    user().crossed(VK_MENU, static_cast<WORD>(VkKeyScanW(letter) & 0xFF));
  }
};

INSTANTIATE_TEST_SUITE_P(In, MenuMode, everywhere(), nameOfParam);

TEST_P(MenuMode, AMnemonicLeavesNoneWhicheverKeyGoesUpFirst) {
  altFirst(L'i');
  EXPECT_EQ(user().focused(), L"Cbo_SigleOrgChg");
  user().type(L"x");
  EXPECT_EQ(user().text(L"Cbo_SigleOrgChg"), L"x");
  user().key(VK_BACK);
  user().alt(L'e');
  EXPECT_EQ(user().focused(), L"Txt_CodOrgChg");
  user().type(L"001");
  EXPECT_EQ(user().text(L"Cbo_SigleOrgChg"), L"CAF");
  EXPECT_EQ(menus(), 0);
}

TEST_P(MenuMode, AMnemonicThatTurnsThePageLeavesNone) {
  show(L"001", kCoordonnees);
  altFirst(L'g');
  EXPECT_EQ(user().tab(), kRegles);
  altFirst(L'p');
  EXPECT_EQ(user().tab(), kPriseEnCharge);
  EXPECT_EQ(menus(), 0);
}

TEST_P(MenuMode, SeveralMnemonicsInARowAllArrive) {
  for (int round = 0; round < 5; ++round) {
    altFirst(L'i');
    EXPECT_EQ(user().focused(), L"Cbo_SigleOrgChg") << round;
    altFirst(L'e');
    EXPECT_EQ(user().focused(), L"Txt_CodOrgChg") << round;
  }
  EXPECT_EQ(menus(), 0);
}

TEST_P(MenuMode, AButtonsMnemonicLeavesNone) {
  altFirst(L'a');
  EXPECT_EQ(user().focused(), L"Txt_SigleOrgChg");
  user().type(L"CPAM");
  EXPECT_EQ(user().text(L"Txt_SigleOrgChg"), L"CPAM");
  boxes().expect(kLeaveCreation, kQuestion, L"YESNO", IDYES);
  altFirst(L'n');
  EXPECT_EQ(user().focused(), L"Txt_CodOrgChg");
  altFirst(L'i');
  EXPECT_EQ(user().focused(), L"Cbo_SigleOrgChg");
  EXPECT_EQ(menus(), 0);
}

TEST_P(MenuMode, AltWithAnArrowOnAComboBoxLeavesNone) {
  show(L"001", kRegles);
  user().click(L"Cbo_PeriodFactOrgChg");
  user().crossed(VK_MENU, VK_DOWN);
  EXPECT_TRUE(user().opened(L"Cbo_PeriodFactOrgChg"));
  user().key(VK_DOWN, false, false, true);
  EXPECT_FALSE(user().opened(L"Cbo_PeriodFactOrgChg"));
  EXPECT_EQ(menus(), 0);
}

// What the control has no use for is the host's, as ever.
TEST_P(MenuMode, AltAloneIsTheHosts) {
  user().key(VK_MENU);
  EXPECT_EQ(menus(), 1);
  altFirst(L'i');
  EXPECT_EQ(menus(), 1);
  user().key(VK_MENU);
  EXPECT_EQ(menus(), 2);
}

}  // namespace
}  // namespace lifecycle
