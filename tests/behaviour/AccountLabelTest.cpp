// An account's label, as it is searched and chosen. On each of the four pairs.
#include "tests/behaviour/AccountTest.h"
#include "toolkit/ControlClosed.h"

namespace behaviour {
namespace {

constexpr const char* kMinuscule = "La saisie de minuscule accentuée est interdite sur cette zone.";

class AccountLabel : public AccountPair {};

INSTANTIATE_TEST_SUITE_P(Of, AccountLabel, testing::ValuesIn(kPaires),
                         [](const auto& tested) { return std::string(tested.param.test); });

TEST_P(AccountLabel, EnterInTheLabelSearchesWhatIsTypedInCapitals) {
  open();
  typeLabel("aide a");
  expectNoSearch();
  user_->press(Key::Enter);
  expectSearch("SSELECT PLANCOMPTABLE AVEC 1 = \"AIDE A]\" AND AVEC @ID = \"010]\" PAR 1");
  EXPECT_PRED_FORMAT2(same, lines(),
                      (std::vector<std::string>{"AIDE A DOMICILE", "AIDE A DOMICILE"}));
  EXPECT_EQ(shown(), "|aide a");
  EXPECT_EQ(libelle().listIndex(), -1);
  EXPECT_PRED_FORMAT1(hasFocus, libelle());
  EXPECT_TRUE(libelle().opened());
  EXPECT_EQ(desktop_.beeps(), 0);
  expectNoBox();
}

TEST_P(AccountLabel, EnterAfterSeveralWereFoundSearchesTheSameAgain) {
  open();
  typeLabel("aide\r");
  forget();
  user_->press(Key::Enter);
  expectSearch("SSELECT PLANCOMPTABLE AVEC 1 = \"AIDE]\" AND AVEC @ID = \"010]\" PAR 1");
  EXPECT_EQ(shown(), "|aide");
  EXPECT_TRUE(libelle().opened());
}

TEST_P(AccountLabel, AccentedLettersThatWerePastedAreSearchedInCapitals) {
  open();
  goToLabel();
  libelle().userEdit("prés œ");
  user_->press(Key::Enter);
  EXPECT_EQ(store::DynamicArray(store_.calls(CallKind::ExecuteSentence).at(0).text).get(1),
            "SSELECT PLANCOMPTABLE AVEC 1 = \"PRÉS Œ]\" AND AVEC @ID = \"010]\" PAR 1");
  expectBox(std::string(kAucunLibelle) + "prés œ", Icon::Exclamation);
}

TEST_P(AccountLabel, ASingleLabelFoundIsLeftToChoose) {
  open();
  typeLabel("SUB\r");
  EXPECT_PRED_FORMAT2(same, lines(), std::vector<std::string>{"SUBVENTIONS"});
  EXPECT_EQ(shown(), "|");
  EXPECT_FALSE(libelle().opened());
  down();
  EXPECT_EQ(shown(), "7410000000|SUBVENTIONS");
}

TEST_P(AccountLabel, KeysOfCode123AndAboveAreRefusedInTheLabel) {
  open();
  goToLabel();
  for (const char32_t key : {U'{', U'é', U'à', U'œ', U'É', U'€'}) {
    EXPECT_EQ(libelle().userKeyPress(key), 0U);
    expectBox(kMinuscule, Icon::Exclamation);
  }
  for (const char32_t key : {U'z', U'A', U'0', U' ', U'"', U'\b'}) {
    EXPECT_EQ(libelle().userKeyPress(key), key);
  }
  EXPECT_PRED_FORMAT1(hasFocus, libelle());
  expectNoBox();
  expectNoSearch();
}

TEST_P(AccountLabel, ARefusedKeyLeavesWhatIsTyped) {
  open();
  typeLabel("aé");
  expectBox(kMinuscule, Icon::Exclamation);
  EXPECT_EQ(libelle().text(), "a");
}

TEST_P(AccountLabel, NoAccountOfThatLabelIsToldWithABeepAsTyped) {
  open();
  typeLabel("zinc\r");
  expectBox(std::string(kAucunLibelle) + "zinc", Icon::Exclamation);
  EXPECT_EQ(desktop_.beeps(), 1);
  EXPECT_EQ(desktop_.journal().at(1).what, toolkit::headless::Entry::What::Beep);
  EXPECT_EQ(shown(), "|");
  EXPECT_TRUE(lines().empty());
  EXPECT_PRED_FORMAT1(hasFocus, libelle());
  expectAtRest();
}

TEST_P(AccountLabel, NoAccountOfThatLabelKeepsTheFocusFromLeaving) {
  open();
  typeLabel("zinc");
  EXPECT_FALSE(press("Cmd_OK"));
  expectBox(std::string(kAucunLibelle) + "zinc", Icon::Exclamation);
  EXPECT_EQ(libelle().text(), "");
  EXPECT_PRED_FORMAT1(hasFocus, libelle());
  expectNothingWritten();
  elsewhere();
  expectNoBox();
}

TEST_P(AccountLabel, LeavingALabelWithoutANumberSearchesIt) {
  open();
  typeLabel("aide");
  EXPECT_FALSE(press("Cmd_Annuler"));
  expectSearch("SSELECT PLANCOMPTABLE AVEC 1 = \"AIDE]\" AND AVEC @ID = \"010]\" PAR 1");
  EXPECT_EQ(lines().size(), 2U);
  EXPECT_EQ(shown(), "|aide");
  EXPECT_PRED_FORMAT1(hasFocus, libelle());
  EXPECT_TRUE(libelle().opened());
  EXPECT_EQ(state(), kExisting);
  expectNoBox();
}

TEST_P(AccountLabel, LeftWithoutAChoiceAmongSeveralGoesAndLetsTheUserGo) {
  open();
  typeLabel("aide");
  EXPECT_FALSE(user_->go(code()));
  forget();
  elsewhere();
  expectNoSearch();
  EXPECT_EQ(shown(), "|");
  EXPECT_TRUE(lines().empty());
  expectNoBox();
}

TEST_P(AccountLabel, AnotherLabelAfterSeveralWereFoundIsSearchedOnLeaving) {
  open();
  typeLabel("aide");
  EXPECT_FALSE(user_->go(code()));
  forget();
  user_->fill(libelle(), "a");
  EXPECT_FALSE(user_->go(code()));
  expectSearch("SSELECT PLANCOMPTABLE AVEC 1 = \"A]\" AND AVEC @ID = \"010]\" PAR 1");
}

TEST_P(AccountLabel, ALabelTypedOverAWholeNumberComesBackOnLeaving) {
  open();
  typeNumber("7410000000");
  goToLabel();
  libelle().userEdit("SUBV");
  elsewhere();
  expectNoSearch();
  EXPECT_EQ(shown(), "7410000000|SUBVENTIONS");
  typeNumber("70\r");
  user_->choose(libelle(), 2);
  libelle().userEdit("autre");
  elsewhere();
  EXPECT_EQ(shown(), "7060000000|PRESTATIONS DE SERVICES");
  expectNoBox();
}

TEST_P(AccountLabel, ALabelTypedOverAStoredNumberComesBackOnLeaving) {
  showAccount("7410000000");
  goToLabel();
  libelle().userEdit("SUBV");
  elsewhere();
  EXPECT_EQ(shown(), "7410000000|SUBVENTIONS");
  expectNoSearch();
}

TEST_P(AccountLabel, ALabelTypedOverANumberThatItsChartLacksGoesOnLeaving) {
  showAccount("7419999999");
  goToLabel();
  libelle().userEdit("SUBV");
  elsewhere();
  EXPECT_EQ(shown(), "7419999999|");
  expectNoSearch();
  expectNoBox();
}

TEST_P(AccountLabel, LeavingAnEmptyLabelSearchesNothing) {
  open();
  goToLabel();
  elsewhere();
  expectNoSearch();
  expectNoBox();
}

TEST_P(AccountLabel, LeavingAnEmptyLabelKeepsANumberThatIsNotWhole) {
  showAccount("74");
  goToLabel();
  elsewhere();
  EXPECT_EQ(shown(), "74|");
  expectNoSearch();
  expectNoBox();
}

TEST_P(AccountLabel, ALabelSearchTakesTheAccountBeforeAway) {
  open();
  typeNumber("7410000000");
  typeLabel("aide\r");
  EXPECT_EQ(shown(), "|aide");
  EXPECT_EQ(lines().size(), 2U);
}

TEST_P(AccountLabel, EnterInAnEmptyLabelEmptiesTheNumber) {
  showAccount("7419999999");
  EXPECT_EQ(shown(), "7419999999|");
  goToLabel();
  user_->press(Key::Enter);
  EXPECT_EQ(shown(), "|");
  expectNoSearch();
  expectNoBox();
}

TEST_P(AccountLabel, AQuoteInALabelIsSentAsItIs) {
  open();
  typeLabel("remises \"\r");
  expectSearch("SSELECT PLANCOMPTABLE AVEC 1 = \"REMISES \"]\" AND AVEC @ID = \"010]\" PAR 1");
  expectAtRest();
}

// --- The choice of a label

TEST_P(AccountLabel, ALabelChosenWithTheMouseGivesItsNumber) {
  open();
  typeNumber("70\r");
  user_->choose(libelle(), 2);
  EXPECT_EQ(shown(), "7060000000|PRESTATIONS DE SERVICES");
  EXPECT_EQ(libelle().listIndex(), 2);
  EXPECT_PRED_FORMAT2(same, lines(), kSoixanteDix);
  user_->choose(libelle(), 0);
  EXPECT_EQ(shown(), "7061000000|AIDE A DOMICILE");
  user_->choose(libelle(), 0);
  EXPECT_EQ(shown(), "7061000000|AIDE A DOMICILE");
  elsewhere();
  EXPECT_EQ(shown(), "7061000000|AIDE A DOMICILE");
  expectNoBox();
  expectAtRest();
}

TEST_P(AccountLabel, TheDownKeyWalksTheFoundAccounts) {
  open();
  typeNumber("70");
  user_->tab();
  const std::vector<std::string> walked = {
      "7061000000|AIDE A DOMICILE", "7062000000|AIDE A DOMICILE",
      "7060000000|PRESTATIONS DE SERVICES", "7080000000|REMISES \"SOCIALES\""};
  for (std::size_t line = 0; line < walked.size(); ++line) {
    down();
    EXPECT_EQ(shown(), walked[line]);
    EXPECT_EQ(libelle().listIndex(), static_cast<int>(line));
    EXPECT_PRED_FORMAT2(same, lines(), kSoixanteDix);
  }
  expectNoBox();
}

TEST_P(AccountLabel, AnAccountIsChosenAmongThoseOfALabelSearch) {
  open();
  typeLabel("aide\r");
  user_->choose(libelle(), 1);
  EXPECT_EQ(shown(), "7062000000|AIDE A DOMICILE");
  EXPECT_EQ(libelle().listIndex(), 1);
}

TEST_P(AccountLabel, AnAccountWithoutALabelGivesNoNumber) {
  store_.put("PLANCOMPTABLE", "0107000000000", {""});
  open();
  typeNumber("70\r");
  ASSERT_EQ(lines().front(), "");
  user_->choose(libelle(), 1);
  EXPECT_EQ(numero().text(), "7061000000");
  user_->choose(libelle(), 0);
  EXPECT_EQ(shown(), "|");
  expectNoBox();
  typeNumber("7000000000");
  EXPECT_EQ(shown(), "7000000000|");
  numero().userSelect(0, 10);
  user_->paste("7410000000");
  EXPECT_EQ(shown(), "7410000000|SUBVENTIONS");
  numero().userSelect(0, 10);
  user_->paste("7000000000");
  EXPECT_EQ(shown(), "7000000000|");
  expectNoBox();
}

TEST_P(AccountLabel, ALabelOfSeveralValuesIsItsFirst) {
  store_.put("PLANCOMPTABLE", "0107500000000",
             {std::string("PARTICIPATIONS") + store::kValueMark + "ANCIEN"});
  open();
  typeNumber("75\r");
  EXPECT_EQ(shown(), "7500000000|PARTICIPATIONS");
  EXPECT_EQ(libelle().listIndex(), 0);
}

TEST_P(AccountLabel, EmptyingTheLabelEmptiesTheNumber) {
  open();
  typeNumber("74\r");
  forget();
  typeLabel("");
  EXPECT_EQ(shown(), "|");
  expectNoBox();
  expectNoSearch();
}

TEST_P(AccountLabel, ALabelTypedOverTheChosenOneLeavesTheNumberUntilItIsEmpty) {
  open();
  typeNumber("7410000000");
  goToLabel();
  user_->type("\b");
  EXPECT_EQ(shown(), "7410000000|SUBVENTION");
  EXPECT_EQ(libelle().listIndex(), -1);
}

// --- A store that fails

TEST_P(AccountLabel, AFailedSearchByLabelLosesNothing) {
  open();
  typeNumber("70\r");
  typeLabel("aide");
  store_.fail(CallKind::ExecuteSentence);
  EXPECT_NO_THROW(user_->press(Key::Enter));
  EXPECT_EQ(libelle().text(), "aide");
  EXPECT_PRED_FORMAT2(same, lines(), kSoixanteDix);
  EXPECT_PRED_FORMAT1(hasFocus, libelle());
  expectAtRest();
  EXPECT_NO_THROW(elsewhere());
  EXPECT_EQ(libelle().text(), "aide");
  EXPECT_PRED_FORMAT1(hasFocus, code());
  expectAtRest();
  expectNoBox();
  EXPECT_EQ(desktop_.beeps(), 0);
}

TEST_P(AccountLabel, AChoiceWhoseAccountCannotBeReadStands) {
  open();
  typeNumber("70\r");
  store_.fail(CallKind::ReadRecord, "PLANCOMPTABLE");
  user_->choose(libelle(), 2);
  EXPECT_EQ(shown(), "7060000000|PRESTATIONS DE SERVICES");
  expectNoBox();
}

TEST_P(AccountLabel, AnAccountOfTheListThatIsGoneIsTold) {
  open();
  typeNumber("70\r");
  store_.erase("PLANCOMPTABLE", "0107060000000");
  user_->choose(libelle(), 2);
  expectBox(kInconnu, Icon::Exclamation);
  EXPECT_EQ(shown(), "|");
  EXPECT_PRED_FORMAT1(hasFocus, numero());
}

TEST_P(AccountLabel, AControlTakenDownUnderTheBoxOfASearchIsAtRest) {
  open();
  desktop_.onBox = [](const auto&) { throw toolkit::ControlClosed(); };
  typeNumber("79");
  EXPECT_THROW(user_->press(Key::Enter), toolkit::ControlClosed);
  expectAtRest();
  numero().setText("");
  typeLabel("zinc");
  EXPECT_THROW(user_->press(Key::Enter), toolkit::ControlClosed);
  expectAtRest();
}

}  // namespace
}  // namespace behaviour
