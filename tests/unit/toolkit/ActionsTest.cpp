// One user action at a time, and none while the surface is disabled.
#include "tests/unit/toolkit/RuleTest.h"

namespace toolkit::test {
namespace {

class ActionRules : public RuleTest {
 protected:
  TextBox box{&surface, "Txt_Box"};
  CommandButton button{&surface, "Cmd_Button", "&Button"};
  CommandButton other{&surface, "Cmd_Other", "&Other"};
  CheckBox check{&surface, "Cac_Check", "Check"};
  ListBox list{&surface, "Lst_List"};
  ComboBox combo{&surface, "Cbo_Combo"};
  SSTab tabs{&surface, "Ong_Tabs", {"One", "Two"}};
  ScrollBar bar{&surface, "Bdv_Bar", ScrollBar::Direction::Vertical};

  ActionRules() {
    list.addItem("line");
    combo.addItem("line");
    bar.setRange(0, 9);
    other.onClick = note("other");
  }

  void doEverything() {
    user().go(box);
    user().type("x");
    user().click(other);
    user().alt(U'o');
    user().click(check);
    user().click(list, 0);
    user().dblClick(list, 0);
    user().choose(combo, 0);
    user().click(tabs, 1);
    user().scroll(bar, 5);
    user().tab();
  }

  void expectNothingDone() {
    EXPECT_EQ(box.text(), "");
    EXPECT_FALSE(check.value());
    EXPECT_EQ(list.listIndex(), -1);
    EXPECT_EQ(combo.listIndex(), -1);
    EXPECT_EQ(tabs.tab(), 0);
    EXPECT_EQ(bar.value(), 0);
  }
};

TEST_F(ActionRules, WhileAHandlerRunsFurtherInputIsDropped) {
  button.onClick = [this] {
    EXPECT_TRUE(surface.busy());
    doEverything();
    EXPECT_PRED_FORMAT1(hasFocus, button);
    events.emplace_back("end");
  };
  user().click(button);
  expectNothingDone();
  EXPECT_EQ(taken(), Events{"end"});
  EXPECT_FALSE(surface.busy());
  EXPECT_PRED_FORMAT1(hasFocus, button);
}

TEST_F(ActionRules, WhileALostFocusHandlerRunsFurtherInputIsDropped) {
  box.onLostFocus = [this] { user().click(other); };
  user().go(box);
  user().click(check);
  EXPECT_PRED_FORMAT1(hasFocus, check);
  EXPECT_TRUE(check.value());
  EXPECT_EQ(taken(), Events{});
}

TEST_F(ActionRules, WhileTheFocusMovesOnFurtherInputIsDropped) {
  button.onClick = [this] { button.setEnabled(false); };
  other.onGotFocus = [this] {
    EXPECT_TRUE(surface.busy());
    user().click(check);
  };
  user().click(button);
  EXPECT_PRED_FORMAT1(hasFocus, other);
  EXPECT_FALSE(check.value());
}

TEST_F(ActionRules, ADisabledSurfaceTakesNoInput) {
  surface.setEnabled(false);
  doEverything();
  expectNothingDone();
  EXPECT_EQ(taken(), Events{});
  EXPECT_EQ(surface.focus(), nullptr);
  surface.setEnabled(true);
  user().go(box);
  user().type("x");
  EXPECT_EQ(box.text(), "x");
}

TEST_F(ActionRules, ASurfaceThatAcceptsNoInputTakesNone) {
  surface.setAcceptsInput(false);
  doEverything();
  expectNothingDone();
  surface.setAcceptsInput(true);
  user().go(box);
  user().type("x");
  EXPECT_EQ(box.text(), "x");
}

TEST_F(ActionRules, WhileTheHostCallsInputIsDropped) {
  user().go(box);
  {
    const Surface::Action call(surface, Surface::Action::By::Host);
    ASSERT_TRUE(call.accepted());
    user().type("x");
    user().click(other);
    EXPECT_FALSE(surface.wouldUse({Key::Tab}));
  }
  EXPECT_EQ(box.text(), "");
  EXPECT_EQ(taken(), Events{});
  user().type("x");
  EXPECT_EQ(box.text(), "x");
}

TEST_F(ActionRules, AHostsCallIsRefusedWhileAHandlerRuns) {
  button.onClick = [this] {
    const Surface::Action call(surface, Surface::Action::By::Host);
    events.emplace_back(call.accepted() ? "accepted" : "refused");
  };
  user().click(button);
  EXPECT_EQ(taken(), Events{"refused"});
  EXPECT_FALSE(surface.busy());
}

TEST_F(ActionRules, AHostsCallIsAcceptedOnADisabledSurface) {
  surface.setEnabled(false);
  user();
  const Surface::Action call(surface, Surface::Action::By::Host);
  EXPECT_TRUE(call.accepted());
  const Surface::Action second(surface, Surface::Action::By::Host);
  EXPECT_FALSE(second.accepted());
}

TEST_F(ActionRules, ARefusedActionLeavesTheRunningOneBusy) {
  user();
  const Surface::Action call(surface, Surface::Action::By::Host);
  { const Surface::Action refused(surface, Surface::Action::By::User); }
  EXPECT_TRUE(surface.busy());
}

}  // namespace
}  // namespace toolkit::test
