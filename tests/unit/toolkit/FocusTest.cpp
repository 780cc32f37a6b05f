#include "tests/unit/toolkit/RuleTest.h"
#include "toolkit/Frame.h"

namespace toolkit::test {
namespace {

class FocusRules : public RuleTest {
 protected:
  TextBox first{&surface, "first"};
  TextBox second{&surface, "second"};
  Frame frame{&surface, "frame", "Frame"};
  TextBox inside{&frame, "inside"};
  CommandButton button{&surface, "button", "&Button"};
  SSTab tabs{&surface, "tabs", {"One", "Two"}};
  TextBox paged{&tabs.page(0), "paged"};
  TextBox behind{&tabs.page(1), "behind"};
  TextBox last{&surface, "last"};

  FocusRules() {
    for (Control* control :
         std::vector<Control*>{&first, &second, &inside, &button, &tabs, &paged, &behind, &last}) {
      noteFocus(*control);
    }
    button.onClick = note("click");
  }
};

TEST_F(FocusRules, LostFocusOfTheOldControlComesBeforeGotFocusOfTheNewOne) {
  user().go(first);
  EXPECT_EQ(taken(), Events{"first got"});
  user().go(second);
  EXPECT_EQ(taken(), (Events{"first lost", "second got"}));
}

TEST_F(FocusRules, GoingWhereTheFocusIsFiresNothing) {
  user().go(first);
  taken();
  user().go(first);
  first.setFocus();
  EXPECT_EQ(taken(), Events{});
}

TEST_F(FocusRules, LostFocusKnowsWhereTheFocusIsToGo) {
  std::vector<const Control*> seen;
  first.onLostFocus = [&] { seen.push_back(surface.focusGoal()); };
  user().go(first);
  user().click(button);
  first.setFocus();
  last.setFocus();
  EXPECT_EQ(seen, (std::vector<const Control*>{&button, &last}));
  EXPECT_EQ(surface.focusGoal(), nullptr);
}

TEST_F(FocusRules, CodeMovesTheFocusWithTheSameEvents) {
  user().go(first);
  taken();
  second.setFocus();
  EXPECT_PRED_FORMAT1(hasFocus, second);
  EXPECT_EQ(taken(), (Events{"first lost", "second got"}));
  user().type("x");
  EXPECT_EQ(second.text(), "x");
}

TEST_F(FocusRules, TabAndAClickMoveTheFocusFirst) {
  user().go(first);
  taken();
  user().tab();
  EXPECT_EQ(taken(), (Events{"first lost", "second got"}));
  user().click(button);
  EXPECT_EQ(taken(), (Events{"second lost", "button got", "click"}));
}

TEST_F(FocusRules, AMnemonicMovesTheFocusFirst) {
  user().go(first);
  taken();
  user().alt(U'b');
  EXPECT_EQ(taken(), (Events{"first lost", "button got", "click"}));
}

TEST_F(FocusRules, WhenLostFocusSendsItBackTheClickIsDropped) {
  first.onLostFocus = [this] {
    events.emplace_back("first lost");
    first.setFocus();
  };
  user().go(first);
  taken();
  user().click(button);
  EXPECT_PRED_FORMAT1(hasFocus, first);
  EXPECT_EQ(taken(), (Events{"first lost", "first got"}));
  user().alt(U'b');
  EXPECT_EQ(taken(), (Events{"first lost", "first got"}));
}

TEST_F(FocusRules, WhenLostFocusSendsItElsewhereTheClickIsDropped) {
  first.onLostFocus = [this] {
    events.emplace_back("first lost");
    inside.setFocus();
  };
  user().go(first);
  taken();
  user().click(button);
  EXPECT_PRED_FORMAT1(hasFocus, inside);
  EXPECT_EQ(taken(), (Events{"first lost", "inside got"}));
}

TEST_F(FocusRules, TheLastRequestWithinLostFocusWins) {
  first.onLostFocus = [this] {
    first.setFocus();
    inside.setFocus();
    last.setFocus();
  };
  user().go(first);
  taken();
  user().tab();
  EXPECT_PRED_FORMAT1(hasFocus, last);
  EXPECT_EQ(taken(), Events{"last got"});
}

TEST_F(FocusRules, WithinLostFocusTheFocusHasNotMovedYet) {
  first.onLostFocus = [this] {
    second.setFocus();
    events.emplace_back(first.hasFocus() ? "still here" : "gone");
  };
  user().go(first);
  taken();
  user().go(last);
  EXPECT_EQ(taken(), (Events{"still here", "second got"}));
}

TEST_F(FocusRules, AClickGoesThroughWhenLostFocusAsksForItsOwnTarget) {
  first.onLostFocus = [this] { button.setFocus(); };
  user().go(first);
  taken();
  user().click(button);
  EXPECT_EQ(taken(), (Events{"button got", "click"}));
}

TEST_F(FocusRules, ATargetThatLostFocusDisablesLeavesTheFocusWhereItWas) {
  first.onLostFocus = [this] {
    events.emplace_back("first lost");
    button.setEnabled(false);
  };
  user().go(first);
  taken();
  user().click(button);
  EXPECT_PRED_FORMAT1(hasFocus, first);
  EXPECT_EQ(taken(), (Events{"first lost", "first got"}));
}

TEST_F(FocusRules, FocusGivenInGotFocusMovesOnAtOnce) {
  second.onGotFocus = [this] {
    events.emplace_back("second got");
    last.setFocus();
    events.emplace_back(last.hasFocus() ? "moved" : "not moved");
  };
  user().go(first);
  taken();
  user().go(second);
  EXPECT_EQ(taken(), (Events{"first lost", "second got", "second lost", "last got", "moved"}));
}

TEST_F(FocusRules, AClickIsDroppedWhenGotFocusSendsTheFocusElsewhere) {
  button.onGotFocus = [this] { last.setFocus(); };
  user().go(first);
  taken();
  user().click(button);
  EXPECT_PRED_FORMAT1(hasFocus, last);
  EXPECT_EQ(taken(), (Events{"first lost", "button lost", "last got"}));
}

TEST_F(FocusRules, DisablingTheSurfaceFiresNeitherEvent) {
  user().go(first);
  taken();
  surface.setEnabled(false);
  user().go(second);
  user().tab();
  user().type("x");
  EXPECT_PRED_FORMAT1(hasFocus, first);
  EXPECT_EQ(first.text(), "");
  surface.setEnabled(true);
  EXPECT_EQ(taken(), Events{});
  user().type("x");
  EXPECT_EQ(first.text(), "x");
}

TEST_F(FocusRules, FocusThatComesBackFromTheHostToTheSameFieldFiresNothing) {
  user().go(first);
  taken();
  EXPECT_TRUE(surface.enter(false));
  EXPECT_EQ(taken(), Events{});
  EXPECT_TRUE(surface.enter(true));
  EXPECT_EQ(taken(), (Events{"first lost", "last got"}));
}

TEST_F(FocusRules, DisablingTheControlWithTheFocusFiresNoLostFocusAndMovesItOn) {
  user().go(first);
  taken();
  first.setEnabled(false);
  EXPECT_PRED_FORMAT1(hasFocus, second);
  EXPECT_EQ(taken(), Events{"second got"});
  user().type("x");
  EXPECT_EQ(second.text(), "x");
}

TEST_F(FocusRules, HidingTheControlWithTheFocusFiresNoLostFocusAndMovesItOn) {
  user().go(second);
  taken();
  second.setVisible(false);
  EXPECT_EQ(taken(), Events{"inside got"});
}

TEST_F(FocusRules, DisablingTheFrameAroundTheFocusMovesItOn) {
  user().go(inside);
  taken();
  frame.setEnabled(false);
  EXPECT_EQ(taken(), Events{"button got"});
}

TEST_F(FocusRules, TheFocusMovesOnPastTheEndToTheFirst) {
  user().go(last);
  taken();
  last.setVisible(false);
  EXPECT_EQ(taken(), Events{"first got"});
}

TEST_F(FocusRules, WithinAHandlerTheFocusStaysInNameUntilItEnds) {
  button.onClick = [this] {
    button.setEnabled(false);
    events.emplace_back(button.hasFocus() ? "in name" : "gone");
  };
  user().click(button);
  EXPECT_EQ(taken(), (Events{"button got", "in name", "tabs got"}));
  EXPECT_PRED_FORMAT1(hasFocus, tabs);
}

TEST_F(FocusRules, AHandlerThatDisablesAndEnablesItsControlAgainMovesNothing) {
  button.onClick = [this] {
    button.setEnabled(false);
    button.setEnabled(true);
  };
  user().click(button);
  EXPECT_PRED_FORMAT1(hasFocus, button);
  EXPECT_EQ(taken(), Events{"button got"});
}

TEST_F(FocusRules, AHandlerThatDisablesItsControlMayGiveTheFocusItself) {
  button.onClick = [this] {
    button.setEnabled(false);
    first.setFocus();
  };
  user().click(button);
  EXPECT_PRED_FORMAT1(hasFocus, first);
  EXPECT_EQ(taken(), (Events{"button got", "first got"}));
}

TEST_F(FocusRules, WhileTheSurfaceIsDisabledTheFocusWaitsToMoveOn) {
  user().go(first);
  taken();
  surface.setEnabled(false);
  first.setEnabled(false);
  EXPECT_PRED_FORMAT1(hasFocus, first);
  surface.setEnabled(true);
  EXPECT_EQ(taken(), Events{"second got"});
}

TEST_F(FocusRules, AControlWhoseGotFocusDisablesItPassesTheFocusOn) {
  second.onGotFocus = [this] { second.setEnabled(false); };
  user().go(first);
  taken();
  first.setEnabled(false);
  EXPECT_PRED_FORMAT1(hasFocus, inside);
  EXPECT_EQ(taken(), Events{"inside got"});
}

TEST_F(FocusRules, WithNowhereToGoTheFocusStaysInName) {
  user().go(first);
  taken();
  for (Control* control : std::vector<Control*>{&second, &frame, &button, &tabs, &last}) {
    control->setEnabled(false);
  }
  first.setEnabled(false);
  EXPECT_PRED_FORMAT1(hasFocus, first);
  user().type("x");
  EXPECT_EQ(first.text(), "");
  EXPECT_EQ(taken(), Events{});
  first.setEnabled(true);
  user().type("x");
  EXPECT_EQ(first.text(), "x");
}

TEST_F(FocusRules, GivingTheFocusToADisabledOrHiddenControlDoesNothing) {
  second.setEnabled(false);
  inside.setVisible(false);
  user().go(first);
  taken();
  second.setFocus();
  inside.setFocus();
  behind.setFocus();
  user().go(second);
  EXPECT_PRED_FORMAT1(hasFocus, first);
  EXPECT_EQ(taken(), Events{});
}

TEST_F(FocusRules, LabelsAndFramesTakeNoFocus) {
  user().go(first);
  taken();
  frame.setFocus();
  EXPECT_FALSE(surface.moveFocus(&frame));
  EXPECT_FALSE(surface.moveFocus(nullptr));
  EXPECT_PRED_FORMAT1(hasFocus, first);
  EXPECT_EQ(taken(), Events{});
}

TEST_F(FocusRules, FocusAskedForWhileTheSurfaceIsDisabledIsGivenWhenItIsEnabled) {
  user().go(first);
  taken();
  surface.setEnabled(false);
  last.setFocus();
  second.setFocus();
  EXPECT_PRED_FORMAT1(hasFocus, first);
  EXPECT_EQ(taken(), Events{});
  surface.setEnabled(true);
  EXPECT_PRED_FORMAT1(hasFocus, second);
  EXPECT_EQ(taken(), (Events{"first lost", "second got"}));
}

TEST_F(FocusRules, ADisabledControlIsNotRememberedWhileTheSurfaceIsDisabled) {
  user().go(first);
  taken();
  second.setEnabled(false);
  surface.setEnabled(false);
  second.setFocus();
  second.setEnabled(true);
  surface.setEnabled(true);
  EXPECT_PRED_FORMAT1(hasFocus, first);
  EXPECT_EQ(taken(), Events{});
}

TEST_F(FocusRules, ARememberedControlThatIsDisabledMeanwhileIsNotGivenTheFocus) {
  user().go(first);
  taken();
  surface.setEnabled(false);
  second.setFocus();
  second.setEnabled(false);
  surface.setEnabled(true);
  EXPECT_PRED_FORMAT1(hasFocus, first);
  EXPECT_EQ(taken(), Events{});
}

TEST_F(FocusRules, ALostFocusHandlerMayDisableTheSurfaceWhileItWorks) {
  first.onLostFocus = [this] {
    events.emplace_back("first lost");
    surface.setEnabled(false);
    last.setFocus();
    surface.setEnabled(true);
  };
  user().go(first);
  taken();
  user().click(button);
  EXPECT_PRED_FORMAT1(hasFocus, last);
  EXPECT_EQ(taken(), (Events{"first lost", "last got"}));
}

TEST_F(FocusRules, AMoveThatFindsTheSurfaceDisabledEndsWhenItIsEnabled) {
  first.onLostFocus = [this] {
    events.emplace_back("first lost");
    surface.setEnabled(false);
  };
  user().go(first);
  taken();
  user().click(button);
  EXPECT_PRED_FORMAT1(hasFocus, first);
  EXPECT_EQ(taken(), Events{"first lost"});
  surface.setEnabled(true);
  EXPECT_PRED_FORMAT1(hasFocus, button);
  EXPECT_EQ(taken(), Events{"button got"});
}

TEST_F(FocusRules, AControlTakesInputOnlyWhenEverythingAroundItIsEnabledAndVisible) {
  user().go(first);
  taken();
  frame.setEnabled(false);
  EXPECT_TRUE(inside.enabled());
  user().go(inside);
  frame.setEnabled(true);
  frame.setVisible(false);
  EXPECT_TRUE(inside.visible());
  user().go(inside);
  frame.setVisible(true);
  tabs.page(0).setEnabled(false);
  EXPECT_TRUE(paged.enabled());
  user().go(paged);
  EXPECT_PRED_FORMAT1(hasFocus, first);
  EXPECT_EQ(taken(), Events{});
  tabs.page(0).setEnabled(true);
  user().go(paged);
  EXPECT_PRED_FORMAT1(hasFocus, paged);
}

}  // namespace
}  // namespace toolkit::test
