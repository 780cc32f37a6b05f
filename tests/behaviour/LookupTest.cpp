#include <algorithm>

#include "tests/behaviour/ControlTest.h"

namespace behaviour {
namespace {

class Lookup : public ControlTest {
 protected:
  Lookup() {
    fillThreeBodies(store_);
    start();
  }
  // How often a body has been read.
  int reads() {
    const auto calls = store_.calls(CallKind::ReadRecord);
    const auto bodies = std::count_if(
        calls.begin(), calls.end(), [](const auto& call) { return call.file == "ORGPRISECHARGE"; });
    return static_cast<int>(bodies);
  }
};

TEST_F(Lookup, OneOrTwoCharactersReadNothing) {
  user_->fill(code(), "00");
  EXPECT_TRUE(store_.calls().empty());
  EXPECT_EQ(state(), kEmpty);
}

TEST_F(Lookup, TheThirdCharacterReadsAndShows) {
  user_->fill(code(), "00");
  user_->type("1");
  EXPECT_EQ(store_.told()[0], "ReadRecord ORGPRISECHARGE 001");
  EXPECT_EQ(reads(), 1);
  EXPECT_EQ(box("Txt_RaisonOrgChg").text(), "Domus Mutuelle");
  EXPECT_EQ(state(), kExisting);
  expectNoBox();
}

TEST_F(Lookup, TheNextCodeIsTypedOverTheOneFound) {
  lookUp("001");
  EXPECT_EQ(code().selectionStart(), 0);
  EXPECT_EQ(code().selectionLength(), 3);
  user_->type("002");
  EXPECT_EQ(code().text(), "002");
  EXPECT_EQ(box("Txt_RaisonOrgChg").text(), "Caisse régionale");
  EXPECT_EQ(reads(), 2);
}

TEST_F(Lookup, ACodeFoundByItsAcronymIsSelectedToo) {
  user_->choose(sigles(), 2);
  EXPECT_EQ(code().text(), "001");
  EXPECT_EQ(code().selectionLength(), 3);
}

TEST_F(Lookup, AFourthCharacterBeginsAnotherCode) {
  lookUp("0011");
  EXPECT_EQ(code().text(), "1");
  EXPECT_EQ(reads(), 1);
  EXPECT_EQ(box("Txt_RaisonOrgChg").text(), "Domus Mutuelle");
}

TEST_F(Lookup, AnUnknownCodeIsToldAndCleared) {
  lookUp("777");
  expectBox("Cet organisme de prise en charge n'existe pas.", Icon::Information);
  EXPECT_EQ(code().text(), "");
  EXPECT_EQ(state(), kEmpty);
}

TEST_F(Lookup, AnUnknownCodeClearsTheBodyShownBefore) {
  lookUp("001");
  lookUp("777");
  EXPECT_EQ(box("Txt_RaisonOrgChg").text(), "");
  EXPECT_EQ(box("Txt_SigleOrgChg").text(), "");
  EXPECT_EQ(sigles().text(), "");
  EXPECT_EQ(state(), kEmpty);
}

TEST_F(Lookup, AnotherCodeShowsTheOtherBodyWithNothingLeftOfTheFirst) {
  lookUp("001");
  lookUp("002");
  EXPECT_EQ(box("Txt_RaisonOrgChg").text(), "Caisse régionale");
  for (const char* name : {"Txt_Complement", "Txt_NumVoie", "Txt_NomVoie", "Txt_Localite",
                           "Txt_CodePostal", "Txt_Ville", "Txt_Telephone", "Txt_Fax", "Txt_Email",
                           "Txt_InterlocDossOrgChg", "Txt_InterlocFactOrgChg"}) {
    EXPECT_EQ(box(name).text(), "") << name;
  }
  EXPECT_EQ(child<ComboBox>("Cbo_NatureVoie").text(), "");
}

TEST_F(Lookup, ShowingABodyIsQuiet) {
  lookUp("001");
  for (const auto& call : store_.calls(CallKind::ExecuteSentence)) {
    EXPECT_EQ(call.file, "ACTIVITES") << call.text;
  }
  expectNoBox();
  EXPECT_PRED_FORMAT1(hasFocus, code());
}

TEST_F(Lookup, AnAcronymInSmallLettersIsShownAsItIsStored) {
  store_.set("ORGPRISECHARGE", "002", attribut::SigleOrgChg, "Cram");
  lookUp("002");
  EXPECT_EQ(box("Txt_SigleOrgChg").text(), "Cram");
  user_->fill(box("Txt_RaisonOrgChg"), "Autre");
  press("Cmd_OK");
  EXPECT_EQ(attribute("002", attribut::SigleOrgChg), "Cram");
}

TEST_F(Lookup, AccentedSmallLettersAreRefusedInTheCode) {
  user_->go(code());
  user_->type("é");
  expectBox("La saisie de minuscule accentuée est interdite sur cette zone.", Icon::Exclamation);
  EXPECT_EQ(code().text(), "");
}

TEST_F(Lookup, TheCodeComesBackWhenItIsLeftUnfinished) {
  lookUp("001");
  user_->fill(code(), "0");
  EXPECT_EQ(state(), kExisting);
  user_->go(box("Txt_RaisonOrgChg"));
  EXPECT_EQ(code().text(), "001");
  EXPECT_EQ(reads(), 1);
}

TEST_F(Lookup, AnUnfinishedCodeStaysWhileNothingIsInHand) {
  user_->fill(code(), "00");
  user_->go(sigles());
  EXPECT_EQ(code().text(), "00");
}

TEST_F(Lookup, ArrivingOnTheCodeSelectsItSoThatTypingReplacesIt) {
  lookUp("001");
  user_->go(box("Txt_RaisonOrgChg"));
  user_->go(code());
  user_->type("002");
  EXPECT_EQ(box("Txt_RaisonOrgChg").text(), "Caisse régionale");
}

TEST_F(Lookup, TheCodeThatCountsIsTheOneLoaded) {
  lookUp("001");
  user_->fill(box("Txt_RaisonOrgChg"), "Nouveau nom");
  user_->fill(code(), "00");
  user_->alt('O');
  EXPECT_EQ(attribute("001", attribut::RaisonOrgChg), "Nouveau nom");
}

TEST_F(Lookup, DeletionUsesTheLoadedCodeToo) {
  lookUp("001");
  user_->fill(code(), "00");
  desktop_.answer(Answer::Yes);
  press("Cmd_Supprimer");
  EXPECT_FALSE(store_.has("ORGPRISECHARGE", "001"));
}

TEST_F(Lookup, AFailingReadIsQuietAndKeepsTheTypedCode) {
  store_.fail(CallKind::ReadRecord);
  EXPECT_NO_THROW(lookUp("001"));
  expectNoBox();
  EXPECT_EQ(code().text(), "001");
  EXPECT_EQ(box("Txt_RaisonOrgChg").text(), "");
  EXPECT_EQ(state(), kEmpty);
  store_.stopFailing();
  lookUp("001");
  EXPECT_EQ(box("Txt_RaisonOrgChg").text(), "Domus Mutuelle");
}

TEST_F(Lookup, AFailingReadKeepsTheBodyInHandWithItsEdits) {
  const std::string other = store_.record("ORGPRISECHARGE", "001").text();
  lookUp("002");
  user_->fill(box("Txt_RaisonOrgChg"), "Modifiée");
  store_.fail(CallKind::ReadRecord);
  EXPECT_NO_THROW(lookUp("001"));
  expectNoBox();
  EXPECT_EQ(code().text(), "001");
  EXPECT_EQ(state(), kExisting);
  EXPECT_EQ(box("Txt_RaisonOrgChg").text(), "Modifiée");
  user_->go(box("Txt_Ville"));
  EXPECT_EQ(code().text(), "002");
  store_.stopFailing();
  press("Cmd_OK");
  EXPECT_EQ(attribute("002", attribut::RaisonOrgChg), "Modifiée");
  EXPECT_PRED_FORMAT2(sameBody, store_.record("ORGPRISECHARGE", "001").text(), other);
}

TEST_F(Lookup, AFailingReadStillAsksForTheEditsOnLeaving) {
  lookUp("002");
  user_->fill(box("Txt_RaisonOrgChg"), "Modifiée");
  store_.fail(CallKind::ReadRecord);
  lookUp("001");
  store_.stopFailing();
  desktop_.answer(Answer::Yes);
  press("Cmd_Sortir");
  EXPECT_TRUE(control_->W_Sortir());
  EXPECT_EQ(attribute("002", attribut::RaisonOrgChg), "Modifiée");
}

TEST_F(Lookup, AFailingReadOfAChosenAcronymBringsCodeAndAcronymBackWhenItIsLeft) {
  lookUp("002");
  store_.fail(CallKind::ReadRecord);
  user_->choose(sigles(), 2);
  EXPECT_EQ(box("Txt_RaisonOrgChg").text(), "Caisse régionale");
  EXPECT_EQ(code().text(), "001");
  user_->go(box("Txt_Ville"));
  EXPECT_EQ(code().text(), "002");
  EXPECT_EQ(sigles().text(), "CRAM");
}

TEST_F(Lookup, AnotherBodyIsSavedWithNothingOfTheOneChangedBefore) {
  const std::string first = store_.record("ORGPRISECHARGE", "001").text();
  const std::string second = store_.record("ORGPRISECHARGE", "002").text();
  lookUp("001");
  user_->fill(box("Txt_RaisonOrgChg"), "Perdu");
  lookUp("002");
  press("Cmd_OK");
  EXPECT_EQ(store_.calls(CallKind::DBWrite).size(), 1U);
  EXPECT_EQ(store_.calls(CallKind::DBWrite)[0].id, "002");
  EXPECT_PRED_FORMAT2(sameBody, store_.record("ORGPRISECHARGE", "001").text(), first);
  EXPECT_PRED_FORMAT2(sameBody, store_.record("ORGPRISECHARGE", "002").text(), second);
}

TEST_F(Lookup, AnotherBodyIsLeftWithoutAQuestionForTheOneChangedBefore) {
  lookUp("001");
  user_->fill(box("Txt_RaisonOrgChg"), "Perdu");
  lookUp("002");
  press("Cmd_Sortir");
  expectNoBox();
  EXPECT_TRUE(control_->W_Sortir());
  expectNothingWritten();
}

TEST_F(Lookup, AnUnknownCodeWritesNothingOfTheBodyChangedBefore) {
  const std::string first = store_.record("ORGPRISECHARGE", "001").text();
  lookUp("001");
  user_->fill(box("Txt_RaisonOrgChg"), "Perdu");
  lookUp("777");
  EXPECT_EQ(state(), kEmpty);
  expectNothingWritten();
  EXPECT_PRED_FORMAT2(sameBody, store_.record("ORGPRISECHARGE", "001").text(), first);
  EXPECT_FALSE(store_.has("ORGPRISECHARGE", "777"));
}

TEST_F(Lookup, ACodeTypedInVainCanBeChosenByItsAcronym) {
  store_.fail(CallKind::ReadRecord);
  lookUp("001");
  store_.stopFailing();
  user_->choose(sigles(), 2);
  EXPECT_EQ(box("Txt_RaisonOrgChg").text(), "Domus Mutuelle");
  EXPECT_EQ(state(), kExisting);
}

TEST_F(Lookup, TheHostShowsTheRecordInHandAgain) {
  lookUp("001");
  user_->fill(box("Txt_RaisonOrgChg"), "x");
  control_->Afficher_Ong1();
  EXPECT_EQ(box("Txt_RaisonOrgChg").text(), "Domus Mutuelle");
  user_->fill(box("Txt_RaisonOrgChg"), "y");
  control_->Afficher_Donnees();
  EXPECT_EQ(box("Txt_RaisonOrgChg").text(), "Domus Mutuelle");
  control_->Vider_Donnees();
  EXPECT_EQ(state(), kEmpty);
  control_->Afficher_Ong1();
  EXPECT_EQ(box("Txt_RaisonOrgChg").text(), "");
}

}  // namespace
}  // namespace behaviour
