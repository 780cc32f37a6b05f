// The documents to supply at renewal: two lists on the management rules page.
#include "tests/behaviour/RulesPage.h"

namespace behaviour {
namespace {

class RenewalDocuments : public RulesPage {
 protected:
  RenewalDocuments() {
    table({"AI", "RI", "LD", "CN", "AT"}, {"Avis d'imposition", "Relevé d'identité",
                                           "Livret de famille", "Carte nationale", "Attestation"});
    start();
  }
  void table(const Lines& codes, const Lines& labels) {
    store_.put("TABLES", "PIECESRENOUV", {"Pièces", values(codes), values(labels)});
  }
  // Another table from here on.
  void restartWith(const Lines& codes, const Lines& labels) {
    table(codes, labels);
    control_->Init();
  }
  void showWith(const Lines& codes, Caller at = Caller::here()) {
    show("001", {{attribut::PieceRenouOrgChg, values(codes)}}, at);
  }
  void expectStored(const Lines& codes, Caller at = Caller::here()) {
    const auto trace = called("expectStored", at);
    expectSaved("001", {{attribut::PieceRenouOrgChg, values(codes)}});
  }

  ListBox& possible() { return list("Lst_PiecePossibleOrgChg"); }
  ListBox& required() { return list("Lst_PieceRenouOrgChg"); }
  Lines requiredLines() { return linesOf(required()); }
};

TEST_F(RenewalDocuments, AreOfferedInTheOrderOfTheirTable) {
  EXPECT_PRED_FORMAT2(same, linesOf(possible()),
                      (Lines{"Avis d'imposition", "Relevé d'identité", "Livret de famille",
                             "Carte nationale", "Attestation"}));
}

TEST_F(RenewalDocuments, AreShownInTheOrderOfTheRecord) {
  showWith({"AT", "AI", "LD"});
  EXPECT_PRED_FORMAT2(same, requiredLines(),
                      (Lines{"Attestation", "Avis d'imposition", "Livret de famille"}));
  EXPECT_EQ(possible().listCount(), 5);
  expectSaved("001", {});
}

TEST_F(RenewalDocuments, ADoubleClickAddsItsLineAlone) {
  showWith({});
  user_->click(possible(), 0);
  user_->click(possible(), 1, true);
  EXPECT_TRUE(user_->dblClick(possible(), 3));
  EXPECT_PRED_FORMAT2(same, requiredLines(), (Lines{"Carte nationale"}));
  EXPECT_EQ(possible().selectedCount(), 0);
  EXPECT_EQ(possible().listCount(), 5);
  expectStored({"CN"});
}

TEST_F(RenewalDocuments, ADoubleClickBesideTheLinesDoesNothing) {
  showWith({"AT"});
  user_->click(possible(), 3);
  EXPECT_FALSE(user_->dblClickBeside(possible()));
  user_->click(required(), 0);
  EXPECT_FALSE(user_->dblClickBeside(required()));
  EXPECT_PRED_FORMAT2(same, requiredLines(), Lines{"Attestation"});
  expectSaved("001", {});
}

TEST_F(RenewalDocuments, StayInTheirListsInConsultation) {
  showWith({"AT"});
  level_->value = 1;
  EXPECT_TRUE(user_->dblClick(possible(), 3));
  press("Cmd_DroiteRenouv");
  EXPECT_TRUE(user_->dblClick(required(), 0));
  press("Cmd_GaucheRenouv");
  EXPECT_PRED_FORMAT2(same, requiredLines(), Lines{"Attestation"});
}

TEST_F(RenewalDocuments, TheButtonAddsAllSelectedLinesFromFirstToLast) {
  showWith({"AT"});
  user_->click(possible(), 3);
  user_->click(possible(), 0, true);
  user_->click(possible(), 2, true);
  ASSERT_TRUE(press("Cmd_DroiteRenouv"));
  EXPECT_PRED_FORMAT2(
      same, requiredLines(),
      (Lines{"Attestation", "Avis d'imposition", "Livret de famille", "Carte nationale"}));
  EXPECT_EQ(possible().selectedCount(), 0);
  expectStored({"AT", "AI", "LD", "CN"});
}

TEST_F(RenewalDocuments, ShiftSelectsARun) {
  showWith({});
  user_->click(possible(), 1);
  user_->click(possible(), 3, false, true);
  press("Cmd_DroiteRenouv");
  EXPECT_PRED_FORMAT2(same, requiredLines(),
                      (Lines{"Relevé d'identité", "Livret de famille", "Carte nationale"}));
}

TEST_F(RenewalDocuments, WhatIsRequiredAlreadyIsOnlyDeselected) {
  showWith({"LD"});
  user_->click(possible(), 0);
  user_->click(possible(), 4, false, true);
  press("Cmd_DroiteRenouv");
  EXPECT_PRED_FORMAT2(same, requiredLines(),
                      (Lines{"Livret de famille", "Avis d'imposition", "Relevé d'identité",
                             "Carte nationale", "Attestation"}));
  EXPECT_EQ(possible().selectedCount(), 0);
  EXPECT_TRUE(user_->dblClick(possible(), 2));
  EXPECT_EQ(required().listCount(), 5);
  expectStored({"LD", "AI", "RI", "CN", "AT"});
}

TEST_F(RenewalDocuments, WithNothingSelectedTheButtonsDoNothing) {
  showWith({"LD", "AI"});
  press("Cmd_DroiteRenouv");
  press("Cmd_GaucheRenouv");
  expectSaved("001", {});
}

TEST_F(RenewalDocuments, ADoubleClickRemovesItsLineAlone) {
  showWith({"AI", "RI", "LD"});
  user_->click(required(), 0);
  EXPECT_TRUE(user_->dblClick(required(), 1));
  EXPECT_PRED_FORMAT2(same, requiredLines(), (Lines{"Avis d'imposition", "Livret de famille"}));
  EXPECT_EQ(required().selectedCount(), 0);
  expectStored({"AI", "LD"});
}

TEST_F(RenewalDocuments, TheButtonRemovesAllSelectedLinesNeighboursToo) {
  showWith({"AI", "RI", "LD", "CN", "AT"});
  user_->click(required(), 0);
  user_->click(required(), 1, false, true);
  user_->click(required(), 4, true);
  ASSERT_TRUE(press("Cmd_GaucheRenouv"));
  EXPECT_PRED_FORMAT2(same, requiredLines(), (Lines{"Livret de famille", "Carte nationale"}));
  expectStored({"LD", "CN"});
}

TEST_F(RenewalDocuments, MayAllBeRemoved) {
  showWith({"AI", "RI", "LD"});
  user_->click(required(), 0);
  user_->click(required(), 2, false, true);
  press("Cmd_GaucheRenouv");
  EXPECT_EQ(required().listCount(), 0);
  expectStored({});
}

TEST_F(RenewalDocuments, ARemovedOneCanBeAddedAgainAtTheEnd) {
  showWith({"AI", "RI"});
  user_->dblClick(required(), 0);
  user_->dblClick(possible(), 0);
  expectStored({"RI", "AI"});
}

TEST_F(RenewalDocuments, ADisabledListIsLeftAlone) {
  showWith({"AI"});
  user_->click(possible(), 1);
  user_->click(required(), 0);
  possible().setEnabled(false);
  required().setEnabled(false);
  press("Cmd_DroiteRenouv");
  press("Cmd_GaucheRenouv");
  EXPECT_FALSE(user_->dblClick(possible(), 2));
  EXPECT_FALSE(user_->dblClick(required(), 0));
  EXPECT_PRED_FORMAT2(same, requiredLines(), (Lines{"Avis d'imposition"}));
  EXPECT_TRUE(possible().selected(1));
  possible().setEnabled(true);
  press("Cmd_DroiteRenouv");
  EXPECT_PRED_FORMAT2(same, requiredLines(), (Lines{"Avis d'imposition", "Relevé d'identité"}));
  required().setEnabled(true);
  press("Cmd_GaucheRenouv");
  EXPECT_PRED_FORMAT2(same, requiredLines(), (Lines{"Relevé d'identité"}));
}

TEST_F(RenewalDocuments, OneThatIsGoneFromTheTableGoesAtTheNextSave) {
  showWith({"AI", "ANC", "CN"});
  EXPECT_PRED_FORMAT2(same, requiredLines(), (Lines{"Avis d'imposition", "Carte nationale"}));
  expectNoBox();
  expectStored({"AI", "CN"});
}

TEST_F(RenewalDocuments, OneThatIsGoneIsNoChangeOfTheUsers) {
  showWith({"ANC", "AI"});
  press("Cmd_Sortir");
  expectNoBox();
  EXPECT_TRUE(control_->W_Sortir());
  expectNothingWritten();
}

TEST_F(RenewalDocuments, EmptyValuesInTheRecordAreSkipped) {
  showWith({"", "AI", "", "RI", ""});
  EXPECT_PRED_FORMAT2(same, requiredLines(), (Lines{"Avis d'imposition", "Relevé d'identité"}));
  expectStored({"AI", "RI"});
}

TEST_F(RenewalDocuments, ALabelWithoutACodeIsOfferedButNotStored) {
  restartWith({"AI"}, {"Avis d'imposition", "Sans code", "Sans code non plus"});
  EXPECT_EQ(possible().listCount(), 3);
  showWith({});
  user_->click(possible(), 0);
  user_->click(possible(), 2, false, true);
  press("Cmd_DroiteRenouv");
  EXPECT_EQ(required().listCount(), 3);
  expectStored({"AI"});
}

TEST_F(RenewalDocuments, ACodeWithoutALabelIsNotShownAndGoes) {
  restartWith({"AI", "RI", "LD"}, {"Avis d'imposition"});
  EXPECT_EQ(possible().listCount(), 1);
  showWith({"RI", "AI", "LD"});
  EXPECT_PRED_FORMAT2(same, requiredLines(), (Lines{"Avis d'imposition"}));
  expectStored({"AI"});
}

TEST_F(RenewalDocuments, AnEmptyLabelDoesNotHideTheOnesAfterIt) {
  restartWith({"AI", "RI", "LD"}, {"Avis d'imposition", "", "Livret de famille"});
  EXPECT_EQ(possible().listCount(), 3);
  showWith({"LD"});
  EXPECT_PRED_FORMAT2(same, requiredLines(), (Lines{"Livret de famille"}));
  expectSaved("001", {});
  show("001");
  user_->dblClick(possible(), 0);
  expectStored({"LD", "AI"});
}

TEST_F(RenewalDocuments, OneWithoutAnyNameIsNotStored) {
  restartWith({"AI", "RI"}, {"Avis d'imposition", ""});
  showWith({});
  user_->click(possible(), 0);
  user_->click(possible(), 1, true);
  press("Cmd_DroiteRenouv");
  expectStored({"AI"});
}

TEST_F(RenewalDocuments, OneThatTheRecordNamesTwiceStaysTwice) {
  showWith({"AI", "LD", "AI"});
  EXPECT_PRED_FORMAT2(same, requiredLines(),
                      (Lines{"Avis d'imposition", "Livret de famille", "Avis d'imposition"}));
  expectSaved("001", {});
}

TEST_F(RenewalDocuments, TwoUnderOneLabelAreNotMixedUp) {
  restartWith({"R1", "R2", "AI"}, {"Relevé", "Relevé", "Avis d'imposition"});
  showWith({"R2"});
  expectSaved("001", {});
  showWith({"AI", "R2", "R1"});
  EXPECT_PRED_FORMAT2(same, requiredLines(), (Lines{"Avis d'imposition", "Relevé", "Relevé"}));
  expectSaved("001", {});
  showWith({});
  user_->dblClick(possible(), 1);
  user_->dblClick(possible(), 0);
  EXPECT_PRED_FORMAT2(same, requiredLines(), (Lines{"Relevé"}));
  expectStored({"R2"});
}

TEST_F(RenewalDocuments, LabelsThatDifferInCaseOrAccentsAreDifferent) {
  restartWith({"A", "B", "C"}, {"Relevé", "relevé", "Releve"});
  showWith({});
  user_->click(possible(), 0);
  user_->click(possible(), 2, false, true);
  press("Cmd_DroiteRenouv");
  expectStored({"A", "B", "C"});
}

TEST_F(RenewalDocuments, OfANewBodyAreStoredWithIt) {
  beginCreation();
  user_->click(tabs(), kRulesTab);
  user_->dblClick(possible(), 4);
  user_->dblClick(possible(), 1);
  press("Cmd_OK");
  expectNoBox();
  EXPECT_EQ(attribute("004", attribut::PieceRenouOrgChg), values({"AT", "RI"}));
}

TEST_F(RenewalDocuments, KeysWorkTheButtonsToo) {
  showWith({});
  user_->click(possible(), 2);
  ASSERT_TRUE(user_->go(button("Cmd_DroiteRenouv")));
  user_->press(toolkit::Key::Space);
  EXPECT_PRED_FORMAT2(same, requiredLines(), (Lines{"Livret de famille"}));
}

}  // namespace
}  // namespace behaviour
