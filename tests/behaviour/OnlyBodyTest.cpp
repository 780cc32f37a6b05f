#include "tests/behaviour/ControlTest.h"

namespace behaviour {
namespace {

// A store that holds exactly one body: filling the acronym list loads it.
class OnlyBody : public ControlTest {
 protected:
  OnlyBody() {
    fillTables(store_);
    store_.put("ORGPRISECHARGE", "003", {"CAF", "Caisse familiale"});
    completeBody(store_, "003");
    start();
  }
};

TEST_F(OnlyBody, IsLoadedAtStart) {
  EXPECT_EQ(code().text(), "003");
  EXPECT_EQ(box("Txt_RaisonOrgChg").text(), "Caisse familiale");
  EXPECT_EQ(state(), kExisting);
  EXPECT_EQ(sigles().text(), "CAF");
  EXPECT_EQ(sigles().listCount(), 1);
  EXPECT_PRED_FORMAT1(hasFocus, code());
}

TEST_F(OnlyBody, IsNotLoadedWithoutAnAcronym) {
  store_.set("ORGPRISECHARGE", "003", attribut::SigleOrgChg, "");
  control_->Init();
  EXPECT_EQ(code().text(), "");
  EXPECT_EQ(state(), kEmpty);
}

TEST_F(OnlyBody, IsLoadedAgainAfterItsSave) {
  user_->fill(box("Txt_RaisonOrgChg"), "Nouveau nom");
  press("Cmd_OK");
  EXPECT_EQ(attribute("003", attribut::RaisonOrgChg), "Nouveau nom");
  EXPECT_EQ(code().text(), "003");
  EXPECT_EQ(box("Txt_RaisonOrgChg").text(), "Nouveau nom");
  EXPECT_EQ(sigles().text(), "CAF");
  EXPECT_EQ(state(), kExisting);
  EXPECT_PRED_FORMAT1(hasFocus, code());
}

TEST_F(OnlyBody, IsLoadedBySomeOtherSaveWithoutBeingChecked) {
  store_.put("ORGPRISECHARGE", "002", {"CRAM", ""});
  store_.answer("SSELECT ORGPRISECHARGE PAR 1", {{"002", "CRAM"}});
  press("Cmd_OK");
  expectNoBox();
  EXPECT_EQ(code().text(), "002");
  EXPECT_EQ(state(), kExisting);
}

TEST_F(OnlyBody, LeavesTheScreenWhenItIsCancelled) {
  press("Cmd_Annuler");
  EXPECT_EQ(state(), kEmpty);
  EXPECT_EQ(code().text(), "");
  EXPECT_EQ(sigles().listCount(), 1);
  user_->choose(sigles(), 0);
  EXPECT_EQ(state(), kExisting);
}

TEST_F(OnlyBody, IsJoinedByASecondOne) {
  press("Cmd_Annuler");
  beginCreation();
  press("Cmd_OK");
  EXPECT_EQ(state(), kEmpty);
  EXPECT_EQ(sigles().listCount(), 2);
}

TEST_F(OnlyBody, CancellingACreationLoadsNothing) {
  press("Cmd_Annuler");
  beginCreation();
  desktop_.answer(Answer::Yes);
  press("Cmd_Annuler");
  EXPECT_EQ(state(), kEmpty);
}

TEST_F(OnlyBody, CanBeDeleted) {
  desktop_.answer(Answer::Yes);
  press("Cmd_Supprimer");
  EXPECT_TRUE(store_.ids("ORGPRISECHARGE").empty());
  EXPECT_EQ(sigles().listCount(), 0);
  EXPECT_EQ(state(), kEmpty);
}

TEST_F(OnlyBody, RemainsUnloadedWhenItsOnlyNeighbourIsDeleted) {
  store_.put("ORGPRISECHARGE", "001", {"DOMUS", "Domus"});
  control_->Init();
  lookUp("001");
  desktop_.answer(Answer::Yes);
  press("Cmd_Supprimer");
  EXPECT_EQ(state(), kEmpty);
  EXPECT_EQ(code().text(), "");
  EXPECT_EQ(sigles().listCount(), 1);
}

TEST_F(OnlyBody, CanBeLeft) {
  press("Cmd_Sortir");
  EXPECT_TRUE(control_->W_Sortir());
  expectNoBox();
}

TEST_F(OnlyBody, IsSavedOnLeavingWithoutComingBack) {
  user_->fill(box("Txt_RaisonOrgChg"), "Nouveau nom");
  desktop_.answer(Answer::Yes);
  press("Cmd_Sortir");
  EXPECT_TRUE(control_->W_Sortir());
  EXPECT_EQ(attribute("003", attribut::RaisonOrgChg), "Nouveau nom");
  EXPECT_EQ(code().text(), "");
}

TEST_F(OnlyBody, KeepsItsEditsWhenTheHostRefillsTheList) {
  user_->fill(box("Txt_RaisonOrgChg"), "Nouveau nom");
  control_->Remplir_OrgPriseChg();
  EXPECT_EQ(box("Txt_RaisonOrgChg").text(), "Nouveau nom");
  EXPECT_EQ(state(), kExisting);
  press("Cmd_OK");
  EXPECT_EQ(attribute("003", attribut::RaisonOrgChg), "Nouveau nom");
}

TEST_F(OnlyBody, IsLoadedAlthoughItsCodeStandsThereUnread) {
  press("Cmd_Annuler");
  store_.fail(CallKind::ReadRecord);
  lookUp("003");
  ASSERT_EQ(state(), kEmpty);
  store_.stopFailing();
  control_->Remplir_OrgPriseChg();
  EXPECT_EQ(state(), kExisting);
  EXPECT_EQ(box("Txt_RaisonOrgChg").text(), "Caisse familiale");
}

TEST_F(OnlyBody, ThatCannotBeReadDoesNotEndInit) {
  store_.fail(CallKind::ReadRecord, "ORGPRISECHARGE");
  EXPECT_NO_THROW(control_->Init());
  expectNoBox();
  EXPECT_EQ(state(), kEmpty);
  EXPECT_EQ(code().text(), "003");
  EXPECT_PRED_FORMAT1(hasFocus, code());
  store_.stopFailing();
  lookUp("003");
  EXPECT_EQ(state(), kExisting);
}

TEST_F(OnlyBody, ThatCannotBeReadAgainAfterItsSaveLeavesItsCode) {
  user_->fill(box("Txt_RaisonOrgChg"), "Nouveau nom");
  store_.fail(CallKind::ReadRecord, "ORGPRISECHARGE");
  EXPECT_NO_THROW(press("Cmd_OK"));
  expectNoBox();
  EXPECT_EQ(attribute("003", attribut::RaisonOrgChg), "Nouveau nom");
  EXPECT_EQ(state(), kEmpty);
  EXPECT_EQ(code().text(), "003");
  EXPECT_EQ(box("Txt_RaisonOrgChg").text(), "");
  EXPECT_PRED_FORMAT1(hasFocus, code());
}

TEST_F(OnlyBody, IsDeletedThoughTheListCannotBeReadAgain) {
  store_.fail(CallKind::ExecuteSentence, "ORGPRISECHARGE");
  desktop_.answer(Answer::Yes);
  EXPECT_THROW(press("Cmd_Supprimer"), store::StoreError);
  EXPECT_TRUE(store_.ids("ORGPRISECHARGE").empty());
  EXPECT_EQ(sigles().listCount(), 0);
  EXPECT_EQ(code().text(), "");
  EXPECT_EQ(state(), kEmpty);
  EXPECT_PRED_FORMAT1(hasFocus, code());
}

TEST_F(OnlyBody, DoesNotBreakIntoACreation) {
  press("Cmd_Annuler");
  beginCreation();
  control_->Remplir_OrgPriseChg();
  EXPECT_EQ(state(), kCreating);
  EXPECT_EQ(box("Txt_RaisonOrgChg").text(), "Organisme neuf");
}

TEST_F(OnlyBody, TheFirstOneCreatedIsLoaded) {
  testing_support::MemoryStore fresh;
  fillTables(fresh);
  fresh.set("COMPTEUR", "999", store::compteur::DernierOrgChg, "000");
  control_->setTheDatabase(fresh.connect());
  control_->Init();
  beginCreation();
  press("Cmd_OK");
  EXPECT_PRED_FORMAT2(same, fresh.ids("ORGPRISECHARGE"), std::vector<std::string>{"001"});
  EXPECT_EQ(code().text(), "001");
  EXPECT_EQ(sigles().text(), "NEUF");
  EXPECT_EQ(state(), kExisting);
}

}  // namespace
}  // namespace behaviour
