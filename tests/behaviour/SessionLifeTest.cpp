// The life of what the session keeps of a body's rates and scale, from the look-up to the save: the
// parts of the control around a session that can be read.
#include "control/AcronymList.h"
#include "control/CommandBar.h"
#include "control/Context.h"
#include "control/Lookup.h"
#include "control/RecordView.h"
#include "control/Save.h"
#include "control/StartUp.h"
#include "pages/AddressPanel.h"
#include "pages/Ong1.h"
#include "pages/Ong2.h"
#include "pages/Ong3.h"
#include "pages/Ong4.h"
#include "pages/Ong5.h"
#include "pages/Ong6.h"
#include "tests/behaviour/ControlTest.h"

namespace behaviour {
namespace {

class SessionLife : public testing::Test {
 protected:
  SessionLife() {
    desktop_.follow([this] { return &user_; });
    fillThreeBodies(store_);
    session_.TheDatabase = store_.connect();
    session_.DroitsUtilisateur = std::make_shared<TestRights>(
        std::make_shared<RightsLevel>(), std::make_shared<std::vector<std::string>>());
    session_.DroitOrgChg = session_.DroitsUtilisateur->entry("CONSULTATIONORGCHARGE");
    ong3_.lier(handlers_);
    ong4_.lier(handlers_);
    startUp_.Init();
    lookUp("001");
  }
  void lookUp(std::string_view code) {
    screen_.bar.Txt_CodOrgChg.setText(code);
    lookup_.Txt_CodOrgChg_Change();
  }
  void press(toolkit::CommandButton& button, Caller at = Caller::here()) {
    const auto trace = called("press", at);
    ASSERT_TRUE(user_.click(button)) << button.name();
  }
  // The one stored rate is deleted, two are added, and a new scale is begun.
  void change(Caller at = Caller::here()) {
    const auto trace = called("change", at);
    screen_.Ong_OrgPriseChg.setTab(screen::kPriseEnCharge);
    screen::PriseEnCharge& page = screen_.priseEnCharge;
    desktop_.answer(Answer::Yes);
    user_.dblClick(page.Lst_DateRembOrgChg, 0);
    press(page.Cmd_SuppTaux);
    for (const char* date : {"01022026", "01032026"}) {
      press(page.Cmd_AjoutTaux);
      user_.fill(page.Txt_DateRembOrgChg, date);
      user_.fill(page.Txt_TxRembOrgChg, "20");
      user_.fill(page.Txt_TxRembMajOrgChg, "25");
      user_.fill(page.Txt_PrestServOrgChg, "15");
      press(page.Cmd_OKTaux);
    }
    screen_.Ong_OrgPriseChg.setTab(screen::kParticipation);
    desktop_.answer(Answer::Yes);
    press(screen_.participation.Cmd_NouveauBareme);
    user_.type("01/02/2026");
    desktop_.clearJournal();
    expectKept();
  }
  void expectKept(Caller at = Caller::here()) {
    const auto trace = called("expectKept", at);
    EXPECT_FALSE(session_.taux.W_AjoutTaux);
    EXPECT_EQ(session_.taux.W_DerTauxModif, 2);
    EXPECT_TRUE(session_.taux.W_TauxModifSupp);
    EXPECT_TRUE(session_.taux.W_TauxModifie);
    EXPECT_TRUE(session_.NouveauBareme);
    EXPECT_EQ(screen_.participation.Cmd_NouveauBareme.caption(), screen::kAnnulerBareme);
  }
  void expectReset(Caller at = Caller::here()) {
    const auto trace = called("expectReset", at);
    EXPECT_FALSE(session_.taux.W_AjoutTaux);
    EXPECT_EQ(session_.taux.W_DerTauxModif, 0);
    EXPECT_FALSE(session_.taux.W_TauxModifSupp);
    EXPECT_FALSE(session_.taux.W_TauxModifie);
    EXPECT_EQ(session_.taux.W_TauxAvantModif, "");
    EXPECT_FALSE(session_.NouveauBareme);
    EXPECT_EQ(screen_.participation.Cmd_NouveauBareme.caption(), screen::kNouveauBareme);
    EXPECT_FALSE(session_.W_SupprimerActif);
    EXPECT_FALSE(session_.W_SortirActif);
  }

  testing_support::MemoryStore store_;
  testing_support::TestDesktop desktop_;
  toolkit::Surface surface_{"Ctr_OrgPriseCharge"};
  screen::Screen screen_{surface_};
  screen::EditSession session_;
  screen::Handlers handlers_{session_};
  pages::AddressPanel adresse_{screen_.coordonnees.adresse, session_};
  pages::Ong1 ong1_{{desktop_, screen_, session_}, adresse_};
  pages::Ong2 ong2_{{desktop_, screen_, session_}};
  pages::Ong3 ong3_{{desktop_, screen_, session_}};
  pages::Ong4 ong4_{{desktop_, screen_, session_}};
  pages::Ong5 ong5_{{desktop_, screen_, session_}};
  pages::Ong6 ong6_{{desktop_, screen_, session_}};
  control::Context context_{desktop_, surface_, screen_,
                            session_, adresse_, {&ong1_, &ong2_, &ong3_, &ong4_, &ong5_, &ong6_}};
  control::RecordView view_{context_};
  control::AcronymList list_{context_, view_};
  control::Lookup lookup_{context_, view_};
  control::Save save_{context_, view_, list_};
  control::CommandBar bar_{context_, view_, list_, save_, [](bool) {}};
  control::StartUp startUp_{context_, view_, list_, ong2_, ong5_};
  toolkit::headless::User user_{surface_};
};

TEST_F(SessionLife, StartsAnewWithEachBodyLookedUp) {
  expectReset();
  for (const char* code : {"002", "001"}) {
    change();
    lookUp(code);
    ASSERT_EQ(session_.codeEnMain, code);
    expectReset();
    lookUp("001");
  }
}

TEST_F(SessionLife, EndsWithACodeThatIsUnknown) {
  change();
  lookUp("777");
  EXPECT_PRED_FORMAT2(boxCount, desktop_.takeBoxes(), 1U);
  expectReset();
}

TEST_F(SessionLife, GoesOnWhenALookUpFails) {
  change();
  store_.fail(CallKind::ReadRecord, "ORGPRISECHARGE");
  lookUp("002");
  EXPECT_EQ(session_.codeEnMain, "001");
  expectKept();
}

TEST_F(SessionLife, StartsAnewWithACreation) {
  change();
  bar_.Cmd_Ajouter_Click();
  EXPECT_TRUE(session_.EnCreation);
  expectReset();
}

TEST_F(SessionLife, EndsWhenTheBodyIsClearedCancelledOrDeleted) {
  change();
  view_.Vider_Donnees();
  expectReset();
  lookUp("001");
  change();
  bar_.Cmd_Annuler_Click();
  expectReset();
  lookUp("001");
  change();
  desktop_.answer(Answer::Yes);
  bar_.Cmd_Supprimer_Click();
  EXPECT_FALSE(store_.has("ORGPRISECHARGE", "001"));
  expectReset();
}

TEST_F(SessionLife, EndsWithTheSave) {
  change();
  desktop_.answer(Answer::No);
  save_.Cmd_OK_Click();
  EXPECT_PRED_FORMAT2(boxCount, desktop_.takeBoxes(), 1U);  // about the new scale
  EXPECT_EQ(session_.codeEnMain, "");
  expectReset();
}

TEST_F(SessionLife, GoesOnWhenTheSaveIsRefusedOrFails) {
  change();
  const std::string name = screen_.coordonnees.Txt_RaisonOrgChg.text();
  screen_.coordonnees.Txt_RaisonOrgChg.setText("");
  save_.Cmd_OK_Click();
  EXPECT_PRED_FORMAT2(boxCount, desktop_.takeBoxes(), 1U);
  expectKept();
  screen_.coordonnees.Txt_RaisonOrgChg.setText(name);
  store_.fail(CallKind::DBWrite);
  save_.Cmd_OK_Click();
  EXPECT_EQ(session_.codeEnMain, "001");
  expectKept();
  store_.stopFailing();
  desktop_.answer(Answer::No);
  save_.Cmd_OK_Click();
  expectReset();
}

TEST_F(SessionLife, IsLeftAloneByTheHostsShowAndWrite) {
  change();
  ong3_.Ecrire_Ong3();
  ong3_.Afficher_Ong3();
  expectKept();
}

// A search for agreements that fails leaves the page's flag as a check that has not run.
TEST_F(SessionLife, OfACheckThatFailsLeavesNoPageRefused) {
  store_.put("PERIODESPAIE", "1", {"202601"});
  screen_.Ong_OrgPriseChg.setTab(screen::kParticipation);
  ASSERT_TRUE(user_.click(screen_.participation.Opt_GestPartPourc));
  const std::string before = session_.RecOrgChg->fields().text();
  store_.fail(CallKind::ExecuteSentence, "ACCORD");
  save_.Cmd_OK_Click();
  EXPECT_PRED_FORMAT1(noBoxes, desktop_.takeBoxes());
  EXPECT_FALSE(view_.pageRefusee());
  EXPECT_FALSE(session_.modeVerif);
  EXPECT_PRED_FORMAT2(sameBody, session_.RecOrgChg->fields().text(), before);
  store_.stopFailing();
  save_.Cmd_OK_Click();
  EXPECT_PRED_FORMAT1(noBoxes, desktop_.takeBoxes());
  EXPECT_EQ(store_.record("ORGPRISECHARGE", "001").get(attribut::GestPartBenef), "%");
}

}  // namespace
}  // namespace behaviour
