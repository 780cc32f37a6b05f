#include "tests/unit/toolkit/RuleTest.h"

namespace toolkit::test {
namespace {

class TextBoxRules : public RuleTest {
 protected:
  TextBox box{&surface, "Txt_Box"};
  TextBox other{&surface, "Txt_Other"};

  void noteChanges() {
    box.onChange = [this] { events.push_back(box.text()); };
  }
  void noteKeys() {
    box.onKeyPress = [this](char32_t& key) {
      events.push_back(std::to_string(static_cast<unsigned>(key)));
    };
  }
};

TEST_F(TextBoxRules, ChangeFiresForEveryKeyThatTheUserTypes) {
  noteChanges();
  user().go(box);
  user().type("ab");
  EXPECT_EQ(taken(), (Events{"a", "ab"}));
}

TEST_F(TextBoxRules, ChangeFiresWhenCodeAssignsAnotherText) {
  noteChanges();
  user();
  box.setText("x");
  EXPECT_EQ(taken(), Events{"x"});
}

TEST_F(TextBoxRules, ChangeDoesNotFireWhenTheSameTextIsAssignedAgain) {
  box.setText("x");
  noteChanges();
  user();
  box.setText("x");
  EXPECT_EQ(taken(), Events{});
}

TEST_F(TextBoxRules, ATextThatIsRenewedIsSetAnewThoughItIsTheSame) {
  box.setText("abc");
  box.select(1, 2);
  noteChanges();
  user();
  box.renewText("abc");
  EXPECT_EQ(taken(), (Events{"", "abc"}));
  EXPECT_EQ(box.selectionStart(), 0);
  EXPECT_EQ(box.selectionLength(), 0);
  box.select(3, 0);
  box.renewText("d\xFE\xFDz");
  EXPECT_EQ(taken(), (Events{"", "dz"}));
  EXPECT_EQ(box.selectionStart(), 0);
}

TEST_F(TextBoxRules, ChangeFiresForBackspaceAndForPastedText) {
  noteChanges();
  user().go(box);
  user().type("ab\b");
  user().paste("cd");
  EXPECT_EQ(taken(), (Events{"a", "ab", "a", "acd"}));
}

TEST_F(TextBoxRules, BackspaceInAnEmptyBoxIsAKeyPressButNoChange) {
  noteChanges();
  int keys = 0;
  box.onKeyPress = [&](char32_t&) { ++keys; };
  user().go(box);
  user().type("\b");
  EXPECT_EQ(keys, 1);
  EXPECT_EQ(taken(), Events{});
}

TEST_F(TextBoxRules, ATextThatTheHandlerAssignsInChangeStands) {
  box.onChange = [this] {
    if (box.text() == "a") box.setText("replaced");
  };
  user().go(box);
  user().type("a");
  EXPECT_EQ(box.text(), "replaced");
}

TEST_F(TextBoxRules, KeyPressComesBeforeTheCharacterTakesEffect) {
  box.onKeyPress = [this](char32_t&) { events.push_back("key on \"" + box.text() + "\""); };
  user().go(box);
  user().type("ab");
  EXPECT_EQ(taken(), (Events{"key on \"\"", "key on \"a\""}));
}

TEST_F(TextBoxRules, EnterAndBackspaceAreKeyPresses) {
  box.setText("x");
  noteKeys();
  user().go(box);
  user().type("\r\b");
  EXPECT_EQ(taken(), (Events{"13", "8"}));
}

TEST_F(TextBoxRules, EnterNeverEntersTheText) {
  user().go(box);
  user().type("a\rb");
  EXPECT_EQ(box.text(), "ab");
}

TEST_F(TextBoxRules, KeyPressMayReplaceTheKey) {
  box.onKeyPress = [](char32_t& key) {
    if (key == U'.') key = U',';
  };
  user().go(box);
  user().type("1.5");
  EXPECT_EQ(box.text(), "1,5");
}

TEST_F(TextBoxRules, KeyPressMayDropTheKey) {
  box.onKeyPress = [](char32_t& key) {
    if (key < U'0' || key > U'9') key = 0;
  };
  noteChanges();
  user().go(box);
  user().type("1a2");
  EXPECT_EQ(box.text(), "12");
  EXPECT_EQ(taken(), (Events{"1", "12"}));
}

TEST_F(TextBoxRules, ADroppedBackspaceErasesNothing) {
  box.setText("x");
  box.onKeyPress = [](char32_t& key) { key = 0; };
  user().go(box);
  user().type("\b");
  EXPECT_EQ(box.text(), "x");
}

TEST_F(TextBoxRules, KeyPressHearsOfLettersWithAccents) {
  noteKeys();
  user().go(box);
  user().type("é");
  EXPECT_EQ(taken(), Events{"233"});
  EXPECT_EQ(box.text(), "é");
}

TEST_F(TextBoxRules, EscapeIsNoKeyPress) {
  noteKeys();
  user().go(box);
  user().press({Key::Escape});
  EXPECT_EQ(taken(), Events{});
}

TEST_F(TextBoxRules, KeysWithCtrlOrAltAreNoKeyPresses) {
  noteKeys();
  user().go(box);
  user().press({Key::Character, U'c', false, true, false});
  user().alt(U'z');
  EXPECT_EQ(taken(), Events{});
  EXPECT_EQ(box.text(), "");
}

TEST_F(TextBoxRules, TabIsNoKeyPress) {
  noteKeys();
  user().go(box);
  user().type("\t");
  EXPECT_EQ(taken(), Events{});
  EXPECT_PRED_FORMAT1(hasFocus, other);
}

TEST_F(TextBoxRules, AKeyPressHandlerThatMovesTheFocusKeepsTheKeyOut) {
  box.onKeyPress = [this](char32_t& key) {
    key = 0;
    other.setFocus();
  };
  user().go(box);
  user().type("a");
  EXPECT_PRED_FORMAT1(hasFocus, other);
  EXPECT_EQ(box.text(), "");
  EXPECT_EQ(other.text(), "");
}

TEST_F(TextBoxRules, TypingStopsAtTheLimitCountedInCharacters) {
  box.setMaxLength(3);
  user().go(box);
  user().type("éàüx");
  EXPECT_EQ(box.text(), "éàü");
}

TEST_F(TextBoxRules, PastedTextIsCutToTheLimit) {
  box.setMaxLength(3);
  user().go(box);
  user().paste("abcd");
  EXPECT_EQ(box.text(), "abc");
}

TEST_F(TextBoxRules, CodeMayAssignMoreThanTheLimit) {
  box.setMaxLength(3);
  user();
  box.setText("abcde");
  EXPECT_EQ(box.text(), "abcde");
}

TEST_F(TextBoxRules, ALongerTextLosesOnlyWhatTheUserErases) {
  box.setMaxLength(3);
  box.setText("abcde");
  user().go(box);
  box.select(5, 0);
  user().type("\bx");
  EXPECT_EQ(box.text(), "abcd");
}

TEST_F(TextBoxRules, AFullBoxStillTakesAKeyOverItsSelection) {
  box.setMaxLength(3);
  box.setText("abc");
  user().go(box);
  user().selectAll();
  user().type("x");
  EXPECT_EQ(box.text(), "x");
}

TEST_F(TextBoxRules, TypingReplacesTheSelection) {
  box.setText("abcd");
  user().go(box);
  box.select(1, 2);
  user().type("x");
  EXPECT_EQ(box.text(), "axd");
}

TEST_F(TextBoxRules, TypingGoesOnAfterTheCharacterTyped) {
  box.setText("ad");
  user().go(box);
  box.select(1, 0);
  user().type("bc");
  EXPECT_EQ(box.text(), "abcd");
}

TEST_F(TextBoxRules, AssigningTextMovesTheCaretToItsStart) {
  user().go(box);
  user().type("abc");
  box.setText("xyz");
  EXPECT_EQ(box.selectionStart(), 0);
  user().type("-");
  EXPECT_EQ(box.text(), "-xyz");
}

TEST_F(TextBoxRules, TheMarkCharactersCannotBeTyped) {
  noteKeys();
  user().go(box);
  user().type("aþýb");
  EXPECT_EQ(box.text(), "ab");
  EXPECT_EQ(taken(), (Events{"97", "98"}));
}

TEST_F(TextBoxRules, AHandlerCannotTurnAKeyIntoAMark) {
  box.onKeyPress = [](char32_t& key) { key = 0xFE; };
  user().go(box);
  user().type("a");
  EXPECT_EQ(box.text(), "");
}

TEST_F(TextBoxRules, TheMarkCharactersAreTakenOutOfPastedText) {
  user().go(box);
  user().paste("aþbýc");
  EXPECT_EQ(box.text(), "abc");
}

TEST_F(TextBoxRules, TheMarkBytesAreTakenOutOfAnAssignedText) {
  user();
  box.setText(
      "a\xFE"
      "b\xFD"
      "c");
  EXPECT_EQ(box.text(), "abc");
}

TEST_F(TextBoxRules, ADisabledBoxTakesNoKey) {
  noteKeys();
  user().go(box);
  box.setEnabled(false);
  user().go(box);
  user().type("a");
  EXPECT_FALSE(box.hasFocus());
  EXPECT_EQ(box.text(), "");
  EXPECT_EQ(taken(), Events{});
}

}  // namespace
}  // namespace toolkit::test
