#include <stdexcept>

#include "tests/unit/toolkit/RuleTest.h"

namespace toolkit::test {
namespace {

class SSTabRules : public RuleTest {
 protected:
  TextBox above{&surface, "Txt_Above"};
  SSTab tabs{&surface, "Ong_Tabs", {"&One", "&Two", "T&hree"}};
  TextBox one{&tabs.page(0), "Txt_One"};
  TextBox two{&tabs.page(1), "Txt_Two"};
  TextBox three{&tabs.page(2), "Txt_Three"};

  SSTabRules() {
    tabs.onClick = [this] { events.push_back("page " + std::to_string(tabs.tab())); };
  }
};

TEST_F(SSTabRules, TheFirstPageIsInFront) {
  user();
  EXPECT_EQ(tabs.tabs(), 3);
  EXPECT_EQ(tabs.tab(), 0);
  EXPECT_TRUE(one.shown());
  EXPECT_FALSE(two.shown());
}

TEST_F(SSTabRules, TheUserBringsAPageForwardAndTheFocusGoesToTheTabs) {
  user().go(one);
  user().click(tabs, 1);
  EXPECT_EQ(tabs.tab(), 1);
  EXPECT_PRED_FORMAT1(hasFocus, tabs);
  EXPECT_TRUE(two.shown());
  EXPECT_FALSE(one.shown());
  EXPECT_EQ(taken(), Events{"page 1"});
}

TEST_F(SSTabRules, TheTabIsDroppedWhenALostFocusHandlerKeepsTheFocus) {
  one.onLostFocus = [this] { one.setFocus(); };
  user().go(one);
  user().click(tabs, 1);
  user().alt(U't');
  user().press({Key::PageDown, 0, false, true, false});
  EXPECT_EQ(tabs.tab(), 0);
  EXPECT_PRED_FORMAT1(hasFocus, one);
  EXPECT_EQ(taken(), Events{});
}

TEST_F(SSTabRules, ASingleTabCanBeDisabled) {
  tabs.setTabEnabled(1, false);
  user().go(above);
  user().click(tabs, 1);
  user().alt(U't');
  EXPECT_EQ(tabs.tab(), 0);
  EXPECT_PRED_FORMAT1(hasFocus, above);
  user().click(tabs, 2);
  EXPECT_EQ(tabs.tab(), 2);
}

TEST_F(SSTabRules, CodeBringsADisabledPageForwardWhichTakesNoInput) {
  tabs.setTabEnabled(1, false);
  user();
  tabs.setTab(1);
  EXPECT_TRUE(two.shown());
  EXPECT_FALSE(two.usable());
  user().go(two);
  user().type("x");
  EXPECT_EQ(two.text(), "");
  EXPECT_EQ(taken(), Events{"page 1"});
}

TEST_F(SSTabRules, APageBroughtForwardByCodeMovesNoFocus) {
  user().go(above);
  tabs.setTab(2);
  EXPECT_PRED_FORMAT1(hasFocus, above);
  EXPECT_EQ(taken(), Events{"page 2"});
  tabs.setTab(2);
  EXPECT_EQ(taken(), Events{});
}

TEST_F(SSTabRules, PagesNotInFrontTakeNoInput) {
  user().go(above);
  user().go(two);
  EXPECT_PRED_FORMAT1(hasFocus, above);
  two.setFocus();
  EXPECT_PRED_FORMAT1(hasFocus, above);
  EXPECT_TRUE(two.enabled());
  EXPECT_TRUE(two.visible());
}

TEST_F(SSTabRules, FocusGoesToAFieldOfAPageOnceItIsInFront) {
  user().go(above);
  tabs.setTab(1);
  two.setFocus();
  EXPECT_PRED_FORMAT1(hasFocus, two);
  user().type("x");
  EXPECT_EQ(two.text(), "x");
}

TEST_F(SSTabRules, AMnemonicBringsItsPageForward) {
  user().go(one);
  user().alt(U'h');
  EXPECT_EQ(tabs.tab(), 2);
  EXPECT_PRED_FORMAT1(hasFocus, tabs);
}

TEST_F(SSTabRules, CtrlPageDownAndUpWalkOverTheEnabledPagesAndWrapAround) {
  tabs.setTabEnabled(1, false);
  user().go(one);
  user().press({Key::PageDown, 0, false, true, false});
  EXPECT_EQ(tabs.tab(), 2);
  EXPECT_PRED_FORMAT1(hasFocus, three);
  user().press({Key::PageDown, 0, false, true, false});
  EXPECT_EQ(tabs.tab(), 0);
  EXPECT_PRED_FORMAT1(hasFocus, one);
  user().press({Key::PageUp, 0, false, true, false});
  EXPECT_EQ(tabs.tab(), 2);
}

TEST_F(SSTabRules, CtrlPageDownStaysAtTheTabsOfAPageWhereTabDoesNotStop) {
  two.setTabStop(false);
  user().go(one);
  user().press({Key::PageDown, 0, false, true, false});
  EXPECT_EQ(tabs.tab(), 1);
  EXPECT_PRED_FORMAT1(hasFocus, tabs);
}

TEST_F(SSTabRules, CtrlTabWalksOverThePages) {
  user().go(one);
  user().press({Key::Tab, 0, false, true, false});
  EXPECT_EQ(tabs.tab(), 1);
  user().press({Key::Tab, 0, true, true, false});
  EXPECT_EQ(tabs.tab(), 0);
}

TEST_F(SSTabRules, CtrlPageDownFromOutsideTurnsTheFirstTabsOfTheSurface) {
  user().go(above);
  user().press({Key::PageDown, 0, false, true, false});
  EXPECT_EQ(tabs.tab(), 1);
}

TEST_F(SSTabRules, ArrowsWalkOverTheEnabledPagesAndStopAtTheEnds) {
  tabs.setTabEnabled(1, false);
  user().go(above);
  user().tab();
  ASSERT_PRED_FORMAT1(hasFocus, tabs);
  user().press({Key::Right});
  EXPECT_EQ(tabs.tab(), 2);
  user().press({Key::Right});
  EXPECT_EQ(tabs.tab(), 2);
  user().press({Key::Left});
  EXPECT_EQ(tabs.tab(), 0);
}

TEST_F(SSTabRules, ATabThatIsNotThereIsRefused) {
  user();
  EXPECT_THROW(tabs.setTab(3), std::invalid_argument);
  EXPECT_THROW(tabs.page(-1), std::invalid_argument);
  EXPECT_EQ(tabs.tab(), 0);
}

TEST_F(SSTabRules, HidingTheFocusBehindAnotherPageFiresNoLostFocus) {
  noteFocus(one);
  noteFocus(two);
  user().go(one);
  taken();
  tabs.setTab(1);
  EXPECT_EQ(taken(), (Events{"page 1", "Txt_Two got"}));
  EXPECT_PRED_FORMAT1(hasFocus, two);
}

}  // namespace
}  // namespace toolkit::test
