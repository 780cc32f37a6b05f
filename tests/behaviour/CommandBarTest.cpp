#include "tests/behaviour/ControlTest.h"
#include "tests/support/TraceFile.h"

namespace behaviour {
namespace {

using toolkit::Buttons;

constexpr const char* kSupprimer =
    "Etes-vous sûr de vouloir supprimer cet organisme de prise en charge ?";

class CommandBar : public ControlTest {
 protected:
  CommandBar() {
    fillThreeBodies(store_);
    start();
  }
};

// States ------------------------------------------------------------------------------------------

class States : public CommandBar {};

TEST_F(States, EmptyAfterInit) { EXPECT_EQ(state(), kEmpty); }

TEST_F(States, ExistingAfterALookUp) {
  lookUp("001");
  EXPECT_EQ(state(), kExisting);
  EXPECT_FALSE(box("Txt_SigleOrgChg").visible());
}

TEST_F(States, CreatingAfterAjouter) {
  press("Cmd_Ajouter");
  EXPECT_EQ(state(), kCreating);
  EXPECT_FALSE(sigles().visible());
  EXPECT_TRUE(box("Txt_SigleOrgChg").visible());
}

TEST_F(States, EmptyAfterCancellingABody) {
  lookUp("001");
  press("Cmd_Annuler");
  EXPECT_EQ(state(), kEmpty);
}

TEST_F(States, EmptyAfterCancellingACreation) {
  press("Cmd_Ajouter");
  desktop_.answer(Answer::Yes);
  press("Cmd_Annuler");
  EXPECT_EQ(state(), kEmpty);
  EXPECT_TRUE(sigles().visible());
  EXPECT_FALSE(box("Txt_SigleOrgChg").visible());
}

TEST_F(States, EmptyAfterADeletion) {
  lookUp("001");
  desktop_.answer(Answer::Yes);
  press("Cmd_Supprimer");
  EXPECT_EQ(state(), kEmpty);
}

TEST_F(States, ExistingAgainAfterAnotherLookUpFromARefusedAcronym) {
  store_.set("ORGPRISECHARGE", "002", attribut::SigleOrgChg, "");
  lookUp("002");
  press("Cmd_OK");
  lookUp("001");
  EXPECT_EQ(state(), kExisting);
}

TEST_F(States, StaysEmptyWhenTheHostChecksAPage) {
  EXPECT_FALSE(control_->Verif_Ong1());
  expectBox("Le sigle de l'organisme de prise en charge est obligatoire.", Icon::Exclamation);
  EXPECT_EQ(state(), kEmpty);
  EXPECT_TRUE(sigles().visible());
  EXPECT_FALSE(box("Txt_SigleOrgChg").visible());
}

TEST_F(States, ExistingAgainWhenTheHostShowsTheRecordAfterARefusedAcronym) {
  store_.set("ORGPRISECHARGE", "002", attribut::SigleOrgChg, "");
  lookUp("002");
  press("Cmd_OK");
  EXPECT_TRUE(box("Txt_SigleOrgChg").visible());
  control_->Afficher_Donnees();
  EXPECT_EQ(state(), kExisting);
}

TEST_F(States, StaysAsItIsWhenTheHostShowsTheRecord) {
  control_->Afficher_Donnees();
  EXPECT_EQ(state(), kEmpty);
  press("Cmd_Ajouter");
  control_->Afficher_Donnees();
  EXPECT_EQ(state(), kCreating);
}

TEST_F(States, InTheEmptyStateThePagesTakeNoInput) {
  EXPECT_FALSE(user_->go(box("Txt_RaisonOrgChg")));
  EXPECT_FALSE(user_->fill(box("Txt_Ville"), "Lyon"));
  EXPECT_FALSE(user_->click(tabs(), 2));
  EXPECT_FALSE(user_->alt('L'));
}

// Cancel ------------------------------------------------------------------------------------------

class Cancel : public CommandBar {};

TEST_F(Cancel, OfABodyAsksNothingAndWritesNothing) {
  lookUp("001");
  user_->fill(box("Txt_RaisonOrgChg"), "Perdu");
  store_.forgetCalls();
  press("Cmd_Annuler");
  expectNoBox();
  EXPECT_TRUE(store_.calls().empty());
  EXPECT_EQ(code().text(), "");
  EXPECT_EQ(box("Txt_RaisonOrgChg").text(), "");
  EXPECT_PRED_FORMAT1(hasFocus, code());
  EXPECT_EQ(attribute("001", attribut::RaisonOrgChg), "Domus Mutuelle");
}

TEST_F(Cancel, ShowsTheHourglassWhileEventsRun) {
  lookUp("001");
  bool disabled = false;
  desktop_.onEvents = [&] {
    disabled = !control_->surface().enabled() && desktop_.pointer() == toolkit::Pointer::Hourglass;
  };
  press("Cmd_Annuler");
  EXPECT_TRUE(disabled);
  EXPECT_TRUE(control_->surface().enabled());
  EXPECT_EQ(desktop_.pointer(), toolkit::Pointer::Normal);
}

TEST_F(Cancel, OfACreationShowsTheHourglassOnceItIsConfirmed) {
  beginCreation();
  bool disabled = false;
  desktop_.onBox = [&](const toolkit::headless::Entry&) {
    EXPECT_TRUE(control_->surface().enabled());
    EXPECT_EQ(desktop_.pointer(), toolkit::Pointer::Normal);
  };
  desktop_.onEvents = [&] {
    disabled = !control_->surface().enabled() && desktop_.pointer() == toolkit::Pointer::Hourglass;
  };
  desktop_.answer(Answer::Yes);
  press("Cmd_Annuler");
  EXPECT_TRUE(disabled);
  EXPECT_TRUE(control_->surface().enabled());
  EXPECT_EQ(desktop_.pointer(), toolkit::Pointer::Normal);
}

TEST_F(Cancel, OfABodyWhoseAcronymWasRefusedBringsTheLookUpBack) {
  lookUp("001");
  store_.set("ORGPRISECHARGE", "002", attribut::SigleOrgChg, "");
  lookUp("002");
  user_->fill(box("Txt_RaisonOrgChg"), "Perdu");
  press("Cmd_OK");
  desktop_.takeBoxes();
  user_->type("PERDU");
  press("Cmd_Annuler");
  expectNoBox();
  EXPECT_EQ(state(), kEmpty);
  EXPECT_TRUE(sigles().visible());
  EXPECT_FALSE(box("Txt_SigleOrgChg").visible());
  lookUp("002");
  EXPECT_EQ(box("Txt_RaisonOrgChg").text(), "Caisse régionale");
  EXPECT_EQ(box("Txt_SigleOrgChg").text(), "");
  expectNothingWritten();
}

TEST_F(Cancel, OfARefusedCreationLeavesTheNextOneClean) {
  beginCreation("NEUF", "");
  user_->fill(box("Txt_Ville"), "Lyon");
  press("Cmd_OK");
  desktop_.takeBoxes();
  desktop_.answer(Answer::Yes);
  press("Cmd_Annuler");
  EXPECT_EQ(state(), kEmpty);
  expectNothingWritten();
  beginCreation("AUTRE", "Autre organisme");
  EXPECT_EQ(box("Txt_Ville").text(), "");
  press("Cmd_OK");
  EXPECT_EQ(attribute("004", attribut::SigleOrgChg), "AUTRE");
  EXPECT_EQ(attribute("004", attribut::AdrVille), "");
}

TEST_F(Cancel, OfARefusedCreationAnsweredNoKeepsTextsAndFocus) {
  beginCreation("NEUF", "");
  user_->fill(box("Txt_Ville"), "Lyon");
  press("Cmd_OK");
  EXPECT_PRED_FORMAT1(hasFocus, box("Txt_RaisonOrgChg"));
  desktop_.answer(Answer::No);
  press("Cmd_Annuler");
  EXPECT_EQ(state(), kCreating);
  EXPECT_EQ(box("Txt_SigleOrgChg").text(), "NEUF");
  EXPECT_EQ(box("Txt_Ville").text(), "Lyon");
  EXPECT_PRED_FORMAT1(hasFocus, button("Cmd_Annuler"));
  expectNothingWritten();
}

TEST_F(Cancel, OfACreationBeepsAndAsks) {
  beginCreation();
  desktop_.clearJournal();
  desktop_.answer(Answer::Yes);
  press("Cmd_Annuler");
  EXPECT_EQ(desktop_.beeps(), 1);
  ASSERT_GE(desktop_.journal().size(), 2U);
  EXPECT_EQ(desktop_.journal()[0].what, toolkit::headless::Entry::What::Beep);
  expectBox(kQuitterCreation, Icon::Question, Buttons::YesNo);
  EXPECT_EQ(box("Txt_RaisonOrgChg").text(), "");
  EXPECT_PRED_FORMAT1(hasFocus, code());
  expectNothingWritten();
}

TEST_F(Cancel, AnsweredNoChangesNothingAtAll) {
  beginCreation();
  user_->fill(box("Txt_Ville"), "Lyon");
  button("Cmd_NouveauBareme").setCaption("Annuler barème");
  desktop_.answer(Answer::No);
  press("Cmd_Annuler");
  EXPECT_EQ(state(), kCreating);
  EXPECT_EQ(box("Txt_SigleOrgChg").text(), "NEUF");
  EXPECT_EQ(box("Txt_RaisonOrgChg").text(), "Organisme neuf");
  EXPECT_EQ(box("Txt_Ville").text(), "Lyon");
  EXPECT_EQ(button("Cmd_NouveauBareme").caption(), "Annuler barème");
  press("Cmd_OK");
  EXPECT_EQ(attribute("004", attribut::AdrVille), "Lyon");
}

TEST_F(Cancel, ResetsTheCaptionOfTheScaleButton) {
  lookUp("001");
  button("Cmd_NouveauBareme").setCaption("Annuler barème");
  press("Cmd_Annuler");
  EXPECT_EQ(toolkit::withoutMnemonic(button("Cmd_NouveauBareme").caption()), "Nouveau barème");
}

// Deletion ----------------------------------------------------------------------------------------

class Deletion : public CommandBar {
 protected:
  Deletion() {
    lookUp("001");
    store_.forgetCalls();
  }
};

TEST_F(Deletion, BeepsAndAsks) {
  desktop_.answer(Answer::No);
  press("Cmd_Supprimer");
  EXPECT_EQ(desktop_.beeps(), 1);
  expectBox(kSupprimer, Icon::Question, Buttons::YesNo);
  EXPECT_TRUE(store_.calls().empty());
  EXPECT_EQ(state(), kExisting);
  EXPECT_EQ(code().text(), "001");
}

TEST_F(Deletion, ChecksAgreementsThenRequestsThenDeletes) {
  desktop_.answer(Answer::Yes);
  press("Cmd_Supprimer");
  const std::vector<std::string> told = store_.told();
  ASSERT_EQ(told.size(), 4U);
  const auto request = [](const char* sentence, const char* file) {
    store::DynamicArray built;
    built.set(1, sentence);
    built.set(2, file);
    built.set(3, "0");
    return "ExecuteSentence " + built.text();
  };
  EXPECT_EQ(told[0], request("SSELECT ACCORD AVEC 1 = \"001\"", "ACCORD"));
  EXPECT_EQ(told[1], request("SSELECT DEMANDACC AVEC 1 = \"001\"", "DEMANDACC"));
  EXPECT_EQ(told[2], "DeleteRecord ORGPRISECHARGE 001");
  EXPECT_TRUE(told[3].starts_with("ExecuteSentence SSELECT ORGPRISECHARGE PAR 1"));
  EXPECT_FALSE(store_.has("ORGPRISECHARGE", "001"));
}

TEST_F(Deletion, ClearsScreenAndRefillsTheList) {
  desktop_.answer(Answer::Yes);
  press("Cmd_Supprimer");
  EXPECT_EQ(code().text(), "");
  EXPECT_EQ(box("Txt_RaisonOrgChg").text(), "");
  EXPECT_EQ(sigles().listCount(), 2);
  EXPECT_EQ(state(), kEmpty);
}

TEST_F(Deletion, RefusedByAnAgreementAlone) {
  store_.put("ACCORD", "A1", {"001"});
  desktop_.answer(Answer::Yes);
  press("Cmd_Supprimer");
  const auto boxes = desktop_.takeBoxes();
  ASSERT_PRED_FORMAT2(boxCount, boxes, 2U);
  EXPECT_EQ(boxes[1].text, "Des accords sont créés pour cet organisme. Suppression impossible.");
  EXPECT_EQ(boxes[1].icon, Icon::Exclamation);
  EXPECT_EQ(boxes[1].buttons, Buttons::Ok);
  EXPECT_EQ(boxes[1].title, "Message VALDRIS");
  EXPECT_EQ(store_.calls().size(), 1U);
  EXPECT_TRUE(store_.has("ORGPRISECHARGE", "001"));
  EXPECT_EQ(state(), kExisting);
}

TEST_F(Deletion, RefusedByARequest) {
  store_.put("DEMANDACC", "D1", {"001"});
  desktop_.answer(Answer::Yes);
  press("Cmd_Supprimer");
  const auto boxes = desktop_.takeBoxes();
  ASSERT_PRED_FORMAT2(boxCount, boxes, 2U);
  EXPECT_EQ(boxes[1].text,
            "Des demandes d'accords sont créées pour cet organisme. Suppression impossible.");
  EXPECT_EQ(boxes[1].icon, Icon::Exclamation);
  EXPECT_EQ(boxes[1].buttons, Buttons::Ok);
  EXPECT_EQ(boxes[1].title, "Message VALDRIS");
  EXPECT_TRUE(store_.calls(CallKind::DeleteRecord).empty());
  EXPECT_TRUE(store_.has("ORGPRISECHARGE", "001"));
  EXPECT_EQ(state(), kExisting);
}

TEST_F(Deletion, AgreementsOfOtherBodiesDoNotCount) {
  store_.put("ACCORD", "A1", {"002"});
  store_.put("DEMANDACC", "D1", {"003"});
  desktop_.answer(Answer::Yes);
  press("Cmd_Supprimer");
  EXPECT_FALSE(store_.has("ORGPRISECHARGE", "001"));
}

TEST_F(Deletion, WhoHasLostTheRightWhileAskedDeletesNothing) {
  desktop_.onBox = [this](const toolkit::headless::Entry&) { level_->value = 1; };
  desktop_.answer(Answer::Yes);
  press("Cmd_Supprimer");
  EXPECT_PRED_FORMAT2(boxCount, desktop_.boxes(), 1U);
  EXPECT_TRUE(store_.calls(CallKind::DeleteRecord).empty());
  EXPECT_TRUE(store_.has("ORGPRISECHARGE", "001"));
  EXPECT_EQ(state(), kExisting);
}

TEST_F(Deletion, WhoseRightsCannotBeReadAfterTheQuestionDeletesNothing) {
  desktop_.onBox = [this](const toolkit::headless::Entry&) { level_->fails = true; };
  desktop_.answer(Answer::Yes);
  EXPECT_THROW(press("Cmd_Supprimer"), std::runtime_error);
  EXPECT_TRUE(store_.has("ORGPRISECHARGE", "001"));
}

TEST_F(Deletion, ThatFailsIsTracedByItsName) {
  const testing_support::TraceFile trace;
  store_.fail(CallKind::DeleteRecord, "ORGPRISECHARGE", store::kBusy);
  desktop_.answer(Answer::Yes);
  EXPECT_THROW(press("Cmd_Supprimer"), store::StoreError);
  EXPECT_EQ(trace.read(), "Cmd_Supprimer_Click: 0x80040003\n");
}

TEST_F(Deletion, ADeletedBodyIsNotFoundAgain) {
  desktop_.answer(Answer::Yes);
  press("Cmd_Supprimer");
  desktop_.takeBoxes();
  lookUp("001");
  expectBox("Cet organisme de prise en charge n'existe pas.", Icon::Information);
}

// Leaving -----------------------------------------------------------------------------------------

class LeavingByCode : public CommandBar {
 protected:
  void change(Caller at = Caller::here()) {
    const auto trace = called("change", at);
    lookUp("001");
    user_->fill(box("Txt_RaisonOrgChg"), "Domus");
    store_.forgetCalls();
  }
};

TEST_F(LeavingByCode, WithNoCodeOnScreenAsksNothing) {
  press("Cmd_Sortir");
  EXPECT_TRUE(control_->W_Sortir());
  expectNoBox();
  EXPECT_TRUE(store_.calls().empty());
}

TEST_F(LeavingByCode, WithoutAChangeAsksNothing) {
  for (const char* body : {"001", "002", "003"}) {
    control_->setW_Sortir(false);
    lookUp(body);
    press("Cmd_Sortir");
    EXPECT_TRUE(control_->W_Sortir());
    expectNoBox();
  }
  expectNothingWritten();
}

TEST_F(LeavingByCode, WhatIsTypedAndTakenBackIsNoChange) {
  change();
  user_->fill(box("Txt_RaisonOrgChg"), "Domus Mutuelle");
  press("Cmd_Sortir");
  EXPECT_TRUE(control_->W_Sortir());
  expectNoBox();
}

TEST_F(LeavingByCode, AfterAChangeAsks) {
  change();
  desktop_.answer(Answer::Cancel);
  press("Cmd_Sortir");
  expectBox(kEnregistrer, Icon::Question, Buttons::YesNoCancel);
  EXPECT_EQ(desktop_.beeps(), 0);
}

TEST_F(LeavingByCode, CancelStays) {
  change();
  desktop_.answer(Answer::Cancel);
  press("Cmd_Sortir");
  EXPECT_FALSE(control_->W_Sortir());
  EXPECT_EQ(state(), kExisting);
  EXPECT_EQ(box("Txt_RaisonOrgChg").text(), "Domus");
  expectNothingWritten();
}

TEST_F(LeavingByCode, CancelTakesAnEarlierWishBack) {
  control_->setW_Sortir(true);
  change();
  desktop_.answer(Answer::Cancel);
  press("Cmd_Sortir");
  EXPECT_FALSE(control_->W_Sortir());
}

TEST_F(LeavingByCode, NoLeavesWithoutSaving) {
  change();
  desktop_.answer(Answer::No);
  press("Cmd_Sortir");
  EXPECT_TRUE(control_->W_Sortir());
  expectNothingWritten();
  EXPECT_EQ(attribute("001", attribut::RaisonOrgChg), "Domus Mutuelle");
}

TEST_F(LeavingByCode, YesSavesAndLeavesWithoutRefillingTheList) {
  change();
  desktop_.answer(Answer::Yes);
  press("Cmd_Sortir");
  EXPECT_TRUE(control_->W_Sortir());
  EXPECT_EQ(attribute("001", attribut::RaisonOrgChg), "Domus");
  EXPECT_EQ(store_.told().back(), "DBWrite ORGPRISECHARGE 001");
  EXPECT_TRUE(store_.calls(CallKind::ExecuteSentence).empty());
  EXPECT_EQ(code().text(), "");
}

TEST_F(LeavingByCode, YesRunsTheChecks) {
  lookUp("001");
  user_->fill(box("Txt_RaisonOrgChg"), "");
  desktop_.answer(Answer::Yes);
  press("Cmd_Sortir");
  const auto boxes = desktop_.takeBoxes();
  ASSERT_PRED_FORMAT2(boxCount, boxes, 2U);
  EXPECT_EQ(boxes[1].text, "La raison sociale de l'organisme de prise en charge est obligatoire.");
  EXPECT_FALSE(control_->W_Sortir());
  EXPECT_PRED_FORMAT1(hasFocus, box("Txt_RaisonOrgChg"));
  expectNothingWritten();
  user_->type("Retour");
  press("Cmd_OK");
  EXPECT_EQ(attribute("001", attribut::RaisonOrgChg), "Retour");
}

TEST_F(LeavingByCode, TheCheckOfTheWritesBeforeTheQuestionIsOff) {
  lookUp("001");
  user_->fill(box("Txt_RaisonOrgChg"), "");
  desktop_.answer(Answer::Cancel);
  press("Cmd_Sortir");
  expectBox(kEnregistrer, Icon::Question, Buttons::YesNoCancel);
}

TEST_F(LeavingByCode, WithTheCodeErasedStillAsksForTheBodyInHand) {
  change();
  user_->fill(code(), "");
  desktop_.answer(Answer::Yes);
  press("Cmd_Sortir");
  EXPECT_TRUE(control_->W_Sortir());
  EXPECT_EQ(attribute("001", attribut::RaisonOrgChg), "Domus");
}

TEST_F(LeavingByCode, TrailingEmptyAttributesAreNoChange) {
  store::DynamicArray record = store_.record("ORGPRISECHARGE", "002");
  record.set(attribut::ParamTriSelect, "");
  store_.put("ORGPRISECHARGE", "002", record);
  lookUp("002");
  press("Cmd_Sortir");
  EXPECT_TRUE(control_->W_Sortir());
  expectNoBox();
}

// The records end before the parameters by which the slip is sorted.
TEST_F(LeavingByCode, WhatIsFilledPastTheEndAndEmptiedAgainIsNoChange) {
  const std::string before = store_.record("ORGPRISECHARGE", "001").text();
  lookUp("001");
  user_->click(tabs(), kBordereau);
  ASSERT_TRUE(user_->dblClick(list("Lst_ParamTriPos"), 0));
  desktop_.answer(Answer::Cancel);
  press("Cmd_Sortir");
  expectBox(kEnregistrer, Icon::Question, Buttons::YesNoCancel);
  ASSERT_TRUE(user_->dblClick(list("Lst_ParamTriSelect"), 0));
  press("Cmd_Sortir");
  expectNoBox();
  EXPECT_TRUE(control_->W_Sortir());
  press("Cmd_OK");
  EXPECT_PRED_FORMAT2(sameBody, store_.record("ORGPRISECHARGE", "001").text(), before);
}

TEST_F(LeavingByCode, TrailingMarksAreNoChange) {
  store_.set("ORGPRISECHARGE", "001", 61, std::string("1") + store::kValueMark);
  lookUp("001");
  user_->click(tabs(), kBordereau);
  user_->dblClick(list("Lst_ParamSelecOrgChg"), 1);  // the empty parameter
  EXPECT_EQ(linesOf(list("Lst_ParamSelecOrgChg")).size(), 1U);
  press("Cmd_Sortir");
  expectNoBox();
  EXPECT_TRUE(control_->W_Sortir());
}

TEST_F(LeavingByCode, WhoHasLostTheRightWhileAskedSavesNothingAndStays) {
  change();
  desktop_.onBox = [this](const toolkit::headless::Entry&) { level_->value = 1; };
  desktop_.answer(Answer::Yes);
  press("Cmd_Sortir");
  expectBox(kEnregistrer, Icon::Question, Buttons::YesNoCancel);
  expectNothingWritten();
  EXPECT_FALSE(control_->W_Sortir());
  EXPECT_EQ(box("Txt_RaisonOrgChg").text(), "Domus");
}

TEST_F(LeavingByCode, TellsItsHostOnce) {
  int told = 0;
  control_->onSortirChanged = [&] { ++told; };
  press("Cmd_Sortir");
  press("Cmd_Sortir");
  EXPECT_EQ(told, 1);
  control_->setW_Sortir(true);
  EXPECT_EQ(told, 1);
  control_->setW_Sortir(false);
  EXPECT_EQ(told, 2);
}

TEST_F(LeavingByCode, ItsHostCanReadTheWishWhileBeingTold) {
  bool read = false;
  control_->onSortirChanged = [&] { read = control_->W_Sortir(); };
  press("Cmd_Sortir");
  EXPECT_TRUE(read);
}

TEST_F(LeavingByCode, AFailingSaveEndsWithTheErrorAndStays) {
  change();
  desktop_.answer(Answer::Yes);
  store_.fail(CallKind::DBWrite);
  EXPECT_THROW(press("Cmd_Sortir"), store::StoreError);
  EXPECT_FALSE(control_->W_Sortir());
  EXPECT_EQ(box("Txt_RaisonOrgChg").text(), "Domus");
  EXPECT_EQ(state(), kExisting);
  store_.stopFailing();
  press("Cmd_OK");
  EXPECT_EQ(attribute("001", attribut::RaisonOrgChg), "Domus");
}

}  // namespace
}  // namespace behaviour
