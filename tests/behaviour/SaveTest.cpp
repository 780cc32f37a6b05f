#include "tests/behaviour/ControlTest.h"

namespace behaviour {
namespace {

class Save : public ControlTest {
 protected:
  Save() {
    fillThreeBodies(store_);
    start();
  }
  void change() {
    lookUp("001");
    user_->fill(box("Txt_RaisonOrgChg"), "Domus");
    store_.forgetCalls();
  }
};

TEST_F(Save, WritesTheChangeOnce) {
  change();
  press("Cmd_OK");
  EXPECT_EQ(attribute("001", 2), "Domus");
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
  EXPECT_TRUE(code().hasFocus());
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
  for (int i = 13; i <= 14; ++i) record.set(i, "libre" + std::to_string(i));
  for (const int i : {60, 63, 70}) record.set(i, "a" + value + std::to_string(i));
  store_.put("ORGPRISECHARGE", "001", record);
  change();
  press("Cmd_OK");
  record.set(2, "Domus");
  EXPECT_EQ(store_.record("ORGPRISECHARGE", "001").text(), record.text());
}

TEST_F(Save, ASaveWithoutAnyChangeKeepsTheRecord) {
  const std::string before = store_.record("ORGPRISECHARGE", "001").text();
  lookUp("001");
  press("Cmd_OK");
  EXPECT_EQ(store_.record("ORGPRISECHARGE", "001").text(), before);
}

TEST_F(Save, TextsAreStoredAsTyped) {
  lookUp("001");
  user_->fill(box("Txt_RaisonOrgChg"), "  Domus  ");
  press("Cmd_OK");
  EXPECT_EQ(attribute("001", 2), "  Domus  ");
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
  EXPECT_TRUE(box("Txt_SigleOrgChg").hasFocus());
}

TEST_F(Save, ARefusedPageKeepsTheFocusOnItsField) {
  lookUp("001");
  user_->fill(box("Txt_RaisonOrgChg"), "");
  tabs().setTab(2);
  press("Cmd_OK");
  expectBox("La raison sociale de l'organisme de prise en charge est obligatoire.",
            Icon::Exclamation);
  EXPECT_EQ(tabs().tab(), 0);
  EXPECT_TRUE(box("Txt_RaisonOrgChg").hasFocus());
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
  EXPECT_EQ(attribute("001", 2), "Retour");
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
  EXPECT_EQ(attribute("001", 2), "");
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
  store_.set("COMPTEUR", "999", 15, "X");
  store_.set("ORGPRISECHARGE", "001", 22, "4110000000");
  store_.set("ORGPRISECHARGE", "001", 23, "7060000000");
  store_.set("ORGPRISECHARGE", "001", 56, "7400000000");
  control_->Init();
  lookUp("001");
  store_.set("ACTIVITES", "010P01", 12, "M");
  lookUp("002");
  lookUp("001");
  child<CheckBox>("Cac_IncidCompta").setValue(true);
  press("Cmd_OK");
  EXPECT_EQ(attribute("001", 22), "");
  EXPECT_EQ(attribute("001", 23), "");
  EXPECT_EQ(attribute("001", 56), "");
}

TEST_F(Save, AFailedOneDoesNotEmptyTheAccountsOfTheRecordInHand) {
  store_.set("COMPTEUR", "999", 15, "X");
  store_.set("ACTIVITES", "010P01", 12, "M");
  store_.set("ORGPRISECHARGE", "001", 22, "4110000000");
  store_.set("ORGPRISECHARGE", "001", 23, "7060000000");
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
  EXPECT_EQ(attribute("001", 22), "4110000000");
  EXPECT_EQ(attribute("001", 23), "7060000000");
}

TEST_F(Save, WithoutTheAccountingFlagTheAccountsSurvive) {
  store_.set("ORGPRISECHARGE", "001", 22, "4110000000");
  lookUp("001");
  child<CheckBox>("Cac_IncidCompta").setValue(true);
  press("Cmd_OK");
  EXPECT_EQ(attribute("001", 22), "4110000000");
}

class ContactPage : public Save {};

TEST_F(ContactPage, ShowsEveryAttribute) {
  lookUp("001");
  EXPECT_EQ(box("Txt_SigleOrgChg").text(), "DOMUS");
  EXPECT_EQ(box("Txt_RaisonOrgChg").text(), "Domus Mutuelle");
  EXPECT_EQ(box("Txt_Complement").text(), "Bât. A");
  EXPECT_EQ(box("Txt_NumVoie").text(), "12");
  EXPECT_EQ(child<ComboBox>("Cbo_NatureVoie").text(), "Rue");
  EXPECT_EQ(box("Txt_NomVoie").text(), "des Lilas");
  EXPECT_EQ(box("Txt_Localite").text(), "Le Bourg");
  EXPECT_EQ(box("Txt_CodePostal").text(), "63000");
  EXPECT_EQ(box("Txt_Ville").text(), "Clermont");
  EXPECT_EQ(box("Txt_Telephone").text(), "0400000001");
  EXPECT_EQ(box("Txt_Fax").text(), "0400000002");
  EXPECT_EQ(box("Txt_Email").text(), "contact@domus.example");
  EXPECT_EQ(box("Txt_InterlocDossOrgChg").text(), "Mme Dossier");
  EXPECT_EQ(box("Txt_InterlocFactOrgChg").text(), "M. Facture");
}

TEST_F(ContactPage, WritesEveryField) {
  beginCreation();
  user_->fill(box("Txt_Complement"), "a");
  user_->fill(box("Txt_NumVoie"), "b");
  user_->choose(child<ComboBox>("Cbo_NatureVoie"), 0);
  user_->fill(box("Txt_NomVoie"), "d");
  user_->fill(box("Txt_Localite"), "e");
  user_->fill(box("Txt_CodePostal"), "f");
  user_->fill(box("Txt_Ville"), "g");
  user_->fill(box("Txt_Telephone"), "h");
  user_->fill(box("Txt_Fax"), "i");
  user_->fill(box("Txt_Email"), "j");
  user_->fill(box("Txt_InterlocDossOrgChg"), "k");
  user_->fill(box("Txt_InterlocFactOrgChg"), "l");
  press("Cmd_OK");
  const std::vector<std::string> expected = {
      "NEUF", "Organisme neuf", "a", "b", "AV", "d", "e", "f", "g", "h", "i", "j", "", "", "k",
      "l"};
  for (int i = 1; i <= 16; ++i) {
    EXPECT_EQ(attribute("004", i), expected[static_cast<std::size_t>(i - 1)]) << i;
  }
}

TEST_F(ContactPage, WithBothFieldsEmptyOnlyTheAcronymIsAskedFor) {
  press("Cmd_Ajouter");
  user_->go(box("Txt_Ville"));
  press("Cmd_OK");
  expectBox("Le sigle de l'organisme de prise en charge est obligatoire.", Icon::Exclamation);
  EXPECT_EQ(tabs().tab(), 0);
  EXPECT_TRUE(box("Txt_SigleOrgChg").hasFocus());
}

TEST_F(ContactPage, BlanksAreNotEmpty) {
  beginCreation(" ", " ");
  press("Cmd_OK");
  expectNoBox();
  EXPECT_EQ(attribute("004", 1), " ");
  EXPECT_EQ(attribute("004", 2), " ");
}

TEST_F(ContactPage, ARefusedPageWritesNothingIntoTheRecord) {
  lookUp("001");
  user_->fill(box("Txt_RaisonOrgChg"), "");
  user_->fill(box("Txt_Ville"), "Lyon");
  user_->fill(box("Txt_InterlocDossOrgChg"), "Autre");
  press("Cmd_OK");
  control_->Afficher_Ong1();
  EXPECT_EQ(box("Txt_RaisonOrgChg").text(), "Domus Mutuelle");
  EXPECT_EQ(box("Txt_Ville").text(), "Clermont");
  EXPECT_EQ(box("Txt_InterlocDossOrgChg").text(), "Mme Dossier");
}

TEST_F(ContactPage, AnExistingBodysAcronymAppearsWhenItIsMissing) {
  store_.set("ORGPRISECHARGE", "002", 1, "");
  lookUp("002");
  EXPECT_FALSE(box("Txt_SigleOrgChg").visible());
  press("Cmd_OK");
  expectBox("Le sigle de l'organisme de prise en charge est obligatoire.", Icon::Exclamation);
  EXPECT_TRUE(box("Txt_SigleOrgChg").usable());
  EXPECT_FALSE(sigles().visible());
  EXPECT_TRUE(box("Txt_SigleOrgChg").hasFocus());
  user_->type("cram");
  press("Cmd_OK");
  EXPECT_EQ(attribute("002", 1), "CRAM");
  EXPECT_EQ(state(), kEmpty);
}

TEST_F(ContactPage, TheCheckTellsItsResult) {
  lookUp("001");
  EXPECT_TRUE(control_->Verif_Ong1());
  user_->fill(box("Txt_RaisonOrgChg"), "");
  EXPECT_FALSE(control_->Verif_Ong1());
  expectBox("La raison sociale de l'organisme de prise en charge est obligatoire.",
            Icon::Exclamation);
  user_->type("x");
  EXPECT_TRUE(control_->Verif_Ong1());
}

TEST_F(ContactPage, AKindOfStreetThatIsInNoRecordIsKept) {
  store_.set("ORGPRISECHARGE", "001", 5, "ZZ");
  lookUp("001");
  EXPECT_EQ(child<ComboBox>("Cbo_NatureVoie").text(), "ZZ");
  press("Cmd_OK");
  EXPECT_EQ(attribute("001", 5), "ZZ");
  lookUp("001");
  user_->fill(child<ComboBox>("Cbo_NatureVoie"), "Sente");
  press("Cmd_OK");
  EXPECT_EQ(attribute("001", 5), "Sente");
}

TEST_F(ContactPage, TwoKindsOfStreetUnderOneLabelAreNotMixedUp) {
  store_.put("NATUREVOIE", "RU", {"Rue"});
  store_.set("ORGPRISECHARGE", "001", 5, "RU");
  control_->Init();
  lookUp("001");
  press("Cmd_OK");
  EXPECT_EQ(attribute("001", 5), "RU");
}

TEST_F(ContactPage, AStoreWithoutKindsOfStreetTakesThemAsText) {
  store_.fail(CallKind::ExecuteSentence, "NATUREVOIE", store::kUnknownFile);
  EXPECT_NO_THROW(control_->Init());
  EXPECT_EQ(child<ComboBox>("Cbo_NatureVoie").listCount(), 0);
  EXPECT_EQ(sigles().listCount(), 3);
  lookUp("001");
  EXPECT_EQ(child<ComboBox>("Cbo_NatureVoie").text(), "R");
  press("Cmd_OK");
  EXPECT_EQ(attribute("001", 5), "R");
  lookUp("001");
  user_->fill(child<ComboBox>("Cbo_NatureVoie"), "Sente");
  press("Cmd_OK");
  EXPECT_EQ(attribute("001", 5), "Sente");
}

TEST_F(ContactPage, AnyOtherFailureOfTheKindsOfStreetEndsInit) {
  for (const unsigned code : {store::kFailed, store::kBusy, store::kBadSentence}) {
    store_.fail(CallKind::ExecuteSentence, "NATUREVOIE", code);
    try {
      control_->Init();
      FAIL() << code;
    } catch (const store::StoreError& error) {
      EXPECT_EQ(error.code(), code);
    }
    store_.stopFailing();
  }
}

class MultivaluedContacts : public ContactPage {
 protected:
  MultivaluedContacts() {
    record_ = store_.record("ORGPRISECHARGE", "001");
    for (const int i : {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 15, 16}) {
      record_.set(i, 1, "R");
      record_.set(i, 2, "deux" + std::to_string(i));
    }
    store_.put("ORGPRISECHARGE", "001", record_);
    lookUp("001");
  }
  void expectStored() { EXPECT_EQ(store_.record("ORGPRISECHARGE", "001").text(), record_.text()); }

  store::DynamicArray record_;
};

TEST_F(MultivaluedContacts, SurviveASave) {
  press("Cmd_OK");
  EXPECT_EQ(store_.calls(CallKind::DBWrite).size(), 1U);
  expectStored();
}

TEST_F(MultivaluedContacts, AreNoChangeOnLeaving) {
  press("Cmd_Sortir");
  expectNoBox();
  EXPECT_TRUE(control_->W_Sortir());
}

TEST_F(MultivaluedContacts, ChangeOnlyWhereTheUserChangesThem) {
  user_->fill(box("Txt_Complement"), "Bât. B");
  user_->fill(box("Txt_InterlocDossOrgChg"), "Mme Dossier");
  press("Cmd_OK");
  record_.set(3, "Bât. B");
  record_.set(15, "Mme Dossier");
  expectStored();
}

TEST_F(MultivaluedContacts, SurviveATextThatIsTakenBack) {
  const std::string shown = box("Txt_Complement").text();
  user_->fill(box("Txt_Complement"), "Bât. B");
  user_->fill(box("Txt_Complement"), shown);
  press("Cmd_OK");
  expectStored();
}

TEST_F(MultivaluedContacts, AreNotWrittenIntoAnotherBody) {
  const std::string shown = box("Txt_Complement").text();
  lookUp("002");
  user_->fill(box("Txt_Complement"), shown);
  press("Cmd_OK");
  EXPECT_EQ(attribute("002", 3), shown);
  beginCreation();
  user_->fill(box("Txt_Complement"), shown);
  press("Cmd_OK");
  EXPECT_EQ(attribute("004", 3), shown);
  expectStored();
}

TEST_F(ContactPage, ARefusalByTheHostsCheckDoesNotKeepTheHostFromWriting) {
  lookUp("001");
  user_->fill(box("Txt_RaisonOrgChg"), "");
  EXPECT_FALSE(control_->Verif_Ong1());
  control_->Ecrire_Ong1();
  control_->Afficher_Ong1();
  EXPECT_EQ(box("Txt_RaisonOrgChg").text(), "");
}

TEST_F(ContactPage, ARefusalByTheHostsCheckDoesNotKeepTheUserFromSaving) {
  lookUp("001");
  user_->fill(box("Txt_RaisonOrgChg"), "");
  EXPECT_FALSE(control_->Verif_Ong1());
  user_->type("Domus");
  press("Cmd_OK");
  EXPECT_EQ(attribute("001", 2), "Domus");
  EXPECT_EQ(state(), kEmpty);
}

TEST_F(ContactPage, ARefusalByTheHostsCheckDoesNotKeepTheUserFromLeaving) {
  lookUp("001");
  user_->fill(box("Txt_RaisonOrgChg"), "");
  EXPECT_FALSE(control_->Verif_Ong1());
  desktop_.takeBoxes();
  desktop_.answer(Answer::No);
  press("Cmd_Sortir");
  expectBox("Voulez-vous enregistrer les modifications apportées à cet article ?", Icon::Question,
            toolkit::Buttons::YesNoCancel);
  EXPECT_TRUE(control_->W_Sortir());
}

TEST_F(ContactPage, AMissingRecordReadsAsEmptyEverywhere) {
  const store::DynamicArray none = store_.record("ORGPRISECHARGE", "777");
  for (int i = 1; i <= 62; ++i) {
    EXPECT_EQ(none.get(i), "");
    EXPECT_EQ(none.DCount(i), 0);
  }
}

}  // namespace
}  // namespace behaviour
