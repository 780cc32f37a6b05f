#include "tests/unit/toolkit/RuleTest.h"
#include "toolkit/Frame.h"

namespace toolkit::test {
namespace {

class ButtonRules : public RuleTest {
 protected:
  TextBox box{&surface, "Txt_Box"};
  CommandButton button{&surface, "Cmd_Button", "&Go"};
  CheckBox check{&surface, "Cac_Check", "Check"};
  Frame frame{&surface, "Cdr_Frame", "Options"};
  OptionButton first{&frame, "Opt_First", "First"};
  OptionButton second{&frame, "Opt_Second", "Second"};
  Frame otherFrame{&surface, "Cdr_Other", "Others"};
  OptionButton apart{&otherFrame, "Opt_Apart", "Apart"};

  ButtonRules() {
    button.onClick = note("button");
    check.onClick = note("check");
    first.onClick = note("first");
    second.onClick = note("second");
    apart.onClick = note("apart");
  }
};

TEST_F(ButtonRules, AClickOnACommandButtonFiresClickAndTakesTheFocus) {
  user().go(box);
  user().click(button);
  EXPECT_EQ(taken(), Events{"button"});
  EXPECT_PRED_FORMAT1(hasFocus, button);
}

TEST_F(ButtonRules, ADisabledButtonCannotBeClicked) {
  button.setEnabled(false);
  user().click(button);
  user().alt(U'g');
  EXPECT_EQ(taken(), Events{});
}

TEST_F(ButtonRules, AHiddenButtonCannotBeClickedNorReachedByItsMnemonic) {
  button.setVisible(false);
  user().click(button);
  user().alt(U'g');
  EXPECT_EQ(taken(), Events{});
}

TEST_F(ButtonRules, AClickIsDroppedWhenALostFocusHandlerKeepsTheFocus) {
  box.onLostFocus = [this] { box.setFocus(); };
  user().go(box);
  user().click(button);
  user().click(check);
  user().click(first);
  EXPECT_EQ(taken(), Events{});
  EXPECT_FALSE(check.value());
  EXPECT_FALSE(first.value());
  EXPECT_PRED_FORMAT1(hasFocus, box);
}

TEST_F(ButtonRules, AClickIsDroppedWhenALostFocusHandlerDisablesTheButton) {
  box.onLostFocus = [this] { button.setEnabled(false); };
  user().go(box);
  user().click(button);
  EXPECT_EQ(taken(), Events{});
  EXPECT_FALSE(button.hasFocus());
}

TEST_F(ButtonRules, AnOptionFiresClickWhenTheUserSetsIt) {
  user().click(first);
  EXPECT_TRUE(first.value());
  EXPECT_EQ(taken(), Events{"first"});
}

TEST_F(ButtonRules, AnOptionFiresClickWhenCodeSetsIt) {
  user();
  second.setValue(true);
  EXPECT_EQ(taken(), Events{"second"});
}

TEST_F(ButtonRules, AnOptionThatIsSetFiresNothingWhenItIsSetAgain) {
  first.setValue(true);
  taken();
  user().click(first);
  first.setValue(true);
  EXPECT_EQ(taken(), Events{});
}

TEST_F(ButtonRules, TheOtherOptionsOfTheFrameAreClearedSilently) {
  first.setValue(true);
  apart.setValue(true);
  taken();
  user().click(second);
  EXPECT_FALSE(first.value());
  EXPECT_TRUE(second.value());
  EXPECT_TRUE(apart.value());
  EXPECT_EQ(taken(), Events{"second"});
}

TEST_F(ButtonRules, AnOptionClearedByCodeFiresNothing) {
  first.setValue(true);
  taken();
  user();
  first.setValue(false);
  EXPECT_FALSE(first.value());
  EXPECT_EQ(taken(), Events{});
}

TEST_F(ButtonRules, FocusAloneSetsNoOption) {
  user().go(box);
  user().tab();
  user().tab();
  user().tab();
  EXPECT_PRED_FORMAT1(hasFocus, first);
  EXPECT_FALSE(first.value());
  EXPECT_EQ(taken(), Events{});
}

TEST_F(ButtonRules, ACheckBoxFiresClickWhenTheUserChangesItsValue) {
  user().click(check);
  EXPECT_TRUE(check.value());
  user().click(check);
  EXPECT_FALSE(check.value());
  EXPECT_EQ(taken(), (Events{"check", "check"}));
}

TEST_F(ButtonRules, ACheckBoxFiresClickWhenCodeChangesItsValue) {
  user();
  check.setValue(true);
  check.setValue(true);
  EXPECT_EQ(taken(), Events{"check"});
}

TEST_F(ButtonRules, OptionsAndCheckBoxesOfADisabledFrameTakeNoClick) {
  frame.setEnabled(false);
  user().click(first);
  EXPECT_TRUE(first.enabled());
  EXPECT_FALSE(first.value());
  EXPECT_EQ(taken(), Events{});
}

}  // namespace
}  // namespace toolkit::test
