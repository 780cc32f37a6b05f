// What a read-only control holds is the user's to see, to reach and to copy, and nobody's but
// code's to change.
#include <algorithm>
#include <initializer_list>

#include "tests/unit/toolkit/RuleTest.h"
#include "toolkit/Frame.h"

namespace toolkit::test {
namespace {

class ReadOnlyRules : public RuleTest {
 protected:
  ReadOnlyRules() {
    box.setText("Domus");
    combo.setItems({{"Rue", 1}, {"Avenue", 2}});
    combo.setListIndex(0);
    first.setValue(true);
    bar.setRange(1, 9);
    bar.setValue(2);
    for (Control* control : all()) control->setReadOnly(true);
    box.onChange = note("box");
    box.onKeyPress = [this](char32_t&) { events.emplace_back("box key"); };
    combo.onChange = note("combo");
    combo.onClick = note("combo line");
    combo.onDropDown = note("combo list");
    combo.onKeyPress = [this](char32_t&) { events.emplace_back("combo key"); };
    second.onClick = note("option");
    check.onClick = note("check");
    button.onClick = note("button");
    bar.onChange = note("bar");
  }

  std::vector<Control*> all() { return {&box, &combo, &first, &second, &check, &button, &bar}; }
  static KeyStroke plain(Key key) { return {key}; }

  void expectUntouched() {
    EXPECT_EQ(box.text(), "Domus");
    EXPECT_EQ(combo.text(), "Rue");
    EXPECT_EQ(combo.listIndex(), 0);
    EXPECT_FALSE(combo.opened());
    EXPECT_TRUE(first.value());
    EXPECT_FALSE(second.value());
    EXPECT_FALSE(check.value());
    EXPECT_EQ(bar.value(), 2);
    EXPECT_EQ(taken(), Events{});
  }

  TextBox box{&surface, "Txt_Box"};
  ComboBox combo{&surface, "Cbo_Combo"};
  Frame frame{&surface, "Cdr_Frame", "Frame"};
  OptionButton first{&frame, "Opt_First", "&First"};
  OptionButton second{&frame, "Opt_Second", "&Second"};
  CheckBox check{&surface, "Cac_Check", "&Check"};
  CommandButton button{&surface, "Cmd_Button", "&Button"};
  ScrollBar bar{&surface, "Bdv_Bar", ScrollBar::Direction::Vertical};
  TextBox last{&surface, "Txt_Last"};
};

TEST_F(ReadOnlyRules, ATextBoxTakesNoKeyAndNothingPasted) {
  user().go(box);
  EXPECT_PRED_FORMAT1(hasFocus, box);
  user().type("x\b\r");
  user().selectAll();
  user().type("y");
  user().paste("z");
  expectUntouched();
}

TEST_F(ReadOnlyRules, TheTextOfATextBoxIsSelectedStill) {
  user().go(last);
  user().tab(true);
  user().tab(true);
  user().tab(true);
  user().tab(true);
  EXPECT_PRED_FORMAT1(hasFocus, box);
  EXPECT_EQ(box.selectionLength(), 5);
  user().press(plain(Key::Home));
  expectUntouched();
}

TEST_F(ReadOnlyRules, AComboTakesNoTextAndNoLine) {
  user().go(combo);
  EXPECT_PRED_FORMAT1(hasFocus, combo);
  user().type("A\b\r");
  user().press(plain(Key::Down));
  user().press(plain(Key::F4));
  user().press({Key::Down, 0, false, false, true});
  user().open(combo);
  user().choose(combo, 1);
  user().wheel(combo);
  expectUntouched();
}

TEST_F(ReadOnlyRules, CodeOpensNoListOfACombo) {
  user().go(combo);
  combo.openList();
  expectUntouched();
}

TEST_F(ReadOnlyRules, OptionsAndChecksAreReachedAndKeepWhatTheySay) {
  user().click(second);
  EXPECT_PRED_FORMAT1(hasFocus, second);
  user().press(plain(Key::Space));
  user().alt(U'S');
  user().go(first);
  user().press(plain(Key::Down));
  user().click(check);
  EXPECT_PRED_FORMAT1(hasFocus, check);
  user().press(plain(Key::Space));
  user().alt(U'C');
  expectUntouched();
}

TEST_F(ReadOnlyRules, AButtonOrScrollBarTakesNoInput) {
  user().go(box);
  user().click(button);
  user().alt(U'B');
  user().scroll(bar, 5);
  EXPECT_PRED_FORMAT1(hasFocus, box);
  EXPECT_TRUE(button.enabled());
  EXPECT_FALSE(button.usable());
  user().tab();
  user().tab();
  user().tab();
  user().tab();
  EXPECT_PRED_FORMAT1(hasFocus, last);
  expectUntouched();
}

TEST_F(ReadOnlyRules, CodeChangesThemAsEver) {
  user();
  box.setText("Autre");
  combo.setListIndex(1);
  second.setValue(true);
  check.setValue(true);
  bar.setValue(3);
  EXPECT_EQ(taken(), (Events{"box", "combo line", "option", "check", "bar"}));
}

TEST_F(ReadOnlyRules, NoneOfItLastsLongerThanItIsSaid) {
  user().go(box);
  for (Control* control : all()) control->setReadOnly(false);
  user().selectAll();
  user().type("y");
  EXPECT_EQ(box.text(), "y");
  user().choose(combo, 1);
  EXPECT_EQ(combo.text(), "Avenue");
  user().click(second);
  user().click(check);
  user().click(button);
  user().scroll(bar, 5);
  EXPECT_TRUE(second.value());
  EXPECT_TRUE(check.value());
  EXPECT_EQ(bar.value(), 5);
  const Events done = taken();
  EXPECT_EQ(std::count(done.begin(), done.end(), "button"), 1);
}

TEST_F(ReadOnlyRules, TheSurfaceHearsOfAnAttemptAndMayLiftIt) {
  int attempts = 0;
  surface.onAttempt = [&](const Control&) {
    if (++attempts < 3) return;
    for (Control* control : all()) control->setReadOnly(false);
  };
  user().go(box);
  EXPECT_EQ(attempts, 0);
  user().type("a");
  user().click(check);
  expectUntouched();
  EXPECT_EQ(attempts, 2);
  user().click(check);
  EXPECT_TRUE(check.value());
}

TEST_F(ReadOnlyRules, TheSurfaceMayForbidWhatIsAttempted) {
  for (Control* control : all()) control->setReadOnly(false);
  std::vector<const Control*> attempted;
  surface.onAttempt = [&](const Control& control) {
    attempted.push_back(&control);
    const_cast<Control&>(control).setReadOnly(true);
  };
  user().go(box);
  user().type("x");
  user().choose(combo, 1);
  user().click(second);
  user().click(check);
  EXPECT_FALSE(attempted.empty());
  for (const Control* control : std::initializer_list<Control*>{&box, &combo, &second, &check}) {
    EXPECT_GE(std::count(attempted.begin(), attempted.end(), control), 1) << control->name();
  }
  expectUntouched();
}

}  // namespace
}  // namespace toolkit::test
