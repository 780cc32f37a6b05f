#include "tests/behaviour/ControlTest.h"

namespace behaviour {
namespace {

class Save : public ControlTest {
 protected:
  Save() {
    fillThreeBodies(store_);
    start();
  }
  void change(Caller at = Caller::here()) {
    const auto trace = called("change", at);
    lookUp("001");
    user_->fill(box("Txt_RaisonOrgChg"), "Domus");
    store_.forgetCalls();
  }
};

TEST_F(Save, WritesTheChangeOnce) {
  change();
  press("Cmd_OK");
  EXPECT_EQ(attribute("001", attribut::RaisonOrgChg), "Domus");
  EXPECT_EQ(store_.calls(CallKind::DBWrite).size(), 1U);
  EXPECT_EQ(store_.calls(CallKind::DBWrite)[0].told(), "DBWrite ORGPRISECHARGE 001");
  expectNoBox();
}

TEST_F(Save, EndsEmptyWithTheListRefilledAndTheFocusOnTheCode) {
  lookUp("001");
  store_.put("ORGPRISECHARGE", "009", {"AUTRE", "Entré ailleurs"});
  press("Cmd_OK");
  EXPECT_EQ(state(), kEmpty);
  EXPECT_EQ(code().text(), "");
  EXPECT_EQ(sigles().text(), "");
  EXPECT_EQ(sigles().listCount(), 4);
  EXPECT_PRED_FORMAT1(hasFocus, code());
}

TEST_F(Save, ClearsTheScreenBeforeTheListIsReadAgain) {
  change();
  // An only body is loaded when nothing is in hand, and would not survive being cleared.
  store_.answer("SSELECT ORGPRISECHARGE PAR 1", {{"002", "CRAM"}});
  press("Cmd_OK");
  EXPECT_EQ(state(), kExisting);
  EXPECT_EQ(code().text(), "002");
  EXPECT_EQ(box("Txt_RaisonOrgChg").text(), "Caisse régionale");
}

TEST_F(Save, AFailedOneLeavesTheRecordInHandAsItWas) {
  change();
  store_.fail(CallKind::DBWrite);
  press("Cmd_OK");
  EXPECT_EQ(box("Txt_RaisonOrgChg").text(), "Domus");
  control_->Afficher_Ong1();
  EXPECT_EQ(box("Txt_RaisonOrgChg").text(), "Domus Mutuelle");
}

TEST_F(Save, AttributesThatNoPageShowsSurviveUntouched) {
  const std::string value(1, store::kValueMark);
  store::DynamicArray record = store_.record("ORGPRISECHARGE", "001");
  for (int i = 1; i <= attribut::Dernier; ++i) {
    if (keptFree(i)) record.set(i, "libre" + std::to_string(i));
  }
  const int unshown[] = {attribut::DelaiPaiement, attribut::Dernier + 1, attribut::Dernier + 8};
  for (const int i : unshown) record.set(i, "a" + value + std::to_string(i));
  store_.put("ORGPRISECHARGE", "001", record);
  change();
  press("Cmd_OK");
  record.set(attribut::RaisonOrgChg, "Domus");
  EXPECT_PRED_FORMAT2(sameBody, store_.record("ORGPRISECHARGE", "001").text(), record.text());
}

TEST_F(Save, ASaveWithoutAnyChangeKeepsTheRecord) {
  const std::string before = store_.record("ORGPRISECHARGE", "001").text();
  lookUp("001");
  press("Cmd_OK");
  EXPECT_PRED_FORMAT2(sameBody, store_.record("ORGPRISECHARGE", "001").text(), before);
}

TEST_F(Save, WhoHasLostTheRightMeanwhileSavesNothing) {
  lookUp("001");
  user_->fill(box("Txt_RaisonOrgChg"), "Autre");
  store_.forgetCalls();
  level_->lostAfter = 1;
  press("Cmd_OK");
  expectNothingWritten();
  expectNoBox();
  EXPECT_EQ(box("Txt_RaisonOrgChg").text(), "Autre");
  EXPECT_EQ(state(), kExisting);
}

TEST_F(Save, TheHostsWriteIsDeniedToWhoHasLostTheRightMeanwhile) {
  lookUp("001");
  user_->fill(box("Txt_RaisonOrgChg"), "Autre");
  store_.forgetCalls();
  level_->lostAfter = 1;
  EXPECT_THROW(control_->Ecrire_Donnees(), control::AccessDenied);
  expectNothingWritten();
  EXPECT_EQ(state(), kExisting);
}

TEST_F(Save, TextsAreStoredAsTyped) {
  lookUp("001");
  user_->fill(box("Txt_RaisonOrgChg"), "  Domus  ");
  press("Cmd_OK");
  EXPECT_EQ(attribute("001", attribut::RaisonOrgChg), "  Domus  ");
}

TEST_F(Save, TheHourglassShowsAndTheControlIsDisabledMeanwhile) {
  change();
  bool disabled = false;
  desktop_.onEvents = [&] {
    disabled = !control_->surface().enabled() && desktop_.pointer() == toolkit::Pointer::Hourglass;
  };
  press("Cmd_OK");
  EXPECT_TRUE(disabled);
  EXPECT_TRUE(control_->surface().enabled());
  EXPECT_EQ(desktop_.pointer(), toolkit::Pointer::Normal);
}

TEST_F(Save, CannotBeEnteredAgainWhileItRuns) {
  change();
  bool again = true;
  desktop_.onEvents = [&] { again = press("Cmd_OK") || user_->alt('O'); };
  press("Cmd_OK");
  EXPECT_FALSE(again);
  EXPECT_EQ(store_.calls(CallKind::DBWrite).size(), 1U);
}

TEST_F(Save, PendingEventsRunAfterARefusalToo) {
  press("Cmd_Ajouter");
  int events = 0;
  desktop_.onEvents = [&] { ++events; };
  press("Cmd_OK");
  EXPECT_EQ(events, 1);
  EXPECT_EQ(desktop_.pointer(), toolkit::Pointer::Normal);
  EXPECT_TRUE(control_->surface().enabled());
}

TEST_F(Save, AFocusAskedForWhileDisabledIsGivenAtTheEnd) {
  press("Cmd_Ajouter");
  user_->go(box("Txt_RaisonOrgChg"));
  bool early = true;
  desktop_.onEvents = [&] { early = box("Txt_SigleOrgChg").hasFocus(); };
  press("Cmd_OK");
  EXPECT_FALSE(early);
  EXPECT_PRED_FORMAT1(hasFocus, box("Txt_SigleOrgChg"));
}

TEST_F(Save, ARefusedPageKeepsTheFocusOnItsField) {
  lookUp("001");
  user_->fill(box("Txt_RaisonOrgChg"), "");
  tabs().setTab(2);
  press("Cmd_OK");
  expectBox("La raison sociale de l'organisme de prise en charge est obligatoire.",
            Icon::Exclamation);
  EXPECT_EQ(tabs().tab(), 0);
  EXPECT_PRED_FORMAT1(hasFocus, box("Txt_RaisonOrgChg"));
  EXPECT_EQ(state(), kExisting);
  EXPECT_EQ(code().text(), "001");
  expectNothingWritten();
}

TEST_F(Save, CanBePressedAgainAfterARefusal) {
  lookUp("001");
  user_->fill(box("Txt_RaisonOrgChg"), "");
  press("Cmd_OK");
  user_->type("Retour");
  press("Cmd_OK");
  EXPECT_EQ(attribute("001", attribut::RaisonOrgChg), "Retour");
}

TEST_F(Save, RefillsTheListAfterAnAcceptedSaveOnly) {
  press("Cmd_Ajouter");
  press("Cmd_OK");
  EXPECT_TRUE(store_.calls(CallKind::ExecuteSentence).empty());
}

TEST_F(Save, ResetsTheCaptionOfTheScaleButton) {
  change();
  button("Cmd_NouveauBareme").setCaption("Annuler barème");
  press("Cmd_OK");
  EXPECT_EQ(toolkit::withoutMnemonic(button("Cmd_NouveauBareme").caption()), "Nouveau barème");
}

TEST_F(Save, ARefusalLeavesTheCaptionOfTheScaleButton) {
  press("Cmd_Ajouter");
  button("Cmd_NouveauBareme").setCaption("Annuler barème");
  press("Cmd_OK");
  EXPECT_EQ(button("Cmd_NouveauBareme").caption(), "Annuler barème");
}

TEST_F(Save, TheHostsWriteRunsNoChecks) {
  lookUp("001");
  user_->fill(box("Txt_RaisonOrgChg"), "");
  control_->Ecrire_Donnees();
  expectNoBox();
  EXPECT_EQ(attribute("001", attribut::RaisonOrgChg), "");
  EXPECT_EQ(state(), kEmpty);
}

TEST_F(Save, AfterItTheHostsWritesRunNoChecksAgain) {
  change();
  press("Cmd_OK");
  lookUp("001");
  user_->fill(box("Txt_RaisonOrgChg"), "");
  control_->Ecrire_Ong1();
  expectNoBox();
}

TEST_F(Save, WithoutAccountingEffectTheDebitAndCreditAccountsAreEmptied) {
  store_.set("COMPTEUR", "999", store::compteur::InterfaceComptable, "X");
  store_.set("ORGPRISECHARGE", "001", attribut::DebitOrgChg, "4110000000");
  store_.set("ORGPRISECHARGE", "001", attribut::CreditOrgChg, "7060000000");
  store_.set("ORGPRISECHARGE", "001", attribut::CpteProdAide, "7400000000");
  control_->Init();
  lookUp("001");
  store_.set("ACTIVITES", "010P01", store::activites::TypeActivite, "M");
  lookUp("002");
  lookUp("001");
  child<CheckBox>("Cac_IncidCompta").setValue(true);
  press("Cmd_OK");
  EXPECT_EQ(attribute("001", attribut::DebitOrgChg), "");
  EXPECT_EQ(attribute("001", attribut::CreditOrgChg), "");
  EXPECT_EQ(attribute("001", attribut::CpteProdAide), "");
}

TEST_F(Save, AFailedOneDoesNotEmptyTheAccountsOfTheRecordInHand) {
  store_.set("COMPTEUR", "999", store::compteur::InterfaceComptable, "X");
  store_.set("ACTIVITES", "010P01", store::activites::TypeActivite, "M");
  store_.set("ORGPRISECHARGE", "001", attribut::DebitOrgChg, "4110000000");
  store_.set("ORGPRISECHARGE", "001", attribut::CreditOrgChg, "7060000000");
  control_->Init();
  lookUp("001");
  child<CheckBox>("Cac_IncidCompta").setValue(true);
  store_.fail(CallKind::DBWrite);
  press("Cmd_OK");
  store_.stopFailing();
  control_->Afficher_Ong2();
  EXPECT_EQ(box("Txt_DebitOrgChg").text(), "4110000000");
  press("Cmd_OK");
  EXPECT_EQ(state(), kEmpty);
  EXPECT_EQ(attribute("001", attribut::DebitOrgChg), "4110000000");
  EXPECT_EQ(attribute("001", attribut::CreditOrgChg), "7060000000");
}

TEST_F(Save, WithoutTheAccountingFlagTheAccountsSurvive) {
  store_.set("ORGPRISECHARGE", "001", attribut::DebitOrgChg, "4110000000");
  lookUp("001");
  child<CheckBox>("Cac_IncidCompta").setValue(true);
  press("Cmd_OK");
  EXPECT_EQ(attribute("001", attribut::DebitOrgChg), "4110000000");
}

}  // namespace
}  // namespace behaviour
