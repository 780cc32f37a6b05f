#include "tests/behaviour/ContactPage.h"

namespace behaviour {
namespace {

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
  for (int i = attribut::SigleOrgChg; i <= attribut::InterlocFactOrgChg; ++i) {
    EXPECT_EQ(attribute("004", i), expected[static_cast<std::size_t>(i - 1)]) << bodyAttribute(i);
  }
}

TEST_F(ContactPage, WithBothFieldsEmptyOnlyTheAcronymIsAskedFor) {
  press("Cmd_Ajouter");
  user_->go(box("Txt_Ville"));
  press("Cmd_OK");
  expectBox("Le sigle de l'organisme de prise en charge est obligatoire.", Icon::Exclamation);
  EXPECT_EQ(tabs().tab(), 0);
  EXPECT_PRED_FORMAT1(hasFocus, box("Txt_SigleOrgChg"));
}

TEST_F(ContactPage, BlanksAreNotEmpty) {
  beginCreation(" ", " ");
  press("Cmd_OK");
  expectNoBox();
  EXPECT_EQ(attribute("004", attribut::SigleOrgChg), " ");
  EXPECT_EQ(attribute("004", attribut::RaisonOrgChg), " ");
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
  store_.set("ORGPRISECHARGE", "002", attribut::SigleOrgChg, "");
  lookUp("002");
  EXPECT_FALSE(box("Txt_SigleOrgChg").visible());
  press("Cmd_OK");
  expectBox("Le sigle de l'organisme de prise en charge est obligatoire.", Icon::Exclamation);
  EXPECT_TRUE(box("Txt_SigleOrgChg").usable());
  EXPECT_FALSE(sigles().visible());
  EXPECT_PRED_FORMAT1(hasFocus, box("Txt_SigleOrgChg"));
  user_->type("cram");
  press("Cmd_OK");
  EXPECT_EQ(attribute("002", attribut::SigleOrgChg), "CRAM");
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
  store_.set("ORGPRISECHARGE", "001", attribut::AdrNatureVoie, "ZZ");
  lookUp("001");
  EXPECT_EQ(child<ComboBox>("Cbo_NatureVoie").text(), "ZZ");
  press("Cmd_OK");
  EXPECT_EQ(attribute("001", attribut::AdrNatureVoie), "ZZ");
  lookUp("001");
  user_->fill(child<ComboBox>("Cbo_NatureVoie"), "Sente");
  press("Cmd_OK");
  EXPECT_EQ(attribute("001", attribut::AdrNatureVoie), "Sente");
}

TEST_F(ContactPage, TwoKindsOfStreetUnderOneLabelAreNotMixedUp) {
  store_.put("NATUREVOIE", "RU", {"Rue"});
  store_.set("ORGPRISECHARGE", "001", attribut::AdrNatureVoie, "RU");
  control_->Init();
  lookUp("001");
  press("Cmd_OK");
  EXPECT_EQ(attribute("001", attribut::AdrNatureVoie), "RU");
}

TEST_F(ContactPage, OfTwoKindsOfStreetUnderOneLabelTheChosenLineIsStored) {
  store_.put("NATUREVOIE", "RU", {"Rue"});
  control_->Init();
  ComboBox& kinds = child<ComboBox>("Cbo_NatureVoie");
  ASSERT_PRED_FORMAT2(same, linesOf(kinds), (Lines{"Avenue", "Rue", "Rue"}));
  lookUp("001");
  EXPECT_EQ(kinds.listIndex(), 1);
  user_->choose(kinds, 2);
  press("Cmd_OK");
  EXPECT_EQ(attribute("001", attribut::AdrNatureVoie), "RU");
  lookUp("001");
  EXPECT_EQ(kinds.listIndex(), 2);
  user_->fill(kinds, "Rue");
  press("Cmd_OK");
  EXPECT_EQ(attribute("001", attribut::AdrNatureVoie), "RU")
      << "typed again, it is the kind that was there";
  lookUp("001");
  user_->choose(kinds, 1);
  press("Cmd_OK");
  EXPECT_EQ(attribute("001", attribut::AdrNatureVoie), "R");
  lookUp("001");
  user_->fill(kinds, "Avenue");
  press("Cmd_OK");
  EXPECT_EQ(attribute("001", attribut::AdrNatureVoie), "AV");
}

TEST_F(ContactPage, AnErasedKindOfStreetIsStoredEmpty) {
  store_.put("NATUREVOIE", "A", {""});
  control_->Init();
  lookUp("001");
  user_->fill(child<ComboBox>("Cbo_NatureVoie"), "");
  press("Cmd_OK");
  EXPECT_EQ(attribute("001", attribut::AdrNatureVoie), "");
  store_.set("ORGPRISECHARGE", "001", attribut::AdrNatureVoie, "A");
  lookUp("001");
  press("Cmd_OK");
  EXPECT_EQ(attribute("001", attribut::AdrNatureVoie), "A");
  lookUp("001");
  user_->fill(child<ComboBox>("Cbo_NatureVoie"), "x");
  user_->type("\b");
  press("Cmd_OK");
  EXPECT_EQ(attribute("001", attribut::AdrNatureVoie), "");
}

TEST_F(ContactPage, AStoreWithoutKindsOfStreetTakesThemAsText) {
  store_.fail(CallKind::ExecuteSentence, "NATUREVOIE", store::kUnknownFile);
  EXPECT_NO_THROW(control_->Init());
  EXPECT_EQ(child<ComboBox>("Cbo_NatureVoie").listCount(), 0);
  EXPECT_EQ(sigles().listCount(), 3);
  lookUp("001");
  EXPECT_EQ(child<ComboBox>("Cbo_NatureVoie").text(), "R");
  press("Cmd_OK");
  EXPECT_EQ(attribute("001", attribut::AdrNatureVoie), "R");
  lookUp("001");
  user_->fill(child<ComboBox>("Cbo_NatureVoie"), "Sente");
  press("Cmd_OK");
  EXPECT_EQ(attribute("001", attribut::AdrNatureVoie), "Sente");
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
  record_.set(attribut::AdrComplement, "Bât. B");
  record_.set(attribut::InterlocDossOrgChg, "Mme Dossier");
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
  EXPECT_EQ(attribute("002", attribut::AdrComplement), shown);
  beginCreation();
  user_->fill(box("Txt_Complement"), shown);
  press("Cmd_OK");
  EXPECT_EQ(attribute("004", attribut::AdrComplement), shown);
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
  EXPECT_EQ(attribute("001", attribut::RaisonOrgChg), "Domus");
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
  for (int i = 1; i <= attribut::Dernier; ++i) {
    EXPECT_EQ(none.get(i), "");
    EXPECT_EQ(none.DCount(i), 0);
  }
}

}  // namespace
}  // namespace behaviour
