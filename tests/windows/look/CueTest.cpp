// The mark of the focus, and what a click beside all fields does.
#include <gtest/gtest.h>

#include "tests/windows/look/Page.h"

namespace look {
namespace {

bool marksFocus(HWND window) {
  return (SendMessageW(window, WM_QUERYUISTATE, 0, 0) & UISF_HIDEFOCUS) == 0;
}

bool give(Page& page, UINT message, WPARAM key) {
  MSG pressed{};
  pressed.hwnd = GetFocus();
  pressed.message = message;
  pressed.wParam = key;
  return page.windows().translate(pressed);
}

// Whether the user wants to see them always, while it lives.
class WantsCues {
 public:
  explicit WantsCues(bool always) {
    SystemParametersInfoW(SPI_GETKEYBOARDCUES, 0, &before_, 0);
    set(always ? TRUE : FALSE);
  }
  WantsCues(const WantsCues&) = delete;
  WantsCues& operator=(const WantsCues&) = delete;
  ~WantsCues() { set(before_); }

 private:
  static void set(BOOL always) {
    SystemParametersInfoW(SPI_SETKEYBOARDCUES, 0, reinterpret_cast<void*>(INT_PTR{always}), 0);
  }
  BOOL before_ = FALSE;
};

class Cues : public testing::Test {
 protected:
  WantsCues cues{false};
  Page page{ambienceOf(8, 96)};
  HWND option() { return page.windowOf(page.screen().regles.Opt_TypePrincipalOrgChg); }
  HWND tabs() { return page.windowOf(page.screen().Ong_OrgPriseChg); }
};

TEST_F(Cues, AreHiddenUntilTheKeyboardIsUsed) {
  EXPECT_FALSE(marksFocus(option()));
  EXPECT_FALSE(marksFocus(tabs()));
  page.windows().takeFocus();
  EXPECT_FALSE(marksFocus(option()));
}

TEST_F(Cues, AppearWithTheFirstTab) {
  page.windows().takeFocus();
  ASSERT_TRUE(give(page, WM_KEYDOWN, VK_TAB));
  EXPECT_TRUE(marksFocus(option()));
  EXPECT_TRUE(marksFocus(tabs()));
}

TEST_F(Cues, AppearWithTheFirstMnemonic) {
  page.windows().takeFocus();
  ASSERT_TRUE(give(page, WM_SYSCHAR, 'g'));
  EXPECT_EQ(page.screen().Ong_OrgPriseChg.tab(), screen::kRegles);
  EXPECT_TRUE(marksFocus(option()));
}

TEST_F(Cues, StayHiddenForLettersThatAreNoMnemonicAndForTyping) {
  page.windows().takeFocus();
  give(page, WM_SYSCHAR, 'z');
  EXPECT_FALSE(marksFocus(option()));
  give(page, WM_KEYDOWN, VK_LEFT);
  EXPECT_FALSE(marksFocus(option()));
}

TEST(CuesForGood, AreThereFromTheStartForAUserWhoWantsThem) {
  const WantsCues cues(true);
  Page page(ambienceOf(8, 96));
  EXPECT_TRUE(marksFocus(page.windowOf(page.screen().regles.Opt_TypePrincipalOrgChg)));
}

TEST_F(Cues, AppearWhenAHostThatHandlesTheKeysSaysSo) {
  SendMessageW(page.windows().handle(), WM_UPDATEUISTATE,
               MAKEWPARAM(UIS_CLEAR, UISF_HIDEFOCUS | UISF_HIDEACCEL), 0);
  EXPECT_TRUE(marksFocus(option()));
}

// The dotted line around the caption of the option that has the focus.
TEST_F(Cues, TheMarkIsSeenWithTheCue) {
  page.bringForward(screen::kRegles);
  page.screen().regles.Opt_TypePrincipalOrgChg.userClick();
  page.windows().takeFocus();
  ASSERT_EQ(GetFocus(), option());
  const Picture before(option());
  page.windows().showCues();
  page.pump();
  const Picture after(option());
  int changed = 0;
  for (int y = 0; y < after.height(); ++y) {
    for (int x = 0; x < after.width(); ++x) changed += after.at(x, y) != before.at(x, y) ? 1 : 0;
  }
  EXPECT_GT(changed, 20);
}

TEST_F(Cues, AClickOnAPagesGroundBringsTheKeyboard) {
  page.bringForward(screen::kRegles);
  HWND ground = page.windowOf(page.screen().Ong_OrgPriseChg.page(screen::kRegles));
  int told = 0;
  page.windows().onKeyboard = [&](bool inside) { told += inside ? 1 : 0; };
  SetFocus(page.field());
  ASSERT_FALSE(page.windows().hasKeyboard());
  SendMessageW(ground, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(2, 2));
  page.pump();
  EXPECT_TRUE(page.windows().hasKeyboard());
  EXPECT_EQ(told, 1);
  // A host may have taken the control's turn and left the keyboard there.
  int pressed = 0;
  page.windows().onPress = [&] { ++pressed; };
  SendMessageW(ground, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(2, 2));
  EXPECT_EQ(pressed, 1);
  EXPECT_EQ(told, 1);
}

TEST_F(Cues, AClickBesideTheTabsBringsItToo) {
  SetFocus(page.field());
  RECT client{};
  GetClientRect(tabs(), &client);
  SendMessageW(tabs(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(client.right - 2, 4));
  page.pump();
  EXPECT_TRUE(page.windows().hasKeyboard());
}

TEST_F(Cues, AClickOnTheGroundOfALockedControlBringsNothing) {
  page.surface().setAcceptsInput(false);
  SetFocus(page.field());
  SendMessageW(page.windows().handle(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(2, 2));
  page.pump();
  EXPECT_FALSE(page.windows().hasKeyboard());
}

// Focus from outside -----------------------------------------------------------------------------

TEST_F(Cues, AFocusGivenByTheHostIsHonoured) {
  page.windows().takeFocus();
  SetFocus(page.field());
  SetFocus(page.windowOf(page.screen().coordonnees.Txt_RaisonOrgChg));
  page.pump();
  EXPECT_EQ(page.surface().focus(), &page.screen().coordonnees.Txt_RaisonOrgChg);
  EXPECT_EQ(GetFocus(), page.windowOf(page.screen().coordonnees.Txt_RaisonOrgChg));
}

TEST_F(Cues, AFocusGivenToAFieldThatTakesNoneGoesWhereItWas) {
  page.windows().takeFocus();
  const toolkit::Control* before = page.surface().focus();
  page.surface().setAcceptsInput(false);
  SetFocus(page.field());
  SetFocus(page.windowOf(page.screen().coordonnees.Txt_RaisonOrgChg));
  page.pump();
  EXPECT_EQ(page.surface().focus(), before);
}

}  // namespace
}  // namespace look
