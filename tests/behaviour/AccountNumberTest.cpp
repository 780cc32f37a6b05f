// An account's number, as it is typed, searched and checked. On each of the four pairs.
#include "tests/behaviour/AccountTest.h"

namespace behaviour {
namespace {

class AccountNumber : public AccountPair {};

INSTANTIATE_TEST_SUITE_P(Of, AccountNumber, testing::ValuesIn(kPaires),
                         [](const auto& tested) { return std::string(tested.param.test); });

TEST_P(AccountNumber, TakesDigitsAlone) {
  open();
  typeNumber("7a4Zé-, 1.+*\"]");
  EXPECT_EQ(numero().text(), "741");
  user_->type("\b");
  EXPECT_EQ(numero().text(), "74");
  expectNoBox();
  expectNoSearch();
}

TEST_P(AccountNumber, KeepsEachDigitBackspaceAndEnterOfTheKeys) {
  open();
  goToNumber();
  for (char32_t key = 32; key < 0x180; ++key) {
    if (key == 127) continue;  // a command, which no filter sees
    const bool digit = key >= U'0' && key <= U'9';
    EXPECT_EQ(numero().userKeyPress(key), digit ? key : 0U);
  }
  EXPECT_EQ(numero().userKeyPress(8), 8U);
  EXPECT_EQ(numero().userKeyPress(13), 13U);
  expectNoBox();
  expectNoSearch();
}

TEST_P(AccountNumber, EnterSearchesTheAccountsWhoseNumberBeginsSo) {
  open();
  typeNumber("70");
  expectNoSearch();
  user_->press(Key::Enter);
  expectSearch("SSELECT PLANCOMPTABLE AVEC @ID = \"01070]\" PAR 1");
  EXPECT_PRED_FORMAT2(same, lines(), kSoixanteDix);
  EXPECT_EQ(shown(), "70|");
  EXPECT_EQ(libelle().listIndex(), -1);
  EXPECT_PRED_FORMAT1(hasFocus, libelle());
  EXPECT_TRUE(libelle().opened());
  expectNoBox();
}

TEST_P(AccountNumber, EnterAfterSeveralWereFoundSearchesTheSameAgain) {
  open();
  typeNumber("70\r");
  forget();
  user_->press(Key::Enter);
  expectSearch("SSELECT PLANCOMPTABLE AVEC @ID = \"01070]\" PAR 1");
  EXPECT_PRED_FORMAT2(same, lines(), kSoixanteDix);
  EXPECT_EQ(shown(), "70|");
  EXPECT_TRUE(libelle().opened());
  forget();
  goToNumber();
  user_->press(Key::Enter);
  expectSearch("SSELECT PLANCOMPTABLE AVEC @ID = \"01070]\" PAR 1");
  expectNoBox();
}

TEST_P(AccountNumber, LeavingTheNumberSearchesToo) {
  open();
  typeNumber("70");
  user_->tab();
  expectSearch("SSELECT PLANCOMPTABLE AVEC @ID = \"01070]\" PAR 1");
  EXPECT_PRED_FORMAT2(same, lines(), kSoixanteDix);
  EXPECT_EQ(shown(), "70|");
  EXPECT_PRED_FORMAT1(hasFocus, libelle());
  EXPECT_TRUE(libelle().opened());
  expectNoBox();
}

TEST_P(AccountNumber, LeftWithSeveralFoundLeadsToTheirListAndDropsTheClick) {
  open();
  typeNumber("70");
  EXPECT_FALSE(press("Cmd_Annuler"));
  EXPECT_EQ(state(), kExisting);
  EXPECT_PRED_FORMAT1(hasFocus, libelle());
  EXPECT_TRUE(libelle().opened());
  ASSERT_TRUE(user_->choose(libelle(), 2));
  EXPECT_EQ(shown(), "7060000000|PRESTATIONS DE SERVICES");
  EXPECT_FALSE(libelle().opened());
  EXPECT_TRUE(press("Cmd_Annuler"));
  EXPECT_EQ(state(), kEmpty);
  expectNoBox();
}

TEST_P(AccountNumber, LeftWithoutAChoiceAmongSeveralGoesAndLetsTheUserGo) {
  open();
  typeNumber("70");
  EXPECT_FALSE(user_->go(code()));
  elsewhere();
  EXPECT_EQ(shown(), "|");
  EXPECT_FALSE(libelle().opened());
  typeNumber("70\r");
  EXPECT_FALSE(user_->go(code()));
  EXPECT_TRUE(libelle().opened());
  elsewhere();
  EXPECT_EQ(shown(), "|");
  expectNoBox();
}

TEST_P(AccountNumber, OfSeveralFoundIsCorrectedInItsOwnField) {
  open();
  typeNumber("7\r");
  goToNumber();
  EXPECT_EQ(shown(), "7|");
  EXPECT_FALSE(libelle().opened());
  numero().userSelect(1, 0);
  user_->type("4\r");
  EXPECT_EQ(shown(), "7410000000|SUBVENTIONS");
  expectNoBox();
}

TEST_P(AccountNumber, TypingAnotherNumberClosesTheListOfThoseFound) {
  open();
  typeNumber("70\r");
  typeNumber("7");
  EXPECT_EQ(shown(), "7|");
  EXPECT_TRUE(lines().empty());
  EXPECT_FALSE(libelle().opened());
}

TEST_P(AccountNumber, AStoredNumberOfAnotherLengthIsSearchedOnlyWhenItWasChanged) {
  showAccount("74");
  goToNumber();
  user_->press(Key::Enter);
  elsewhere();
  expectNoSearch();
  EXPECT_EQ(shown(), "74|");
  goToNumber();
  numero().userSelect(2, 0);
  user_->type("1");
  elsewhere();
  expectSearch("SSELECT PLANCOMPTABLE AVEC @ID = \"010741]\" PAR 1");
  EXPECT_EQ(shown(), "7410000000|SUBVENTIONS");
  expectNoBox();
}

TEST_P(AccountNumber, AccountsOfOneLabelComeInTheOrderOfTheQuery) {
  store_.answer("SSELECT PLANCOMPTABLE AVEC @ID = \"01070]\" PAR 1",
                {{"0107080000000", "B"}, {"0107060000000", "A"}, {"0107061000000", "A"}});
  open();
  typeNumber("70\r");
  EXPECT_PRED_FORMAT2(same, lines(), (std::vector<std::string>{"B", "A", "A"}));
}

TEST_P(AccountNumber, ASingleAccountFoundIsChosenAtOnce) {
  open();
  typeNumber("74\r");
  expectSearch("SSELECT PLANCOMPTABLE AVEC @ID = \"01074]\" PAR 1");
  EXPECT_EQ(shown(), "7410000000|SUBVENTIONS");
  EXPECT_PRED_FORMAT2(same, lines(), std::vector<std::string>{"SUBVENTIONS"});
  EXPECT_EQ(libelle().listIndex(), 0);
  expectNoBox();
}

TEST_P(AccountNumber, ASingleAccountFoundOnLeavingIsChosenAtOnce) {
  open();
  typeNumber("74");
  elsewhere();
  EXPECT_EQ(shown(), "7410000000|SUBVENTIONS");
  EXPECT_PRED_FORMAT1(hasFocus, code());
  expectNoBox();
}

TEST_P(AccountNumber, NoAccountOfThatNumberIsTold) {
  open();
  typeNumber("79\r");
  expectBox(kAucunNumero, Icon::Exclamation);
  EXPECT_EQ(shown(), "|");
  EXPECT_PRED_FORMAT1(hasFocus, numero());
  EXPECT_EQ(desktop_.beeps(), 0);
  expectAtRest();
}

TEST_P(AccountNumber, NoAccountOfThatNumberKeepsTheFocusFromLeaving) {
  open();
  typeNumber("79");
  EXPECT_FALSE(press("Cmd_OK"));
  expectBox(kAucunNumero, Icon::Exclamation);
  EXPECT_EQ(numero().text(), "");
  EXPECT_PRED_FORMAT1(hasFocus, numero());
  expectNothingWritten();
  EXPECT_FALSE(user_->type("79") && user_->click(tabs(), 0));
  expectBox(kAucunNumero, Icon::Exclamation);
  EXPECT_EQ(tabs().tab(), GetParam().tab);
  EXPECT_PRED_FORMAT1(hasFocus, numero());
}

TEST_P(AccountNumber, TheBoxOfASearchStandsOnAControlAtRest) {
  open();
  typeNumber("79");
  desktop_.onBox = [this](const auto&) { expectAtRest(); };
  user_->press(Key::Enter);
  expectBox(kAucunNumero, Icon::Exclamation);
}

TEST_P(AccountNumber, AnEmptyNumberOrAWholeOneSearchesNothing) {
  open();
  goToNumber();
  user_->press(Key::Enter);
  elsewhere();
  typeNumber("7410000000\r");
  elsewhere();
  expectNoSearch();
  EXPECT_EQ(shown(), "7410000000|SUBVENTIONS");
  expectNoBox();
}

TEST_P(AccountNumber, NineDigitsAreSearched) {
  open();
  typeNumber("741000000\r");
  expectSearch("SSELECT PLANCOMPTABLE AVEC @ID = \"010741000000]\" PAR 1");
  EXPECT_EQ(shown(), "7410000000|SUBVENTIONS");
}

TEST_P(AccountNumber, AnEarlierSearchIsReplacedByTheNext) {
  open();
  typeNumber("70\r");
  typeNumber("74\r");
  EXPECT_PRED_FORMAT2(same, lines(), std::vector<std::string>{"SUBVENTIONS"});
  EXPECT_EQ(shown(), "7410000000|SUBVENTIONS");
  typeNumber("79\r");
  EXPECT_TRUE(lines().empty());
}

// --- The check of a whole number

TEST_P(AccountNumber, TheTenthDigitShowsTheLabel) {
  open();
  typeNumber("741000000");
  EXPECT_TRUE(chartReads().empty());
  EXPECT_EQ(libelle().text(), "");
  user_->type("0");
  EXPECT_PRED_FORMAT2(same, chartReads(), std::vector<std::string>{"0107410000000"});
  EXPECT_EQ(shown(), "7410000000|SUBVENTIONS");
  EXPECT_PRED_FORMAT1(hasFocus, numero());
  expectNoSearch();
  expectNoBox();
}

TEST_P(AccountNumber, AnEleventhDigitCannotBeTyped) {
  open();
  typeNumber("74100000001");
  EXPECT_EQ(shown(), "7410000000|SUBVENTIONS");
  EXPECT_EQ(chartReads().size(), 1U);
}

TEST_P(AccountNumber, AnUnknownNumberIsToldAndEmptied) {
  open();
  typeNumber("7419999999");
  expectBox(kInconnu, Icon::Exclamation);
  EXPECT_EQ(shown(), "|");
  EXPECT_PRED_FORMAT1(hasFocus, numero());
  EXPECT_EQ(tabs().tab(), GetParam().tab);
}

TEST_P(AccountNumber, AnotherEntitysAccountIsUnknown) {
  open();
  typeNumber("7490000000");
  expectBox(kInconnu, Icon::Exclamation);
  EXPECT_EQ(numero().text(), "");
}

TEST_P(AccountNumber, TheChartIsThatOfTheEntityChosenLast) {
  open();
  user_->click(tabs(), 5);
  user_->fill(box("Txt_Entite"), "020");
  forget();
  typeNumber("70\r");
  expectSearch("SSELECT PLANCOMPTABLE AVEC @ID = \"02070]\" PAR 1");
  EXPECT_EQ(shown(), "7060000000|VENTES");
  forget();
  typeLabel("do\r");
  expectSearch("SSELECT PLANCOMPTABLE AVEC 1 = \"DO]\" AND AVEC @ID = \"020]\" PAR 1");
  EXPECT_PRED_FORMAT2(same, lines(), std::vector<std::string>{"DONS"});
}

TEST_P(AccountNumber, AStoreThatFailsToReadAnAccountIsIgnored) {
  open();
  store_.fail(CallKind::ReadRecord, "PLANCOMPTABLE");
  typeNumber("7419999999");
  EXPECT_EQ(shown(), "7419999999|");
  expectNoBox();
  expectAtRest();
  store_.stopFailing();
  user_->type("\b9");
  expectBox(kInconnu, Icon::Exclamation);
}

TEST_P(AccountNumber, ChangingTheNumberTakesTheLabelAwayAndKeepsWhatIsTyped) {
  open();
  typeNumber("74\r");
  goToNumber();
  numero().userSelect(10, 0);
  user_->type("\b");
  EXPECT_EQ(shown(), "741000000|");
  EXPECT_TRUE(lines().empty());
  user_->type("\b");
  EXPECT_EQ(shown(), "74100000|");
  user_->type("00");
  EXPECT_EQ(shown(), "7410000000|SUBVENTIONS");
  expectNoBox();
}

TEST_P(AccountNumber, APastedNumberIsCheckedAsATypedOne) {
  open();
  goToNumber();
  user_->paste("7410000000");
  EXPECT_EQ(shown(), "7410000000|SUBVENTIONS");
  numero().userSelect(0, 10);
  user_->paste("7060000000 et plus");
  EXPECT_EQ(shown(), "7060000000|PRESTATIONS DE SERVICES");
  expectNoBox();
  numero().userSelect(0, 10);
  user_->paste("7410 00 000");
  expectBox(kInconnu, Icon::Exclamation);
  EXPECT_EQ(shown(), "|");
}

TEST_P(AccountNumber, APastedTextThatIsNoNumberFindsNothing) {
  open();
  goToNumber();
  user_->paste("74 rue");
  EXPECT_EQ(numero().text(), "74 rue");
  user_->press(Key::Enter);
  expectSearch("SSELECT PLANCOMPTABLE AVEC @ID = \"01074 rue]\" PAR 1");
  expectBox(kAucunNumero, Icon::Exclamation);
  EXPECT_EQ(numero().text(), "");
}

TEST_P(AccountNumber, APastedQuoteIsSentAsItIs) {
  open();
  goToNumber();
  user_->paste("7\"4");
  user_->press(Key::Enter);
  expectSearch("SSELECT PLANCOMPTABLE AVEC @ID = \"0107\"4]\" PAR 1");
  expectAtRest();
}

// --- A store that fails

TEST_P(AccountNumber, AFailedSearchByNumberLosesNothing) {
  open();
  typeNumber("70");
  store_.fail(CallKind::ExecuteSentence);
  EXPECT_NO_THROW(user_->press(Key::Enter));
  EXPECT_EQ(numero().text(), "70");
  EXPECT_PRED_FORMAT1(hasFocus, numero());
  expectAtRest();
  EXPECT_NO_THROW(elsewhere());
  EXPECT_EQ(numero().text(), "70");
  EXPECT_PRED_FORMAT1(hasFocus, code());
  expectAtRest();
  expectNoBox();
  store_.stopFailing();
  goToNumber();
  user_->press(Key::Enter);
  EXPECT_PRED_FORMAT2(same, lines(), kSoixanteDix);
  EXPECT_TRUE(libelle().opened());
}

}  // namespace
}  // namespace behaviour
