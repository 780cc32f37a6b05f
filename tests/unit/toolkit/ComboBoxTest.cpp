#include <stdexcept>

#include "tests/unit/toolkit/RuleTest.h"

namespace toolkit::test {
namespace {

class ComboBoxRules : public RuleTest {
 protected:
  ComboBox combo{&surface, "Cbo_Editable"};
  ComboBox fixed{&surface, "Cbo_Fixed", ComboBox::Style::ListOnly};
  TextBox other{&surface, "Txt_Other"};

  ComboBoxRules() {
    for (ComboBox* box : {&combo, &fixed}) box->setItems({{"one", 1}, {"two", 2}, {"three", 3}});
  }

  void noteEvents(ComboBox& box) {
    box.onChange = [this, &box] { events.push_back("change " + box.text()); };
    box.onClick = [this, &box] { events.push_back("click " + box.text()); };
    box.onDropDown = note("drop down");
  }
};

TEST_F(ComboBoxRules, ChangeFiresWhenTheUserTypes) {
  noteEvents(combo);
  user().go(combo);
  user().type("ab");
  EXPECT_EQ(taken(), (Events{"change a", "change ab"}));
}

TEST_F(ComboBoxRules, TypingLeavesNoLineChosen) {
  combo.setListIndex(1);
  user().go(combo);
  user().type("x");
  EXPECT_EQ(combo.listIndex(), -1);
}

TEST_F(ComboBoxRules, KeyPressMayReplaceOrDropTheKey) {
  combo.onKeyPress = [](char32_t& key) { key = key == U'a' ? U'A' : 0; };
  user().go(combo);
  user().type("ab");
  EXPECT_EQ(combo.text(), "A");
}

TEST_F(ComboBoxRules, EnterAndBackspaceAreKeyPresses) {
  combo.onKeyPress = [this](char32_t& key) {
    events.push_back(std::to_string(static_cast<unsigned>(key)));
  };
  user().go(combo);
  user().type("\r\b");
  EXPECT_EQ(taken(), (Events{"13", "8"}));
}

TEST_F(ComboBoxRules, TypingStopsAtTheLimitCountedInCharacters) {
  combo.setMaxLength(2);
  user().go(combo);
  user().type("éàx");
  EXPECT_EQ(combo.text(), "éà");
}

TEST_F(ComboBoxRules, TheMarkCharactersCannotBeTyped) {
  user().go(combo);
  user().type("aþýb");
  EXPECT_EQ(combo.text(), "ab");
}

TEST_F(ComboBoxRules, ChangeFiresWhenCodeAssignsAnotherText) {
  combo.setListIndex(0);
  noteEvents(combo);
  user();
  combo.setText("free");
  EXPECT_EQ(taken(), Events{"change free"});
  EXPECT_EQ(combo.listIndex(), -1);
}

TEST_F(ComboBoxRules, AssigningTheTextItHasKeepsTheChosenLine) {
  combo.setListIndex(1);
  noteEvents(combo);
  user();
  combo.setText("two");
  EXPECT_EQ(combo.listIndex(), 1);
  EXPECT_EQ(taken(), Events{});
}

TEST_F(ComboBoxRules, ALineChosenByTheUserFiresClickAndNoChange) {
  noteEvents(combo);
  user().choose(combo, 2);
  EXPECT_EQ(taken(), (Events{"drop down", "click three"}));
  EXPECT_EQ(combo.listIndex(), 2);
  EXPECT_EQ(combo.text(), "three");
}

TEST_F(ComboBoxRules, TheSameLineChosenAgainByTheUserCounts) {
  combo.setListIndex(2);
  noteEvents(combo);
  user().choose(combo, 2);
  EXPECT_EQ(taken(), (Events{"drop down", "click three"}));
}

TEST_F(ComboBoxRules, CodeThatSetsTheListIndexToAnotherLineFiresClickAndNoChange) {
  noteEvents(combo);
  user();
  combo.setListIndex(1);
  EXPECT_EQ(combo.text(), "two");
  EXPECT_EQ(taken(), Events{"click two"});
}

TEST_F(ComboBoxRules, CodeThatSetsTheListIndexToTheChosenLineFiresNothing) {
  combo.setListIndex(1);
  noteEvents(combo);
  user();
  combo.setListIndex(1);
  EXPECT_EQ(taken(), Events{});
}

TEST_F(ComboBoxRules, AListIndexOfNoneClearsTheTextAndFiresChange) {
  combo.setListIndex(1);
  noteEvents(combo);
  user();
  combo.setListIndex(-1);
  EXPECT_EQ(combo.text(), "");
  EXPECT_EQ(taken(), Events{"change "});
  combo.setListIndex(-1);
  EXPECT_EQ(taken(), Events{});
}

TEST_F(ComboBoxRules, AListIndexPastTheEndIsRefused) {
  user();
  EXPECT_THROW(combo.setListIndex(3), std::invalid_argument);
  EXPECT_THROW(combo.setListIndex(-2), std::invalid_argument);
  EXPECT_EQ(combo.listIndex(), -1);
}

TEST_F(ComboBoxRules, ClearingTheListClearsTheTextAndFiresChangeIfThereWasOne) {
  combo.setText("free");
  noteEvents(combo);
  user();
  combo.clear();
  EXPECT_EQ(combo.text(), "");
  EXPECT_EQ(combo.listCount(), 0);
  EXPECT_EQ(taken(), Events{"change "});
}

TEST_F(ComboBoxRules, ClearingTheListOfAComboWithoutTextFiresNothing) {
  noteEvents(combo);
  user();
  combo.clear();
  EXPECT_EQ(taken(), Events{});
}

TEST_F(ComboBoxRules, DropDownComesBeforeTheListOpensSoThatItMayFillIt) {
  fixed.clear();
  fixed.onDropDown = [this] { fixed.setItems({{"late", 9}}); };
  user().choose(fixed, 0);
  EXPECT_EQ(fixed.text(), "late");
  EXPECT_EQ(fixed.itemData(fixed.listIndex()), 9);
}

TEST_F(ComboBoxRules, OpeningTheListFiresDropDownAlone) {
  noteEvents(combo);
  user().open(combo);
  EXPECT_EQ(taken(), Events{"drop down"});
  EXPECT_PRED_FORMAT1(hasFocus, combo);
}

TEST_F(ComboBoxRules, ArrowsInAnOpenListChooseNothing) {
  combo.setText("zz");
  for (ComboBox* box : {&combo, &fixed}) {
    noteEvents(*box);
    user().open(*box);
    user().press({Key::Down});
    user().press({Key::Down});
    user().press({Key::Up});
    EXPECT_TRUE(box->opened());
    EXPECT_EQ(taken(), Events{"drop down"});
    EXPECT_EQ(box->listIndex(), -1);
    user().press({Key::Escape});
  }
  EXPECT_EQ(combo.text(), "zz");
}

TEST_F(ComboBoxRules, EscapePutsBackWhatWasThere) {
  CommandButton cancel(&surface, "Cmd_Cancel", "Cancel");
  cancel.onClick = note("cancelled");
  surface.setCancelButton(&cancel);
  combo.setText("zz");
  fixed.setListIndex(2);
  for (ComboBox* box : {&combo, &fixed}) {
    const std::string before = box->text();
    const int line = box->listIndex();
    noteEvents(*box);
    user().open(*box);
    user().press({Key::Up});
    user().press({Key::Escape});
    EXPECT_FALSE(box->opened());
    EXPECT_TRUE(box->hasFocus());
    EXPECT_EQ(box->text(), before);
    EXPECT_EQ(box->listIndex(), line);
    EXPECT_EQ(taken(), Events{"drop down"});
    user().press({Key::Escape});
    EXPECT_EQ(taken(), Events{"cancelled"});
  }
}

TEST_F(ComboBoxRules, AfterEscapeTypingGoesOnWhereItWas) {
  user().go(combo);
  user().type("tw");
  user().press({.key = Key::Down, .alt = true});
  user().press({Key::Down});
  user().press({Key::Escape});
  user().type("x");
  EXPECT_EQ(combo.text(), "twx");
}

TEST_F(ComboBoxRules, EnterConfirmsTheLinePointedAtAndIsNoKeyPress) {
  for (ComboBox* box : {&combo, &fixed}) {
    box->onKeyPress = [this](char32_t&) { events.emplace_back("key"); };
    noteEvents(*box);
    user().open(*box);
    user().press({Key::Down});
    user().press({Key::Down});
    user().press({Key::Enter});
    EXPECT_FALSE(box->opened());
    EXPECT_EQ(box->listIndex(), 1);
    EXPECT_EQ(taken(), (Events{"drop down", "click two"}));
  }
}

TEST_F(ComboBoxRules, EnterInAListThatWasOnlyOpenedClosesIt) {
  combo.setListIndex(1);
  noteEvents(combo);
  combo.onKeyPress = [this](char32_t&) { events.emplace_back("key"); };
  user().open(combo);
  user().press({Key::Enter});
  EXPECT_FALSE(combo.opened());
  EXPECT_EQ(combo.listIndex(), 1);
  EXPECT_EQ(taken(), Events{"drop down"});
}

TEST_F(ComboBoxRules, EnterAfterTypingInAnOpenListMeansTheText) {
  user().go(combo);
  user().press({.key = Key::Down, .alt = true});
  user().type("t");
  combo.onKeyPress = [this](char32_t& key) {
    events.push_back(std::to_string(static_cast<unsigned>(key)));
  };
  user().press({Key::Enter});
  EXPECT_FALSE(combo.opened());
  EXPECT_EQ(combo.text(), "t");
  EXPECT_EQ(taken(), Events{"13"});
}

TEST_F(ComboBoxRules, TabConfirmsTheLinePointedAtAndMovesOn) {
  noteEvents(fixed);
  noteFocus(fixed);
  user().open(fixed);
  user().press({Key::Down});
  taken();
  user().tab();
  EXPECT_EQ(fixed.text(), "one");
  EXPECT_EQ(taken(), (Events{"click one", "Cbo_Fixed lost"}));
  EXPECT_PRED_FORMAT1(hasFocus, other);
}

TEST_F(ComboBoxRules, ATabWhoseChoiceMovesTheFocusGoesNoFurther) {
  fixed.onClick = [this] { combo.setFocus(); };
  user().open(fixed);
  user().press({Key::Down});
  user().tab();
  EXPECT_PRED_FORMAT1(hasFocus, combo);
}

TEST_F(ComboBoxRules, AltAndAnArrowOpenAndConfirm) {
  noteEvents(combo);
  user().go(combo);
  user().press({.key = Key::Down, .alt = true});
  EXPECT_TRUE(combo.opened());
  user().press({Key::Down});
  user().press({.key = Key::Up, .alt = true});
  EXPECT_FALSE(combo.opened());
  EXPECT_EQ(taken(), (Events{"drop down", "click one"}));
}

TEST_F(ComboBoxRules, LeavingAnOpenListWithTheMouseCancelsIt) {
  combo.setText("zz");
  noteEvents(combo);
  user().go(combo);
  user().press({.key = Key::Down, .alt = true});
  user().press({Key::Down});
  taken();
  user().go(other);
  user().go(other);
  EXPECT_FALSE(combo.opened());
  EXPECT_PRED_FORMAT1(hasFocus, other);
  EXPECT_EQ(combo.text(), "zz");
  EXPECT_EQ(taken(), Events{});
}

TEST_F(ComboBoxRules, AnArrowInAClosedListChoosesTheNextLine) {
  noteEvents(fixed);
  user().go(fixed);
  user().press({Key::Down});
  user().press({Key::Down});
  user().press({Key::Up});
  EXPECT_EQ(taken(), (Events{"click one", "click two", "click one"}));
}

TEST_F(ComboBoxRules, AListThatItsDropDownKeepsFromOpeningStaysClosed) {
  combo.onDropDown = [this] { other.setFocus(); };
  user().open(combo);
  EXPECT_FALSE(combo.opened());
  EXPECT_PRED_FORMAT1(hasFocus, other);
}

TEST_F(ComboBoxRules, AListOpenedByCodeKeepsTheTextAndEnterMeansIt) {
  noteEvents(combo);
  combo.onKeyPress = [this](char32_t& key) {
    if (key != U'\r') return;
    events.emplace_back("search " + combo.text());
    combo.openList();
  };
  user().go(combo);
  user().type("t");
  taken();
  user().press({Key::Enter});
  EXPECT_TRUE(combo.opened());
  EXPECT_EQ(combo.text(), "t");
  user().press({Key::Enter});
  EXPECT_TRUE(combo.opened());
  EXPECT_EQ(taken(), (Events{"search t", "search t"}));
  user().press({Key::Down});
  user().press({Key::Enter});
  EXPECT_EQ(taken(), Events{"click one"});
  EXPECT_FALSE(combo.opened());
}

TEST_F(ComboBoxRules, AListIsNotOpenedByCodeWithoutInput) {
  user().go(combo);
  surface.setEnabled(false);
  combo.openList();
  EXPECT_FALSE(combo.opened());
}

TEST_F(ComboBoxRules, TheWheelLeavesAClosedComboAlone) {
  for (ComboBox* box : {&combo, &fixed}) {
    box->setListIndex(0);
    noteEvents(*box);
    user().go(*box);
    user().wheel(*box);
    EXPECT_EQ(box->listIndex(), 0);
    EXPECT_EQ(box->text(), "one");
    EXPECT_EQ(taken(), Events{});
  }
}

TEST_F(ComboBoxRules, TheWheelChoosesNothingInAnOpenList) {
  combo.setListIndex(0);
  noteEvents(combo);
  user().open(combo);
  user().wheel(combo);
  EXPECT_TRUE(combo.opened());
  EXPECT_EQ(combo.text(), "one");
  EXPECT_EQ(taken(), Events{"drop down"});
}

TEST_F(ComboBoxRules, AComboRefilledInItsOwnClickHoldsWhatTheHandlerLeft) {
  combo.onClick = [this] {
    combo.setItems({{"other", 7}});
    combo.setText("text of the handler");
  };
  user().choose(combo, 1);
  EXPECT_EQ(combo.text(), "text of the handler");
  EXPECT_EQ(combo.listCount(), 1);
  EXPECT_EQ(combo.listIndex(), -1);
}

TEST_F(ComboBoxRules, AFixedListTakesNoTypedText) {
  noteEvents(fixed);
  fixed.onKeyPress = [this](char32_t&) { events.emplace_back("key"); };
  user().go(fixed);
  user().type("z");
  EXPECT_EQ(fixed.text(), "");
  EXPECT_EQ(taken(), Events{});
}

TEST_F(ComboBoxRules, ATextAssignedToAFixedListChoosesItsLine) {
  noteEvents(fixed);
  user();
  fixed.setText("two");
  EXPECT_EQ(fixed.listIndex(), 1);
  EXPECT_EQ(taken(), Events{"click two"});
}

TEST_F(ComboBoxRules, ATextThatIsNoLineOfAFixedListLeavesNoneChosen) {
  fixed.setListIndex(0);
  noteEvents(fixed);
  user();
  fixed.setText("four");
  EXPECT_EQ(fixed.listIndex(), -1);
  EXPECT_EQ(fixed.text(), "");
  EXPECT_EQ(taken(), Events{"change "});
}

TEST_F(ComboBoxRules, FillingFiresNothing) {
  noteEvents(combo);
  user();
  combo.addItem("four", 4);
  combo.setItems({{"five", 5}});
  combo.removeItem(0);
  EXPECT_EQ(taken(), Events{});
}

TEST_F(ComboBoxRules, RemovingTheChosenLineFiresNothingAndLeavesNoneChosen) {
  combo.setListIndex(1);
  fixed.setListIndex(1);
  noteEvents(combo);
  noteEvents(fixed);
  user();
  combo.removeItem(1);
  fixed.removeItem(1);
  EXPECT_EQ(combo.listIndex(), -1);
  EXPECT_EQ(combo.text(), "two");
  EXPECT_EQ(fixed.listIndex(), -1);
  EXPECT_EQ(fixed.text(), "");
  EXPECT_EQ(taken(), Events{});
}

TEST_F(ComboBoxRules, RemovingALineAboveTheChosenOneKeepsItChosen) {
  combo.setListIndex(2);
  user();
  combo.removeItem(0);
  EXPECT_EQ(combo.listIndex(), 1);
  EXPECT_EQ(combo.list(combo.listIndex()), "three");
}

TEST_F(ComboBoxRules, ItemDataTravelsWithItsLineAndReadingPastTheEndGivesNothing) {
  user();
  combo.removeItem(0);
  EXPECT_EQ(combo.itemData(0), 2);
  EXPECT_EQ(combo.list(2), "");
  EXPECT_EQ(combo.itemData(2), 0);
  EXPECT_EQ(combo.list(-1), "");
}

TEST_F(ComboBoxRules, ADisabledComboNeitherOpensNorTakesKeys) {
  noteEvents(combo);
  combo.setEnabled(false);
  user().open(combo);
  user().go(combo);
  user().type("a");
  EXPECT_EQ(taken(), Events{});
  EXPECT_EQ(combo.text(), "");
  EXPECT_EQ(combo.listIndex(), -1);
}

TEST_F(ComboBoxRules, AChoiceIsDroppedWhenALostFocusHandlerKeepsTheFocus) {
  noteEvents(combo);
  other.onLostFocus = [this] { other.setFocus(); };
  user().go(other);
  user().open(combo);
  EXPECT_PRED_FORMAT1(hasFocus, other);
  EXPECT_EQ(taken(), Events{});
}

TEST_F(ComboBoxRules, CodeOpensTheListUnderTheTextThatIsThere) {
  noteEvents(combo);
  combo.setText("t");
  other.onKeyPress = [this](char32_t&) { combo.openList(); };
  user().go(other);
  taken();
  user().type("\r");
  EXPECT_PRED_FORMAT1(hasFocus, combo);
  EXPECT_TRUE(combo.opened());
  EXPECT_EQ(combo.text(), "t");
  EXPECT_EQ(combo.listIndex(), -1);
  EXPECT_EQ(taken(), Events{});
  user().go(other);
  EXPECT_FALSE(combo.opened());
  EXPECT_EQ(combo.text(), "t");
  EXPECT_EQ(taken(), Events{});
}

TEST_F(ComboBoxRules, AListOpenedWhileAnotherFieldIsLeftHasTheFocusInstead) {
  other.onLostFocus = [this] { combo.openList(); };
  user().go(other);
  user().go(fixed);
  EXPECT_PRED_FORMAT1(hasFocus, combo);
  EXPECT_TRUE(combo.opened());
}

TEST_F(ComboBoxRules, AListWithoutLinesDoesNotOpen) {
  user().go(other);
  combo.clear();
  combo.openList();
  EXPECT_FALSE(combo.opened());
  EXPECT_PRED_FORMAT1(hasFocus, other);
}

TEST_F(ComboBoxRules, EmptyingAnOpenListClosesIt) {
  user().go(combo);
  combo.openList();
  ASSERT_TRUE(combo.opened());
  combo.setItems({{"four", 4}});
  EXPECT_TRUE(combo.opened());
  combo.clear();
  EXPECT_FALSE(combo.opened());
}

}  // namespace
}  // namespace toolkit::test
