#include "tests/behaviour/ControlTest.h"

namespace behaviour {
namespace {

class Creation : public ControlTest {
 protected:
  Creation() {
    fillThreeBodies(store_);
    start();
  }
};

TEST_F(Creation, StartsOnTheFirstPageWithTheFocusOnTheAcronym) {
  tabs().setTab(3);
  press("Cmd_Ajouter");
  EXPECT_EQ(tabs().tab(), 0);
  EXPECT_EQ(state(), kCreating);
  EXPECT_PRED_FORMAT1(hasFocus, box("Txt_SigleOrgChg"));
  EXPECT_TRUE(store_.calls().empty());
}

TEST_F(Creation, SetsTheDefaultsOfTheOtherPages) {
  button("Cmd_NouveauBareme").setEnabled(false);
  press("Cmd_Ajouter");
  EXPECT_TRUE(button("Cmd_AjoutPart").enabled());
  EXPECT_TRUE(button("Cmd_NouveauBareme").enabled());
  EXPECT_FALSE(box("Txt_DatBaremCours").enabled());
  EXPECT_EQ(child<ComboBox>("Cbo_PeriodFactOrgChg").text(), "Mensuelle");
  EXPECT_EQ(child<ComboBox>("Cbo_RenouvOrgChg").text(), "Pas de gestion renouvellement");
  EXPECT_TRUE(child<toolkit::OptionButton>("Opt_Totalite").value());
}

TEST_F(Creation, DropsACodeThatWasHalfTyped) {
  user_->fill(code(), "00");
  press("Cmd_Ajouter");
  EXPECT_EQ(code().text(), "");
}

TEST_F(Creation, SavesUnderTheNextCode) {
  beginCreation();
  user_->fill(box("Txt_Ville"), "Lyon");
  press("Cmd_OK");
  EXPECT_EQ(attribute("004", attribut::SigleOrgChg), "NEUF");
  EXPECT_EQ(attribute("004", attribut::RaisonOrgChg), "Organisme neuf");
  EXPECT_EQ(attribute("004", attribut::AdrVille), "Lyon");
  EXPECT_EQ(store_.record("COMPTEUR", "999").get(store::compteur::DernierOrgChg, 1), "004");
  expectNoBox();
}

TEST_F(Creation, WritesTheCounterBeforeTheBody) {
  beginCreation();
  store_.forgetCalls();
  press("Cmd_OK");
  std::vector<std::string> told = store_.told();
  ASSERT_EQ(told.size(), 5U);
  EXPECT_EQ(told[0], "ReadRecord COMPTEUR 999");
  EXPECT_EQ(told[1], "DBWrite COMPTEUR 999");
  EXPECT_EQ(told[2], "ReadRecord ORGPRISECHARGE 004");
  EXPECT_EQ(told[3], "DBWrite ORGPRISECHARGE 004");
  EXPECT_TRUE(told[4].starts_with("ExecuteSentence SSELECT ORGPRISECHARGE PAR 1"));
}

TEST_F(Creation, ACounterWithoutAttribute10GivesTheFirstCode) {
  for (const char* body : {"001", "002", "003"}) store_.erase("ORGPRISECHARGE", body);
  store_.set("COMPTEUR", "999", store::compteur::DernierOrgChg, "");
  beginCreation();
  press("Cmd_OK");
  EXPECT_TRUE(store_.has("ORGPRISECHARGE", "001"));
}

TEST_F(Creation, ReadsTheCounterAgain) {
  beginCreation();
  store_.set("COMPTEUR", "999", store::compteur::DernierOrgChg, "041");
  press("Cmd_OK");
  EXPECT_TRUE(store_.has("ORGPRISECHARGE", "042"));
}

TEST_F(Creation, NeverOverwritesABodyWhenTheCounterLagsBehind) {
  store_.set("COMPTEUR", "999", store::compteur::DernierOrgChg, "001");
  beginCreation();
  press("Cmd_OK");
  EXPECT_EQ(attribute("002", attribut::SigleOrgChg), "CRAM");
  EXPECT_EQ(attribute("003", attribut::SigleOrgChg), "CAF");
  EXPECT_EQ(attribute("004", attribut::SigleOrgChg), "NEUF");
}

TEST_F(Creation, TheLastCodeIs999) {
  store_.set("COMPTEUR", "999", store::compteur::DernierOrgChg, "998");
  beginCreation();
  press("Cmd_OK");
  EXPECT_TRUE(store_.has("ORGPRISECHARGE", "999"));
  beginCreation("PLEIN");
  press("Cmd_OK");
  expectBox(kPlusDeCode, Icon::Information);
  EXPECT_EQ(store_.ids("ORGPRISECHARGE").size(), 4U);
  EXPECT_EQ(state(), kCreating);
  EXPECT_EQ(box("Txt_SigleOrgChg").text(), "PLEIN");
  EXPECT_EQ(desktop_.pointer(), toolkit::Pointer::Normal);
  EXPECT_TRUE(control_->surface().enabled());
}

TEST_F(Creation, WithoutAFreeCodeUpTo999IsTold) {
  store_.set("COMPTEUR", "999", 10, "997");
  for (const char* taken : {"998", "999"}) store_.put("ORGPRISECHARGE", taken, {"PRIS"});
  beginCreation();
  press("Cmd_OK");
  expectBox(kPlusDeCode, Icon::Information);
  EXPECT_EQ(attribute("999", 1), "PRIS");
  EXPECT_EQ(state(), kCreating);
}

TEST_F(Creation, ACounterThatIsNoNumberIsTold) {
  store_.set("COMPTEUR", "999", 10, "12a");
  beginCreation();
  store_.forgetCalls();
  press("Cmd_OK");
  expectBox(kCompteurIllisible, Icon::Information);
  expectNothingWritten();
  EXPECT_EQ(state(), kCreating);
  EXPECT_EQ(box("Txt_RaisonOrgChg").text(), "Organisme neuf");
  store_.set("COMPTEUR", "999", 10, " 12 ");
  press("Cmd_OK");
  expectNoBox();
  EXPECT_EQ(attribute("013", 1), "NEUF");
}

TEST_F(Creation, ToldThatThereIsNoCodeIsNoFailureOfTheHostsCall) {
  store_.set("COMPTEUR", "999", 10, "999");
  beginCreation();
  store_.forgetCalls();
  control_->Creer_Donnees();
  expectBox(kPlusDeCode, Icon::Information);
  expectNothingWritten();
  EXPECT_EQ(state(), kCreating);
}

TEST_F(Creation, WhoHasLostTheRightMeanwhileCreatesNothing) {
  beginCreation();
  store_.forgetCalls();
  level_->lostAfter = 1;
  press("Cmd_OK");
  EXPECT_TRUE(store_.calls().empty());
  expectNoBox();
  EXPECT_EQ(state(), kCreating);
  EXPECT_EQ(box("Txt_SigleOrgChg").text(), "NEUF");
}

TEST_F(Creation, EndsEmptyWithTheListRefilledAndTheFocusOnTheCode) {
  beginCreation();
  press("Cmd_OK");
  EXPECT_EQ(state(), kEmpty);
  EXPECT_EQ(code().text(), "");
  EXPECT_EQ(box("Txt_RaisonOrgChg").text(), "");
  EXPECT_EQ(sigles().listCount(), 4);
  EXPECT_PRED_FORMAT1(hasFocus, code());
  lookUp("004");
  EXPECT_EQ(box("Txt_RaisonOrgChg").text(), "Organisme neuf");
}

TEST_F(Creation, ARefusalDrawsNoCode) {
  press("Cmd_Ajouter");
  press("Cmd_OK");
  expectBox("Le sigle de l'organisme de prise en charge est obligatoire.", Icon::Exclamation);
  EXPECT_TRUE(store_.calls().empty());
  EXPECT_EQ(state(), kCreating);
}

TEST_F(Creation, GoesOnAfterARefusal) {
  press("Cmd_Ajouter");
  user_->type("neuf");
  press("Cmd_OK");
  expectBox("La raison sociale de l'organisme de prise en charge est obligatoire.",
            Icon::Exclamation);
  user_->type("Organisme neuf");
  completeCreation();
  press("Cmd_OK");
  EXPECT_EQ(attribute("004", attribut::RaisonOrgChg), "Organisme neuf");
}

TEST_F(Creation, TwoInARow) {
  beginCreation("UN");
  press("Cmd_OK");
  beginCreation("DEUX");
  press("Cmd_OK");
  EXPECT_EQ(attribute("004", attribut::SigleOrgChg), "UN");
  EXPECT_EQ(attribute("005", attribut::SigleOrgChg), "DEUX");
}

TEST_F(Creation, TheHostCanSaveIt) {
  beginCreation();
  control_->Creer_Donnees();
  EXPECT_EQ(attribute("004", attribut::SigleOrgChg), "NEUF");
  EXPECT_EQ(state(), kEmpty);
  EXPECT_EQ(sigles().listCount(), 4);
}

TEST_F(Creation, TheHostCannotSaveWhatWasNotStarted) {
  EXPECT_THROW(control_->Creer_Donnees(), control::NotReady);
  EXPECT_THROW(control_->Ecrire_Donnees(), control::NotReady);
  EXPECT_THROW(control_->Ecrire_Ong1(), control::NotReady);
  lookUp("001");
  EXPECT_THROW(control_->Creer_Donnees(), control::NotReady);
  press("Cmd_Annuler");
  beginCreation();
  EXPECT_THROW(control_->Ecrire_Donnees(), control::NotReady);
  EXPECT_EQ(store_.ids("ORGPRISECHARGE").size(), 3U);
}

}  // namespace
}  // namespace behaviour
