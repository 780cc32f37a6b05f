#include "tests/unit/toolkit/RuleTest.h"
#include "toolkit/Frame.h"

namespace toolkit::test {
namespace {

class KeyRules : public RuleTest {
 protected:
  Label label{&surface, "Etq_Name", "&Name"};
  TextBox name{&surface, "Txt_Name"};
  ComboBox combo{&surface, "Cbo_Combo"};
  Frame group{&surface, "Cdr_Group", "&Group"};
  OptionButton red{&group, "Opt_Red", "&Red"};
  OptionButton green{&group, "Opt_Green", "Gr&een"};
  OptionButton blue{&group, "Opt_Blue", "&Blue"};
  CheckBox check{&surface, "Cac_Check", "&Check"};
  CommandButton ok{&surface, "Cmd_Ok", "&OK"};
  CommandButton open{&surface, "Cmd_Open", "&Open"};
  CommandButton cancel{&surface, "Cmd_Cancel", "Cancel"};

  KeyRules() {
    ok.onClick = note("ok");
    open.onClick = note("open");
    cancel.onClick = note("cancel");
    check.onClick = note("check");
    red.onClick = note("red");
    green.onClick = note("green");
    blue.onClick = note("blue");
  }

  bool uses(const KeyStroke& stroke) const { return surface.wouldUse(stroke); }
};

constexpr KeyStroke kTab{Key::Tab};
constexpr KeyStroke kBackTab{Key::Tab, 0, true};
constexpr KeyStroke kEnter{Key::Enter};
constexpr KeyStroke kSpace{Key::Space};
constexpr KeyStroke kEscape{Key::Escape};
constexpr KeyStroke altOf(char32_t letter) { return {Key::Character, letter, false, false, true}; }

TEST_F(KeyRules, TabWalksInTheOrderOfCreationAndStopsOnceInAGroupOfOptions) {
  user().go(name);
  for (const Control* next : std::vector<Control*>{&combo, &red, &check, &ok, &open, &cancel}) {
    user().tab();
    EXPECT_PRED_FORMAT1(hasFocus, *next);
  }
  EXPECT_FALSE(uses(kTab));
  for (const Control* next : std::vector<Control*>{&open, &ok, &check, &red, &combo, &name}) {
    user().tab(true);
    EXPECT_PRED_FORMAT1(hasFocus, *next);
  }
  EXPECT_FALSE(uses(kBackTab));
}

TEST_F(KeyRules, TabStopsAtTheOptionThatIsSet) {
  green.setValue(true);
  taken();
  user().go(combo);
  user().tab();
  EXPECT_PRED_FORMAT1(hasFocus, green);
  user().tab();
  EXPECT_PRED_FORMAT1(hasFocus, check);
  user().tab(true);
  EXPECT_PRED_FORMAT1(hasFocus, green);
}

TEST_F(KeyRules, TabPassesByWhatTakesNoInputOrIsNoTabStop) {
  combo.setTabStop(false);
  group.setEnabled(false);
  check.setVisible(false);
  user().go(name);
  user().tab();
  EXPECT_PRED_FORMAT1(hasFocus, ok);
}

TEST_F(KeyRules, TabEntersTheSurfaceAtItsFirstOrLastStop) {
  user();
  EXPECT_TRUE(surface.enter(false));
  EXPECT_PRED_FORMAT1(hasFocus, name);
  EXPECT_TRUE(surface.enter(true));
  EXPECT_PRED_FORMAT1(hasFocus, cancel);
}

TEST_F(KeyRules, EnterClicksTheFocusedButton) {
  user().go(name);
  ok.setFocus();
  user().press(kEnter);
  EXPECT_EQ(taken(), Events{"ok"});
}

TEST_F(KeyRules, EnterIsUsedByFieldsThatAreTypedInto) {
  user().go(name);
  EXPECT_TRUE(uses(kEnter));
  user().go(combo);
  EXPECT_TRUE(uses(kEnter));
  check.setFocus();
  EXPECT_FALSE(uses(kEnter));
}

TEST_F(KeyRules, EnterClicksTheDefaultButtonWhereNothingElseUsesIt) {
  surface.setDefaultButton(&cancel);
  user().go(check);
  EXPECT_TRUE(uses(kEnter));
  user().press(kEnter);
  EXPECT_EQ(taken(), Events{"cancel"});
  EXPECT_PRED_FORMAT1(hasFocus, cancel);
  ok.setFocus();
  user().press(kEnter);
  EXPECT_EQ(taken(), Events{"ok"});
  user().go(name);
  user().press(kEnter);
  EXPECT_EQ(taken(), Events{});
}

TEST_F(KeyRules, EnterIsLeftWithoutADefaultButtonThatTakesInput) {
  surface.setDefaultButton(&cancel);
  user().go(check);
  cancel.setEnabled(false);
  EXPECT_FALSE(uses(kEnter));
  user().press(kEnter);
  EXPECT_EQ(taken(), Events{});
}

TEST_F(KeyRules, SpaceClicksTheFocusedButtonOptionOrCheckBox) {
  user().go(name);
  for (Control* control : std::vector<Control*>{&ok, &check, &green}) {
    control->setFocus();
    user().press(kSpace);
  }
  EXPECT_EQ(taken(), (Events{"ok", "check", "green"}));
}

TEST_F(KeyRules, SpaceIsACharacterInAField) {
  user().go(name);
  EXPECT_FALSE(uses(kSpace));
  user().type("a b");
  EXPECT_EQ(name.text(), "a b");
}

TEST_F(KeyRules, ArrowsSetTheOptionsOfAGroupInTurn) {
  user().go(name);
  red.setFocus();
  user().press({Key::Down});
  EXPECT_PRED_FORMAT1(hasFocus, green);
  EXPECT_TRUE(green.value());
  user().press({Key::Right});
  user().press({Key::Right});
  EXPECT_TRUE(red.value());
  user().press({Key::Up});
  EXPECT_TRUE(blue.value());
  EXPECT_PRED_FORMAT1(hasFocus, blue);
  EXPECT_EQ(taken(), (Events{"green", "blue", "red", "blue"}));
}

TEST_F(KeyRules, ArrowsPassByOptionsThatTakeNoInput) {
  green.setEnabled(false);
  user().go(name);
  red.setFocus();
  user().press({Key::Down});
  EXPECT_TRUE(blue.value());
}

TEST_F(KeyRules, ArrowsAreLeftToAField) {
  user().go(name);
  EXPECT_FALSE(uses({Key::Left}));
  EXPECT_FALSE(uses({Key::Down}));
}

TEST_F(KeyRules, EscapeClicksTheCancelButtonAndLeavesTheFocusWhereItIs) {
  surface.setCancelButton(&cancel);
  noteFocus(name);
  user().go(name);
  taken();
  user().press(kEscape);
  EXPECT_EQ(taken(), Events{"cancel"});
  EXPECT_PRED_FORMAT1(hasFocus, name);
}

TEST_F(KeyRules, EscapeIsLeftWithoutACancelButtonThatTakesInput) {
  user().go(name);
  EXPECT_FALSE(uses(kEscape));
  surface.setCancelButton(&cancel);
  EXPECT_TRUE(uses(kEscape));
  EXPECT_TRUE(surface.cancelable());
  cancel.setEnabled(false);
  EXPECT_FALSE(uses(kEscape));
  EXPECT_FALSE(surface.cancelable());
  user().press(kEscape);
  EXPECT_EQ(taken(), Events{});
}

TEST_F(KeyRules, ALabelsMnemonicGoesToTheControlAfterIt) {
  user().go(combo);
  user().alt(U'n');
  EXPECT_PRED_FORMAT1(hasFocus, name);
}

TEST_F(KeyRules, AFramesMnemonicGoesToItsFirstControlAndSetsNothing) {
  user().go(name);
  user().alt(U'g');
  EXPECT_PRED_FORMAT1(hasFocus, red);
  EXPECT_FALSE(red.value());
  EXPECT_EQ(taken(), Events{});
}

TEST_F(KeyRules, AFramesMnemonicGoesToTheOptionThatIsSet) {
  blue.setValue(true);
  taken();
  user().go(name);
  user().alt(U'g');
  EXPECT_PRED_FORMAT1(hasFocus, blue);
  blue.setEnabled(false);
  user().go(name);
  user().alt(U'g');
  EXPECT_PRED_FORMAT1(hasFocus, red);
  EXPECT_EQ(taken(), Events{});
}

TEST_F(KeyRules, MnemonicsClickButtonsSetOptionsAndToggleCheckBoxes) {
  user().go(name);
  user().alt(U'e');
  EXPECT_TRUE(green.value());
  user().alt(U'c');
  EXPECT_TRUE(check.value());
  user().alt(U'c');
  EXPECT_FALSE(check.value());
  EXPECT_EQ(taken(), (Events{"green", "check", "check"}));
}

TEST_F(KeyRules, ASharedMnemonicGoesToTheNextFromTheFocus) {
  user().go(name);
  user().alt(U'o');
  user().alt(U'o');
  user().alt(U'o');
  EXPECT_EQ(taken(), (Events{"ok", "open", "ok"}));
}

TEST_F(KeyRules, AMnemonicPassesByWhatTakesNoInput) {
  ok.setEnabled(false);
  user().go(name);
  user().alt(U'o');
  EXPECT_EQ(taken(), Events{"open"});
  name.setVisible(false);
  user().alt(U'n');
  EXPECT_PRED_FORMAT1(hasFocus, open);
}

TEST_F(KeyRules, AMnemonicMindsNoCaseAndNeedsAltAlone) {
  user().go(name);
  EXPECT_TRUE(uses(altOf(U'O')));
  EXPECT_TRUE(uses(altOf(U'o')));
  EXPECT_FALSE(uses(altOf(U'x')));
  EXPECT_FALSE(uses({Key::Character, U'o', false, true, true}));
  EXPECT_FALSE(uses({Key::Character, U'o', false, false, false}));
}

TEST_F(KeyRules, TheMnemonicsListedAreThoseThatWouldDoSomethingNow) {
  user();
  EXPECT_EQ(surface.mnemonics(), (std::vector<char32_t>{U'N', U'G', U'R', U'E', U'B', U'C', U'O'}));
  group.setEnabled(false);
  name.setVisible(false);
  open.setEnabled(false);
  EXPECT_EQ(surface.mnemonics(), (std::vector<char32_t>{U'C', U'O'}));
  ok.setVisible(false);
  EXPECT_EQ(surface.mnemonics(), (std::vector<char32_t>{U'C'}));
}

TEST_F(KeyRules, AChangeOfWhatTheMnemonicsDoIsTold) {
  user();
  surface.onInfoChanged = note("info");
  open.setVisible(false);
  taken();
  ok.setEnabled(false);
  EXPECT_EQ(taken(), Events{"info"});
  ok.setEnabled(true);
  EXPECT_EQ(taken(), Events{"info"});
  ok.setCaption("&Validate");
  EXPECT_EQ(taken(), Events{"info"});
  ok.setCaption("&Verify");
  name.setText("other");
  cancel.setEnabled(false);
  EXPECT_EQ(taken(), Events{});
  surface.setCancelButton(&cancel);
  cancel.setEnabled(true);
  EXPECT_EQ(taken(), Events{"info"});
}

TEST_F(KeyRules, AChangeWithinAHandlerIsToldOnceAtItsEnd) {
  ok.onClick = [this] {
    open.setEnabled(false);
    check.setEnabled(false);
    group.setVisible(false);
    events.emplace_back("handler ends");
  };
  user().go(name);
  surface.onInfoChanged = note("info");
  cancel.setCaption("Canc&el");
  EXPECT_EQ(taken(), Events{"info"});
  user().click(ok);
  EXPECT_EQ(taken(), (Events{"handler ends", "info"}));
}

}  // namespace
}  // namespace toolkit::test
