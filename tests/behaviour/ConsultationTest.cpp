#include <functional>

#include "tests/behaviour/ControlTest.h"

namespace behaviour {
namespace {

class Consultation : public ControlTest {
 protected:
  Consultation() {
    fillThreeBodies(store_);
    level_->value = 1;
    start();
  }
};

TEST_F(Consultation, HidesTheEditingButtons) {
  for (const char* name : {"Cmd_AjoutAbat", "Cmd_Ajouter", "Cmd_AjoutPart", "Cmd_AjoutTaux",
                           "Cmd_NouveauBareme", "Cmd_OK", "Cmd_OKAbat", "Cmd_OKPart", "Cmd_OKTaux",
                           "Cmd_SuppAbat", "Cmd_SuppPart", "Cmd_Supprimer", "Cmd_SuppTaux"}) {
    EXPECT_FALSE(button(name).visible()) << name;
  }
  EXPECT_TRUE(button("Cmd_Annuler").visible());
  EXPECT_TRUE(button("Cmd_Sortir").visible());
}

TEST_F(Consultation, AnyLevelButTwoIsConsultation) {
  for (const long level : {-1L, 0L, 1L, 3L, 22L}) {
    control::Ctr_OrgPriseCharge fresh(desktop_);
    level_->value = level;
    fresh.setTheDatabase(store_.connect());
    fresh.setDroitsUtilisateur(std::make_shared<TestRights>(level_, store_.sharedReleases()));
    fresh.Init();
    EXPECT_FALSE(fresh.surface().find("Cmd_OK")->visible()) << level;
  }
}

TEST_F(Consultation, FullRightsHideNothingOfTheBar) {
  level_->value = 2;
  control::Ctr_OrgPriseCharge fresh(desktop_);
  fresh.setTheDatabase(store_.connect());
  fresh.setDroitsUtilisateur(std::make_shared<TestRights>(level_, store_.sharedReleases()));
  fresh.Init();
  for (const char* name : {"Cmd_Ajouter", "Cmd_Supprimer", "Cmd_OK", "Cmd_Annuler", "Cmd_Sortir"}) {
    EXPECT_TRUE(fresh.surface().find(name)->visible()) << name;
  }
}

TEST_F(Consultation, BodiesAreFoundAndBrowsed) {
  lookUp("001");
  EXPECT_EQ(box("Txt_RaisonOrgChg").text(), "Domus Mutuelle");
  EXPECT_EQ(state(), "code annuler sortir | recherche pages");
  EXPECT_TRUE(user_->click(tabs(), 4));
  user_->choose(sigles(), 0);
  EXPECT_EQ(box("Txt_RaisonOrgChg").text(), "Caisse familiale");
  press("Cmd_Annuler");
  EXPECT_EQ(state(), "code sortir | recherche");
}

TEST_F(Consultation, NoKeyAndNoClickWritesAnything) {
  lookUp("001");
  user_->fill(box("Txt_RaisonOrgChg"), "Autre");
  for (const char letter : std::string_view("ABCDEFGHIJKLMNOPQRTUVWXYZ")) {
    if (letter == 'N') continue;  // cancels: see BodiesAreFoundAndBrowsed
    user_->alt(static_cast<char32_t>(letter));
    for (const toolkit::Key key :
         {toolkit::Key::Enter, toolkit::Key::Space, toolkit::Key::Escape}) {
      user_->press(key);
    }
  }
  for (const char* name : {"Cmd_Ajouter", "Cmd_Supprimer", "Cmd_OK"}) {
    EXPECT_FALSE(press(name)) << name;
  }
  expectNothingWritten();
  EXPECT_EQ(state(), "code annuler sortir | recherche pages");
}

TEST_F(Consultation, MembersThatWouldWriteAreDenied) {
  lookUp("001");
  store_.forgetCalls();
  EXPECT_THROW(control_->Creer_Donnees(), control::AccessDenied);
  EXPECT_THROW(control_->Ecrire_Donnees(), control::AccessDenied);
  EXPECT_THROW(control_->Ecrire_Ong1(), control::AccessDenied);
  EXPECT_TRUE(store_.calls().empty());
  EXPECT_EQ(state(), "code annuler sortir | recherche pages");
}

TEST_F(Consultation, TheOtherMembersWriteNothing) {
  lookUp("001");
  user_->fill(box("Txt_RaisonOrgChg"), "Autre");
  control_->Remplir_OrgPriseChg();
  control_->Remplir_ParamsPoss();
  control_->Remplir_PiecesPoss();
  control_->Remplir_StatOrgChg();
  EXPECT_TRUE(control_->Verif_Ong1());
  control_->Afficher_Donnees();
  control_->Afficher_Ong1();
  control_->Vider_Donnees();
  control_->Init();
  expectNothingWritten();
}

TEST_F(Consultation, LeavingNeverAsks) {
  lookUp("001");
  user_->fill(box("Txt_RaisonOrgChg"), "Autre");
  press("Cmd_Sortir");
  EXPECT_TRUE(control_->W_Sortir());
  expectNoBox();
  expectNothingWritten();
}

// The level is read each time: rights taken away after start-up count at once.
class RightsTakenAway : public ControlTest {
 protected:
  RightsTakenAway() {
    fillThreeBodies(store_);
    start();
  }
};

TEST_F(RightsTakenAway, StopACreation) {
  level_->value = 1;
  press("Cmd_Ajouter");
  EXPECT_EQ(state(), kEmpty);
}

TEST_F(RightsTakenAway, StopASave) {
  lookUp("001");
  user_->fill(box("Txt_RaisonOrgChg"), "Autre");
  level_->value = 1;
  press("Cmd_OK");
  expectNothingWritten();
  EXPECT_EQ(box("Txt_RaisonOrgChg").text(), "Autre");
}

TEST_F(RightsTakenAway, StopADeletion) {
  lookUp("001");
  level_->value = 1;
  press("Cmd_Supprimer");
  expectNoBox();
  expectNothingWritten();
}

TEST_F(RightsTakenAway, LeavingAsksNothing) {
  lookUp("001");
  user_->fill(box("Txt_RaisonOrgChg"), "Autre");
  level_->value = 0;
  press("Cmd_Sortir");
  expectNoBox();
  EXPECT_TRUE(control_->W_Sortir());
}

TEST_F(RightsTakenAway, ALevelThatCannotBeReadSavesNothing) {
  lookUp("001");
  user_->fill(box("Txt_RaisonOrgChg"), "Autre");
  level_->fails = true;
  EXPECT_NO_THROW(press("Cmd_OK"));
  EXPECT_THROW(press("Cmd_Supprimer"), std::runtime_error);
  EXPECT_THROW(press("Cmd_Sortir"), std::runtime_error);
  EXPECT_THROW(control_->Ecrire_Donnees(), std::runtime_error);
  expectNothingWritten();
  EXPECT_FALSE(control_->W_Sortir());
  EXPECT_EQ(state(), kExisting);
}

}  // namespace
}  // namespace behaviour
